// The connection point for the events of a BVilnor.
#pragma once

#include <map>
#include <utility>

#include "com/com_ptr.h"
#include "com/failure.h"
#include "com/win32.h"
#include "vilnor_dll/home_thread.h"
#include "vilnor_dll/interfaces.h"

namespace vilnor_dll {

// The connection point for __BVilnor, part of the object whose events it raises. It has its own
// identity but shares the object's reference count. Like the object, it returns RPC_E_WRONG_THREAD
// on any other thread than its own.
class ConnectionPoint : public IConnectionPoint {
 public:
  // `container` is the object that this is part of.
  explicit ConnectionPoint(IConnectionPointContainer& container) : container_(container) {}
  ConnectionPoint(const ConnectionPoint&) = delete;
  ConnectionPoint& operator=(const ConnectionPoint&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return container_.AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return container_.Release(); }

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* interfaceId) override;
  HRESULT STDMETHODCALLTYPE
  GetConnectionPointContainer(IConnectionPointContainer** container) override;
  // CONNECT_E_CANNOTCONNECT for a sink without the event interface.
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

  // Raises an event without arguments on each sink that is connected now, in order. A sink may
  // connect, disconnect itself or others, or release the object meanwhile; one that is disconnected
  // before its turn is skipped. The sinks' results are ignored.
  void Raise(DISPID event);

 private:
  template <class Body>
  HRESULT Call(Body&& body) {
    return home_.IsCurrent()
               ? com::Guarded({IID_IConnectionPoint, kSource}, std::forward<Body>(body))
               : RPC_E_WRONG_THREAD;
  }

  const HomeThread home_;
  IConnectionPointContainer& container_;
  // By cookie, in the order of connection.
  std::map<DWORD, com::ComPtr<IDispatch>> sinks_;
  DWORD lastCookie_ = 0;
};

}  // namespace vilnor_dll
