// Every database operation passes its arguments on in order and returns its result. Each argument
// has a different value, so that swapped arguments are noticed.
#include <gmock/gmock.h>

#include "automation/date.h"
#include "system/com/box_answerer.h"
#include "system/com/component.h"
#include "system/com/database.h"
#include "system/com/process_state.h"
#include "system/com/script_view.h"

namespace system_tests {
namespace {

using automation::Value;
using testing::ElementsAre;
using testing::IsEmpty;

// Arguments as a host passes them, by reference; each lives as long as its call.
class Number {
 public:
  explicit Number(long number) : number_(number) {}
  operator long*() { return &number_; }

 private:
  long number_;
};

class Text : public TextArgument {
 public:
  using TextArgument::TextArgument;
  operator BSTR*() { return Reference(); }
};

class Operations : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(session_);
    Init(*session_.get(), database_.ConnectionString());
  }
  void TearDown() override { EXPECT_THAT(boxes_.Texts(), IsEmpty()); }

  // The result of an operation; fails the test when it does not return S_OK.
  template <class Call>
  static bool Truth(Call call) {
    VARIANT_BOOL result = VARIANT_FALSE;
    EXPECT_EQ(call(&result), S_OK);
    return result != VARIANT_FALSE;
  }
  template <class Call>
  static std::u16string TextOf(Call call) {
    Bstr result;
    EXPECT_EQ(call(result.Receive()), S_OK);
    return result.Text();
  }
  template <class Call>
  static Value FieldOf(Call call, const char16_t* field) {
    ComPtr<IDispatch> rows;
    EXPECT_EQ(call(rows.Receive()), S_OK);
    return rows ? Field(*rows.get(), field) : Value(u"no recordset");
  }
  std::vector<std::u16string> UserNames(const std::u16string& condition) const {
    return database_.Rows(u"PID,UserName", u"VilnorPasient WHERE " + condition);
  }

  TestDatabase database_;
  ComPtr<_BVilnor> session_ = NewBVilnor();
  BoxAnswerer boxes_;
};

class DBVilnorOperations : public Operations {
 protected:
  void SetUp() override {
    Operations::SetUp();
    ASSERT_EQ(CoCreateInstance(CLSID_DBVilnor, nullptr, CLSCTX_INPROC_SERVER, IID__DBVilnor,
                               object_.ReceiveVoid()),
              S_OK);
  }

  ComPtr<_DBVilnor> object_;
};

TEST_F(DBVilnorOperations, DBVilnorLooksUpLinks) {
  EXPECT_TRUE(Truth([&](auto* out) { return object_->CaseExists(Number(71), Number(1), out); }));
  EXPECT_TRUE(Truth([&](auto* out) {
    return object_->CaseExistsPID(Number(4712), Number(9), Text(u"2072"), out);
  }));
  EXPECT_EQ(TextOf([&](auto* out) { return object_->GetCaseIdByVilnorId(Number(103), out); }),
            u"2073");
  long vilnorId = 0;
  EXPECT_EQ(object_->GetVilnorIdByFHPId(Number(71), &vilnorId), S_OK);
  EXPECT_EQ(vilnorId, 101);
  // Last, because without a row the shared recordset stays open.
  EXPECT_FALSE(Truth([&](auto* out) { return object_->CaseExists(Number(71), Number(9), out); }));
}

TEST_F(DBVilnorOperations, DBVilnorReturnsRecordsets) {
  EXPECT_EQ(FieldOf([&](auto* out) { return object_->GetFHPById(Number(78), out); }, u"CaseNo"),
            Value(u"2007-078"));
  EXPECT_EQ(FieldOf([&](auto* out) { return object_->GetBIDById(Number(13), out); }, u"Navn"),
            Value(u"Åhlén"));
  EXPECT_EQ(FieldOf([&](auto* out) { return object_->GetRIDById(Number(4), out); }, u"Navn"),
            Value(u"Folktandkliniken Östra"));
  EXPECT_EQ(FieldOf([&](auto* out) { return object_->GetPIDById(Number(4716), out); }, u"Navn"),
            Value(u"O'Neill"));
  EXPECT_EQ(
      FieldOf([&](auto* out) { return object_->GetPatientByPID(Number(4715), out); }, u"ForNavn"),
      Value(u"Éva"));
  EXPECT_EQ(
      FieldOf([&](auto* out) { return object_->GetPatientSSNByPID(Number(4713), out); }, u"fDato"),
      Value(automation::MakeDate({1942, 3, 15})));
  EXPECT_EQ(FieldOf([&](auto* out) { return object_->GetPreRequestCostByFHPid(Number(77), out); },
                    u"RateNo"),
            Value(304));
}

// Batch optimistic or optimistic, client-side: a recordset keeps the way it was opened.
TEST_F(DBVilnorOperations, EachOperationOpensItsRecordsetWithItsOwnCursorAndLock) {
  ComPtr<IDispatch> patient;
  EXPECT_EQ(object_->GetPatientByPID(Number(4711), patient.Receive()), S_OK);
  ASSERT_TRUE(patient);
  EXPECT_EQ(Get(*patient.get(), L"LockType"), Value(4));
  EXPECT_EQ(Get(*patient.get(), L"CursorLocation"), Value(3));
  ComPtr<IDispatch> withNumber;
  EXPECT_EQ(object_->GetPIDById(Number(4711), withNumber.Receive()), S_OK);
  ASSERT_TRUE(withNumber);
  EXPECT_EQ(Get(*withNumber.get(), L"LockType"), Value(3));
  EXPECT_EQ(Get(*withNumber.get(), L"CursorLocation"), Value(3));
}

TEST_F(DBVilnorOperations, DBVilnorLooksUpValues) {
  EXPECT_EQ(TextOf([&](auto* out) { return object_->GetCityByPostnr(Number(35230), out); }),
            u"Växjö");
  EXPECT_TRUE(Truth([&](auto* out) { return object_->PreRequestCostExists(Number(78), out); }));
  EXPECT_FALSE(Truth([&](auto* out) { return object_->PreRequestCostExists(Number(79), out); }));
  EXPECT_EQ(TextOf([&](auto* out) { return object_->GetVilnorUserByCode1(Number(-32001), out); }),
            u"kostnadsgranskare");
}

TEST_F(DBVilnorOperations, DBVilnorAddsACase) {
  EXPECT_EQ(object_->AddNewCase(Number(4711), Number(12), Number(3), Text(u"VL-9"), Number(77),
                                Number(1), Number(5), Text(u"anna"), Text(u"2026-077")),
            S_OK);
  EXPECT_THAT(database_.Rows(u"PID,BID,RID,CaseId,FHP_ID,CaseType,StatusCode,VilnorUser,Journal_ID",
                             u"Vilnor WHERE VilnorId = 104"),
              ElementsAre(u"4711|12|3|VL-9|77|1|5|anna|505"));
  EXPECT_THAT(database_.Rows(u"PID,BID,RID,Tekst,RefTBID", u"Journal WHERE ID = 505"),
              ElementsAre(u"4711|12|3|Förhandsprövning, ärendenr: 2026-077 överförd till Vilnor "
                          u"Link ref.nr VL-9|104"));
}

TEST_F(DBVilnorOperations, DBVilnorUpdatesCases) {
  database_.Execute(u"UPDATE Journal SET Tekst = 'ref.nr !2071' WHERE ID = 501");
  EXPECT_EQ(object_->UpdateCaseById(Number(102), Text(u"3072"), Number(7)), S_OK);
  EXPECT_EQ(object_->UpdateCase(Text(u"3071"), Number(71), Number(4), Number(1)), S_OK);
  EXPECT_THAT(database_.Rows(u"VilnorId,CaseId,StatusCode", u"Vilnor ORDER BY VilnorId"),
              ElementsAre(u"101|3071|4", u"102|3072|7", u"103|2073|5"));
  EXPECT_THAT(database_.Rows(u"Tekst", u"Journal WHERE ID IN (501, 502) ORDER BY ID"),
              ElementsAre(u"ref.nr 3071", u"Ärende upprättat i Vilnor Link ref.nr 3072"));
}

TEST_F(DBVilnorOperations, DBVilnorDeletesCases) {
  EXPECT_EQ(object_->DeleteFHP(Number(71)), S_OK);
  EXPECT_EQ(object_->DeleteCase(Text(u"2073")), S_OK);
  EXPECT_THAT(database_.Rows(u"VilnorId", u"Vilnor"), ElementsAre(u"102"));
  EXPECT_THAT(database_.Rows(u"ID", u"Journal ORDER BY ID"), ElementsAre(u"502", u"504"));
}

TEST_F(DBVilnorOperations, DBVilnorAddsFindsUpdatesAndDeletesUsers) {
  EXPECT_EQ(object_->AddNewVilnorUser(Number(4711), Text(u"1177")), S_OK);
  EXPECT_THAT(UserNames(u"UserName = '1177'"), ElementsAre(u"4711|1177"));
  EXPECT_EQ(object_->UpdateVilnorUser(Number(4711), Text(u"'åsa'")), S_OK);
  EXPECT_THAT(UserNames(u"PID = 4711"), ElementsAre(u"4711|åsa"));
  EXPECT_EQ(TextOf([&](auto* out) { return object_->GetVilnorUserByPID(Number(4711), out); }),
            u"åsa");
  EXPECT_EQ(object_->DeleteVilnorUser(Number(4711)), S_OK);
  EXPECT_THAT(UserNames(u"PID = 4711"), IsEmpty());
}

class BVilnorOperations : public Operations {};

TEST_F(BVilnorOperations, BVilnorAddsFindsUpdatesAndDeletesUsers) {
  EXPECT_EQ(session_->AddNewVilnorUser(Number(4711), Text(u"1177")), S_OK);
  EXPECT_THAT(UserNames(u"UserName = '1177'"), ElementsAre(u"4711|1177"));
  EXPECT_EQ(session_->UpdateVilnorUser(Number(4711), Text(u"'åsa'")), S_OK);
  EXPECT_THAT(UserNames(u"PID = 4711"), ElementsAre(u"4711|åsa"));
  EXPECT_EQ(TextOf([&](auto* out) { return session_->GetVilnorUserByPID(Number(4711), out); }),
            u"åsa");
  EXPECT_EQ(session_->DeleteVilnorUser(Number(4711)), S_OK);
  EXPECT_THAT(UserNames(u"PID = 4711"), IsEmpty());
}

// Each call frees the text left by the call before.
TEST_F(BVilnorOperations, SendCheckFreesItsEarlierMessage) {
  constexpr int kCalls = 100;
  database_.Execute(
      u"UPDATE SEPrerequest SET PlanTreatmUJaw = '1 2 3 4 5' WHERE SEPrerequestID = 78");
  Number fhpId(78);
  short code = 0;
  TextArgument message(u"");
  const auto check = [&] {
    EXPECT_FALSE(Truth(
        [&](auto* out) { return session_->OKToSend(fhpId, &code, message.Reference(), out); }));
    EXPECT_EQ(code, 100);
  };
  // What the first calls allocate permanently.
  for (int i = 0; i < 10; ++i) {
    check();
  }
  const std::size_t before = HeapBytes();
  for (int i = 0; i < kCalls; ++i) {
    check();
  }
  const std::size_t text = message.Text().size() * sizeof(char16_t);
  ASSERT_GT(text, 200U);
  EXPECT_LT(HeapBytes(), before + kCalls * text / 2);
}

}  // namespace
}  // namespace system_tests
