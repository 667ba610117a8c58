#include "field-tests/core/connection_text.h"

#include <gmock/gmock.h>

namespace field_tests {
namespace {

using testing::ElementsAre;

TEST(ConnectionText, OnlyTheDriverIsShown) {
  EXPECT_EQ(Presentable("Driver={SQL Server};Server=clinic-7;Database=Kestra;UID=sa;PWD=hush"),
            "Driver=SQL Server; Server=...; Database=...; UID=...; PWD=...");
  EXPECT_EQ(Presentable("Provider = SQLOLEDB ; Password = a b ;"),
            "Provider=SQLOLEDB; Password=...");
  EXPECT_EQ(Presentable(""), "");
  EXPECT_EQ(Presentable(";;no value;"), "");
}

TEST(ConnectionText, SecretsAreFoundInEveryKindOfQuotes) {
  EXPECT_THAT(SecretsIn("Driver=x;Uid=anna;Pwd={a;b}}c};Database=d"), ElementsAre("anna", "a;b}c"));
  EXPECT_THAT(SecretsIn("Provider=x;User ID=\"Åsa\";Password='it''s'"), ElementsAre("Åsa", "it's"));
  EXPECT_THAT(SecretsIn("jet oledb:database password=hush"), ElementsAre("hush"));
  EXPECT_THAT(SecretsIn("PWD={open"), ElementsAre("open"));
  EXPECT_THAT(SecretsIn("PWD="), ElementsAre());
}

TEST(ConnectionText, HiddenTextsAreReplacedLongestFirst) {
  Scrubber scrub;
  scrub.Hide("hush", "(secret)");
  scrub.Hide("Pwd=hush;x", "(the connection string)");
  scrub.Hide("ab", "(too short to be told from words)");
  EXPECT_EQ(scrub("Pwd=hush;x and hush, about"), "(the connection string) and (secret), about");
}

}  // namespace
}  // namespace field_tests
