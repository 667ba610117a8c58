// Receives the component's events. A real host would refresh its journal view; this one prints a
// line.
#pragma once

#include "com/com_ptr.h"
#include "typelib/Vilnor.h"

namespace sample_host {

// Connected to a BVilnor for as long as it exists. The host owns it as a plain object: the
// component's references do not keep it alive, and its destructor disconnects it.
class EventSink : public IDispatch {
 public:
  // Raises an AutomationError if the component refuses the connection.
  explicit EventSink(_BVilnor& source);
  EventSink(const EventSink&) = delete;
  EventSink& operator=(const EventSink&) = delete;
  virtual ~EventSink();

  STDMETHODIMP QueryInterface(REFIID interfaceId, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return 1; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** typeInfo) override;
  STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                             DISPID* ids) override;
  // The component calls with the dispatch ids of __BVilnor.
  STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* arguments,
                      VARIANT* result, EXCEPINFO* error, UINT* argumentError) override;

 private:
  com::ComPtr<IConnectionPoint> connectionPoint_;
  DWORD cookie_ = 0;
};

}  // namespace sample_host
