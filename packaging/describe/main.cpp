// Describe.exe: facts about the component that a release needs and only its own code knows.
//   Describe registration PATH    what regsvr32 enters for a DLL at PATH: KEY, NAME, TEXT, with
//   tabs
//                                 between; the keys are below HKEY_LOCAL_MACHINE\Software\Classes
//   Describe interfaces DLL       what hosts are built against, as the DLL's type library has it
#include <cstdio>
#include <exception>
#include <string>
#include <string_view>

#include "automation/text.h"
#include "com/com_error.h"
#include "com/wide_text.h"
#include "describe/type_signatures.h"
#include "vilnor_dll/registration.h"

namespace {

using com::Check;
using com::ComPtr;

void Print(const std::string& line) {
  std::printf("%s\n", line.c_str());
}

std::string Utf8(std::wstring_view text) {
  return automation::ToUtf8(com::FromWide(text));
}

void PrintRegistration(const std::wstring& path) {
  for (const auto& part : vilnor_dll::Registration(path)) {
    for (const auto& entry : part.texts) {
      Print(Utf8(entry.key) + '\t' + Utf8(entry.name) + '\t' + Utf8(entry.text));
    }
  }
}

// "{identifier} Name"
template <class Described>
std::string Titled(Described& described, REFGUID identifier, MEMBERID member) {
  com::Bstr name;
  Check(described.GetDocumentation(member, name.Receive(), nullptr, nullptr, nullptr));
  return Utf8(com::GuidText(identifier)) + ' ' + description::Narrow(name);
}

void PrintType(ITypeInfo& info) {
  TYPEATTR* attributes = nullptr;
  Check(info.GetTypeAttr(&attributes));
  const TYPEKIND kind = attributes->typekind;
  const std::string title = Titled(info, attributes->guid, MEMBERID_NIL);
  info.ReleaseTypeAttr(attributes);
  const bool isClass = kind == TKIND_COCLASS;
  Print((isClass ? "class " : "interface ") + title);
  const ComPtr<ITypeInfo> vtable = description::VtableOf(info);
  const auto lines = isClass ? description::InterfacesOf(info)
                             : description::Signatures(vtable ? *vtable.get() : info);
  for (const std::string& line : lines) {
    Print("  " + line);
  }
}

void PrintInterfaces(const std::wstring& file) {
  ComPtr<ITypeLib> library;
  Check(LoadTypeLibEx(file.c_str(), REGKIND_NONE, library.Receive()));
  TLIBATTR* attributes = nullptr;
  Check(library->GetLibAttr(&attributes));
  Print("library " + Titled(*library.get(), attributes->guid, -1) + ' ' +
        std::to_string(attributes->wMajorVerNum) + '.' + std::to_string(attributes->wMinorVerNum) +
        ' ' + std::to_string(attributes->lcid));
  library->ReleaseTLibAttr(attributes);
  for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
    ComPtr<ITypeInfo> info;
    Check(library->GetTypeInfo(i, info.Receive()));
    PrintType(*info.get());
  }
}

}  // namespace

int wmain(int count, wchar_t** words) {
  const std::wstring_view what = count == 3 ? words[1] : L"";
  try {
    if (what == L"registration") {
      PrintRegistration(words[2]);
    } else if (what == L"interfaces") {
      PrintInterfaces(words[2]);
    } else {
      std::fputs("Describe registration PATH | Describe interfaces DLL\n", stderr);
      return 1;
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
