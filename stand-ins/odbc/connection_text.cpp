#include "odbc/connection_text.h"

#include <algorithm>
#include <utility>

#include "automation/text.h"
#include "odbc/ado_error.h"

namespace odbc {
namespace {

constexpr auto kNone = std::u16string_view::npos;

// The length of a value in braces, the braces included; a doubled brace stands for itself.
std::size_t BracedLength(std::u16string_view text) {
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i] != u'}') {
      continue;
    }
    if (i + 1 == text.size() || text[i + 1] != u'}') {
      return i + 1;
    }
    ++i;
  }
  return text.size();
}

std::u16string WithoutBraces(std::u16string_view braced) {
  std::u16string inside(braced.substr(1, braced.size() - (braced.ends_with(u'}') ? 2 : 1)));
  for (auto at = inside.find(u"}}"); at != std::u16string::npos; at = inside.find(u"}}", at + 1)) {
    inside.erase(at, 1);
  }
  return inside;
}

std::u16string InBraces(std::u16string_view value) {
  std::u16string braced = u"{";
  for (const char16_t unit : value) {
    braced += unit;
    if (unit == u'}') {
      braced += unit;
    }
  }
  return braced + u'}';
}

bool NeedsBraces(std::u16string_view value) {
  return value.find_first_of(u";{}") != kNone || automation::Trim(value) != value;
}

bool IsForOdbc(const std::u16string& provider) {
  return automation::InStr(1, automation::UCase(provider), u"MSDASQL") > 0;
}

}  // namespace

ConnectionText::ConnectionText(std::u16string_view text) {
  while (!text.empty()) {
    const auto equals = text.find(u'=');
    const auto semicolon = text.find(u';');
    Pair pair;
    std::size_t length = std::min(semicolon, text.size());
    if (equals == kNone || semicolon < equals) {
      pair = {automation::Trim(text.substr(0, length)), u"", false, false};
    } else {
      auto rest = text.substr(equals + 1);
      const auto blanks = std::min(rest.find_first_not_of(u' '), rest.size());
      rest.remove_prefix(blanks);
      pair.key = automation::Trim(text.substr(0, equals));
      pair.braced = rest.starts_with(u'{');
      const auto valueLength =
          pair.braced ? BracedLength(rest) : std::min(rest.find(u';'), rest.size());
      const auto value = rest.substr(0, valueLength);
      pair.value = pair.braced ? WithoutBraces(value) : automation::Trim(value);
      length = std::min(text.find(u';', equals + 1 + blanks + valueLength), text.size());
    }
    if (!pair.key.empty()) {
      pairs_.push_back(std::move(pair));
    }
    text.remove_prefix(std::min(length + 1, text.size()));
  }
}

std::vector<ConnectionText::Pair>::iterator ConnectionText::Locate(std::u16string_view key) {
  return std::find_if(pairs_.begin(), pairs_.end(), [&](const Pair& pair) {
    return pair.hasValue && automation::EqualsNoCase(pair.key, key);
  });
}

std::optional<std::u16string> ConnectionText::Find(std::u16string_view key) const {
  const auto found = std::find_if(pairs_.begin(), pairs_.end(), [&](const Pair& pair) {
    return pair.hasValue && automation::EqualsNoCase(pair.key, key);
  });
  return found == pairs_.end() ? std::nullopt : std::optional(found->value);
}

void ConnectionText::Set(std::u16string_view key, std::u16string_view value) {
  const auto found = Locate(key);
  if (found == pairs_.end()) {
    pairs_.push_back({std::u16string(key), std::u16string(value), true, false});
  } else {
    found->value = value;
  }
}

void ConnectionText::Remove(std::u16string_view key) {
  std::erase_if(pairs_, [&](const Pair& pair) { return automation::EqualsNoCase(pair.key, key); });
}

std::u16string ConnectionText::Text() const {
  std::u16string text;
  for (const Pair& pair : pairs_) {
    text += pair.key;
    if (pair.hasValue) {
      const bool braced = pair.braced || NeedsBraces(pair.value);
      text += u"=" + (braced ? InBraces(pair.value) : pair.value);
    }
    text += u';';
  }
  return text;
}

ConnectRequest RequestOf(std::u16string_view connectionString, std::u16string_view user,
                         std::u16string_view password) {
  ConnectionText text(connectionString);
  if (const auto provider = text.Find(u"Provider")) {
    if (!IsForOdbc(*provider)) {
      throw MakeError(AdoError::ProviderNotFound, kConnectionSource);
    }
    text.Remove(u"Provider");
  }
  if (!user.empty()) {
    text.Set(u"UID", user);
  }
  if (!password.empty()) {
    text.Set(u"PWD", password);
  }
  const Dialect& dialect = DialectOf(text.Find(u"Driver").value_or(u""));
  for (const auto& [key, value] : dialect.connectionDefaults) {
    if (!text.Find(key)) {
      text.Set(key, value);
    }
  }
  return {.text = text.Text(), .dialect = dialect};
}

}  // namespace odbc
