// The registry class on this build's registry.

#include "contract/registry_fixture.h"
#include "registry/errors.h"

namespace contract {
namespace {

using automation::Decimal10;
using fakes::ErrorNumberOf;

class RegistryClass : public RegistryContract {};

TEST_F(RegistryClass, LoadReadsTheUnnamedAndTheNamedValue) {
  SetText(u"", u"C:\\Kestra\\Kestra.Main.exe");
  SetText(u"Path", u"C:\\Åkes\\");
  const auto key = Loaded(path);
  EXPECT_EQ(key.ValueCount(), 2);
  EXPECT_EQ(key.GetValue(u"Path"), u"C:\\Åkes\\");
  EXPECT_EQ(key.GetValue(u"PATH"), u"C:\\Åkes\\");
  EXPECT_EQ(key.GetValue(std::int16_t{1}), u"C:\\Åkes\\");
  EXPECT_EQ(key.GetValue(u""), u"C:\\Kestra\\Kestra.Main.exe");
}

TEST_F(RegistryClass, LoadStopsAtTheFirstValueThatIsNotText) {
  SetText(u"A", u"first");
  SetNumber(path, u"B");
  SetText(u"C", u"third");
  const auto key = Loaded(path);
  EXPECT_EQ(key.ValueCount(), 1);
  EXPECT_EQ(key.GetValue(u"A"), u"first");
  EXPECT_EQ(key.GetValue(u"C"), u"");
}

TEST_F(RegistryClass, MissingKeyIsCreatedUnlessAutoCreateIsOff) {
  registry::CRegistry key;
  key.SetRoot(kCurrentUser);
  key.SetAutoCreate(false);
  EXPECT_EQ(ErrorNumberOf([&] { key.SetKey(path); }), registry::kCannotOpen);
  key.SetAutoCreate(true);
  key.SetKey(path);
  EXPECT_EQ(key.ValueCount(), 0);
  EXPECT_EQ(key.GetValue(u"Path"), u"");
  key.SetAutoCreate(false);
  key.Refresh();
}

TEST_F(RegistryClass, FailureToCreateAKeyIsReported) {
  registry::CRegistry key;
  key.SetRoot(kCurrentUser);
  EXPECT_EQ(ErrorNumberOf([&] { key.SetKey(path + std::u16string(1000, u'k')); }),
            registry::kUnknownError);
}

TEST_F(RegistryClass, ValuesAndKeysAreWrittenDeletedAndCreated) {
  auto key = Loaded(path);
  EXPECT_TRUE(key.SetValue(u"Sökväg", u"C:\\Öppet\\"));
  key.Refresh();
  EXPECT_EQ(key.GetValue(u"Sökväg"), u"C:\\Öppet\\");
  EXPECT_TRUE(key.DeleteValue(u"Sökväg"));
  EXPECT_FALSE(key.DeleteValue(u"Sökväg"));
  EXPECT_EQ(key.ValueCount(), 0);
  EXPECT_EQ(key.Create(u"Under", u"Path", u"D:\\"), -1);
  EXPECT_EQ(key.Key(), path + u"\\Under");
  EXPECT_EQ(key.GetValue(u"Path"), u"D:\\");
}

TEST_F(RegistryClass, KeyIsDeletedWithEverythingBelowIt) {
  for (const auto* below : {u"\\Sub\\A\\1", u"\\Sub\\A\\2", u"\\Sub\\Åäö", u"\\Stays"}) {
    Opened(path + below);
  }
  auto key = Loaded(path);
  EXPECT_EQ(key.SubKeyCount(), 2);
  EXPECT_TRUE(key.DeleteKey(u"Sub"));
  EXPECT_FALSE(key.DeleteKey(u"Sub"));
  EXPECT_FALSE(key.DeleteKey(u""));
  key.Refresh();
  EXPECT_EQ(key.SubKeyCount(), 1);
  EXPECT_EQ(key.GetSubKey(0), u"Stays");
}

TEST_F(RegistryClass, NamesAndDataAtTheSystemsLimitsAreLoaded) {
  const std::u16string longestName(16383, u'n');
  const std::u16string longestKey(255, u'k');
  const std::u16string megabyte(1 << 20, u'd');
  SetText(longestName, megabyte);
  Opened(longestKey, Opened(path).key());
  const auto key = Loaded(path);
  EXPECT_EQ(key.GetValue(longestName), megabyte);
  EXPECT_EQ(key.GetSubKey(0), longestKey);
}

// The unit tests check that each item costs one system call. Here the system really has that many.
TEST_F(RegistryClass, TenThousandValuesAreLoaded) {
  constexpr int many = 10000;
  {
    const auto handle = Opened(path + u"\\Many");
    for (int i = 0; i < many; ++i) {
      ASSERT_EQ(Registry().SetTextValue(handle.key(), u"v" + Decimal10(i), u"text " + Decimal10(i)),
                Api::kSuccess);
    }
  }
  const auto key = Loaded(path + u"\\Many");
  EXPECT_EQ(key.ValueCount(), many);
  EXPECT_EQ(key.GetValue(u"v9999"), u"text 9999");
}

}  // namespace
}  // namespace contract
