// The host's side of the events: an object that a connection point calls.
#pragma once

#include <functional>
#include <vector>

#include "system/com/component.h"

namespace system_tests {

// One event as it was received.
struct RaisedEvent {
  DISPID id = 0;
  DWORD thread = 0;
  bool operator==(const RaisedEvent&) const = default;
};

// Counts its references but is owned by the test, which checks that none is left.
class EventSink : public IDispatch {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override { return --references_; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* /*count*/) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*index*/, LCID /*locale*/,
                                        ITypeInfo** /*typeInfo*/) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* /*names*/, UINT /*count*/,
                                          LCID /*locale*/, DISPID* /*ids*/) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argumentError) override;

  ULONG references() const { return references_; }

  std::vector<RaisedEvent> raised;
  // Runs at each event, after it was recorded.
  std::function<void()> atEvent;
  // The host's return value for an event.
  HRESULT answer = S_OK;

 private:
  ULONG references_ = 0;
};

// The connection point of a session's events; null when there is none.
ComPtr<IConnectionPoint> EventsOf(IUnknown& session);

}  // namespace system_tests
