#include "system/com/event_sink.h"

namespace system_tests {

HRESULT EventSink::QueryInterface(REFIID interfaceId, void** object) {
  const bool known =
      interfaceId == IID_IUnknown || interfaceId == IID_IDispatch || interfaceId == DIID___BVilnor;
  *object = known ? this : nullptr;
  if (!known) {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

HRESULT EventSink::Invoke(DISPID member, REFIID /*reserved*/, LCID /*locale*/, WORD /*flags*/,
                          DISPPARAMS* /*parameters*/, VARIANT* /*result*/, EXCEPINFO* /*exception*/,
                          UINT* /*argumentError*/) {
  raised.push_back({.id = member, .thread = GetCurrentThreadId()});
  if (atEvent) {
    atEvent();
  }
  return answer;
}

ComPtr<IConnectionPoint> EventsOf(IUnknown& session) {
  ComPtr<IConnectionPointContainer> container;
  ComPtr<IConnectionPoint> point;
  if (SUCCEEDED(session.QueryInterface(IID_IConnectionPointContainer, container.ReceiveVoid()))) {
    container->FindConnectionPoint(DIID___BVilnor, point.Receive());
  }
  return point;
}

}  // namespace system_tests
