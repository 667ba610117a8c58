// How errors are returned through COM.
#include "com/failure.h"

#include <gmock/gmock.h>
#include <new>
#include <stdexcept>

#include "automation/automation_error.h"
#include "system/com/component.h"

namespace system_tests {
namespace {

using automation::AutomationError;

template <class Body>
HRESULT ResultOf(Body&& body) {
  SetErrorInfo(0, nullptr);
  return com::Guarded({IID__BVilnor, vilnor_dll::kSource}, std::forward<Body>(body));
}

template <class Error>
HRESULT ResultOfThrowing(const Error& error) {
  return ResultOf([&] { throw error; });
}

TEST(Failure, CallThatThrowsNothingSucceeds) {
  EXPECT_EQ(ResultOf([] {}), S_OK);
  EXPECT_EQ(ResultOf([] { return S_FALSE; }), S_FALSE);
  EXPECT_FALSE(TakeErrorInformation().present);
}

TEST(Failure, PositiveNumberIsReturnedAsAControlError) {
  EXPECT_EQ(ResultOfThrowing(AutomationError(3704, u"ADODB.Recordset", u"Stängd.")),
            static_cast<HRESULT>(0x800A0E78));
  const auto error = TakeErrorInformation();
  EXPECT_EQ(error.source, L"ADODB.Recordset");
  EXPECT_EQ(error.description, L"Stängd.");
  EXPECT_EQ(ResultOfThrowing(AutomationError(65535, u"", u"")), static_cast<HRESULT>(0x800AFFFF));
  EXPECT_EQ(ResultOfThrowing(AutomationError(1, u"", u"")), static_cast<HRESULT>(0x800A0001));
}

TEST(Failure, NegativeNumberIsReturnedUnchanged) {
  EXPECT_EQ(ResultOfThrowing(AutomationError(-2147217900, u"", u"Syntax error")), -2147217900);
}

TEST(Failure, AnyOtherNumberIsReturnedAsAutomationError) {
  EXPECT_EQ(ResultOfThrowing(AutomationError(0, u"", u"")), static_cast<HRESULT>(0x800A01B8));
  EXPECT_EQ(ResultOfThrowing(AutomationError(65536, u"", u"")), static_cast<HRESULT>(0x800A01B8));
}

TEST(Failure, NoExceptionLeavesTheComponent) {
  EXPECT_EQ(ResultOfThrowing(std::bad_alloc()), static_cast<HRESULT>(0x800A0007));
  EXPECT_EQ(TakeErrorInformation().description, L"Out of memory");
  EXPECT_EQ(ResultOfThrowing(std::runtime_error("any")), static_cast<HRESULT>(0x800A01B8));
  EXPECT_EQ(ResultOfThrowing(42), static_cast<HRESULT>(0x800A01B8));
}

TEST(Failure, ErrorWithoutASourceNamesTheComponent) {
  ResultOfThrowing(AutomationError(automation::RuntimeError::ObjectNotSet));
  EXPECT_EQ(TakeErrorInformation().source, L"Vilnor");
}

}  // namespace
}  // namespace system_tests
