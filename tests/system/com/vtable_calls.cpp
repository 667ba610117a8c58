#include "system/com/vtable_calls.h"

#include <cstdint>

namespace system_tests {
namespace {

// The interface as laid out in its vtable.
com::ComPtr<ITypeInfo> VtableOf(IDispatch& object) {
  com::ComPtr<ITypeInfo> dispatched;
  com::ComPtr<ITypeInfo> vtable;
  HREFTYPE reference = 0;
  object.GetTypeInfo(0, LOCALE_USER_DEFAULT, dispatched.Receive());
  if (SUCCEEDED(dispatched->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference))) {
    dispatched->GetRefTypeInfo(reference, vtable.Receive());
  }
  return vtable;
}

const void* ArgumentFor(const FUNCDESC& method, std::size_t position, const Room& room, Given given,
                        BSTR text) {
  if (method.lprgelemdescParam[position].tdesc.vt == VT_BSTR) {
    return text;
  }
  const bool isResult =
      HasResult(method) && position + 1 == static_cast<std::size_t>(method.cParams);
  return given == Given::References || isResult ? &room : nullptr;
}

}  // namespace

HRESULT CallSlot(IUnknown& object, const FUNCDESC& method, Rooms& rooms, Given given, BSTR text) {
  std::array<VARIANT, kMostArguments> arguments{};
  std::array<VARIANT*, kMostArguments> references{};
  std::array<VARTYPE, kMostArguments> types{};
  const auto count = static_cast<std::size_t>(method.cParams);
  for (std::size_t i = 0; i < count; ++i) {
    const void* argument = ArgumentFor(method, i, rooms[i], given, text);
    types[i] = VT_I4;
    V_VT(&arguments[i]) = VT_I4;
    V_I4(&arguments[i]) = static_cast<LONG>(reinterpret_cast<std::intptr_t>(argument));
    references[i] = &arguments[i];
  }
  VARIANT result{};
  const HRESULT called =
      DispCallFunc(&object, static_cast<ULONG_PTR>(method.oVft), CC_STDCALL, VT_ERROR,
                   static_cast<UINT>(count), types.data(), references.data(), &result);
  return FAILED(called) ? called : V_ERROR(&result);
}

bool HasResult(const FUNCDESC& method) {
  return method.cParams > 0 && (method.lprgelemdescParam[method.cParams - 1].paramdesc.wParamFlags &
                                PARAMFLAG_FRETVAL) != 0;
}

int ForEachMethod(IDispatch& object, const std::function<void(const FUNCDESC&)>& visit) {
  const auto vtable = VtableOf(object);
  TYPEATTR* attributes = nullptr;
  vtable->GetTypeAttr(&attributes);
  const int count = attributes->cFuncs;
  vtable->ReleaseTypeAttr(attributes);
  for (int i = 0; i < count; ++i) {
    FUNCDESC* method = nullptr;
    vtable->GetFuncDesc(static_cast<UINT>(i), &method);
    visit(*method);
    vtable->ReleaseFuncDesc(method);
  }
  return count;
}

}  // namespace system_tests
