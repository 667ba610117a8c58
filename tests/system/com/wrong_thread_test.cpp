// A host that passes a raw pointer to another thread without marshalling.
#include <gmock/gmock.h>

#include "system/com/component.h"
#include "system/com/database.h"
#include "system/com/event_sink.h"
#include "system/com/thread.h"
#include "system/com/vtable_calls.h"

namespace system_tests {
namespace {

template <class Call>
auto OnAnotherThread(Call&& call) {
  decltype(call()) result{};
  {
    const Thread other([&] { result = call(); });
  }
  return result;
}

class WrongThread : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(session_);
    Init(*session_.get(), database_.ConnectionString());
  }

  // Calls every method of the object's dual interface. Returns how many there are.
  static int ExpectAllToRefuse(IDispatch& object) {
    return ForEachMethod(object, [&](const FUNCDESC& method) {
      Rooms rooms;
      EXPECT_EQ(OnAnotherThread([&] { return CallSlot(object, method, rooms); }),
                RPC_E_WRONG_THREAD)
          << "slot " << method.oVft / static_cast<int>(sizeof(void*));
    });
  }

  TestDatabase database_;
  ComPtr<_BVilnor> session_ = NewBVilnor();
};

TEST_F(WrongThread, SessionMethodsRefuseAnotherThread) {
  EXPECT_EQ(ExpectAllToRefuse(*session_.get()), 17);
}

TEST_F(WrongThread, DatabaseObjectMethodsRefuseAnotherThread) {
  ComPtr<_DBVilnor> object;
  ASSERT_EQ(CoCreateInstance(CLSID_DBVilnor, nullptr, CLSCTX_INPROC_SERVER, IID__DBVilnor,
                             object.ReceiveVoid()),
            S_OK);
  EXPECT_EQ(ExpectAllToRefuse(*object.get()), 24);
  // The right thread may still call it.
  long pid = 5012;
  Bstr user;
  EXPECT_EQ(object->GetVilnorUserByPID(&pid, user.Receive()), S_OK);
  EXPECT_EQ(user.Text(), u"bjorn.ek");
}

TEST_F(WrongThread, LateBoundCallsRefuseAnotherThread) {
  UINT count = 0;
  EXPECT_EQ(OnAnotherThread([&] { return session_->GetTypeInfoCount(&count); }),
            RPC_E_WRONG_THREAD);
  ComPtr<ITypeInfo> info;
  EXPECT_EQ(OnAnotherThread(
                [&] { return session_->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Receive()); }),
            RPC_E_WRONG_THREAD);
  std::wstring name = L"OpenVilnor";
  LPOLESTR names = name.data();
  DISPID id = 0x60030006;
  EXPECT_EQ(OnAnotherThread([&] {
              return session_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
            }),
            RPC_E_WRONG_THREAD);
  DISPPARAMS none{};
  EXPECT_EQ(OnAnotherThread([&] {
              return session_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none,
                                      nullptr, nullptr, nullptr);
            }),
            RPC_E_WRONG_THREAD);
}

TEST_F(WrongThread, ConnectionPointsRefuseAnotherThread) {
  ComPtr<IConnectionPointContainer> container;
  ASSERT_EQ(session_->QueryInterface(IID_IConnectionPointContainer, container.ReceiveVoid()), S_OK);
  const auto point = EventsOf(*session_.get());
  EventSink sink;
  DWORD cookie = 0;
  ASSERT_EQ(point->Advise(&sink, &cookie), S_OK);
  const auto refused = [](auto&& call) { EXPECT_EQ(OnAnotherThread(call), RPC_E_WRONG_THREAD); };
  ComPtr<IConnectionPoint> found;
  ComPtr<IEnumConnectionPoints> points;
  ComPtr<IEnumConnections> connections;
  ComPtr<IConnectionPointContainer> home;
  IID interfaceId = {};
  DWORD another = 0;
  refused([&] { return container->FindConnectionPoint(DIID___BVilnor, found.Receive()); });
  refused([&] { return container->EnumConnectionPoints(points.Receive()); });
  refused([&] { return point->GetConnectionInterface(&interfaceId); });
  refused([&] { return point->GetConnectionPointContainer(home.Receive()); });
  refused([&] { return point->EnumConnections(connections.Receive()); });
  refused([&] { return point->Advise(&sink, &another); });
  refused([&] { return point->Unadvise(cookie); });
  EXPECT_EQ(another, 0U);
  EXPECT_EQ(point->Unadvise(cookie), S_OK);
}

TEST_F(WrongThread, AnotherThreadMayCountReferencesAndQueryInterfaces) {
  ComPtr<IDispatch> found;
  EXPECT_EQ(
      OnAnotherThread([&] { return session_->QueryInterface(IID_IDispatch, found.ReceiveVoid()); }),
      S_OK);
  EXPECT_TRUE(found);
  EXPECT_GT(OnAnotherThread([&] { return session_->AddRef(); }), 1U);
  EXPECT_GE(OnAnotherThread([&] { return session_->Release(); }), 1U);
}

// The window, settings and connection do not belong to that thread.
TEST_F(WrongThread, LastReleaseOnAnotherThreadLeavesTheObjectAndItsWindow) {
  ASSERT_EQ(NotificationWindows(), 1);
  auto* const session = session_.Detach();
  EXPECT_EQ(OnAnotherThread([&] { return session->Release(); }), 0U);
  EXPECT_EQ(NotificationWindows(), 1);
}

}  // namespace
}  // namespace system_tests
