#include "com/com_error.h"

#include <array>
#include <string>

#include "automation/automation_error.h"
#include "com/bstr.h"
#include "com/com_ptr.h"
#include "com/wide_text.h"

namespace com {
namespace {

// The system's text for a code, without its line end; "" when it has none.
std::u16string SystemText(HRESULT result) {
  std::array<wchar_t, 512> buffer{};
  const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                      nullptr, static_cast<DWORD>(result), 0, buffer.data(),
                                      static_cast<DWORD>(buffer.size()), nullptr);
  std::u16string text = FromWide({buffer.data(), length});
  text.erase(text.find_last_not_of(u"\r\n ") + 1);
  return text;
}

// The classic runtime's text for a failure that it has no number for.
std::u16string FallbackText(HRESULT result) {
  const std::u16string system = SystemText(result);
  if (system.empty() || automation::ErrorNumberFromHresult(result) != result) {
    return {};
  }
  return automation::RuntimeErrorText(
             static_cast<std::int32_t>(automation::RuntimeError::AutomationFailure)) +
         u"\r\n" + system;
}

}  // namespace

void Check(HRESULT result) {
  if (SUCCEEDED(result)) {
    return;
  }
  Bstr source;
  Bstr description;
  ComPtr<IErrorInfo> information;
  if (GetErrorInfo(0, information.Receive()) == S_OK) {
    information->GetSource(source.Receive());
    information->GetDescription(description.Receive());
  }
  throw automation::ErrorFromHresult(
      result, source.Text(),
      description.Text().empty() ? FallbackText(result) : description.Text());
}

}  // namespace com
