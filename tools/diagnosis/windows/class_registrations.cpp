#include "diagnosis/windows/class_registrations.h"

#include <array>
#include <cstddef>
#include <optional>

#include "com/wide_text.h"
#include "com/win32.h"
#include "typelib/Vilnor.h"

namespace diagnosis {
namespace {

constexpr const wchar_t* kClasses = L"Software\\Classes\\";
constexpr const wchar_t* kProgramId = L"Vilnor.BVilnor";

// The unnamed text of a key; nothing if there is none.
std::optional<std::wstring> TextOf(HKEY root, const std::wstring& key) {
  std::wstring text;
  DWORD bytes = 0;
  LSTATUS status = ERROR_MORE_DATA;
  while (status == ERROR_MORE_DATA) {
    text.resize(bytes / sizeof(wchar_t) + 1);
    bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    status = RegGetValueW(root, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text.data(), &bytes);
  }
  return status == ERROR_SUCCESS ? std::optional<std::wstring>(text.c_str()) : std::nullopt;
}

std::wstring OwnClass() {
  constexpr int length = 39;
  std::array<wchar_t, length> text{};
  StringFromGUID2(CLSID_BVilnor, text.data(), length);
  return text.data();
}

std::optional<ClassRegistration> InRegistry(HKEY root, Origin origin) {
  const auto named = TextOf(root, std::wstring(kClasses) + kProgramId + L"\\CLSID");
  const auto path = TextOf(
      root, std::wstring(kClasses) + L"CLSID\\" + named.value_or(OwnClass()) + L"\\InprocServer32");
  if (!named && !path) {
    return std::nullopt;
  }
  return ClassRegistration{origin, com::FromWide(path.value_or(L""))};
}

// An activation context, activated on this thread while the object exists.
class ActiveContext {
 public:
  // Of a program's embedded manifest, otherwise of the one beside it.
  explicit ActiveContext(const std::wstring& program) {
    const std::wstring folder = program.substr(0, program.rfind(L'\\'));
    ACTCTXW request{};
    request.cbSize = sizeof request;
    request.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_ASSEMBLY_DIRECTORY_VALID;
    request.lpSource = program.c_str();
    request.lpAssemblyDirectory = folder.c_str();
    request.lpResourceName = MAKEINTRESOURCEW(1);  // of a program's manifest
    context_ = CreateActCtxW(&request);
    if (context_ == INVALID_HANDLE_VALUE) {
      const std::wstring beside = program + L".manifest";
      request.dwFlags = ACTCTX_FLAG_ASSEMBLY_DIRECTORY_VALID;
      request.lpSource = beside.c_str();
      context_ = CreateActCtxW(&request);
    }
    active_ = context_ != INVALID_HANDLE_VALUE && ActivateActCtx(context_, &cookie_) != FALSE;
  }
  ActiveContext(const ActiveContext&) = delete;
  ActiveContext& operator=(const ActiveContext&) = delete;
  ~ActiveContext() {
    if (active_) {
      DeactivateActCtx(0, cookie_);
    }
    if (context_ != INVALID_HANDLE_VALUE) {
      ReleaseActCtx(context_);
    }
  }

  bool active() const { return active_; }
  // Information on a part of the context, as a record in memory of its own.
  std::vector<std::byte> Query(void* index, ULONG kind) const {
    SIZE_T size = 0;
    QueryActCtxW(0, context_, index, kind, nullptr, 0, &size);
    std::vector<std::byte> memory(size);
    if (size == 0 ||
        QueryActCtxW(0, context_, index, kind, memory.data(), memory.size(), &size) == FALSE) {
      memory.clear();
    }
    // The record points into itself, so it must not be copied.
    return memory;
  }

 private:
  HANDLE context_ = INVALID_HANDLE_VALUE;
  ULONG_PTR cookie_ = 0;
  bool active_ = false;
};

// The roster index of the assembly that has the class; 0 if none has.
ULONG AssemblyWithClass() {
  ACTCTX_SECTION_KEYED_DATA data{};
  data.cbSize = sizeof data;
  const BOOL found = FindActCtxSectionGuid(
      0, nullptr, ACTIVATION_CONTEXT_SECTION_COM_SERVER_REDIRECTION, &CLSID_BVilnor, &data);
  return found == FALSE ? 0 : data.ulAssemblyRosterIndex;
}

std::wstring FolderOf(const wchar_t* path) {
  const std::wstring text = path == nullptr ? L"" : path;
  return text.substr(0, text.rfind(L'\\') + 1);
}

// The assembly's DLL, beside its manifest.
std::u16string PathIn(const ActiveContext& context, ULONG assembly) {
  auto described = context.Query(&assembly, AssemblyDetailedInformationInActivationContext);
  ACTIVATION_CONTEXT_QUERY_INDEX index{};
  index.ulAssemblyIndex = assembly - 1;
  auto file = context.Query(&index, FileInformationInAssemblyOfAssemblyInActivationContext);
  if (described.empty() || file.empty()) {
    return {};
  }
  const auto& detailed =
      *reinterpret_cast<const ACTIVATION_CONTEXT_ASSEMBLY_DETAILED_INFORMATION*>(described.data());
  const auto& dll = *reinterpret_cast<const ASSEMBLY_FILE_DETAILED_INFORMATION*>(file.data());
  return com::FromWide(FolderOf(detailed.lpAssemblyManifestPath) +
                       (dll.lpFileName == nullptr ? L"" : dll.lpFileName));
}

std::optional<ClassRegistration> InManifest(const std::u16string& program) {
  const ActiveContext context(com::Wide(program));
  const ULONG assembly = context.active() ? AssemblyWithClass() : 0;
  if (assembly == 0) {
    return std::nullopt;
  }
  return ClassRegistration{Origin::HostManifest, PathIn(context, assembly)};
}

}  // namespace

std::vector<ClassRegistration> ClassRegistrations(const std::vector<std::u16string>& hostPrograms) {
  std::vector<ClassRegistration> registrations;
  const auto add = [&](const std::optional<ClassRegistration>& found) {
    if (found) {
      registrations.push_back(*found);
    }
  };
  for (const std::u16string& program : hostPrograms) {
    if (registrations.empty()) {
      add(InManifest(program));
    }
  }
  add(InRegistry(HKEY_CURRENT_USER, Origin::User));
  add(InRegistry(HKEY_LOCAL_MACHINE, Origin::Machine));
  return registrations;
}

}  // namespace diagnosis
