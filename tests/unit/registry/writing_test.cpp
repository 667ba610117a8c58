#include "registry/errors.h"
#include "registry_fixture.h"
#include "watched_registry.h"

namespace registry {
namespace {

using fakes::MemoryRegistry;

class Writing : public RegistryTest {
 protected:
  // A box with only OK, without an icon or its own title.
  static std::vector<platform::MessageBox> Boxes(std::initializer_list<std::u16string> texts) {
    std::vector<platform::MessageBox> boxes;
    for (const auto& text : texts) {
      boxes.push_back({.text = text, .title = {}});
    }
    return boxes;
  }
};

TEST_F(Writing, NewAndExistingValuesAreSetByName) {
  CRegistry key = Loaded();
  EXPECT_TRUE(key.SetValue(u"Sökväg", u"C:\\Åke\\"));
  EXPECT_EQ(Text(u"Sökväg"), u"C:\\Åke\\");
  EXPECT_TRUE(key.SetValue(u"SÖKVÄG", u"D:\\"));
  EXPECT_EQ(Text(u"Sökväg"), u"D:\\");
  EXPECT_TRUE(key.SetValue(u"", u"standard"));
  EXPECT_EQ(Text(u""), u"standard");
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(Writing, ValueIsSetByPosition) {
  SetText(u"First", u"1");
  SetText(u"Second", u"2");
  CRegistry key = Loaded();
  EXPECT_TRUE(key.SetValue(std::int16_t{1}, u"two"));
  EXPECT_EQ(Text(u"First"), u"1");
  EXPECT_EQ(Text(u"Second"), u"two");
  EXPECT_TRUE(key.SetValue(std::int32_t{1}, u"named one"));
  EXPECT_EQ(Text(u"1"), u"named one");
}

TEST_F(Writing, InvalidPositionOrNullNameIsAnErrorAndWritesNothing) {
  CRegistry key = Loaded();
  ExpectError(ErrorOf([&] { key.SetValue(std::int16_t{1}, u"x"); }), 9, u"",
              u"Subscript out of range");
  ExpectError(ErrorOf([&] { key.SetValue(std::int16_t{-1}, u"x"); }), 9, u"",
              u"Subscript out of range");
  ExpectError(ErrorOf([&] { key.SetValue(automation::Null(), u"x"); }), 94, u"",
              u"Invalid use of Null");
  EXPECT_FALSE(registry.ValueExists(kLocalMachine, kPath, u""));
}

TEST_F(Writing, WrittenValueShowsOnlyAfterRefresh) {
  CRegistry key = Loaded();
  key.SetValue(u"Path", u"C:\\");
  EXPECT_EQ(key.GetValue(u"Path"), u"");
  key.Refresh();
  EXPECT_EQ(key.GetValue(u"Path"), u"C:\\");
}

TEST_F(Writing, ValueOfAnotherTypeBecomesTextWhenWritten) {
  registry.SetOther(kLocalMachine, kPath, u"Path", 4);
  CRegistry key = Loaded();
  EXPECT_TRUE(key.SetValue(u"Path", u"C:\\"));
  key.Refresh();
  EXPECT_EQ(key.GetValue(u"Path"), u"C:\\");
}

TEST_F(Writing, UnwritableKeyIsReportedAndGivesFalse) {
  SetText(u"Path", u"C:\\");
  CRegistry key = Loaded();
  registry.DenyWrite(kLocalMachine, kPath);
  EXPECT_FALSE(key.SetValue(u"Path", u"D:\\"));
  EXPECT_EQ(Text(u"Path"), u"C:\\");
  EXPECT_EQ(dialogs.shown, Boxes({u"Darn!!  Couldn't write new value."}));
}

TEST_F(Writing, RefusedValueIsReportedAndGivesFalse) {
  CRegistry key = Loaded();
  EXPECT_FALSE(key.SetValue(std::u16string(MemoryRegistry::kLongestValueName + 1, u'n'), u"x"));
  registry.Fail(MemoryRegistry::Call::SetValue, 14);
  EXPECT_FALSE(key.SetValue(u"Path", u"x"));
  EXPECT_EQ(dialogs.shown,
            Boxes({u"Darn!!  Couldn't write new value.", u"Darn!!  Couldn't write new value."}));
}

TEST_F(Writing, DeletingAValueReloadsTheKey) {
  SetText(u"Path", u"C:\\");
  SetText(u"Other", u"D:\\");
  CRegistry key = Loaded();
  EXPECT_TRUE(key.DeleteValue(u"PATH"));
  EXPECT_FALSE(registry.ValueExists(kLocalMachine, kPath, u"Path"));
  EXPECT_EQ(key.ValueCount(), 1);
  EXPECT_EQ(key.GetName(0), u"Other");
}

TEST_F(Writing, UndeletableValueGivesFalseAndTheKeyIsStillReloaded) {
  CRegistry key = Loaded();
  SetText(u"New", u"1");
  EXPECT_FALSE(key.DeleteValue(u"Missing"));
  EXPECT_EQ(key.ValueCount(), 1);
  registry.Fail(MemoryRegistry::Call::DeleteValue, 5);
  EXPECT_FALSE(key.DeleteValue(u"New"));
  EXPECT_EQ(Text(u"New"), u"1");
}

TEST_F(Writing, UnnamedValueIsDeleted) {
  SetText(u"", u"standard");
  EXPECT_TRUE(Loaded().DeleteValue(u""));
  EXPECT_FALSE(registry.ValueExists(kLocalMachine, kPath, u""));
}

TEST_F(Writing, SubKeyIsDeletedWithEverythingBelowIt) {
  for (const auto* below :
       {u"\\Sub", u"\\Sub\\A", u"\\Sub\\A\\1", u"\\Sub\\A\\2", u"\\Sub\\B", u"\\Stays"}) {
    registry.SetText(kLocalMachine, kPath + below, u"Name", u"value");
  }
  CRegistry key = Loaded();
  EXPECT_TRUE(key.DeleteKey(u"SUB"));
  EXPECT_FALSE(Exists(kPath + u"\\Sub"));
  EXPECT_TRUE(Exists(kPath + u"\\Stays"));
  EXPECT_EQ(key.SubKeyCount(), 2);
  key.Refresh();
  EXPECT_EQ(key.SubKeyCount(), 1);
}

TEST_F(Writing, SubKeyIsDeletedByItsPath) {
  registry.MakeKey(kLocalMachine, kPath + u"\\Sub\\A");
  CRegistry key = Loaded();
  EXPECT_TRUE(key.DeleteKey(u"Sub\\A"));
  EXPECT_TRUE(Exists(kPath + u"\\Sub"));
  EXPECT_FALSE(Exists(kPath + u"\\Sub\\A"));
}

TEST_F(Writing, DeepTreeIsDeleted) {
  std::u16string path = kPath + u"\\Sub";
  for (int depth = 0; depth < 200; ++depth) {
    path += u"\\d";
  }
  registry.MakeKey(kLocalMachine, path);
  EXPECT_TRUE(Loaded().DeleteKey(u"Sub"));
  EXPECT_FALSE(Exists(kPath + u"\\Sub"));
}

TEST_F(Writing, DeletingAnUnknownSubKeyDeletesNothing) {
  using namespace std::string_literals;
  registry.MakeKey(kLocalMachine, kPath + u"\\Sub");
  CRegistry key = Loaded();
  for (const auto& name : {u""s, u"\\"s, u"\\\\"s, u"\0Sub"s, u"Missing"s, u"Sub\\Missing"s}) {
    EXPECT_FALSE(key.DeleteKey(name));
  }
  EXPECT_TRUE(Exists(kPath + u"\\Sub"));
}

TEST_F(Writing, PartlyDeletedSubKeyGivesFalse) {
  registry.MakeKey(kLocalMachine, kPath + u"\\Sub\\A");
  registry.MakeKey(kLocalMachine, kPath + u"\\Sub\\B");
  CRegistry key = Loaded();
  registry.DenyWrite(kLocalMachine, kPath + u"\\Sub\\B");
  EXPECT_FALSE(key.DeleteKey(u"Sub"));
  EXPECT_TRUE(Exists(kPath + u"\\Sub\\B"));
}

TEST_F(Writing, NothingIsDeletedWhenTheCurrentKeyIsGone) {
  registry.MakeKey(kLocalMachine, kPath + u"\\Sub");
  CRegistry key = Loaded();
  Loaded(u"SOFTWARE").DeleteKey(u"Kestra");
  EXPECT_FALSE(key.DeleteKey(u"Sub"));
  EXPECT_FALSE(Exists(kPath)) << "nothing may come back";
}

class WritingClosely : public WatchedRegistryTest {};

TEST_F(WritingClosely, KeyIsOpenedWithWriteRightsOnly) {
  CRegistry key = Loaded();
  watched.accesses.clear();
  EXPECT_TRUE(key.SetValue(u"Path", u"C:\\"));
  EXPECT_EQ(watched.accesses, std::vector<std::uint32_t>{6});
}

class Creating : public Writing {};

TEST_F(Creating, CreatedKeyIsBelowTheCurrentOneAndBecomesIt) {
  CRegistry key = Loaded();
  EXPECT_EQ(key.Create(u"Sub"), -1);
  EXPECT_EQ(key.Key(), kPath + u"\\Sub");
  EXPECT_TRUE(Exists(kPath + u"\\Sub"));
  EXPECT_EQ(key.ValueCount(), 0);
}

TEST_F(Creating, CreatingTheCurrentPathStaysThere) {
  SetText(u"Path", u"C:\\");
  CRegistry key = Loaded();
  EXPECT_EQ(key.Create(u"software\\KESTRA\\kestra.main.exe"), -1);
  EXPECT_EQ(key.Key(), kPath);
  EXPECT_EQ(key.GetValue(u"Path"), u"C:\\");
}

TEST_F(Creating, KeyCreatedWithoutACurrentOneStartsAtTheRoot) {
  CRegistry key;
  EXPECT_EQ(key.Create(kPath), -1);
  EXPECT_EQ(key.Key(), kPath);
  EXPECT_TRUE(Exists(kPath));
}

TEST_F(Creating, ValueIsWrittenAndLoadedWhenNameAndTextAreGiven) {
  CRegistry key = Loaded();
  EXPECT_EQ(key.Create(u"Sub", u"Path", u"C:\\"), -1);
  EXPECT_EQ(registry.Text(kLocalMachine, kPath + u"\\Sub", u"Path"), u"C:\\");
  EXPECT_EQ(key.GetValue(u"Path"), u"C:\\");
}

TEST_F(Creating, NothingIsWrittenWhenOnlyNameOrTextIsGiven) {
  CRegistry key = Loaded();
  EXPECT_EQ(key.Create(u"Sub", u"Path"), -1);
  EXPECT_EQ(key.Create(u"Below", std::nullopt, u"C:\\"), -1);
  EXPECT_FALSE(registry.ValueExists(kLocalMachine, kPath + u"\\Sub", u"Path"));
  EXPECT_FALSE(registry.ValueExists(kLocalMachine, kPath + u"\\Sub\\Below", u""));
}

TEST_F(Creating, UnwritableValueOfACreatedKeyIsReportedTwice) {
  CRegistry key = Loaded();
  registry.Fail(MemoryRegistry::Call::SetValue, 14);
  EXPECT_EQ(key.Create(u"Sub", u"Path", u"C:\\"), -1);
  EXPECT_EQ(dialogs.shown, Boxes({u"Darn!!  Couldn't write new value.", u"Could not set value"}));
}

TEST_F(Creating, CreatedKeyThatCannotBeOpenedGivesZero) {
  CRegistry key = Loaded();
  registry.Fail(MemoryRegistry::Call::Open, 1018);
  EXPECT_EQ(key.Create(u"Sub"), 0);
}

TEST_F(Creating, RefusedKeyCreationIsAnErrorAndKeepsTheCurrentKey) {
  SetText(u"Path", u"C:\\");
  CRegistry key = Loaded();
  registry.DenyWrite(kLocalMachine, kPath);
  ExpectError(ErrorOf([&] { key.Create(u"Sub"); }), kUnknownError, u"CreateEx",
              u"Unknown Error: 5");
  EXPECT_EQ(key.Key(), kPath);
  EXPECT_EQ(key.GetValue(u"Path"), u"C:\\");
}

TEST_F(Creating, KeyIsCreatedWithoutAutoCreateToo) {
  CRegistry key = Loaded();
  key.SetAutoCreate(false);
  EXPECT_EQ(key.Create(u"Sub"), -1);
  EXPECT_TRUE(Exists(kPath + u"\\Sub"));
}

}  // namespace
}  // namespace registry
