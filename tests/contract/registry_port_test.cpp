// What the registry class relies on from the system's registry.
#include "contract/registry_fixture.h"

namespace contract {
namespace {

constexpr std::size_t kLongestKeyName = 255;
constexpr std::size_t kLongestValueName = 16383;

class RegistryPort : public RegistryContract {
 protected:
  // The only value of the key.
  Api::ValueEntry OnlyValue() const {
    const auto handle = Opened(path);
    Api::Limits limits;
    EXPECT_EQ(Registry().QueryLimits(handle.key(), limits), Api::kSuccess);
    Api::ValueEntry entry;
    EXPECT_EQ(Registry().EnumValue(handle.key(), 0, limits, entry), Api::kSuccess);
    Api::ValueEntry none;
    EXPECT_EQ(Registry().EnumValue(handle.key(), 1, limits, none), Api::kNoMoreItems);
    return entry;
  }
};

TEST_F(RegistryPort, MissingKeyIsNotFound) {
  Api::Key key = 0;
  EXPECT_EQ(Registry().OpenKey(kCurrentUser, path, kAllRights, key), Api::kFileNotFound);
}

TEST_F(RegistryPort, KeyIsCreatedWithItsParentsAndReportedAsNewOrExisting) {
  Api::Key key = 0;
  std::uint32_t disposition = 0;
  ASSERT_EQ(Registry().CreateKey(kCurrentUser, path + u"\\A\\B", kAllRights, key, disposition),
            Api::kSuccess);
  EXPECT_EQ(disposition, 1U);
  EXPECT_EQ(Registry().CloseKey(key), Api::kSuccess);
  ASSERT_EQ(Registry().CreateKey(kCurrentUser, path + u"\\a", kAllRights, key, disposition),
            Api::kSuccess);
  EXPECT_EQ(disposition, 2U);
  EXPECT_EQ(Registry().CloseKey(key), Api::kSuccess);
}

TEST_F(RegistryPort, SwedishLettersInNamesAndDataAreKept) {
  SetText(u"Sökväg Åäö", u"C:\\Åkes tandvård\\Öppet é €");
  const auto entry = OnlyValue();
  EXPECT_EQ(entry.name, u"Sökväg Åäö");
  EXPECT_EQ(entry.type, Api::kTypeText);
  EXPECT_EQ(entry.text, u"C:\\Åkes tandvård\\Öppet é €");

  Opened(path + u"\\Nyckel åäö");
  const auto handle = Opened(path);
  Api::Limits limits;
  std::u16string subKey;
  EXPECT_EQ(Registry().QueryLimits(handle.key(), limits), Api::kSuccess);
  EXPECT_EQ(Registry().EnumKey(handle.key(), 0, limits, subKey), Api::kSuccess);
  EXPECT_EQ(subKey, u"Nyckel åäö");
  EXPECT_EQ(Registry().EnumKey(handle.key(), 1, limits, subKey), Api::kNoMoreItems);
}

TEST_F(RegistryPort, NamesAreFoundIgnoringCase) {
  SetText(u"Åre", u"1");
  SetText(u"åRE", u"2");
  EXPECT_EQ(OnlyValue().name, u"Åre");
  EXPECT_EQ(OnlyValue().text, u"2");
  EXPECT_EQ(Registry().DeleteValue(Opened(path).key(), u"ÅRE"), Api::kSuccess);
  EXPECT_EQ(Registry().DeleteValue(Opened(path).key(), u"ÅRE"), Api::kFileNotFound);
}

TEST_F(RegistryPort, EmptyTextAndEmbeddedNulsAreKept) {
  using namespace std::string_literals;
  SetText(u"Text", u"");
  EXPECT_EQ(OnlyValue().text, u"");
  SetText(u"Text", u"a\0b"s);
  EXPECT_EQ(OnlyValue().text, u"a\0b"s);
  SetText(u"Text", u"a\0"s);
  EXPECT_EQ(OnlyValue().text, u"a\0"s);
}

TEST_F(RegistryPort, NameEndsAtItsFirstNul) {
  using namespace std::string_literals;
  SetText(u"Path\0more"s, u"x");
  EXPECT_EQ(OnlyValue().name, u"Path");
}

TEST_F(RegistryPort, ValueOfAnotherTypeGivesItsTypeAndNoText) {
  SetNumber(path, u"Number");
  EXPECT_EQ(OnlyValue().type, 4U);
  EXPECT_EQ(OnlyValue().text, u"");
}

TEST_F(RegistryPort, NamesUpToTheLimitAreAcceptedAndLongerOnesRefused) {
  const std::u16string longest(kLongestValueName, u'n');
  SetText(longest, std::u16string(1 << 20, u'd'));
  EXPECT_EQ(OnlyValue().name, longest);
  EXPECT_EQ(OnlyValue().text, std::u16string(1 << 20, u'd'));
  EXPECT_NE(Registry().SetTextValue(Opened(path).key(), longest + u"n", u""), Api::kSuccess);

  // Relative to its parent: the ANSI calls accept paths of about 260 characters.
  Opened(std::u16string(kLongestKeyName, u'k'), Opened(path).key());
  Api::Key key = 0;
  std::uint32_t disposition = 0;
  EXPECT_NE(Registry().CreateKey(kCurrentUser, path + u"\\" + std::u16string(1000, u'k'),
                                 kAllRights, key, disposition),
            Api::kSuccess);
}

TEST_F(RegistryPort, ValueBeyondTheLimitsGivesMoreData) {
  SetText(u"Path", u"short");
  const auto handle = Opened(path);
  Api::Limits limits;
  EXPECT_EQ(Registry().QueryLimits(handle.key(), limits), Api::kSuccess);
  SetText(u"Path", std::u16string(1000, u'x'));
  Api::ValueEntry entry;
  EXPECT_EQ(Registry().EnumValue(handle.key(), 0, limits, entry), Api::kMoreData);
}

TEST_F(RegistryPort, CallBeyondTheHandlesRightsIsDenied) {
  SetText(u"Path", u"x");
  constexpr std::uint32_t writing = 0x06;
  Api::Key key = 0;
  ASSERT_EQ(Registry().OpenKey(kCurrentUser, path, writing, key), Api::kSuccess);
  const registry::KeyHandle handle(Registry(), key);
  Api::ValueEntry entry;
  EXPECT_EQ(Registry().EnumValue(key, 0, {100, 100, 100}, entry), Api::kAccessDenied);
  EXPECT_EQ(Registry().SetTextValue(key, u"Path", u"y"), Api::kSuccess);
}

TEST_F(RegistryPort, InvalidParentKeyIsRefused) {
  Api::Key key = 0;
  std::uint32_t disposition = 0;
  EXPECT_NE(Registry().OpenKey(0x12345, path, kAllRights, key), Api::kSuccess);
  EXPECT_NE(Registry().CreateKey(0x12345, path, kAllRights, key, disposition), Api::kSuccess);
}

}  // namespace
}  // namespace contract
