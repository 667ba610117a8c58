#include <limits>

#include "registry/errors.h"
#include "registry_fixture.h"

namespace registry {
namespace {

constexpr auto kLeast = std::numeric_limits<std::int16_t>::min();
constexpr auto kMost = std::numeric_limits<std::int16_t>::max();

class Reading : public RegistryTest {
 protected:
  Reading() {
    SetText(u"Path", u"C:\\Kestra\\");
    SetText(u"1", u"named one");
    registry.MakeKey(kLocalMachine, kPath + u"\\Alfa");
    registry.MakeKey(kLocalMachine, kPath + u"\\Beta");
    key = Loaded();
  }
  CRegistry key;
};

TEST_F(Reading, ValueIsFoundByNameIgnoringCase) {
  SetText(u"Åre", u"Jämtland");
  key.Refresh();
  for (const auto* name : {u"Path", u"PATH", u"path"}) {
    EXPECT_EQ(key.GetValue(name), u"C:\\Kestra\\");
  }
  EXPECT_EQ(key.GetValue(u"åRE"), u"Jämtland");
}

TEST_F(Reading, SixteenBitIntegerIsAPositionAndAnythingElseAName) {
  EXPECT_EQ(key.GetValue(std::int16_t{1}), u"named one");
  EXPECT_EQ(key.GetValue(std::int16_t{0}), u"C:\\Kestra\\");
  EXPECT_EQ(key.GetValue(std::int32_t{1}), u"named one");
  EXPECT_EQ(key.GetValue(1.0), u"named one");
  EXPECT_EQ(key.GetValue(std::int32_t{0}), u"");
}

TEST_F(Reading, MissingNameGivesEmptyText) {
  EXPECT_EQ(key.GetValue(u"Pat"), u"");
  EXPECT_EQ(key.GetValue(u"Path "), u"");
  EXPECT_EQ(key.GetValue(u""), u"");
  EXPECT_EQ(key.GetValue(automation::Empty()), u"");
}

TEST_F(Reading, EmptyNameGivesTheUnnamedValue) {
  SetText(u"", u"standard");
  key.Refresh();
  EXPECT_EQ(key.GetValue(u""), u"standard");
  EXPECT_EQ(key.GetValue(automation::Empty()), u"standard");
}

TEST_F(Reading, PositionAfterTheLastValueIsEmptyAndBeyondItAnError) {
  EXPECT_EQ(key.GetValue(std::int16_t{2}), u"");
  for (const std::int16_t position : {std::int16_t{3}, std::int16_t{-1}, kMost, kLeast}) {
    ExpectError(ErrorOf([&] { key.GetValue(position); }), 9, u"", u"Subscript out of range");
  }
}

TEST_F(Reading, OnlyOneEmptyValueExistsBeforeTheFirstLoad) {
  const CRegistry fresh;
  EXPECT_EQ(fresh.GetValue(std::int16_t{0}), u"");
  ExpectError(ErrorOf([&] { fresh.GetValue(std::int16_t{1}); }), 9, u"", u"Subscript out of range");
  EXPECT_EQ(fresh.GetName(0), u"");
  EXPECT_EQ(fresh.GetSubKey(-1), u"");
  EXPECT_EQ(fresh.GetSubKey(0), u"");
}

TEST_F(Reading, NullIsRefusedAsAValueName) {
  ExpectError(ErrorOf([&] { key.GetValue(automation::Null()); }), 94, u"", u"Invalid use of Null");
}

TEST_F(Reading, NamesAreGivenByPositionAndNoneOutsideTheValues) {
  EXPECT_EQ(key.GetName(0), u"Path");
  EXPECT_EQ(key.GetName(1), u"1");
  for (const std::int16_t position :
       {std::int16_t{2}, std::int16_t{3}, std::int16_t{-1}, kMost, kLeast}) {
    EXPECT_EQ(key.GetName(position), u"");
  }
}

TEST_F(Reading, SubKeysCountFromZeroAndNoneIsGivenOutsideTheList) {
  EXPECT_EQ(key.GetSubKey(0), u"Alfa");
  EXPECT_EQ(key.GetSubKey(1), u"Beta");
  for (const std::int16_t index :
       {std::int16_t{2}, std::int16_t{-1}, std::int16_t{-2}, kMost, kLeast}) {
    EXPECT_EQ(key.GetSubKey(index), u"");
  }
}

TEST_F(Reading, ValueCountCannotBeSetButSubKeyCountCan) {
  ExpectError(ErrorOf([&] { CRegistry::SetValueCount(5); }), kReadOnlyProperty,
              u"CRegistry.Let ValueCount", u"The Let Property is not available");
  EXPECT_EQ(key.ValueCount(), 2);
  key.SetSubKeyCount(-7);
  EXPECT_EQ(key.SubKeyCount(), -7);
  EXPECT_EQ(key.GetSubKey(1), u"Beta");
  key.Refresh();
  EXPECT_EQ(key.SubKeyCount(), 2);
}

TEST_F(Reading, DefaultPropertyIsAlwaysEmpty) {
  CRegistry::SetDefault(u"text");
  EXPECT_EQ(CRegistry::Default(), u"");
}

TEST_F(Reading, ValuesComeFromMemoryUntilRefresh) {
  SetText(u"Path", u"D:\\");
  EXPECT_EQ(key.GetValue(u"Path"), u"C:\\Kestra\\");
  key.Refresh();
  EXPECT_EQ(key.GetValue(u"Path"), u"D:\\");
}

TEST_F(Reading, TwoRegistryObjectsAreIndependent) {
  registry.SetText(kLocalMachine, u"SOFTWARE\\Other", u"Path", u"D:\\");
  const CRegistry other = Loaded(u"SOFTWARE\\Other");
  EXPECT_EQ(key.GetValue(u"Path"), u"C:\\Kestra\\");
  EXPECT_EQ(other.GetValue(u"Path"), u"D:\\");
}

}  // namespace
}  // namespace registry
