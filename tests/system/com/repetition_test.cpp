#include <gmock/gmock.h>

#include "system/com/box_answerer.h"
#include "system/com/component.h"

namespace system_tests {
namespace {

bool NotificationClassExists() {
  WNDCLASSA windowClass{};
  return GetClassInfoA(nullptr, "KestraToVilnor", &windowClass) != FALSE ||
         GetClassInfoA(GetModuleHandleW(nullptr), "KestraToVilnor", &windowClass) != FALSE;
}

TEST(Repetition, ThousandSessionsLeaveNoWindowNoClassAndShowNoBox) {
  const BoxAnswerer boxes;
  for (int i = 0; i < 1000; ++i) {
    const auto session = NewBVilnor();
    ASSERT_TRUE(session);
    ASSERT_EQ(NotificationWindows(), 1) << "session " << i;
    ASSERT_TRUE(NotificationClassExists());
  }
  EXPECT_EQ(NotificationWindows(), 0);
  EXPECT_FALSE(NotificationClassExists());
  EXPECT_THAT(boxes.Texts(), testing::IsEmpty());
}

}  // namespace
}  // namespace system_tests
