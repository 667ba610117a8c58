// Early-bound and late-bound calls of the real component.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>

#include "automation/value.h"
#include "com/variant.h"
#include "com/wide_text.h"
#include "system/com/box_answerer.h"
#include "system/com/component.h"

namespace system_tests {
namespace {

using com::Variant;

constexpr const char* kRequest =
    "<PatientFirstName>\xC5sa</PatientFirstName><PatientLastName>\xD6"
    "berg</PatientLastName><PatientId>19450101-1234</PatientId>";

std::string Contents(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class Binding : public testing::Test {
 protected:
  Binding() { std::filesystem::create_directory(folder_); }
  void SetUp() override { ASSERT_TRUE(session_); }
  ~Binding() override { std::filesystem::remove_all(folder_); }

  std::u16string Folder() const { return com::FromWide(folder_.wstring()); }
  std::filesystem::path Request() const { return folder_ / L"InNewCase4711.xml"; }

  // Calls a method by name, with the arguments in the order in which they are written.
  HRESULT Invoke(const wchar_t* name, std::vector<VARIANT> arguments, VARIANT* result,
                 UINT* wrong = nullptr) const {
    std::wstring text = name;
    LPOLESTR names = text.data();
    DISPID id = 0;
    const HRESULT known = session_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(known)) {
      return known;
    }
    std::reverse(arguments.begin(), arguments.end());
    DISPPARAMS parameters = {.rgvarg = arguments.data(),
                             .rgdispidNamedArgs = nullptr,
                             .cArgs = static_cast<UINT>(arguments.size()),
                             .cNamedArgs = 0};
    return session_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, result,
                            nullptr, wrong);
  }

  std::filesystem::path folder_ = std::filesystem::temp_directory_path() / L"com_tests";
  ComPtr<_BVilnor> session_ = NewBVilnor();
  BoxAnswerer boxes_;
};

TEST_F(Binding, EarlyBoundCallWritesANewCase) {
  long pid = 4711;
  long bid = 12;
  long rid = 3;
  TextArgument ssn(u"19450101-1234");
  TextArgument firstName(u"Åsa");
  TextArgument lastName(u"Öberg");
  const Bstr folder(Folder());
  Bstr path;
  ASSERT_EQ(session_->WriteNewCase(&pid, &bid, &rid, ssn.Reference(), firstName.Reference(),
                                   lastName.Reference(), folder.get(), path.Receive()),
            S_OK);
  EXPECT_EQ(path.Text(), com::FromWide(Request().wstring()));
  EXPECT_THAT(Contents(Request()), testing::HasSubstr(kRequest));
  EXPECT_EQ(pid, 4711);
  EXPECT_EQ(lastName.Text(), u"Öberg");
}

TEST_F(Binding, LateBoundCallWritesTheSameNewCaseFromValuesAndVariables) {
  // As a script passes them: numbers in the smallest type, variables by reference.
  Variant pid{automation::Value(std::int16_t{4711})};
  Variant lastName{automation::Value(u"Öberg")};
  VARIANT pidVariable{};
  V_VT(&pidVariable) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(&pidVariable) = const_cast<VARIANT*>(&pid.get());
  VARIANT nameVariable{};
  V_VT(&nameVariable) = VT_BYREF | VT_VARIANT;
  V_VARIANTREF(&nameVariable) = const_cast<VARIANT*>(&lastName.get());
  const Variant bid{automation::Value(std::int16_t{12})};
  const Variant rid{automation::Value(u"3")};
  const Variant ssn{automation::Value(u"19450101-1234")};
  const Variant firstName{automation::Value(u"Åsa")};
  const Variant folder{automation::Value(Folder())};
  Variant path;
  ASSERT_EQ(Invoke(L"WriteNewCase",
                   {pidVariable, bid.get(), rid.get(), ssn.get(), firstName.get(), nameVariable,
                    folder.get()},
                   path.Receive()),
            S_OK);
  EXPECT_EQ(com::ToValue(path.get()), automation::Value(com::FromWide(Request().wstring())));
  EXPECT_THAT(Contents(Request()), testing::HasSubstr(kRequest));
  EXPECT_EQ(V_VT(&pid.get()), VT_I2);
}

TEST_F(Binding, MemberNamesAreFoundIgnoringCase) {
  std::wstring name = L"openwithnewcase";
  LPOLESTR names = name.data();
  DISPID id = 0;
  EXPECT_EQ(session_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id), S_OK);
  EXPECT_EQ(id, 0x60030004);
  EXPECT_EQ(Invoke(L"LaunchCount", {}, nullptr), DISP_E_UNKNOWNNAME);
}

TEST_F(Binding, NonNumericLateBoundArgumentIsNamed) {
  const Variant number{automation::Value(std::int32_t{1})};
  const Variant text{automation::Value(u"no number")};
  UINT wrong = 99;
  EXPECT_EQ(Invoke(L"OpenWithNewCase", {number.get(), text.get(), number.get()}, nullptr, &wrong),
            DISP_E_TYPEMISMATCH);
  EXPECT_EQ(wrong, 1U);
}

TEST_F(Binding, LateBoundCallWithAWrongNumberOfArgumentsIsRefused) {
  const Variant number{automation::Value(std::int32_t{1})};
  EXPECT_EQ(Invoke(L"OpenWithNewCase", {number.get()}, nullptr), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(Invoke(L"OpenVilnor", {number.get()}, nullptr), DISP_E_BADPARAMCOUNT);
  EXPECT_THAT(boxes_.Texts(), testing::IsEmpty());
}

TEST_F(Binding, NullPointerIsAnsweredWithAnError) {
  EXPECT_EQ(session_->OpenExistCase(nullptr), E_POINTER);
  long id = 1;
  EXPECT_EQ(session_->FHPExists(&id, nullptr), E_POINTER);
}

TEST_F(Binding, TypeInformationIsThatOfTheTypeLibrary) {
  UINT count = 0;
  EXPECT_EQ(session_->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 1U);
  ComPtr<ITypeInfo> info;
  EXPECT_EQ(session_->GetTypeInfo(1, LOCALE_USER_DEFAULT, info.Receive()), DISP_E_BADINDEX);
  ASSERT_EQ(session_->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Receive()), S_OK);
  TYPEATTR* attributes = nullptr;
  info->GetTypeAttr(&attributes);
  EXPECT_TRUE(attributes->guid == IID__BVilnor);
  info->ReleaseTypeAttr(attributes);
}

}  // namespace
}  // namespace system_tests
