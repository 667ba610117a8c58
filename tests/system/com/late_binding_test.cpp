// How arguments by reference return to a late-bound caller, tested with an object that shows what
// it was given in place of the component.
#include "com/late_binding.h"

#include <algorithm>
#include <array>
#include <gmock/gmock.h>

#include "automation/value.h"
#include "com/variant.h"
#include "system/com/component.h"
#include "vilnor_dll/b_vilnor_object.h"

namespace system_tests {
namespace {

using automation::Value;
using com::Variant;

constexpr DISPID kOKToSend = 0x60030010;
constexpr DISPID kOpenWithNewCase = 0x60030004;

// A session whose send check refuses every application with a text, except number 0.
class RefusingSession : public vilnor_dll::BVilnorObject {
 public:
  HRESULT STDMETHODCALLTYPE OKToSend(long* fhpId, short* errCode, BSTR* errMsg,
                                     VARIANT_BOOL* result) override {
    given = {*fhpId, *errCode};
    givenText = com::TextOf(*errMsg);
    *result = *fhpId == 0 ? VARIANT_TRUE : VARIANT_FALSE;
    if (*fhpId != 0) {
      *errCode = 12;
      SysReAllocString(errMsg, L"För många rader");
    }
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OpenWithNewCase(long* pid, long* bid, long* rid) override {
    given = {*pid, *bid, *rid};
    return S_OK;
  }

  std::vector<long> given;
  std::u16string givenText;
};

VARIANT Reference(VARTYPE type, void* variable) {
  VARIANT reference{};
  V_VT(&reference) = static_cast<VARTYPE>(VT_BYREF | type);
  V_BYREF(&reference) = variable;
  return reference;
}

class LateBinding : public testing::Test {
 protected:
  LateBinding() {
    LoadTypeLibEx(DllPath().c_str(), REGKIND_NONE, library_.Receive());
    library_->GetTypeInfoOfGuid(IID__BVilnor, info_.Receive());
  }

  // The arguments in the order in which they are written.
  HRESULT Invoke(DISPID member, std::vector<VARIANT> arguments) {
    std::reverse(arguments.begin(), arguments.end());
    const DISPPARAMS parameters = {.rgvarg = arguments.data(),
                                   .rgdispidNamedArgs = nullptr,
                                   .cArgs = static_cast<UINT>(arguments.size()),
                                   .cNamedArgs = 0};
    return com::InvokeMember(*info_.get(), *session_.get(), member, DISPATCH_METHOD, parameters,
                             result_.Receive(), nullptr, nullptr);
  }

  ComPtr<ITypeLib> library_;
  ComPtr<ITypeInfo> info_;
  ComPtr<RefusingSession> session_ = com::MakeObject<RefusingSession>();
  Variant result_;
  Variant id_{Value(std::int32_t{5})};
};

TEST_F(LateBinding, ResultsAreStoredInAScriptsVariables) {
  Variant code{Value(automation::Empty{})};
  Variant message{Value(u"before")};
  ASSERT_EQ(Invoke(kOKToSend, {id_.get(), Reference(VT_VARIANT, code.Receive()),
                               Reference(VT_VARIANT, const_cast<VARIANT*>(&message.get()))}),
            S_OK);
  EXPECT_EQ(session_->givenText, u"before");
  EXPECT_EQ(com::ToValue(code.get()), Value(std::int16_t{12}));
  EXPECT_EQ(com::ToValue(message.get()), Value(u"För många rader"));
  EXPECT_EQ(com::ToValue(result_.get()), Value(false));
}

TEST_F(LateBinding, VariablesTheCallDidNotChangeAreKept) {
  Variant id{Value(u"0")};
  Variant code{Value(u"7")};
  Variant message{Value(automation::Empty{})};
  ASSERT_EQ(Invoke(kOKToSend, {Reference(VT_VARIANT, const_cast<VARIANT*>(&id.get())),
                               Reference(VT_VARIANT, const_cast<VARIANT*>(&code.get())),
                               Reference(VT_VARIANT, message.Receive())}),
            S_OK);
  EXPECT_THAT(session_->given, testing::ElementsAre(0, 7));
  EXPECT_EQ(com::ToValue(id.get()), Value(u"0"));
  EXPECT_EQ(com::ToValue(code.get()), Value(u"7"));
  EXPECT_TRUE(com::ToValue(message.get()).IsEmpty());
  EXPECT_EQ(com::ToValue(result_.get()), Value(true));
}

TEST_F(LateBinding, ResultsAreStoredInTypedVariables) {
  short code = 7;
  TextArgument message(u"before");
  ASSERT_EQ(Invoke(kOKToSend,
                   {id_.get(), Reference(VT_I2, &code), Reference(VT_BSTR, message.Reference())}),
            S_OK);
  EXPECT_EQ(code, 12);
  EXPECT_EQ(message.Text(), u"För många rader");
}

TEST_F(LateBinding, ResultIsConvertedToTheVariablesType) {
  long code = 7;
  TextArgument message(u"");
  ASSERT_EQ(Invoke(kOKToSend,
                   {id_.get(), Reference(VT_I4, &code), Reference(VT_BSTR, message.Reference())}),
            S_OK);
  EXPECT_EQ(code, 12);
}

TEST_F(LateBinding, VariableThatCannotHoldTheResultIsRefused) {
  double code = 7;
  TextArgument message(u"");
  EXPECT_EQ(Invoke(kOKToSend,
                   {id_.get(), Reference(VT_R8, &code), Reference(VT_BSTR, message.Reference())}),
            DISP_E_TYPEMISMATCH);
  EXPECT_TRUE(session_->given.empty());
}

TEST_F(LateBinding, NullAndNumbersOutOfRangeAreRefused) {
  const Variant one{Value(std::int32_t{1})};
  const Variant null{Value(automation::Null{})};
  const Variant large{Value(5e9)};
  EXPECT_EQ(Invoke(kOpenWithNewCase, {one.get(), null.get(), one.get()}), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(Invoke(kOpenWithNewCase, {one.get(), large.get(), one.get()}), DISP_E_OVERFLOW);
  EXPECT_TRUE(session_->given.empty());
}

TEST_F(LateBinding, NamedArgumentsAreAcceptedInAnyOrder) {
  // The positions of RID, PID and BID.
  std::array<DISPID, 3> names = {2, 0, 1};
  const Variant rid{Value(std::int16_t{3})};
  const Variant pid{Value(u"4711")};
  const Variant bid{Value(12.0)};
  std::array<VARIANT, 3> arguments = {rid.get(), pid.get(), bid.get()};
  const DISPPARAMS parameters = {
      .rgvarg = arguments.data(), .rgdispidNamedArgs = names.data(), .cArgs = 3, .cNamedArgs = 3};
  ASSERT_EQ(com::InvokeMember(*info_.get(), *session_.get(), kOpenWithNewCase, DISPATCH_METHOD,
                              parameters, nullptr, nullptr, nullptr),
            S_OK);
  EXPECT_THAT(session_->given, testing::ElementsAre(4711, 12, 3));
}

}  // namespace
}  // namespace system_tests
