#include "db/scalar_value.h"

#include "fixture.h"

namespace unit {
namespace {

using automation::Value;
using db::GetScalarValue;

class ScalarValue : public DbTest {
 protected:
  db::DBVilnor operations;
};

TEST_F(ScalarValue, ScalarValueIsTheFirstFieldOfTheFirstRow) {
  database.Answer(u"Select x", {{u"a", u"b"}, {{u"ett", 2}, {u"tre", 4}}});
  EXPECT_EQ(GetScalarValue(u"Select x"), Value(u"ett"));
  database.Answer(u"Select x", {{u"a"}, {{automation::Null()}}});
  EXPECT_EQ(GetScalarValue(u"Select x"), Value(automation::Null()));
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(ScalarValue, ScalarValueIsEmptyWithoutARow) {
  EXPECT_TRUE(GetScalarValue(u"Select nothing").IsEmpty());
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(ScalarValue, StatementWithoutRowsShowsThatItsRecordsetIsClosed) {
  EXPECT_TRUE(GetScalarValue(u"Delete from Journal").IsEmpty());
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{
                         u"3704 Operation is not allowed when the object is closed. in "
                         u"GetScalarValue"});
}

TEST_F(ScalarValue, FailedScalarValueShowsACriticalBoxAndIsEmpty) {
  database.FailStatement(u"Select x", kScriptedFailure);
  EXPECT_TRUE(GetScalarValue(u"Select x").IsEmpty());
  const platform::MessageBox box{BoxIn(u"GetScalarValue"), u"Vilnor Link connection",
                                 platform::Icon::Critical, platform::Buttons::Ok};
  EXPECT_EQ(dialogs.shown, std::vector<platform::MessageBox>{box});
}

TEST_F(ScalarValue, ScalarValueKeepsTheThreadsStatementText) {
  db::CurrentConnectionState().gSql = u"Delete from x";
  GetScalarValue(u"Select @@Identity");
  EXPECT_EQ(db::CurrentConnectionState().gSql, u"Delete from x");
}

}  // namespace
}  // namespace unit
