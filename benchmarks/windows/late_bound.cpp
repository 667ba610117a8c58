#include "windows/late_bound.h"

#include "automation/text.h"
#include "com/bstr.h"
#include "com/wide_text.h"
#include "windows/harness.h"

namespace benchmarks {
namespace {

using com::ComPtr;

[[noreturn]] void FailAt(const wchar_t* name, HRESULT result, BSTR description) {
  Fail("late bound " + automation::ToUtf8(com::FromWide(name)) + ": " + std::to_string(result) +
       " " + automation::ToUtf8(com::TextOf(description)));
}

}  // namespace

LateBound LateBound::Create(const wchar_t* programId) {
  CLSID classId{};
  HRESULT result = CLSIDFromProgID(programId, &classId);
  ComPtr<IDispatch> object;
  if (SUCCEEDED(result)) {
    result = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                              object.ReceiveVoid());
  }
  if (FAILED(result)) {
    FailAt(programId, result, nullptr);
  }
  return LateBound(std::move(object));
}

ComPtr<IDispatch> LateBound::ObjectIn(const VARIANT& variant) {
  if (V_VT(&variant) != VT_DISPATCH || V_DISPATCH(&variant) == nullptr) {
    Fail("late bound: an object was expected");
  }
  return ComPtr<IDispatch>(V_DISPATCH(&variant));
}

void LateBound::Invoke(const wchar_t* name, WORD kind, std::span<VARIANT> arguments,
                       com::Variant* result) const {
  auto* asked = const_cast<OLECHAR*>(name);
  DISPID member = DISPID_UNKNOWN;
  HRESULT done = object_->GetIDsOfNames(IID_NULL, &asked, 1, GetUserDefaultLCID(), &member);
  if (FAILED(done)) {
    FailAt(name, done, nullptr);
  }
  DISPID put = DISPID_PROPERTYPUT;
  const bool puts = kind == DISPATCH_PROPERTYPUT;
  DISPPARAMS parameters{.rgvarg = arguments.data(),
                        .rgdispidNamedArgs = puts ? &put : nullptr,
                        .cArgs = static_cast<UINT>(arguments.size()),
                        .cNamedArgs = puts ? 1U : 0U};
  EXCEPINFO exception{};
  done = object_->Invoke(member, IID_NULL, GetUserDefaultLCID(), kind, &parameters,
                         result == nullptr ? nullptr : result->Receive(), &exception, nullptr);
  if (FAILED(done)) {
    FailAt(name, done, exception.bstrDescription);
  }
}

}  // namespace benchmarks
