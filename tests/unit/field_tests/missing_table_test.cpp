#include "field-tests/core/missing_table.h"

#include <gtest/gtest.h>

namespace field_tests {
namespace {

constexpr std::int32_t kNoTable = -2147217865;
constexpr std::int32_t kFailure = -2147467259;

TEST(MissingTable, ProviderSaysItByNumber) {
  EXPECT_TRUE(SaysNoSuchTable("Pasient", kNoTable, "Ogiltigt objektnamn 'Pasient'."));
  EXPECT_FALSE(SaysNoSuchTable("Pasient", kNoTable, "Ogiltigt objektnamn 'Gone'."));
}

TEST(MissingTable, DriversWithoutTheNumberSayItInWords) {
  EXPECT_TRUE(SaysNoSuchTable("Pasient", kFailure, "[SQLite]no such table: Pasient (1)"));
  EXPECT_TRUE(SaysNoSuchTable("Pasient", kFailure, "ERROR: relation \"pasient\" does not exist;"));
}

TEST(MissingTable, OtherFailureLeavesItOpen) {
  for (const char* const text :
       {"database is locked", "The SELECT permission was denied on the object 'Pasient'.",
        "ERROR: permission denied for relation pasient", "column \"x\" does not exist",
        "no such table: main.Gone", "Timeout expired", ""}) {
    EXPECT_FALSE(SaysNoSuchTable("Pasient", kFailure, text)) << text;
  }
}

}  // namespace
}  // namespace field_tests
