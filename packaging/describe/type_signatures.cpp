#include "describe/type_signatures.h"

#include <cstddef>
#include <map>
#include <sstream>

#include "windows/com_error.h"

namespace description {
namespace {

using windows::Bstr;
using windows::Check;
using windows::ComPtr;

std::string TypeName(const TYPEDESC& type) {
  static const std::map<VARTYPE, std::string> names = {
      {VT_I2, "I2"},          {VT_I4, "I4"},     {VT_BSTR, "BSTR"},
      {VT_BOOL, "BOOL"},      {VT_VOID, "void"}, {VT_DISPATCH, "IDispatch*"},
      {VT_HRESULT, "HRESULT"}};
  if (type.vt == VT_PTR) {
    return TypeName(*type.lptdesc) + "*";
  }
  const auto found = names.find(type.vt);
  return found == names.end() ? "type " + std::to_string(type.vt) : found->second;
}

std::string Direction(USHORT flags) {
  std::string text;
  text += (flags & PARAMFLAG_FIN) != 0 ? "in" : "";
  text += (flags & PARAMFLAG_FOUT) != 0 ? "out" : "";
  text += (flags & PARAMFLAG_FRETVAL) != 0 ? "ret" : "";
  text += (flags & PARAMFLAG_FOPT) != 0 ? "opt" : "";
  return text;
}

std::string Signature(ITypeInfo& info, const FUNCDESC& function) {
  std::vector<BSTR> raw(static_cast<std::size_t>(function.cParams) + 1);
  UINT count = 0;
  Check(info.GetNames(function.memid, raw.data(), static_cast<UINT>(raw.size()), &count));
  std::vector<Bstr> names(raw.size());
  for (std::size_t i = 0; i < count; ++i) {
    *names[i].Receive() = raw[i];
  }
  std::ostringstream text;
  text << function.oVft / static_cast<int>(sizeof(void*)) << ' ' << std::hex << function.memid
       << ' ' << Narrow(names.front()) << '(';
  for (SHORT i = 0; i < function.cParams; ++i) {
    const ELEMDESC& parameter = function.lprgelemdescParam[i];
    text << (i == 0 ? "" : ", ") << Direction(parameter.paramdesc.wParamFlags) << ' '
         << TypeName(parameter.tdesc) << ' ' << Narrow(names[static_cast<std::size_t>(i) + 1]);
  }
  text << ')';
  return text.str();
}

}  // namespace

std::string Narrow(const Bstr& text) {
  const std::u16string wide = text.Text();
  return {wide.begin(), wide.end()};
}

std::vector<std::string> Signatures(ITypeInfo& info) {
  TYPEATTR* attributes = nullptr;
  Check(info.GetTypeAttr(&attributes));
  const UINT functions = attributes->cFuncs;
  info.ReleaseTypeAttr(attributes);
  std::vector<std::string> signatures;
  for (UINT i = 0; i < functions; ++i) {
    FUNCDESC* function = nullptr;
    Check(info.GetFuncDesc(i, &function));
    signatures.push_back(Signature(info, *function));
    info.ReleaseFuncDesc(function);
  }
  return signatures;
}

ComPtr<ITypeInfo> VtableOf(ITypeInfo& info) {
  constexpr UINT kVtableOfDual = static_cast<UINT>(-1);
  HREFTYPE reference = 0;
  ComPtr<ITypeInfo> vtable;
  if (SUCCEEDED(info.GetRefTypeOfImplType(kVtableOfDual, &reference))) {
    Check(info.GetRefTypeInfo(reference, vtable.Receive()));
  }
  return vtable;
}

std::vector<std::string> InterfacesOf(ITypeInfo& info) {
  TYPEATTR* attributes = nullptr;
  Check(info.GetTypeAttr(&attributes));
  const UINT count = attributes->cImplTypes;
  info.ReleaseTypeAttr(attributes);
  std::vector<std::string> interfaces;
  for (UINT i = 0; i < count; ++i) {
    INT flags = 0;
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> implemented;
    Bstr name;
    Check(info.GetImplTypeFlags(i, &flags));
    Check(info.GetRefTypeOfImplType(i, &reference));
    Check(info.GetRefTypeInfo(reference, implemented.Receive()));
    Check(implemented->GetDocumentation(MEMBERID_NIL, name.Receive(), nullptr, nullptr, nullptr));
    interfaces.push_back(std::to_string(flags) + " " + Narrow(name));
  }
  return interfaces;
}

}  // namespace description
