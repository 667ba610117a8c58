// Two sessions on one desktop, released in any order, and windows closed by others.
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

#include "system/com/apartment.h"
#include "system/com/box_answerer.h"
#include "system/com/component.h"
#include "system/com/database.h"
#include "system/com/holding_process.h"
#include "system/com/host_registration.h"

namespace system_tests {
namespace {

constexpr UINT kNewCaseReady = 10002;

struct Session {
  explicit Session(Apartment& itsHome) : home(itsHome) {
    EXPECT_TRUE(home.Do([&] {
      const auto before = NotificationWindowHandles();
      object = NewBVilnor();
      const auto after = NotificationWindowHandles();
      window = *std::ranges::find_if(
          after, [&](HWND made) { return std::ranges::find(before, made) == before.end(); });
    }));
  }
  void Release() {
    EXPECT_TRUE(home.Do([&] { object = {}; }));
  }
  // From outside, as the system or another program does.
  void Close() const {
    if (IsWindow(window) != FALSE) {
      SendMessageA(window, WM_CLOSE, 0, 0);
    }
  }

  Apartment& home;
  ComPtr<_BVilnor> object;
  HWND window = nullptr;
};

class TwoSessions : public testing::Test {
 protected:
  ~TwoSessions() override { EXPECT_THAT(boxes_.Texts(), testing::IsEmpty()); }

  std::filesystem::path PutResult() const {
    const auto result = host_.ExchangeFolder() / L"OutNewCase4712.xml";
    std::ofstream(result, std::ios::binary) << "<a><Cancelled>1</Cancelled></a>";
    return result;
  }

  // Whether a notification to the window makes it read its result.
  bool Arrives(HWND window) const {
    const auto result = PutResult();
    SendMessageA(window, kNewCaseReady, 4712, 0);
    return !std::filesystem::exists(result);
  }

  // The two releases and the ends of the two windows in one order. After each step, every remaining
  // window still handles notifications.
  void Play(const std::array<int, 4>& order, Apartment& home, Apartment& otherHome) const {
    Session first(home);
    Session second(otherHome);
    const std::array<std::function<void()>, 4> steps = {
        [&] { first.Release(); }, [&] { second.Release(); }, [&] { first.Close(); },
        [&] { second.Close(); }};
    for (const int step : order) {
      steps.at(static_cast<std::size_t>(step))();
      for (HWND window : NotificationWindowHandles()) {
        EXPECT_TRUE(Arrives(window)) << testing::PrintToString(order) << " at " << step;
      }
    }
    EXPECT_TRUE(home.Do(EndNotificationWindows));
    EXPECT_TRUE(otherHome.Do(EndNotificationWindows));
    EXPECT_EQ(NotificationWindows(), 0);
  }

  const HostRegistration host_;
  BoxAnswerer boxes_;
};

TEST_F(TwoSessions, SessionsOfOneThreadEndInAnyOrder) {
  std::array<int, 4> order = {0, 1, 2, 3};
  do {
    Apartment home;
    Play(order, home, home);
  } while (std::ranges::next_permutation(order).found);
}

TEST_F(TwoSessions, SessionsOfTwoThreadsEndInAnyOrder) {
  std::array<int, 4> order = {0, 1, 2, 3};
  do {
    Apartment home;
    Apartment otherHome;
    Play(order, home, otherHome);
  } while (std::ranges::next_permutation(order).found);
}

// The first release destroys the window created last, whichever session it belongs to; the other
// one stays.
TEST_F(TwoSessions, FirstWindowOutlivesBothSessionsOfAThread) {
  for (const bool firstGoesFirst : {true, false}) {
    Apartment home;
    Session first(home);
    Session second(home);
    (firstGoesFirst ? first : second).Release();
    EXPECT_THAT(NotificationWindowHandles(), testing::ElementsAre(first.window));
    (firstGoesFirst ? second : first).Release();
    EXPECT_THAT(NotificationWindowHandles(), testing::ElementsAre(first.window));
    EXPECT_TRUE(Arrives(first.window));
    EXPECT_TRUE(home.Do(EndNotificationWindows));
  }
}

TEST_F(TwoSessions, SessionsOfTwoProcessesEndInAnyOrder) {
  for (const bool ownGoesFirst : {true, false}) {
    for (const bool closed : {true, false}) {
      Apartment home;
      Session own(home);
      HoldingProcess other;
      ASSERT_NE(other.Window(), nullptr);
      if (closed) {
        SendMessageA(other.Window(), WM_CLOSE, 0, 0);
      }
      if (ownGoesFirst) {
        own.Release();
        EXPECT_EQ(NotificationWindows(), 0);
        EXPECT_EQ(other.Window() != nullptr && Arrives(other.Window()), !closed);
        EXPECT_EQ(other.Release(), 0U);
      } else {
        EXPECT_EQ(other.Release(), 0U);
        EXPECT_TRUE(Arrives(own.window));
        own.Release();
      }
      EXPECT_TRUE(home.Do(EndNotificationWindows));
    }
  }
}

TEST_F(TwoSessions, HostReadsTheResultItselfAfterAClosedWindow) {
  Apartment home;
  Session session(home);
  session.Close();
  EXPECT_EQ(NotificationWindows(), 0);
  const auto result = PutResult();
  EXPECT_TRUE(home.Do([&] {
    long pid = 4712;
    EXPECT_EQ(session.object->ReadNewCase(&pid), S_OK);
  }));
  EXPECT_FALSE(std::filesystem::exists(result));
  session.Release();
}

// The next session has a window again.
TEST_F(TwoSessions, NewSessionIsNotifiedAfterAClosedWindow) {
  Apartment home;
  Session session(home);
  session.Close();
  Session next(home);
  session.Release();
  // The older session's release has destroyed the window created last, as always.
  EXPECT_EQ(IsWindow(next.window), FALSE);
  Session third(home);
  EXPECT_TRUE(Arrives(third.window));
  third.Release();
  next.Release();
  EXPECT_TRUE(home.Do(EndNotificationWindows));
}

}  // namespace
}  // namespace system_tests
