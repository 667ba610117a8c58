#include "registry/c_registry.h"

#include <algorithm>
#include <new>
#include <utility>

#include "automation/automation_error.h"
#include "automation/text.h"
#include "platform/conversions.h"
#include "platform/dialogs.h"
#include "platform/platform.h"
#include "platform/registry_api.h"
#include "registry/errors.h"

namespace registry {
namespace {

using automation::AutomationError;
using automation::RuntimeError;
using platform::RegistryApi;

// Access rights to a key, as the system numbers them.
constexpr std::uint32_t kReadAccess = 0x1F;
constexpr std::uint32_t kWriteAccess = 0x06;
constexpr std::uint32_t kCreateAccess = 0x3F;

constexpr std::uint32_t kCreated = 1;
constexpr std::uint32_t kOpenedExisting = 2;

RegistryApi& Api() {
  return platform::Current().registry;
}

KeyHandle Open(RegistryApi::Key parent, const std::u16string& path, std::uint32_t access) {
  RegistryApi::Key key = 0;
  const bool opened = Api().OpenKey(parent, path, access, key) == RegistryApi::kSuccess;
  return opened ? KeyHandle(Api(), key) : KeyHandle();
}

void Tell(std::u16string text) {
  platform::Current().dialogs.Show({.text = std::move(text), .title = {}});
}

[[noreturn]] void RaiseUnknown(std::int32_t number) {
  throw AutomationError(kUnknownError, u"CreateEx",
                        u"Unknown Error: " + automation::Decimal10(number));
}

// The system reads a name up to the first NUL and takes one without a letter for the parent.
bool NamesSubKey(const std::u16string& name) {
  const std::u16string read = name.substr(0, name.find(u'\0'));
  return read.find_first_not_of(u'\\') != std::u16string::npos;
}

// Deletes the key with all below it, deepest first; stops at the first that cannot be deleted.
bool DeleteTree(RegistryApi::Key parent, const std::u16string& name) {
  const KeyHandle handle = NamesSubKey(name) ? Open(parent, name, kReadAccess) : KeyHandle();
  if (!handle) {
    return false;
  }
  const auto subKeys = ReadSubKeyNames(handle);
  return std::all_of(subKeys.begin(), subKeys.end(),
                     [&](const auto& subKey) { return DeleteTree(handle.key(), subKey); }) &&
         Api().DeleteKey(parent, name) == RegistryApi::kSuccess;
}

}  // namespace

void CRegistry::SetRoot(std::uint32_t root) {
  root_ = root;
  if (!key_.empty()) {
    OpenKey(kReadAccess);
  }
}

void CRegistry::SetKey(const std::u16string& path) {
  key_ = path;
  GetKeyInfo();
}

void CRegistry::SetValueCount(std::int16_t /*count*/) {
  throw AutomationError(kReadOnlyProperty, u"CRegistry.Let ValueCount",
                        u"The Let Property is not available");
}

std::u16string CRegistry::GetValue(const automation::Value& request) const {
  if (request.Is<std::int16_t>()) {
    return EntryAt(request.As<std::int16_t>()).text;
  }
  const std::u16string name = platform::ToText(request);
  const auto found = std::find_if(values_.begin(), values_.end(), [&](const Entry& entry) {
    return automation::EqualsNoCase(entry.name, name);
  });
  return found == values_.end() ? std::u16string() : found->text;
}

std::u16string CRegistry::GetName(std::int16_t position) const {
  const bool inside = position >= 0 && static_cast<std::size_t>(position) < values_.size();
  return inside ? EntryAt(position).name : std::u16string();
}

std::u16string CRegistry::GetSubKey(std::int16_t index) const {
  const std::int32_t position = std::int32_t{index} + 1;
  const bool inside = position >= 0 && static_cast<std::size_t>(position) < subKeys_.size();
  return inside ? subKeys_[static_cast<std::size_t>(position)] : std::u16string();
}

bool CRegistry::SetValue(const automation::Value& name, const std::u16string& text) {
  const std::u16string valueName =
      name.Is<std::int16_t>() ? EntryAt(name.As<std::int16_t>()).name : platform::ToText(name);
  const KeyHandle handle = OpenKey(kWriteAccess);
  const bool written =
      handle && Api().SetTextValue(handle.key(), valueName, text) == RegistryApi::kSuccess;
  if (!written) {
    Tell(u"Darn!!  Couldn't write new value.");
  }
  return written;
}

bool CRegistry::DeleteValue(const std::u16string& name) {
  const bool deleted = [&] {
    const KeyHandle handle = OpenKey(kWriteAccess);
    return handle && Api().DeleteValue(handle.key(), name) == RegistryApi::kSuccess;
  }();
  GetKeyInfo();
  return deleted;
}

bool CRegistry::DeleteKey(const std::u16string& name) {
  const KeyHandle handle = OpenKey(kReadAccess);
  return handle && DeleteTree(handle.key(), name);
}

std::int16_t CRegistry::Create(const std::u16string& name,
                               const std::optional<automation::Value>& valueName,
                               const std::optional<std::u16string>& text) {
  const std::u16string below = key_.empty() ? name : key_ + u"\\" + name;
  const std::u16string path = automation::EqualsNoCase(name, key_) ? key_ : below;
  CreateEx(path);
  SetKey(path);
  if (valueName && text) {
    if (SetValue(*valueName, *text)) {
      Refresh();
    } else {
      Tell(u"Could not set value");
    }
  }
  return OpenKey(kReadAccess) ? -1 : 0;
}

void CRegistry::GetKeyInfo() {
  values_.assign(1, {});
  subKeys_.assign(1, {});
  valueCount_ = 0;
  subKeyCount_ = 0;

  const KeyHandle handle = OpenForLoading();
  std::vector<Entry> values = ReadTextValues(handle);
  const std::vector<std::u16string> subKeys = ReadSubKeyNames(handle);

  valueCount_ = static_cast<std::int16_t>(values.size());
  subKeyCount_ = static_cast<std::int16_t>(subKeys.size());
  values_ = std::move(values);
  values_.emplace_back();
  subKeys_.insert(subKeys_.end(), subKeys.begin(), subKeys.end());
}

KeyHandle CRegistry::OpenForLoading() const {
  if (!autoCreate_) {
    KeyHandle handle = OpenKey(kReadAccess);
    if (!handle) {
      RaiseCannotOpen();
    }
    return handle;
  }
  Created created = CreateEx(key_);
  if (created.disposition != kCreated && created.disposition != kOpenedExisting) {
    throw AutomationError(kCannotCreate, u"GetKeyInfo", u"Unable to create Key");
  }
  return std::move(created.handle);
}

CRegistry::Created CRegistry::CreateEx(const std::u16string& path) const {
  Created created;
  RegistryApi::Key key = 0;
  std::int32_t code = RegistryApi::kSuccess;
  try {
    code = Api().CreateKey(root_, path, kCreateAccess, key, created.disposition);
  } catch (const AutomationError& error) {
    RaiseUnknown(error.number());
  } catch (const std::bad_alloc&) {
    RaiseUnknown(static_cast<std::int32_t>(RuntimeError::OutOfMemory));
  }
  if (code == RegistryApi::kCannotCreateKey) {
    throw AutomationError(kCannotOpen, u"CreateEx", u"Cannot Open Parent Key");
  }
  if (code != RegistryApi::kSuccess) {
    RaiseUnknown(code);
  }
  created.handle = KeyHandle(Api(), key);
  return created;
}

KeyHandle CRegistry::OpenKey(std::uint32_t access) const {
  return Open(root_, key_, access);
}

const Entry& CRegistry::EntryAt(std::int16_t position) const {
  if (position < 0 || static_cast<std::size_t>(position) >= values_.size()) {
    throw AutomationError(RuntimeError::SubscriptOutOfRange);
  }
  return values_[static_cast<std::size_t>(position)];
}

}  // namespace registry
