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
  EXPECT_EQ(Presentable("DSN=clinic;FileDSN=C:\\anna.dsn"), "DSN=...; FileDSN=...");
  EXPECT_EQ(Presentable(""), "");
  EXPECT_EQ(Presentable(";;no value;"), "");
}

TEST(ConnectionText, EveryValueButTheDriverIsASecret) {
  EXPECT_THAT(SecretsIn("Driver=x;Server=clinic-7;Integrated Security=SSPI;Trusted_Connection=yes;"
                        "Port=3;Server=."),
              ElementsAre("clinic-7"));
}

TEST(ConnectionText, SoArePartsThatAMessageMayNameAlone) {
  EXPECT_THAT(SecretsIn("Database=C:\\Clinic\\empty.db"),
              ElementsAre("empty.db", "C:\\Clinic\\empty.db"));
  EXPECT_THAT(SecretsIn("Data Source=tcp:clinic-7\\ANNA,1433"),
              ElementsAre("tcp", "clinic-7", "ANNA", "1433", "tcp:clinic-7\\ANNA,1433"));
}

TEST(ConnectionText, SecretsAreFoundInEveryKindOfQuotes) {
  EXPECT_THAT(SecretsIn("Driver=x;Uid=anna;Pwd={a;b}}c};Database=d"),
              ElementsAre("anna", "a;b}c", "d"));
  EXPECT_THAT(SecretsIn("Provider=x;User ID=\"Åsa\";Password='it''s'"), ElementsAre("Åsa", "it's"));
  EXPECT_THAT(SecretsIn("jet oledb:database password=hush"), ElementsAre("hush"));
  EXPECT_THAT(SecretsIn("PWD={open"), ElementsAre("open"));
  EXPECT_THAT(SecretsIn("PWD="), ElementsAre());
}

TEST(ConnectionText, HiddenTextsAreReplacedLongestFirst) {
  Scrubber scrub;
  scrub.Hide("hush", "(secret)");
  scrub.Hide("Pwd=hush;x", "(the connection string)");
  scrub.Hide("ab", "(short)");
  EXPECT_EQ(scrub("Pwd=hush;x and hush, about"), "(the connection string) and (secret), about");
  EXPECT_EQ(scrub("user 'AB', HUSH"), "user '(short)', (secret)");
}

}  // namespace
}  // namespace field_tests
