// The DLL stays loaded from its first object on, and its use of resources does not grow.
#include <gmock/gmock.h>
#include <vector>

#include "system/com/component.h"
#include "system/com/copied_dll.h"
#include "system/com/host_registration.h"
#include "system/com/process_state.h"

namespace system_tests {
namespace {

constexpr UINT kNewCaseReady = 10002;

ComPtr<_BVilnor> NewSession(const Module& dll) {
  ComPtr<IClassFactory> factory;
  ComPtr<_BVilnor> session;
  if (dll.GetClassObject(CLSID_BVilnor, IID_IClassFactory, factory.ReceiveVoid()) == S_OK) {
    factory->CreateInstance(nullptr, IID__BVilnor, session.ReceiveVoid());
  }
  return session;
}

void DispatchMessages() {
  PumpUntil([] { return true; });
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    DispatchMessageW(&message);
  }
}

class Staying : public testing::Test {
 protected:
  // Loads the DLL, creates an object, releases it and frees the DLL.
  void Round() const {
    const Module dll(file_.path());
    ASSERT_TRUE(NewSession(dll));
    DispatchMessages();
  }

  // There is no result file, so a notification only reaches the window.
  const HostRegistration host_;
  const CopiedDll file_{DllPath()};
};

TEST_F(Staying, BroadcastIsAnsweredAfterTheDllWasFreed) {
  {
    const Module dll(file_.path());
    const auto session = NewSession(dll);
    ASSERT_TRUE(session);
    PostMessageA(NotificationWindowHandles().front(), kNewCaseReady, 4711, 0);
    ASSERT_TRUE(PumpUntil([] { return NotificationWindows() == 2; }));
  }
  file_.Free();
  const auto windows = NotificationWindowHandles();
  ASSERT_THAT(windows, testing::SizeIs(1));
  EXPECT_EQ(SendMessageA(windows.front(), WM_SETTINGCHANGE, 0, 0), 0);
  EXPECT_TRUE(file_.IsLoaded());
}

TEST_F(Staying, DllStaysLoadedFromItsFirstObjectOn) {
  {
    const Module dll(file_.path());
    ComPtr<IClassFactory> factory;
    EXPECT_EQ(dll.GetClassObject(CLSID_BVilnor, IID_IClassFactory, factory.ReceiveVoid()), S_OK);
    EXPECT_EQ(dll.CanUnloadNow(), S_FALSE);
  }
  EXPECT_FALSE(file_.IsLoaded());
  Round();
  EXPECT_TRUE(file_.IsLoaded());
}

TEST_F(Staying, ThirteenHundredLoadsLeakNoTlsIndexHandleOrMemory) {
  for (int i = 0; i < 3; ++i) {
    Round();
  }
  const int indexes = FreeTlsIndexes();
  const int handles = Handles();
  const std::size_t bytes = HeapBytes();
  constexpr int kRounds = 1300;
  for (int i = 3; i < kRounds; ++i) {
    Round();
  }
  EXPECT_EQ(FreeTlsIndexes(), indexes);
  EXPECT_LE(Handles(), handles);
  // The system's own lists may grow once. A block leaked in each round would be at least eight
  // bytes.
  constexpr std::size_t kSmallestBlock = 8;
  EXPECT_LT(HeapBytes(), bytes + kRounds * kSmallestBlock / 2);
}

TEST_F(Staying, DllWithoutObjectsUnloadsAndFreesItsTlsIndexes) {
  const auto round = [&] {
    const Module dll(file_.path());
    EXPECT_EQ(dll.RegisterServer(), S_OK);
    EXPECT_EQ(dll.UnregisterServer(), S_OK);
  };
  round();
  const int indexes = FreeTlsIndexes();
  for (int i = 0; i < 20; ++i) {
    round();
    ASSERT_FALSE(file_.IsLoaded());
  }
  EXPECT_EQ(FreeTlsIndexes(), indexes);
  EXPECT_EQ(Module(DllPath()).RegisterServer(), S_OK);
}

}  // namespace
}  // namespace system_tests
