#include "diagnosis/core/rehearsal.h"

#include "automation/automation_error.h"

namespace diagnosis {
namespace {

using automation::AutomationError;
using automation::RuntimeError;

constexpr std::uint32_t kRightToCreateSubkeys = 0x04;
constexpr std::uint32_t kCreated = 1;
constexpr std::uint32_t kOpenedExisting = 2;
// Stands for a key that would just have been created: without values and subkeys.
constexpr platform::RegistryApi::Key kNewKey = ~platform::RegistryApi::Key{0};

std::u16string ParentOf(const std::u16string& path) {
  const std::size_t end = path.rfind(u'\\');
  return end == std::u16string::npos ? std::u16string() : path.substr(0, end);
}

[[noreturn]] void Refuse() {
  throw AutomationError(RuntimeError::PermissionDenied);
}

}  // namespace

std::int32_t RehearsedRegistry::OpenKey(Key parent, const std::u16string& path,
                                        std::uint32_t access, Key& opened) {
  return parent == kNewKey ? kFileNotFound : real_.OpenKey(parent, path, access, opened);
}

std::int32_t RehearsedRegistry::CreateKey(Key parent, const std::u16string& path,
                                          std::uint32_t access, Key& opened,
                                          std::uint32_t& disposition) {
  const std::int32_t code = OpenKey(parent, path, access, opened);
  disposition = kOpenedExisting;
  if (code != kFileNotFound) {
    return code;
  }
  missing_.push_back(path);
  if (!MayCreate(parent, path)) {
    return kAccessDenied;
  }
  created_.push_back(path);
  opened = kNewKey;
  disposition = kCreated;
  return kSuccess;
}

// The system only asks the nearest existing ancestor: what is created on the way belongs to the
// user.
bool RehearsedRegistry::MayCreate(Key parent, std::u16string path) {
  std::int32_t code = kFileNotFound;
  while (code == kFileNotFound && !path.empty()) {
    path = ParentOf(path);
    Key key = 0;
    code = OpenKey(parent, path, kRightToCreateSubkeys, key);
    if (code == kSuccess) {
      CloseKey(key);
    }
  }
  return code == kSuccess;
}

std::int32_t RehearsedRegistry::QueryLimits(Key key, Limits& limits) {
  if (key != kNewKey) {
    return real_.QueryLimits(key, limits);
  }
  limits = {};
  return kSuccess;
}

std::int32_t RehearsedRegistry::EnumValue(Key key, std::uint32_t index, const Limits& limits,
                                          ValueEntry& entry) {
  return key == kNewKey ? kNoMoreItems : real_.EnumValue(key, index, limits, entry);
}

std::int32_t RehearsedRegistry::EnumKey(Key key, std::uint32_t index, const Limits& limits,
                                        std::u16string& name) {
  return key == kNewKey ? kNoMoreItems : real_.EnumKey(key, index, limits, name);
}

std::int32_t RehearsedRegistry::SetTextValue(Key /*key*/, const std::u16string& /*name*/,
                                             const std::u16string& /*text*/) {
  return kAccessDenied;
}

std::int32_t RehearsedRegistry::DeleteValue(Key /*key*/, const std::u16string& /*name*/) {
  return kAccessDenied;
}

std::int32_t RehearsedRegistry::DeleteKey(Key /*parent*/, const std::u16string& /*name*/) {
  return kAccessDenied;
}

std::int32_t RehearsedRegistry::CloseKey(Key key) {
  return key == kNewKey ? kSuccess : real_.CloseKey(key);
}

bool RehearsedFiles::FolderExists(const std::u16string& path) {
  asked_ = path;
  return real_.FolderExists(path);
}

void RehearsedFiles::CreateFolder(const std::u16string& path) {
  if (real_.StampOf(path).Exists()) {
    throw AutomationError(RuntimeError::FileAlreadyExists);
  }
  // "C:\" is found with its separator only.
  if (!real_.FolderExists(ParentOf(path) + u"\\")) {
    throw AutomationError(RuntimeError::PathNotFound);
  }
  created_ = path;
}

std::int64_t RehearsedFiles::FileLength(const std::u16string& path) {
  return real_.FileLength(path);
}

platform::FileStamp RehearsedFiles::StampOf(const std::u16string& path) noexcept {
  return real_.StampOf(path);
}

void RehearsedFiles::DeleteFile(const std::u16string& /*path*/) {
  Refuse();
}

void RehearsedFiles::RenameFile(const std::u16string& /*path*/, const std::u16string& /*newPath*/) {
  Refuse();
}

void RehearsedFiles::ReplaceContents(const std::u16string& /*path*/, std::string_view /*bytes*/) {
  Refuse();
}

std::u16string RehearsedSettings::Get(const std::u16string& application,
                                      const std::u16string& section, const std::u16string& key) {
  return real_.Get(application, section, key);
}

void RehearsedSettings::Save(const std::u16string& /*application*/,
                             const std::u16string& /*section*/, const std::u16string& /*key*/,
                             const std::u16string& /*text*/) {
  wouldSave_ = true;
}

platform::Answer RehearsedDialogs::Show(const platform::MessageBox& box) {
  std::u16string text;
  for (const char16_t unit : box.text) {
    if (unit >= u' ') {
      text += unit;
    } else if (!text.ends_with(u' ')) {
      text += u' ';
    }
  }
  boxes_.push_back(text);
  return box.buttons == platform::Buttons::Ok ? platform::Answer::Ok : platform::Answer::No;
}

void NoProcesses::Start(const std::u16string& /*commandLine*/) {
  Refuse();
}

std::int32_t NoWindows::RegisterClass(const platform::WindowClass& /*windowClass*/) {
  return 0;
}

bool NoWindows::UnregisterClass(const std::u16string& /*className*/, std::int32_t /*instance*/) {
  return false;
}

platform::WindowHandle NoWindows::CreateWindow(const platform::WindowDescription& /*description*/) {
  return 0;
}

bool NoWindows::DestroyWindow(platform::WindowHandle /*window*/) {
  return false;
}

std::int32_t NoWindows::DefaultProcedure(platform::WindowHandle /*window*/,
                                         std::int32_t /*message*/, std::int32_t /*wParam*/,
                                         std::int32_t /*lParam*/) {
  return 0;
}

void NoTrace::Write(const platform::TraceLine& /*line*/) noexcept {}

Rehearsal::Rehearsal(platform::Platform& real)
    : real_(real),
      registry_(real.registry),
      files_(real.files),
      settings_(real.userSettings),
      platform_{.clock = real.clock,
                .locale = real.locale,
                .dialogs = dialogs_,
                .processes = processes_,
                .files = files_,
                .userSettings = settings_,
                .registry = registry_,
                .database = real.database,
                .resultDocuments = real.resultDocuments,
                .windows = windows_,
                .trace = trace_} {
  platform::Use(platform_);
}

Rehearsal::~Rehearsal() {
  platform::Use(real_);
}

std::u16string Rehearsal::Boxes() const {
  std::u16string joined;
  for (const std::u16string& box : dialogs_.boxes()) {
    joined += (joined.empty() ? u"" : u" ") + box;
  }
  return joined;
}

}  // namespace diagnosis
