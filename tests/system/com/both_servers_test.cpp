// What every COM server guarantees: the component and the stand-in for ADO alike.
#include <array>
#include <filesystem>
#include <gmock/gmock.h>

#include "com/server_registration.h"
#include "com/variant.h"
#include "system/com/component.h"
#include "system/com/registry_tree.h"

namespace system_tests {
namespace {

using com::Variant;

class Servers : public testing::TestWithParam<const wchar_t*> {};

std::wstring FileOf(const wchar_t* programId) {
  return programId[0] == L'V' ? DllPath() : AdoPath();
}

ComPtr<IDispatch> New(const wchar_t* programId) {
  CLSID classId{};
  ComPtr<IDispatch> object;
  EXPECT_EQ(CLSIDFromProgID(programId, &classId), S_OK);
  EXPECT_EQ(
      CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.ReceiveVoid()),
      S_OK);
  return object;
}

// The result of a call without arguments.
ComPtr<IUnknown> Get(IDispatch& object, DISPID member) {
  DISPPARAMS none{};
  Variant result;
  EXPECT_EQ(
      object.Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                    &none, result.Receive(), nullptr, nullptr),
      S_OK);
  return ComPtr<IUnknown>(V_UNKNOWN(&result.get()));
}

DISPID NumberOf(IDispatch& object, std::wstring name) {
  LPOLESTR names = name.data();
  DISPID member = 0;
  EXPECT_EQ(object.GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &member), S_OK);
  return member;
}

template <class Interface, class Item>
void ExpectNullPointersToBeRefused(IUnknown& object, const IID& interfaceId) {
  ComPtr<Interface> enumerator;
  ASSERT_EQ(object.QueryInterface(interfaceId, enumerator.ReceiveVoid()), S_OK);
  ULONG count = 0;
  std::array<Item, 2> items{};
  EXPECT_EQ(enumerator->Next(1, nullptr, &count), E_POINTER);
  EXPECT_EQ(enumerator->Next(2, items.data(), nullptr), E_POINTER);
  EXPECT_EQ(enumerator->Clone(nullptr), E_POINTER);
}

TEST_P(Servers, NullPointersForTypeInformationAreRefused) {
  const auto object = New(GetParam());
  ASSERT_TRUE(object);
  EXPECT_EQ(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, nullptr), E_POINTER);
  EXPECT_EQ(object->GetTypeInfoCount(nullptr), E_POINTER);
}

TEST_P(Servers, CallByDispIdWithoutArgumentsIsRefused) {
  const auto object = New(GetParam());
  ASSERT_TRUE(object);
  Variant result;
  EXPECT_EQ(object->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT,
                           nullptr, result.Receive(), nullptr, nullptr),
            E_POINTER);
}

TEST_P(Servers, ErrorInformationIsSupportedOnTheDispatchInterface) {
  const auto object = New(GetParam());
  ASSERT_TRUE(object);
  ComPtr<ISupportErrorInfo> support;
  ASSERT_EQ(object->QueryInterface(IID_ISupportErrorInfo, support.ReceiveVoid()), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IDispatch), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IPersist), S_FALSE);
}

// More than 260 characters, the limit of the system's older calls.
TEST_P(Servers, LongServerPathIsRegisteredCompletely) {
  namespace fs = std::filesystem;
  const fs::path temporary = LR"(\\?\)" + fs::temp_directory_path().wstring();
  const fs::path top = temporary / std::wstring(100, L'a');
  const fs::path folder = top / std::wstring(100, L'b') / std::wstring(100, L'c');
  const fs::path original = FileOf(GetParam());
  fs::create_directories(folder);
  ASSERT_NE(CopyFileW(original.c_str(), (folder / L"Long.dll").c_str(), FALSE), FALSE);
  {
    const Module copy((folder / L"Long.dll").wstring());
    ASSERT_TRUE(copy.loaded());
    CLSID classId{};
    ASSERT_EQ(CLSIDFromProgID(GetParam(), &classId), S_OK);
    EXPECT_EQ(copy.RegisterServer(), S_OK);
    EXPECT_THAT(ClassesText(L"CLSID\\" + com::GuidText(classId) + L"\\InprocServer32"),
                testing::EndsWith(std::wstring(100, L'c') + L"\\Long.dll"));
  }
  EXPECT_EQ(Module(original.wstring()).RegisterServer(), S_OK);
  DeleteFileW((folder / L"Long.dll").c_str());
  for (const fs::path& made : {folder, folder.parent_path(), top}) {
    EXPECT_NE(RemoveDirectoryW(made.c_str()), FALSE);
  }
}

INSTANTIATE_TEST_SUITE_P(Both, Servers,
                         testing::Values(L"Vilnor.BVilnor", L"ADODB.Connection",
                                         L"ADODB.Recordset"));

TEST(Enumerators, ComponentsEnumeratorsRefuseNullPointers) {
  const auto session = NewBVilnor();
  ASSERT_TRUE(session);
  ComPtr<IConnectionPointContainer> container;
  ComPtr<IEnumConnectionPoints> points;
  ASSERT_EQ(session->QueryInterface(IID_IConnectionPointContainer, container.ReceiveVoid()), S_OK);
  ASSERT_EQ(container->EnumConnectionPoints(points.Receive()), S_OK);
  ExpectNullPointersToBeRefused<IEnumConnectionPoints, IConnectionPoint*>(
      *points.get(), IID_IEnumConnectionPoints);
}

TEST(Enumerators, AdoCollectionEnumeratorsRefuseNullPointers) {
  const auto connection = New(L"ADODB.Connection");
  ASSERT_TRUE(connection);
  const auto errors = Get(*connection.get(), NumberOf(*connection.get(), L"Errors"));
  ComPtr<IDispatch> collection;
  ASSERT_EQ(errors->QueryInterface(IID_IDispatch, collection.ReceiveVoid()), S_OK);
  const auto enumerator = Get(*collection.get(), DISPID_NEWENUM);
  ASSERT_TRUE(enumerator);
  ExpectNullPointersToBeRefused<IEnumVARIANT, VARIANT>(*enumerator.get(), IID_IEnumVARIANT);
}

}  // namespace
}  // namespace system_tests
