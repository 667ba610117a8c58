// When the DLL may be unloaded. Each test loads its own copy of it.
#include <gmock/gmock.h>

#include "system/com/component.h"
#include "system/com/copied_dll.h"
#include "system/com/event_sink.h"
#include "system/com/host_registration.h"

namespace system_tests {
namespace {

class Unloading : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(copy_.loaded());
    ASSERT_EQ(copy_.CanUnloadNow(), S_OK);
  }

  ComPtr<IClassFactory> Factory() const {
    ComPtr<IClassFactory> factory;
    copy_.GetClassObject(CLSID_BVilnor, IID_IClassFactory, factory.ReceiveVoid());
    return factory;
  }

  ComPtr<_BVilnor> Session() const {
    ComPtr<_BVilnor> session;
    Factory()->CreateInstance(nullptr, IID__BVilnor, session.ReceiveVoid());
    return session;
  }

  CopiedDll file_{DllPath()};
  Module copy_{file_.path()};
};

TEST_F(Unloading, DllStaysUntilItsLastObjectIsReleased) {
  auto first = Session();
  auto second = Session();
  ASSERT_TRUE(first);
  ASSERT_TRUE(second);
  EXPECT_EQ(copy_.CanUnloadNow(), S_FALSE);
  second = {};
  EXPECT_EQ(copy_.CanUnloadNow(), S_FALSE);
  first = {};
  // One window still exists, whose handle was replaced by that of the second object.
  EndNotificationWindows();
  EXPECT_EQ(copy_.CanUnloadNow(), S_OK);
}

TEST_F(Unloading, DllStaysWhileAWindowOutlivesItsObject) {
  { const auto sessions = std::array{Session(), Session()}; }
  EXPECT_EQ(NotificationWindows(), 1);
  EXPECT_EQ(copy_.CanUnloadNow(), S_FALSE);
  EndNotificationWindows();
  EXPECT_EQ(copy_.CanUnloadNow(), S_OK);
}

TEST_F(Unloading, DllStaysWhileAClassFactoryLives) {
  auto factory = Factory();
  ASSERT_TRUE(factory);
  EXPECT_EQ(copy_.CanUnloadNow(), S_FALSE);
  factory = {};
  EXPECT_EQ(copy_.CanUnloadNow(), S_OK);
}

TEST_F(Unloading, DllStaysUntilEveryLockIsReleased) {
  Factory()->LockServer(TRUE);
  Factory()->LockServer(TRUE);
  EXPECT_EQ(copy_.CanUnloadNow(), S_FALSE);
  Factory()->LockServer(FALSE);
  EXPECT_EQ(copy_.CanUnloadNow(), S_FALSE);
  Factory()->LockServer(FALSE);
  EXPECT_EQ(copy_.CanUnloadNow(), S_OK);
}

TEST_F(Unloading, DllStaysWhileAConnectionPointOrEnumeratorLives) {
  auto point = EventsOf(*Session().get());
  ASSERT_TRUE(point);
  EXPECT_EQ(copy_.CanUnloadNow(), S_FALSE);
  ComPtr<IEnumConnections> connections;
  ASSERT_EQ(point->EnumConnections(connections.Receive()), S_OK);
  point = {};
  EXPECT_EQ(copy_.CanUnloadNow(), S_FALSE);
  connections = {};
  EXPECT_EQ(copy_.CanUnloadNow(), S_OK);
}

TEST_F(Unloading, DllStaysForeverOnceANotificationHasArrived) {
  constexpr UINT kNewCaseReady = 10002;
  // There is no result file, so the notification has no other effect.
  const HostRegistration host;
  auto session = Session();
  ASSERT_TRUE(session);
  ASSERT_EQ(NotificationWindows(), 1);
  PostMessageA(NotificationWindowOf(GetCurrentThreadId()), kNewCaseReady, 4711, 0);
  EXPECT_TRUE(PumpUntil([] { return NotificationWindows() == 2; }));
  session = {};
  EndNotificationWindows();
  EXPECT_EQ(copy_.CanUnloadNow(), S_FALSE);
}

}  // namespace
}  // namespace system_tests
