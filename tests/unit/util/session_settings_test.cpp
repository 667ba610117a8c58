#include "util/session_settings.h"

#include "fakes/another_thread.h"
#include "util_fixture.h"

namespace util {
namespace {

class TheSession : public UtilTest {};

TEST_F(TheSession, SessionSettingsAreSharedByAllCallersOfAThread) {
  CurrentSettings().gDbType = 2;
  EXPECT_EQ(CurrentSettings().gDbType, 2);
}

TEST_F(TheSession, SessionSettingsAreEmptyOnAnotherThread) {
  CurrentSettings().gKestraLangID = 5;
  SessionSettings other;
  other.gKestraLangID = 9;
  other.gDbType = 9;
  fakes::OnAnotherThread([&] {
    other = CurrentSettings();
    CurrentSettings().gKestraLangID = 3;
  });
  EXPECT_EQ(other.gKestraLangID, 0);
  EXPECT_EQ(other.gDateFormat, u"");
  EXPECT_EQ(other.gDbType, 0);
  EXPECT_EQ(CurrentSettings().gKestraLangID, 5);
}

}  // namespace
}  // namespace util
