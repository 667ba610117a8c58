#include "util/session.h"

#include "fakes/another_thread.h"
#include "util_fixture.h"

namespace util {
namespace {

class TheSession : public UtilTest {};

TEST_F(TheSession, IsOneForAllCallersOfAThread) {
  CurrentSession().gDbType = 2;
  EXPECT_EQ(CurrentSession().gDbType, 2);
}

TEST_F(TheSession, IsEmptyAndApartOnAnotherThread) {
  CurrentSession().gKestraLangID = 5;
  Session other;
  other.gKestraLangID = 9;
  other.gDbType = 9;
  fakes::OnAnotherThread([&] {
    other = CurrentSession();
    CurrentSession().gKestraLangID = 3;
  });
  EXPECT_EQ(other.gKestraLangID, 0);
  EXPECT_EQ(other.gDateFormat, u"");
  EXPECT_EQ(other.gDbType, 0);
  EXPECT_EQ(CurrentSession().gKestraLangID, 5);
}

}  // namespace
}  // namespace util
