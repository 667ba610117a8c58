#include "event_sink.h"

#include "com/com_error.h"
#include "console.h"

namespace sample_host {
namespace {

constexpr DISPID kCloseVilnor = 1;
constexpr DISPID kUpdateJournal = 2;

}  // namespace

EventSink::EventSink(_BVilnor& source) {
  com::ComPtr<IConnectionPointContainer> container;
  com::CheckCall([&] {
    return source.QueryInterface(IID_IConnectionPointContainer, container.ReceiveVoid());
  });
  com::CheckCall(
      [&] { return container->FindConnectionPoint(DIID___BVilnor, connectionPoint_.Receive()); });
  com::CheckCall([&] { return connectionPoint_->Advise(this, &cookie_); });
}

EventSink::~EventSink() {
  connectionPoint_->Unadvise(cookie_);
}

STDMETHODIMP EventSink::QueryInterface(REFIID interfaceId, void** object) {
  const bool known = IsEqualIID(interfaceId, IID_IUnknown) ||
                     IsEqualIID(interfaceId, IID_IDispatch) ||
                     IsEqualIID(interfaceId, DIID___BVilnor);
  *object = known ? static_cast<IDispatch*>(this) : nullptr;
  return known ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP EventSink::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

STDMETHODIMP EventSink::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** typeInfo) {
  *typeInfo = nullptr;
  return E_NOTIMPL;
}

STDMETHODIMP EventSink::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* /*names*/, UINT /*count*/,
                                      LCID /*locale*/, DISPID* /*ids*/) {
  return E_NOTIMPL;
}

STDMETHODIMP EventSink::Invoke(DISPID id, REFIID /*reserved*/, LCID /*locale*/, WORD /*flags*/,
                               DISPPARAMS* /*arguments*/, VARIANT* /*result*/, EXCEPINFO* /*error*/,
                               UINT* /*argumentError*/) {
  switch (id) {
    case kUpdateJournal:
      Print(u"event UpdateJournal");
      return S_OK;
    case kCloseVilnor:
      Print(u"event CloseVilnor");
      return S_OK;
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

}  // namespace sample_host
