#include "vilnor_dll/connection_point.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "com/enumerator.h"
#include "platform/trace.h"

namespace vilnor_dll {
namespace {

using com::ComPtr;

struct Connection {
  DWORD cookie;
  ComPtr<IDispatch> sink;
};

struct Connections {
  using Interface = IEnumConnections;
  using Item = CONNECTDATA;
  using Stored = Connection;
  static CONNECTDATA Give(const Connection& connection) {
    return {.pUnk = ComPtr<IDispatch>(connection.sink).Detach(), .dwCookie = connection.cookie};
  }
};

}  // namespace

HRESULT ConnectionPoint::QueryInterface(REFIID interfaceId, void** object) {
  if (object == nullptr) {
    return E_POINTER;
  }
  const bool known = interfaceId == IID_IUnknown || interfaceId == IID_IConnectionPoint;
  *object = known ? static_cast<IConnectionPoint*>(this) : nullptr;
  if (!known) {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

HRESULT ConnectionPoint::GetConnectionInterface(IID* interfaceId) {
  if (interfaceId == nullptr) {
    return E_POINTER;
  }
  return Call([&] { *interfaceId = DIID___BVilnor; });
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
  if (container == nullptr) {
    return E_POINTER;
  }
  *container = nullptr;
  return Call([&] { *container = ComPtr<IConnectionPointContainer>(&container_).Detach(); });
}

HRESULT ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
  if (sink == nullptr || cookie == nullptr) {
    return E_POINTER;
  }
  *cookie = 0;
  return Call([&]() -> HRESULT {
    ComPtr<IDispatch> events;
    if (FAILED(sink->QueryInterface(DIID___BVilnor, events.ReceiveVoid()))) {
      return CONNECT_E_CANNOTCONNECT;
    }
    *cookie = ++lastCookie_;
    sinks_.emplace(*cookie, std::move(events));
    return S_OK;
  });
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) {
  return Call([&] {
    // Removed before its release, which may re-enter this object.
    const auto sink = sinks_.extract(cookie);
    return sink.empty() ? CONNECT_E_NOCONNECTION : S_OK;
  });
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** connections) {
  if (connections == nullptr) {
    return E_POINTER;
  }
  *connections = nullptr;
  return Call([&] {
    std::vector<Connection> snapshot;
    std::transform(sinks_.begin(), sinks_.end(), std::back_inserter(snapshot),
                   [](const auto& sink) {
                     return Connection{sink.first, sink.second};
                   });
    *connections = com::MakeObject<com::Enumerator<Connections>>(std::move(snapshot)).Detach();
  });
}

void ConnectionPoint::Raise(DISPID event) {
  const auto snapshot = sinks_;
  for (const auto& [cookie, sink] : snapshot) {
    if (!sinks_.contains(cookie)) {
      continue;
    }
    DISPPARAMS none{};
    const HRESULT result = sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                        &none, nullptr, nullptr, nullptr);
    if (FAILED(result)) {
      platform::Note(u"UpdateJournal", platform::Reason::SinkFailed, result);
    }
  }
}

}  // namespace vilnor_dll
