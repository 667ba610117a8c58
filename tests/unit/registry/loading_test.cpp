#include <new>
#include <vector>

#include "registry/errors.h"
#include "registry_fixture.h"
#include "watched_registry.h"

namespace registry {
namespace {

using automation::Decimal10;
using fakes::MemoryRegistry;

class Loading : public RegistryTest {};
class LoadingClosely : public WatchedRegistryTest {};

TEST_F(Loading, NewRegistryObjectHasNoKeyUnderLocalMachineAndAutoCreate) {
  const CRegistry key;
  EXPECT_EQ(key.Root(), 0x80000002);
  EXPECT_EQ(key.Key(), u"");
  EXPECT_TRUE(key.AutoCreate());
  EXPECT_EQ(key.ValueCount(), 0);
  EXPECT_EQ(key.SubKeyCount(), 0);
  EXPECT_EQ(key.GetValue(u"Path"), u"");
  EXPECT_EQ(key.GetValue(std::int16_t{0}), u"");
  EXPECT_EQ(key.GetSubKey(0), u"");
}

TEST_F(Loading, LoadReadsTheUnnamedAndTheNamedValues) {
  SetText(u"", u"C:\\Kestra\\Kestra.Main.exe");
  SetText(u"Path", u"C:\\Kestra\\");
  const CRegistry key = Loaded();
  EXPECT_EQ(key.ValueCount(), 2);
  EXPECT_EQ(key.GetValue(u"Path"), u"C:\\Kestra\\");
  EXPECT_EQ(key.GetValue(u"PATH"), u"C:\\Kestra\\");
  EXPECT_EQ(key.GetValue(std::int16_t{1}), u"C:\\Kestra\\");
  EXPECT_EQ(key.GetValue(u""), u"C:\\Kestra\\Kestra.Main.exe");
  EXPECT_EQ(key.GetValue(std::int16_t{0}), u"C:\\Kestra\\Kestra.Main.exe");
  EXPECT_EQ(key.Key(), kPath);
}

TEST_F(Loading, LoadKeepsTheSystemsOrder) {
  for (const auto* name : {u"zebra", u"Alfa", u"mitt", u"Beta"}) {
    SetText(name, name);
    registry.MakeKey(kLocalMachine, kPath + u"\\" + name);
  }
  const CRegistry key = Loaded();
  ASSERT_EQ(key.ValueCount(), 4);
  EXPECT_EQ(key.GetName(0), u"zebra");
  EXPECT_EQ(key.GetName(1), u"Alfa");
  EXPECT_EQ(key.GetName(2), u"mitt");
  EXPECT_EQ(key.GetName(3), u"Beta");
  ASSERT_EQ(key.SubKeyCount(), 4);
  EXPECT_EQ(key.GetSubKey(0), u"Alfa");
  EXPECT_EQ(key.GetSubKey(1), u"Beta");
  EXPECT_EQ(key.GetSubKey(2), u"mitt");
  EXPECT_EQ(key.GetSubKey(3), u"zebra");
}

TEST_F(Loading, LoadStopsAtTheFirstValueThatIsNotText) {
  SetText(u"First", u"1");
  registry.SetOther(kLocalMachine, kPath, u"Number", 4);
  SetText(u"Path", u"C:\\Kestra\\");
  const CRegistry key = Loaded();
  EXPECT_EQ(key.ValueCount(), 1);
  EXPECT_EQ(key.GetValue(u"First"), u"1");
  EXPECT_EQ(key.GetValue(u"Path"), u"");
}

TEST_F(Loading, LoadStopsAtExpandableTextAndEveryOtherType) {
  constexpr std::uint32_t none = 0;
  constexpr std::uint32_t expandable = 2;
  constexpr std::uint32_t binary = 3;
  constexpr std::uint32_t several = 7;
  constexpr std::uint32_t unheardOf = 0xFFFFFFFF;
  for (const std::uint32_t type : {none, expandable, binary, several, unheardOf}) {
    const std::u16string path = u"SOFTWARE\\Type" + Decimal10(type);
    registry.SetOther(kLocalMachine, path, u"Odd", type);
    registry.SetText(kLocalMachine, path, u"Path", u"C:\\");
    registry.MakeKey(kLocalMachine, path + u"\\Below");
    const CRegistry key = Loaded(path);
    EXPECT_EQ(key.ValueCount(), 0) << type;
    EXPECT_EQ(key.GetValue(u"Path"), u"") << type;
    EXPECT_EQ(key.SubKeyCount(), 1) << type;
  }
}

TEST_F(Loading, SwedishLettersAndEmbeddedNulsInATextAreKept) {
  using namespace std::string_literals;
  SetText(u"Sökväg", u"C:\\Åkes tandvård\\Öppet\\");
  SetText(u"Noll", u"före\0efter"s);
  SetText(u"Tom", u"");
  const CRegistry key = Loaded();
  EXPECT_EQ(key.GetValue(u"SÖKVÄG"), u"C:\\Åkes tandvård\\Öppet\\");
  EXPECT_EQ(key.GetValue(u"Noll"), u"före\0efter"s);
  EXPECT_EQ(key.GetValue(u"Tom"), u"");
  EXPECT_EQ(key.ValueCount(), 3);
}

TEST_F(Loading, NamesAndDataAtTheSystemsLimitsAreRead) {
  const std::u16string longestName(MemoryRegistry::kLongestValueName, u'n');
  const std::u16string longestKey(MemoryRegistry::kLongestKeyName, u'k');
  const std::u16string megabyte(1 << 20, u'd');
  SetText(longestName, megabyte);
  registry.MakeKey(kLocalMachine, kPath + u"\\" + longestKey);
  const CRegistry key = Loaded();
  EXPECT_EQ(key.GetValue(longestName), megabyte);
  EXPECT_EQ(key.GetSubKey(0), longestKey);
}

TEST_F(Loading, MissingKeyIsCreatedWithItsParentsByDefault) {
  const CRegistry key = Loaded(u"SOFTWARE\\New\\Below");
  EXPECT_TRUE(Exists(u"SOFTWARE\\New\\Below"));
  EXPECT_EQ(key.ValueCount(), 0);
  EXPECT_EQ(key.SubKeyCount(), 0);
  EXPECT_EQ(key.GetValue(u"Path"), u"");
  EXPECT_EQ(key.GetValue(u""), u"");
  EXPECT_EQ(key.GetValue(std::int16_t{0}), u"");
}

TEST_F(Loading, MissingKeyIsAnErrorAndNotCreatedWithoutAutoCreate) {
  CRegistry key;
  key.SetAutoCreate(false);
  EXPECT_FALSE(key.AutoCreate());
  ExpectError(ErrorOf([&] { key.SetKey(kPath); }), kCannotOpen, u"GetKeyInfo",
              u"Unable to open Key");
  EXPECT_FALSE(Exists(u"SOFTWARE"));
  EXPECT_EQ(key.Key(), kPath);
}

TEST_F(Loading, ExistingKeyIsOpenedWithoutAutoCreate) {
  SetText(u"Path", u"C:\\Kestra\\");
  CRegistry key;
  key.SetAutoCreate(false);
  key.SetKey(kPath);
  EXPECT_EQ(key.GetValue(u"Path"), u"C:\\Kestra\\");
}

TEST_F(Loading, RegistryErrorsAreSigned32BitNumbers) {
  EXPECT_EQ(kCannotOpen, -2147220991);
  EXPECT_EQ(kReadOnlyProperty, -2147220985);
  EXPECT_EQ(kUnknownError, -2147220983);
  EXPECT_EQ(kCannotCreate, 1000);
}

TEST_F(Loading, MissingKeyTheUserMayNotCreateIsAnError) {
  registry.DenyWrite(kLocalMachine, u"");
  ExpectError(ErrorOf([] { Loaded(); }), kUnknownError, u"CreateEx", u"Unknown Error: 5");
  EXPECT_FALSE(Exists(u"SOFTWARE"));
}

TEST_F(Loading, ExistingKeyTheUserMayNotWriteIsAnError) {
  SetText(u"Path", u"C:\\Kestra\\");
  registry.DenyWrite(kLocalMachine, u"SOFTWARE");
  ExpectError(ErrorOf([] { Loaded(); }), kUnknownError, u"CreateEx", u"Unknown Error: 5");
  CRegistry key;
  key.SetAutoCreate(false);
  ExpectError(ErrorOf([&] { key.SetKey(kPath); }), kCannotOpen, u"GetKeyInfo",
              u"Unable to open Key");
}

TEST_F(Loading, ParentThatCannotBeOpenedIsReported) {
  registry.Fail(MemoryRegistry::Call::Create, 1010);
  ExpectError(ErrorOf([] { Loaded(); }), kCannotOpen, u"CreateEx", u"Cannot Open Parent Key");
}

TEST_F(Loading, OtherLoadFailureCarriesTheSystemsNumber) {
  ExpectError(ErrorOf([] { Loaded(u"\\SOFTWARE"); }), kUnknownError, u"CreateEx",
              u"Unknown Error: 161");
  ExpectError(ErrorOf([] { Loaded(std::u16string(256, u'x')); }), kUnknownError, u"CreateEx",
              u"Unknown Error: 87");
}

TEST_F(Loading, InvalidRootIsRefused) {
  for (const std::uint32_t root : {0U, 1U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
    CRegistry key;
    key.SetRoot(root);
    ExpectError(ErrorOf([&] { key.SetKey(kPath); }), kUnknownError, u"CreateEx",
                u"Unknown Error: 6");
  }
}

TEST_F(Loading, EmptyPathReadsTheRootItself) {
  registry.SetText(kLocalMachine, u"", u"Name", u"root");
  EXPECT_EQ(Loaded(u"").GetValue(u"Name"), u"root");
}

TEST_F(Loading, PathIsReadUpToItsFirstNul) {
  using namespace std::string_literals;
  SetText(u"Path", u"C:\\Kestra\\");
  EXPECT_EQ(Loaded(kPath + u"\0\\Below"s).GetValue(u"Path"), u"C:\\Kestra\\");
}

TEST_F(Loading, FailedLoadLeavesNoValuesOfAnEarlierKey) {
  SetText(u"Path", u"C:\\Kestra\\");
  registry.MakeKey(kLocalMachine, kPath + u"\\Below");
  CRegistry key = Loaded();
  EXPECT_NE(ErrorOf([&] { key.SetKey(u"\\none"); }).number(), 0);
  EXPECT_EQ(key.GetValue(u"Path"), u"");
  EXPECT_EQ(key.GetValue(std::int16_t{0}), u"");
  EXPECT_EQ(key.ValueCount(), 0);
  EXPECT_EQ(key.SubKeyCount(), 0);
  EXPECT_EQ(key.GetSubKey(0), u"");
}

TEST_F(Loading, KeyThatCannotBeReadToItsEndIsAnError) {
  SetText(u"Path", u"C:\\Kestra\\");
  for (const auto call : {MemoryRegistry::Call::QueryLimits, MemoryRegistry::Call::EnumValue,
                          MemoryRegistry::Call::EnumKey}) {
    // 1018: the key was deleted meanwhile; 234: a value keeps outgrowing the buffers.
    for (const std::int32_t code : {1018, 234}) {
      registry.Fail(call, code);
      ExpectError(ErrorOf([] { Loaded(); }), kCannotOpen, u"GetKeyInfo", u"Unable to open Key");
    }
    registry.Fail(call, 0);
  }
  EXPECT_EQ(Loaded().ValueCount(), 1);
}

TEST_F(Loading, MoreItemsThanTheCountsHoldOverflow) {
  for (int i = 0; i < 32767; ++i) {
    SetText(u"v" + Decimal10(i), u"");
    registry.MakeKey(kLocalMachine, u"SOFTWARE\\Keys\\k" + Decimal10(100000 + i));
  }
  EXPECT_EQ(Loaded().ValueCount(), 32767);
  EXPECT_EQ(Loaded(u"SOFTWARE\\Keys").SubKeyCount(), 32767);
  SetText(u"one more", u"");
  registry.MakeKey(kLocalMachine, u"SOFTWARE\\Keys\\one more");
  ExpectError(ErrorOf([] { Loaded(); }), 6, u"", u"Overflow");
  ExpectError(ErrorOf([] { Loaded(u"SOFTWARE\\Keys"); }), 6, u"", u"Overflow");
}

TEST_F(Loading, EndlessEnumerationEndsWithOverflow) {
  SetText(u"Path", u"C:\\Kestra\\");
  registry.EnumerateEndlessly();
  ExpectError(ErrorOf([] { Loaded(); }), 6, u"", u"Overflow");
}

TEST_F(LoadingClosely, LoadCallsTheSystemOncePerItem) {
  for (int i = 0; i < 10000; ++i) {
    watched.SetText(kLocalMachine, kPath, u"v" + Decimal10(i), u"text " + Decimal10(i));
    watched.MakeKey(kLocalMachine, kPath + u"\\k" + Decimal10(100000 + i));
  }
  const CRegistry key = Loaded();
  EXPECT_EQ(key.ValueCount(), 10000);
  EXPECT_EQ(key.GetValue(u"v9999"), u"text 9999");
  // Each item once, the end of each enumeration, and the limits of each.
  EXPECT_EQ(watched.calls, 20000U + 2 + 2);
}

TEST_F(LoadingClosely, LoadReadsAValueThatGrewMeanwhile) {
  watched.SetText(kLocalMachine, kPath, u"Path", u"C:\\");
  watched.SetText(kLocalMachine, kPath, u"Other", u"D:\\");
  watched.grown = u"C:\\Program\\Kestra\\";
  const CRegistry key = Loaded();
  EXPECT_EQ(key.GetValue(u"Path"), u"C:\\Program\\Kestra\\");
  EXPECT_EQ(key.GetValue(u"Other"), u"D:\\");
  EXPECT_EQ(key.ValueCount(), 2);
}

TEST_F(LoadingClosely, LoadAsksForTheRightsOfReadingAndCreating) {
  Loaded();
  EXPECT_EQ(watched.accesses, std::vector<std::uint32_t>{0x3F});
  watched.accesses.clear();
  CRegistry key;
  key.SetAutoCreate(false);
  key.SetKey(kPath);
  EXPECT_EQ(watched.accesses, std::vector<std::uint32_t>{0x1F});
}

TEST_F(LoadingClosely, KeyNeitherCreatedNorOpenedRaisesAnError) {
  for (const std::uint32_t disposition : {0U, 3U}) {
    watched.givenDisposition = disposition;
    ExpectError(ErrorOf([] { Loaded(); }), kCannotCreate, u"GetKeyInfo", u"Unable to create Key");
  }
}

TEST_F(LoadingClosely, ErrorInsideKeyCreationIsReportedAsUnknown) {
  watched.failure = [] {
    throw automation::AutomationError(automation::RuntimeError::TypeMismatch);
  };
  ExpectError(ErrorOf([] { Loaded(); }), kUnknownError, u"CreateEx", u"Unknown Error: 13");
  watched.failure = [] { throw std::bad_alloc(); };
  ExpectError(ErrorOf([] { Loaded(); }), kUnknownError, u"CreateEx", u"Unknown Error: 7");
}

TEST_F(LoadingClosely, SettingTheRootTriesToOpenTheCurrentKey) {
  CRegistry key;
  key.SetRoot(MemoryRegistry::kCurrentUser);
  EXPECT_TRUE(watched.accesses.empty()) << "there is no key yet";
  key.SetKey(kPath);
  watched.accesses.clear();
  key.SetRoot(kLocalMachine);
  EXPECT_EQ(watched.accesses, std::vector<std::uint32_t>{0x1F});
  EXPECT_EQ(key.Root(), kLocalMachine);
  EXPECT_FALSE(watched.KeyExists(kLocalMachine, kPath)) << "nothing is created or loaded";
}

}  // namespace
}  // namespace registry
