// The mapping of patients to Vilnor Link users beyond the table of statements.
#include "fixture.h"

namespace unit {
namespace {

using db::DBVilnor;

class Users : public DbTest {
 protected:
  void AnswerName(const automation::Value& name) {
    database.Answer(u"SELECT UserName from VilnorPasient where PID = 1", {{u"UserName"}, {{name}}});
  }
  DBVilnor operations;
};

TEST_F(Users, UserNamesStandWithoutQuotesInTheStatements) {
  AnswerName(u"x");
  operations.AddNewVilnorUser(1, u"åsa");
  operations.UpdateVilnorUser(1, u"o'neil");
  EXPECT_EQ(database.LogOf(u"Execute"),
            (std::vector<std::u16string>{
                u"Execute -1: Insert into VilnorPasient (PID, UserName) VALUES (1,åsa)",
                u"Execute -1: Update VilnorPasient SET PID = 1, UserName = o'neil Where PID= 1"}));
}

TEST_F(Users, UserUpdatedFromNoNameToNoNameIsUnchanged) {
  operations.UpdateVilnorUser(1, u"");
  EXPECT_TRUE(database.LogOf(u"Execute").empty());
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(Users, UserWithAnEmptyStoredNameCountsAsUnmapped) {
  AnswerName(u"");
  operations.UpdateVilnorUser(1, u"'per'");
  EXPECT_EQ(database.LogOf(u"Execute"),
            std::vector<std::u16string>{
                u"Execute -1: Insert into VilnorPasient (PID, UserName) VALUES (1,'per')"});
}

TEST_F(Users, UserWithANullNameShowsTheLookupsBoxAndCountsAsUnmapped) {
  AnswerName(automation::Null());
  operations.UpdateVilnorUser(1, u"'per'");
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{u"94 Invalid use of Null in GetVilnorUserByPID"});
  EXPECT_EQ(database.LogOf(u"Execute").size(), 1U);
}

TEST_F(Users, FailedUserUpdateNamesAddNewVilnorUser) {
  AnswerName(u"x");
  database.FailStatement(u"Update VilnorPasient", kScriptedFailure);
  operations.UpdateVilnorUser(1, u"'per'");
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{BoxIn(u"AddNewVilnorUser")});
}

TEST_F(Users, UsersAreWrittenWithoutATransaction) {
  database.FailStatement(u"Insert into VilnorPasient", kScriptedFailure);
  operations.AddNewVilnorUser(1, u"'per'");
  EXPECT_TRUE(database.LogOf(u"BeginTrans").empty());
  EXPECT_TRUE(database.LogOf(u"RollbackTrans").empty());
}

TEST_F(Users, UserNameMayHaveTenThousandCharacters) {
  const std::u16string name = u"'" + std::u16string(10000, u'ö') + u"'";
  operations.AddNewVilnorUser(1, name);
  EXPECT_EQ(database.Log().back(),
            u"Execute -1: Insert into VilnorPasient (PID, UserName) VALUES (1," + name + u")");
}

}  // namespace
}  // namespace unit
