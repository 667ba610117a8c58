#include "diagnosis/windows/connection_dialog.h"

#include "com/wide_text.h"
#include "diagnosis/windows/resource.h"

namespace diagnosis {
namespace {

std::u16string TextOf(HWND field) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(field)) + 1, L'\0');
  const int length = GetWindowTextW(field, text.data(), static_cast<int>(text.size()));
  return com::FromWide(std::wstring_view(text).substr(0, static_cast<std::size_t>(length)));
}

INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    return TRUE;
  }
  if (message != WM_COMMAND || (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL)) {
    return FALSE;
  }
  if (LOWORD(wParam) == IDOK) {
    auto* const text = reinterpret_cast<std::u16string*>(GetWindowLongPtrW(dialog, DWLP_USER));
    *text = TextOf(GetDlgItem(dialog, IDC_CONNECTION));
  }
  EndDialog(dialog, LOWORD(wParam));
  return TRUE;
}

}  // namespace

std::optional<std::u16string> AskForConnection(HWND owner) {
  std::u16string text;
  const INT_PTR answer = DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_DATABASE),
                                         owner, Procedure, reinterpret_cast<LPARAM>(&text));
  return answer == IDOK && !text.empty() ? std::optional(text) : std::nullopt;
}

}  // namespace diagnosis
