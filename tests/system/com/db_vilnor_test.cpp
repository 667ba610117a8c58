// The class DBVilnor as the host uses it.
#include <gmock/gmock.h>

#include "automation/value.h"
#include "com/variant.h"
#include "system/com/box_answerer.h"
#include "system/com/component.h"
#include "system/com/database.h"
#include "system/com/script_view.h"

namespace system_tests {
namespace {

using automation::Value;
using com::Variant;

constexpr const char16_t* kNoDriver = u"Driver=There is no such driver";

HRESULT NewDBVilnor(ComPtr<_DBVilnor>& object) {
  SetErrorInfo(0, nullptr);
  return CoCreateInstance(CLSID_DBVilnor, nullptr, CLSCTX_INPROC_SERVER, IID__DBVilnor,
                          object.ReceiveVoid());
}

class DBVilnor : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(session_);
    Init(*session_.get(), database_.ConnectionString());
  }

  void Create() { ASSERT_EQ(NewDBVilnor(object_), S_OK); }

  std::u16string UserOf(long pid) const {
    Bstr user;
    EXPECT_EQ(object_->GetVilnorUserByPID(&pid, user.Receive()), S_OK);
    return user.Text();
  }

  TestDatabase database_;
  ComPtr<_BVilnor> session_ = NewBVilnor();
  ComPtr<_DBVilnor> object_;
  BoxAnswerer boxes_;
};

TEST_F(DBVilnor, FailedCreationCarriesTheDatabasesErrorText) {
  Init(*session_.get(), kNoDriver);
  const HRESULT result = NewDBVilnor(object_);
  EXPECT_TRUE(FAILED(result));
  EXPECT_FALSE(object_);
  const auto error = TakeErrorInformation();
  ASSERT_TRUE(error.present);
  EXPECT_FALSE(error.description.empty());
  EXPECT_FALSE(error.source.empty());
  // The host called for the creation, so the host reports the error and the component shows
  // nothing.
  EXPECT_THAT(boxes_.Shown(), testing::IsEmpty());
}

TEST_F(DBVilnor, CreationFailsWhileAnotherObjectHasTheConnectionOpen) {
  Create();
  ComPtr<_DBVilnor> second;
  // 3705 "Operation is not allowed when the object is open."
  EXPECT_EQ(NewDBVilnor(second), static_cast<HRESULT>(0x800A0E79));
  EXPECT_THAT(TakeErrorInformation().description, testing::StartsWith(L"Operation is not allowed"));
}

TEST_F(DBVilnor, FailedInitConnectionIsReturnedToTheCaller) {
  Create();
  SetErrorInfo(0, nullptr);
  EXPECT_EQ(object_->InitConnection(), static_cast<HRESULT>(0x800A0E79));
  EXPECT_TRUE(TakeErrorInformation().present);
  EXPECT_THAT(boxes_.Shown(), testing::IsEmpty());
}

TEST_F(DBVilnor, FailedInitConnectionIsReturnedToALateBoundCaller) {
  constexpr DISPID kInitConnection = 0x60030000;
  Create();
  DISPPARAMS none{};
  EXCEPINFO exception{};
  EXPECT_EQ(object_->Invoke(kInitConnection, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none,
                            nullptr, &exception, nullptr),
            DISP_E_EXCEPTION);
  Bstr source;
  Bstr description;
  *source.Receive() = exception.bstrSource;
  *description.Receive() = exception.bstrDescription;
  EXPECT_EQ(exception.scode, static_cast<SCODE>(0x800A0E79));
  EXPECT_EQ(description.Text(), u"Operation is not allowed when the object is open.");
  EXPECT_EQ(source.Text(), u"ADODB.Connection");
}

TEST_F(DBVilnor, OtherFailureShowsItsBoxAndReturnsAnEmptyResult) {
  database_.Execute(u"DROP TABLE VilnorPasient");
  Create();
  EXPECT_EQ(UserOf(1), u"");
  ASSERT_THAT(boxes_.Shown(), testing::SizeIs(1));
  EXPECT_EQ(boxes_.Shown()[0].title, L"Vilnor Link connection");
  EXPECT_THAT(boxes_.Shown()[0].text, testing::EndsWith(L" in GetVilnorUserByPID"));
}

TEST_F(DBVilnor, RecordsetOutlivesItsDBVilnor) {
  Create();
  long pid = 4711;
  ComPtr<IDispatch> patient;
  ASSERT_EQ(object_->GetPatientByPID(&pid, patient.Receive()), S_OK);
  ASSERT_TRUE(patient);
  object_ = {};
  EXPECT_EQ(Get(*patient.get(), L"EOF"), Value(false));
  EXPECT_EQ(Field(*patient.get(), u"Navn"), Value(u"Öberg"));
  EXPECT_EQ(Field(*patient.get(), u"PersNr"), Value(u"1234"));
}

TEST_F(DBVilnor, ReturnedRecordsetHasTheCallersReferenceOnly) {
  Create();
  using Lookup = HRESULT (STDMETHODCALLTYPE _DBVilnor::*)(long*, IDispatch**);
  struct Row {
    Lookup lookup;
    long key;
  };
  for (auto [lookup, key] :
       {Row{&_DBVilnor::GetFHPById, 78}, Row{&_DBVilnor::GetBIDById, 13},
        Row{&_DBVilnor::GetRIDById, 4}, Row{&_DBVilnor::GetPIDById, 4716},
        Row{&_DBVilnor::GetPreRequestCostByFHPid, 77}, Row{&_DBVilnor::GetPatientByPID, 4715},
        Row{&_DBVilnor::GetPatientSSNByPID, 4713}}) {
    IDispatch* rows = nullptr;
    ASSERT_EQ((object_.get()->*lookup)(&key, &rows), S_OK);
    ASSERT_NE(rows, nullptr);
    EXPECT_EQ(rows->Release(), 0U) << "key " << key;
  }
}

TEST_F(DBVilnor, UnknownPatientGivesNoRecordset) {
  Create();
  long pid = 1;
  ComPtr<IDispatch> patient;
  EXPECT_EQ(object_->GetPatientByPID(&pid, patient.Receive()), S_OK);
  EXPECT_FALSE(patient);
  EXPECT_THAT(boxes_.Shown(), testing::IsEmpty());
}

TEST_F(DBVilnor, CaseIsAddedEarlyBound) {
  Create();
  long pid = 4711;
  long number = 3;
  long type = 9;
  long status = 5;
  TextArgument caseId(u"A-17");
  TextArgument user(u"anna");
  EXPECT_EQ(object_->AddNewCase(&pid, &number, &number, caseId.Reference(), &pid, &type, &status,
                                user.Reference(), nullptr),
            S_OK);
  VARIANT_BOOL exists = VARIANT_FALSE;
  EXPECT_EQ(object_->CaseExistsPID(&pid, &type, caseId.Reference(), &exists), S_OK);
  EXPECT_EQ(exists, VARIANT_TRUE);
  EXPECT_THAT(boxes_.Texts(), testing::IsEmpty());
}

TEST_F(DBVilnor, CaseIsAddedLateBoundWithoutTheOptionalCaseNumber) {
  Create();
  const Variant number{Value(std::int16_t{4711})};
  const Variant type{Value(std::int16_t{9})};
  const Variant caseId{Value(u"A-18")};
  const Variant user{Value(u"anna")};
  std::array<VARIANT, 8> arguments = {user.get(),   type.get(),   type.get(),   number.get(),
                                      caseId.get(), number.get(), number.get(), number.get()};
  DISPPARAMS parameters = {.rgvarg = arguments.data(),
                           .rgdispidNamedArgs = nullptr,
                           .cArgs = static_cast<UINT>(arguments.size()),
                           .cNamedArgs = 0};
  constexpr DISPID kAddNewCase = 0x6003000e;
  EXPECT_EQ(object_->Invoke(kAddNewCase, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                            &parameters, nullptr, nullptr, nullptr),
            S_OK);
  long vilnorId = 104;
  Bstr stored;
  EXPECT_EQ(object_->GetCaseIdByVilnorId(&vilnorId, stored.Receive()), S_OK);
  EXPECT_EQ(stored.Text(), u"A-18");
  EXPECT_THAT(boxes_.Texts(), testing::IsEmpty());
}

TEST_F(DBVilnor, DBVilnorHasNoEvents) {
  Create();
  ComPtr<IConnectionPointContainer> container;
  EXPECT_EQ(object_->QueryInterface(IID_IConnectionPointContainer, container.ReceiveVoid()),
            E_NOINTERFACE);
  ComPtr<IProvideClassInfo2> description;
  ASSERT_EQ(object_->QueryInterface(IID_IProvideClassInfo2, description.ReceiveVoid()), S_OK);
  GUID events = {};
  EXPECT_EQ(description->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), E_INVALIDARG);
}

}  // namespace
}  // namespace system_tests
