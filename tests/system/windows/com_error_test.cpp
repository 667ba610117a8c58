#include "com/com_error.h"

#include <gmock/gmock.h>

#include "automation/automation_error.h"
#include "com/com_ptr.h"

namespace system_tests {
namespace {

using automation::AutomationError;

// The error that Check() raises for a result.
AutomationError ErrorOf(HRESULT result) {
  try {
    ::com::Check(result);
  } catch (const AutomationError& error) {
    return error;
  }
  return {0, u"", u"no error"};
}

// Leaves error information as a failing object does.
HRESULT Fail(HRESULT result) {
  ::com::ComPtr<ICreateErrorInfo> creation;
  ::com::ComPtr<IErrorInfo> information;
  CreateErrorInfo(creation.Receive());
  std::wstring source = L"ADODB.Recordset";
  std::wstring description = L"Åtgärden är inte tillåten.";
  creation->SetSource(source.data());
  creation->SetDescription(description.data());
  creation->QueryInterface(IID_IErrorInfo, information.ReceiveVoid());
  SetErrorInfo(0, information.get());
  return result;
}

TEST(ComError, SuccessRaisesNothing) {
  EXPECT_EQ(ErrorOf(S_OK).description(), u"no error");
  EXPECT_EQ(ErrorOf(S_FALSE).description(), u"no error");
}

TEST(ComError, ErrorCarriesTheObjectsSourceAndText) {
  const auto error = ErrorOf(Fail(static_cast<HRESULT>(0x800A0E79)));
  EXPECT_EQ(error.number(), 3705);
  EXPECT_EQ(error.source(), u"ADODB.Recordset");
  EXPECT_EQ(error.description(), u"Åtgärden är inte tillåten.");
}

TEST(ComError, TextOfAnOlderErrorIsNotUsed) {
  Fail(E_FAIL);
  try {
    ::com::CheckCall([] { return E_ABORT; });
    FAIL() << "no error";
  } catch (const AutomationError& error) {
    EXPECT_EQ(error.number(), E_ABORT);
    EXPECT_EQ(error.source(), u"");
    EXPECT_NE(error.description(), u"Åtgärden är inte tillåten.");
  }
}

TEST(ComError, ErrorWithoutInformationHasTheSystemsText) {
  EXPECT_EQ(ErrorOf(E_OUTOFMEMORY).description(), u"Out of memory");
  const auto error = ErrorOf(static_cast<HRESULT>(0x80070002));
  EXPECT_EQ(error.number(), static_cast<std::int32_t>(0x80070002));
  const std::u16string start = u"Automation error\r\n";
  EXPECT_EQ(error.description().substr(0, start.size()), start);
  EXPECT_GT(error.description().size(), start.size());
  EXPECT_NE(error.description().back(), u'\n');
  EXPECT_EQ(ErrorOf(static_cast<HRESULT>(0x8ABCDEF0)).description(), u"Automation error");
}

}  // namespace
}  // namespace system_tests
