#include <gmock/gmock.h>

#include "com/win32.h"
#include "fakes/printing.h"
#include "windows/registry_user_settings.h"

namespace system_tests {
namespace {

constexpr const wchar_t* kKey = L"Software\\VB and VBA Program Settings\\VILNORTEST\\Environment";

class UserSettings : public testing::Test {
 protected:
  ~UserSettings() override {
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\VB and VBA Program Settings\\VILNORTEST");
  }

  std::u16string Get() { return settings_.Get(u"VILNORTEST", u"Environment", u"Vilnor"); }
  void Save(const std::u16string& text) {
    settings_.Save(u"VILNORTEST", u"Environment", u"Vilnor", text);
  }

  ::windows::RegistryUserSettings settings_;
};

TEST_F(UserSettings, UnsavedSettingReadsAsEmpty) {
  EXPECT_EQ(Get(), u"");
}

TEST_F(UserSettings, LastSavedSettingIsRead) {
  Save(u"C:\\Länk\\Link.exe");
  EXPECT_EQ(Get(), u"C:\\Länk\\Link.exe");
  Save(u"");
  EXPECT_EQ(Get(), u"");
  const std::u16string longText(5000, u'ж');
  Save(longText);
  EXPECT_EQ(Get(), longText);
}

TEST_F(UserSettings, SettingIsStoredWhereTheHostKeepsItsOwn) {
  Save(u"C:\\Link\\Link.exe");
  std::array<wchar_t, 100> text{};
  DWORD bytes = sizeof text;
  DWORD type = 0;
  ASSERT_EQ(
      RegGetValueW(HKEY_CURRENT_USER, kKey, L"Vilnor", RRF_RT_ANY, &type, text.data(), &bytes),
      ERROR_SUCCESS);
  EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
  EXPECT_EQ(std::wstring(text.data()), L"C:\\Link\\Link.exe");
}

TEST_F(UserSettings, SettingThatIsNotTextReadsAsEmpty) {
  const DWORD number = 1;
  RegSetKeyValueW(HKEY_CURRENT_USER, kKey, L"Vilnor", REG_DWORD, &number, sizeof number);
  EXPECT_EQ(Get(), u"");
}

TEST_F(UserSettings, UnterminatedSettingEndsWithItsData) {
  RegSetKeyValueW(HKEY_CURRENT_USER, kKey, L"Vilnor", REG_SZ, L"C:\\Link", 7 * sizeof(wchar_t));
  EXPECT_EQ(Get(), u"C:\\Link");
}

TEST_F(UserSettings, UnsavableSettingRaisesAnError) {
  constexpr std::int32_t kInvalidProcedureCall = 5;
  const std::u16string tooLong(300, u'x');
  EXPECT_EQ(fakes::ErrorNumberOf([&] { settings_.Save(u"VILNORTEST", tooLong, u"Vilnor", u"x"); }),
            kInvalidProcedureCall);
}

}  // namespace
}  // namespace system_tests
