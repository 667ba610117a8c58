// The registry class on this build's registry.
#include <algorithm>
#include <chrono>

#include "contract/registry_fixture.h"
#include "registry/errors.h"

namespace contract {
namespace {

using automation::Decimal10;
using fakes::ErrorNumberOf;

class RegistryClass : public RegistryContract {};

TEST_F(RegistryClass, LoadsTheUnnamedAndTheNamedValue) {
  SetText(u"", u"C:\\Kestra\\Kestra.Main.exe");
  SetText(u"Path", u"C:\\Åkes\\");
  const auto key = Loaded(path);
  EXPECT_EQ(key.ValueCount(), 2);
  EXPECT_EQ(key.GetValue(u"Path"), u"C:\\Åkes\\");
  EXPECT_EQ(key.GetValue(u"PATH"), u"C:\\Åkes\\");
  EXPECT_EQ(key.GetValue(std::int16_t{1}), u"C:\\Åkes\\");
  EXPECT_EQ(key.GetValue(u""), u"C:\\Kestra\\Kestra.Main.exe");
}

TEST_F(RegistryClass, StopsAtTheFirstValueThatIsNoText) {
  SetText(u"A", u"first");
  SetNumber(path, u"B");
  SetText(u"C", u"third");
  const auto key = Loaded(path);
  EXPECT_EQ(key.ValueCount(), 1);
  EXPECT_EQ(key.GetValue(u"A"), u"first");
  EXPECT_EQ(key.GetValue(u"C"), u"");
}

TEST_F(RegistryClass, CreatesAMissingKeyUnlessToldNotTo) {
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

TEST_F(RegistryClass, TellsWhyAKeyCannotBeCreated) {
  registry::CRegistry key;
  key.SetRoot(kCurrentUser);
  EXPECT_EQ(ErrorNumberOf([&] { key.SetKey(path + std::u16string(1000, u'k')); }),
            registry::kUnknownError);
}

TEST_F(RegistryClass, WritesDeletesAndCreates) {
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

TEST_F(RegistryClass, DeletesAKeyWithEverythingBelowIt) {
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

TEST_F(RegistryClass, LoadsNamesAndDataAtTheSystemsLimits) {
  const std::u16string longestName(16383, u'n');
  const std::u16string longestKey(255, u'k');
  const std::u16string megabyte(1 << 20, u'd');
  SetText(longestName, megabyte);
  Opened(longestKey, Opened(path).key());
  const auto key = Loaded(path);
  EXPECT_EQ(key.GetValue(longestName), megabyte);
  EXPECT_EQ(key.GetSubKey(0), longestKey);
}

class RegistryClassAtSize : public RegistryContract {
 protected:
  static void Fill(const std::u16string& keyPath, int count) {
    const auto handle = Opened(keyPath);
    for (int i = 0; i < count; ++i) {
      ASSERT_EQ(Registry().SetTextValue(handle.key(), u"v" + Decimal10(i), u"text " + Decimal10(i)),
                Api::kSuccess);
    }
  }
  static std::chrono::nanoseconds TimeOf(registry::CRegistry& key) {
    const auto start = std::chrono::steady_clock::now();
    key.Refresh();
    return std::chrono::steady_clock::now() - start;
  }
};

TEST_F(RegistryClassAtSize, LoadsTenThousandValuesInTimeThatGrowsLinearly) {
  constexpr int few = 1000;
  constexpr int many = 10000;
  Fill(path + u"\\Few", few);
  Fill(path + u"\\Many", many);
  auto small = Loaded(path + u"\\Few");
  auto large = Loaded(path + u"\\Many");
  EXPECT_EQ(small.ValueCount(), few);
  EXPECT_EQ(large.ValueCount(), many);
  EXPECT_EQ(large.GetValue(u"v9999"), u"text 9999");
  // The least of runs that take turns, so that other work of the machine does not count.
  auto timeOfFew = std::chrono::nanoseconds::max();
  auto timeOfMany = std::chrono::nanoseconds::max();
  for (int run = 0; run < 5; ++run) {
    timeOfFew = std::min(timeOfFew, TimeOf(small));
    timeOfMany = std::min(timeOfMany, TimeOf(large));
  }
  // Ten times the values; a hundred times the time would be quadratic.
  EXPECT_LT(timeOfMany, timeOfFew * 40);
}

}  // namespace
}  // namespace contract
