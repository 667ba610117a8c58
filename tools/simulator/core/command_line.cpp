#include "simulator/core/command_line.h"

#include <algorithm>
#include <array>

#include "automation/text.h"

namespace simulator {
namespace {

constexpr std::u16string_view kBlanks = u" \t";

bool IsBlankOrEnd(std::u16string_view text, std::size_t position) {
  return position >= text.size() || kBlanks.find(text[position]) != std::u16string_view::npos;
}

// The end of a program path that is spelled differently from the running program's: after ".exe" if
// that comes before any key, otherwise at the first blank.
std::size_t EndOfForeignPath(std::u16string_view commandLine) {
  constexpr std::u16string_view extension = u".exe";
  const auto keys = commandLine.substr(0, commandLine.find(u'='));
  for (std::size_t i = 0; i + extension.size() <= keys.size(); ++i) {
    const auto end = i + extension.size();
    if (automation::EqualsNoCase(keys.substr(i, extension.size()), extension) &&
        IsBlankOrEnd(commandLine, end)) {
      return end;
    }
  }
  return std::min(commandLine.find_first_of(kBlanks), commandLine.size());
}

std::u16string_view WithoutProgram(std::u16string_view commandLine,
                                   std::u16string_view programPath) {
  if (commandLine.starts_with(u'"')) {
    const auto quote = commandLine.find(u'"', 1);
    return quote == std::u16string_view::npos ? std::u16string_view()
                                              : commandLine.substr(quote + 1);
  }
  const bool own =
      automation::EqualsNoCase(commandLine.substr(0, programPath.size()), programPath) &&
      IsBlankOrEnd(commandLine, programPath.size());
  return commandLine.substr(own ? programPath.size() : EndOfForeignPath(commandLine));
}

struct Word {
  std::u16string key;
  std::u16string value;
  bool hasValue = false;
  bool quoteOpen = false;
};

// Takes the next word off `text`, which must not begin with a blank.
Word TakeWord(std::u16string_view& text) {
  Word word;
  const auto keyEnd = std::min(text.find_first_of(u" \t="), text.size());
  word.key = text.substr(0, keyEnd);
  text.remove_prefix(keyEnd);
  if (!text.starts_with(u'=')) {
    return word;
  }
  text.remove_prefix(1);
  word.hasValue = true;
  const bool quoted = text.starts_with(u'"');
  if (quoted) {
    text.remove_prefix(1);
  }
  const auto end = quoted ? text.find(u'"') : text.find_first_of(kBlanks);
  word.quoteOpen = quoted && end == std::u16string_view::npos;
  word.value = text.substr(0, end);
  text.remove_prefix(end == std::u16string_view::npos ? text.size() : end + 1);
  return word;
}

bool AsksForHelp(std::u16string_view word) {
  constexpr std::array<std::u16string_view, 5> spellings = {u"/?", u"-?", u"-h", u"/h", u"--help"};
  return std::any_of(spellings.begin(), spellings.end(),
                     [&](auto spelling) { return automation::EqualsNoCase(word, spelling); });
}

void Store(const Word& word, CommandLine& result) {
  if (automation::EqualsNoCase(word.key, u"path")) {
    result.requestPath = word.value;
    if (word.value.empty()) {
      result.problems.emplace_back(u"path= anger ingen fil.");
    }
  } else if (automation::EqualsNoCase(word.key, u"version")) {
    result.version = word.value;
    if (word.value != u"2") {
      result.problems.push_back(u"version=" + word.value + u": väntade version=2.");
    }
  } else if (automation::EqualsNoCase(word.key, u"caller")) {
    result.caller = word.value;
  } else if (automation::EqualsNoCase(word.key, u"removefiles")) {
    result.removeFiles = word.value == u"1";
    if (word.value != u"0" && word.value != u"1") {
      result.problems.push_back(u"removefiles=" + word.value + u": väntade 0 eller 1.");
    }
  } else {
    result.problems.push_back(u"Okänd nyckel: " + word.key + u"=");
  }
}

}  // namespace

CommandLine ParseCommandLine(std::u16string_view commandLine, std::u16string_view programPath) {
  CommandLine result;
  auto rest = WithoutProgram(commandLine, programPath);
  bool anyKey = false;
  while (true) {
    rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
    if (rest.empty()) {
      break;
    }
    const Word word = TakeWord(rest);
    if (word.quoteOpen) {
      result.problems.push_back(u"Citattecknet efter " + word.key + u"= avslutas aldrig.");
    }
    if (word.hasValue) {
      anyKey = true;
      Store(word, result);
    } else if (AsksForHelp(word.key)) {
      result.help = true;
    } else {
      result.problems.push_back(u"\u201D" + word.key +
                                u"\u201D är inte nyckel=värde; saknas citattecken runt en sökväg "
                                u"med blanktecken?");
    }
  }
  if (anyKey && result.requestPath.empty() && result.problems.empty()) {
    result.problems.emplace_back(u"path= med begäransfilens sökväg saknas.");
  }
  return result;
}

}  // namespace simulator
