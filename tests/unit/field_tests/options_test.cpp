#include "field-tests/core/options.h"

#include <gmock/gmock.h>

namespace field_tests {
namespace {

TEST(FieldOptions, WordsAreTakenInAnyOrderAndCase) {
  const auto options = ParseOptions({"/QUICK", "Driver=x;Database=C:\\a b.db", "/user"});
  EXPECT_TRUE(options.quick);
  EXPECT_TRUE(options.asUser);
  EXPECT_EQ(options.connection, "Driver=x;Database=C:\\a b.db");
  EXPECT_FALSE(ParseOptions({}).newAccess);
  EXPECT_TRUE(ParseOptions({"Access"}).newAccess);
  EXPECT_TRUE(ParseOptions({"/restore"}).restoreOnly);
  EXPECT_TRUE(ParseOptions({"/?"}).help);
}

TEST(FieldOptions, TypedAnswerMayHaveQuotationMarks) {
  Options options;
  SetDatabase(options, "  \"DSN=Kestra\" ");
  EXPECT_EQ(options.connection, "DSN=Kestra");
  SetDatabase(options, "");
  EXPECT_EQ(options.connection, "");
}

TEST(FieldOptions, UnusableWordsAreRefusedWithoutRepeatingThem) {
  for (const auto& words : std::vector<std::vector<std::string>>{
           {"Driver=SQLite3", "ODBC", "Driver;Pwd=hush"}, {"hush"}, {"a=b", "hush"}}) {
    try {
      ParseOptions(words);
      ADD_FAILURE() << words[0];
    } catch (const UsageError& error) {
      EXPECT_THAT(error.what(), testing::Not(testing::HasSubstr("hush")));
    }
  }
  EXPECT_THROW(ParseOptions({"/fast"}), UsageError);
}

}  // namespace
}  // namespace field_tests
