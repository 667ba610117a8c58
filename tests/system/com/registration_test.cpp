#include <gmock/gmock.h>

#include "system/com/component.h"
#include "system/com/registry_tree.h"

namespace system_tests {
namespace {

constexpr const wchar_t* kBVilnorKey = L"CLSID\\{237F4B29-1C3E-419F-AE49-B0D6EDE0F48D}";
constexpr const wchar_t* kDBVilnorKey = L"CLSID\\{B13A5301-9A52-4E42-9206-539CA3E8896A}";
constexpr const wchar_t* kLibrary = L"{BE8BF900-4ED6-483F-B01F-3B6E8AC12600}";

// The component is registered when a test starts, and again after it.
class Registration : public testing::Test {
 protected:
  ~Registration() override { component_.RegisterServer(); }

  Module component_{DllPath()};
};

TEST_F(Registration, BothClassesAreRegisteredUnderTheirProgIds) {
  CLSID found = {};
  ASSERT_HRESULT_SUCCEEDED(CLSIDFromProgID(L"Vilnor.BVilnor", &found));
  EXPECT_TRUE(found == CLSID_BVilnor);
  ASSERT_HRESULT_SUCCEEDED(CLSIDFromProgID(L"Vilnor.DBVilnor", &found));
  EXPECT_TRUE(found == CLSID_DBVilnor);
}

TEST_F(Registration, BothClassesAreApartmentThreaded) {
  for (const std::wstring key : {kBVilnorKey, kDBVilnorKey}) {
    EXPECT_EQ(ClassesText(key + L"\\InprocServer32"), DllPath());
    EXPECT_EQ(ClassesText(key + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
    EXPECT_EQ(ClassesText(key + L"\\TypeLib"), kLibrary);
    EXPECT_EQ(ClassesText(key + L"\\Version"), L"1.5");
  }
  EXPECT_EQ(ClassesText(std::wstring(kBVilnorKey) + L"\\ProgID"), L"Vilnor.BVilnor");
  EXPECT_EQ(ClassesText(std::wstring(kDBVilnorKey) + L"\\ProgID"), L"Vilnor.DBVilnor");
}

TEST_F(Registration, TypeLibraryIsFoundByItsVersionAndLocale) {
  ComPtr<ITypeLib> library;
  ASSERT_HRESULT_SUCCEEDED(LoadRegTypeLib(LIBID_Vilnor, 1, 5, 0x409, library.Receive()));
  EXPECT_EQ(ClassesText(std::wstring(L"TypeLib\\") + kLibrary + L"\\1.5\\409\\win32"), DllPath());
  constexpr LCID kSwedish = 0x41D;
  EXPECT_HRESULT_SUCCEEDED(LoadRegTypeLib(LIBID_Vilnor, 1, 5, kSwedish, library.Receive()));
  EXPECT_HRESULT_SUCCEEDED(LoadRegTypeLib(LIBID_Vilnor, 1, 5, LOCALE_NEUTRAL, library.Receive()));
}

TEST_F(Registration, UnregisteringLeavesNothing) {
  ASSERT_HRESULT_SUCCEEDED(component_.UnregisterServer());
  const auto before = ClassesTree();
  ASSERT_HRESULT_SUCCEEDED(component_.RegisterServer());
  EXPECT_GT(ClassesTree().size(), before.size());
  ASSERT_HRESULT_SUCCEEDED(component_.UnregisterServer());
  EXPECT_TRUE(ClassesTree() == before);
}

TEST_F(Registration, RegisteringAndUnregisteringMayBeRepeated) {
  const auto registered = ClassesTree(kBVilnorKey);
  EXPECT_EQ(component_.RegisterServer(), S_OK);
  EXPECT_TRUE(ClassesTree(kBVilnorKey) == registered);
  EXPECT_EQ(component_.UnregisterServer(), S_OK);
  EXPECT_EQ(component_.UnregisterServer(), S_OK);
}

TEST_F(Registration, UnregisteredClassesAndLibraryCannotBeFound) {
  ASSERT_HRESULT_SUCCEEDED(component_.UnregisterServer());
  CLSID found = {};
  EXPECT_EQ(CLSIDFromProgID(L"Vilnor.BVilnor", &found), CO_E_CLASSSTRING);
  ComPtr<ITypeLib> library;
  EXPECT_EQ(LoadRegTypeLib(LIBID_Vilnor, 1, 5, 0x409, library.Receive()), TYPE_E_LIBNOTREGISTERED);
}

}  // namespace
}  // namespace system_tests
