#include "simulator/window.h"

#include <algorithm>
#include <array>

#include "automation/text.h"
#include "com/wide_text.h"
#include "simulator/core/problem.h"
#include "simulator/resource.h"

namespace simulator {
namespace {

constexpr const wchar_t* kWindowClass = L"VilnorLinkSimulator";
constexpr UINT_PTR kNotifyTimer = 1;
constexpr UINT kNotifyStep = 50;           // milliseconds
constexpr ULONGLONG kNotifyBound = 5'000;  // milliseconds
constexpr COLORREF kBannerColour = RGB(255, 224, 130);

struct OutcomeButton {
  int control;
  Outcome outcome;
};

constexpr std::array kOutcomeButtons = {
    OutcomeButton{IDC_SENT, Outcome::Sent},
    OutcomeButton{IDC_CHANGED, Outcome::Changed},
    OutcomeButton{IDC_WITHDRAWN, Outcome::Withdrawn},
    OutcomeButton{IDC_CANCELLED, Outcome::Cancelled},
    OutcomeButton{IDC_DELETED, Outcome::Deleted},
    OutcomeButton{IDC_UNREADABLE, Outcome::Unreadable},
};

// Its own dialog class, so that the window is never mistaken for a message box.
void RegisterWindowClass(HINSTANCE program) {
  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = DefDlgProcW;
  windowClass.cbWndExtra = DLGWINDOWEXTRA;
  windowClass.hInstance = program;
  windowClass.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
  windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  windowClass.hbrBackground = GetSysColorBrush(COLOR_3DFACE);
  windowClass.lpszClassName = kWindowClass;
  RegisterClassW(&windowClass);
}

HBRUSH BannerBrush() {
  static const HBRUSH brush = CreateSolidBrush(kBannerColour);
  return brush;
}

}  // namespace

void ShowText(const std::u16string& text, bool error) {
  MessageBoxW(nullptr, com::Wide(text).c_str(), kTitle,
              MB_OK | MB_SETFOREGROUND | (error ? MB_ICONERROR : MB_ICONINFORMATION));
}

Window::Window(const CommandLine& commandLine, const std::optional<Request>& request,
               platform::Files& files, HostWindows& hosts, automation::Date now)
    : commandLine_(commandLine), request_(request), now_(now) {
  if (request_) {
    delivery_.emplace(commandLine_, *request_, files, hosts);
  }
}

ExitCode Window::Run(HINSTANCE program) {
  RegisterWindowClass(program);
  const auto result = DialogBoxParamW(program, MAKEINTRESOURCEW(IDD_SIMULATOR), nullptr, Procedure,
                                      reinterpret_cast<LPARAM>(this));
  return static_cast<ExitCode>(result);
}

INT_PTR CALLBACK Window::Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    reinterpret_cast<Window*>(lParam)->dialog_ = dialog;
  }
  auto* const window = reinterpret_cast<Window*>(GetWindowLongPtrW(dialog, DWLP_USER));
  return window == nullptr ? FALSE : window->Handle(message, wParam, lParam);
}

INT_PTR Window::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      Fill();
      return TRUE;
    case WM_CTLCOLORSTATIC:
      if (GetDlgCtrlID(reinterpret_cast<HWND>(lParam)) == IDC_BANNER) {
        SetBkColor(reinterpret_cast<HDC>(wParam), kBannerColour);
        return reinterpret_cast<INT_PTR>(BannerBrush());
      }
      return FALSE;
    case WM_TIMER:
      TryToNotify();
      return TRUE;
    case WM_COMMAND:
      Command(LOWORD(wParam));
      return TRUE;
    default:
      return FALSE;
  }
}

void Window::Fill() {
  if (!request_) {
    SetText(IDC_KIND, u"Startad utan begäran");
    SetText(IDC_STATE, u"Vilnor Link skulle nu ha visat sitt startfönster.");
  } else {
    FillRequest();
  }
  const bool answers = request_ && request_->ExpectsAnswer();
  EnableAnswers(answers);
  if (!answers) {
    SetText(IDCANCEL, u"Stäng");
  }
}

void Window::FillRequest() {
  ShowField(IDC_KIND, KindText(request_->kind));
  ShowField(IDC_PATIENT, automation::Trim(request_->firstName + u" " + request_->lastName));
  ShowField(IDC_PATIENT_ID, request_->patientId);
  ShowField(IDC_TITLE, request_->title);
  ShowField(IDC_CASE_ID, request_->caseId);
  ShowField(IDC_USER_DEF_DATA, request_->userDefData);
  ShowField(IDC_REQUEST_PATH, commandLine_.requestPath);
  ShowField(IDC_RESULT_PATH, request_->resultPath);
  if (!request_->ExpectsAnswer()) {
    ShowField(IDC_MESSAGE, {});
    ShowField(IDC_KEY, {});
    SetText(IDC_STATE, u"Begäran väntar inget svar.");
    return;
  }
  ShowField(IDC_MESSAGE, automation::Decimal10(request_->notification.message) + u" till " +
                             request_->notification.className);
  ShowField(IDC_KEY, automation::Decimal10(request_->notification.wParam));
  SetText(IDC_ANSWER_CASE_ID, DefaultCaseId(*request_, now_));
  SetText(IDC_ANSWER_USER, DefaultUserName(*request_));
  SetText(IDC_STATE,
          u"Välj ett utfall: resultatfilen skrivs, värdprogrammet meddelas och simulatorn "
          u"avslutas.");
}

void Window::Command(int control) {
  if (control == IDCANCEL) {
    CloseWithoutAnswer();
    return;
  }
  const auto* const button =
      std::find_if(kOutcomeButtons.begin(), kOutcomeButtons.end(),
                   [&](const auto& each) { return each.control == control; });
  if (button != kOutcomeButtons.end()) {
    Give(button->outcome);
  }
}

void Window::Give(Outcome outcome) {
  Answer answer;
  answer.outcome = outcome;
  answer.caseId = TextOf(IDC_ANSWER_CASE_ID);
  answer.userName = TextOf(IDC_ANSWER_USER);
  try {
    delivery_->Write(answer);
  } catch (const Problem& problem) {
    ShowProblem(problem.text());
    return;
  }
  RemoveRequest();
  EnableAnswers(false);
  SetText(IDC_STATE, u"Resultatfilen är skriven. Söker värdprogrammets fönster\u2026");
  notifyUntil_ = GetTickCount64() + kNotifyBound;
  SetTimer(dialog_, kNotifyTimer, kNotifyStep, nullptr);
  TryToNotify();
}

void Window::TryToNotify() {
  if (delivery_->Notify()) {
    End();
  } else if (GetTickCount64() >= notifyUntil_) {
    KillTimer(dialog_, kNotifyTimer);
    ShowProblem(delivery_->NobodyThereText());
    EnableAnswers(true);
    SetText(IDC_STATE, u"Värdprogrammet är inte meddelat. Starta det och välj utfallet igen.");
  }
}

void Window::CloseWithoutAnswer() {
  if (delivery_) {
    RemoveRequest();
  }
  End();
}

void Window::RemoveRequest() {
  exitCode_ = ExitCode::Done;
  try {
    delivery_->RemoveRequest();
  } catch (const Problem& problem) {
    ShowProblem(problem.text());
    exitCode_ = ExitCode::FileFailure;
  }
}

void Window::End() {
  KillTimer(dialog_, kNotifyTimer);
  EndDialog(dialog_, static_cast<INT_PTR>(exitCode_));
}

void Window::EnableAnswers(bool enabled) {
  for (const int control : {IDC_ANSWER_CASE_ID, IDC_ANSWER_USER}) {
    EnableWindow(GetDlgItem(dialog_, control), enabled);
  }
  for (const auto& button : kOutcomeButtons) {
    const bool possible = enabled && IsPossible(button.outcome, request_->kind);
    EnableWindow(GetDlgItem(dialog_, button.control), possible);
  }
}

void Window::ShowField(int control, const std::u16string& text) {
  SetText(control, text.empty() ? u"\u2013" : text);
}

void Window::SetText(int control, const std::u16string& text) {
  SetDlgItemTextW(dialog_, control, com::Wide(text).c_str());
}

std::u16string Window::TextOf(int control) const {
  HWND field = GetDlgItem(dialog_, control);
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(field)) + 1, L'\0');
  const int length = GetWindowTextW(field, text.data(), static_cast<int>(text.size()));
  return com::FromWide(std::wstring_view(text).substr(0, static_cast<std::size_t>(length)));
}

void Window::ShowProblem(const std::u16string& text) {
  MessageBoxW(dialog_, com::Wide(text).c_str(), kTitle, MB_OK | MB_ICONWARNING);
}

}  // namespace simulator
