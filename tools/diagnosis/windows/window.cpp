#include "diagnosis/windows/window.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "com/wide_text.h"
#include "diagnosis/windows/clipboard.h"
#include "diagnosis/windows/connection_dialog.h"
#include "diagnosis/windows/resource.h"
#include "diagnosis/windows/run.h"
// Needs win32.h in front of it.
#include <commctrl.h>

namespace diagnosis {
namespace {

// Posted by the diagnosis' thread; the last parameter is a Report that the window takes over, or
// null if the diagnosis failed.
constexpr UINT kDone = WM_APP + 1;
constexpr int kStateColumn = 0;
constexpr int kTitleColumn = 1;
constexpr int kTextColumn = 2;

// Where a control lies: which sides move with the window's right and lower edge.
struct Place {
  int control;
  bool moves;
  bool widens;
  bool sinks;
  bool deepens;
};

constexpr std::array kPlaces = {
    Place{IDC_SUMMARY, false, true, false, false}, Place{IDC_LIST, false, true, false, true},
    Place{IDC_DETAIL, false, true, true, false},   Place{IDC_COPY, false, false, true, false},
    Place{IDC_AGAIN, false, false, true, false},   Place{IDC_DATABASE, false, false, true, false},
    Place{IDCANCEL, true, false, true, false}};

struct Task {
  HWND window;
  std::optional<std::u16string> connection;
};

DWORD WINAPI RunTask(void* parameter) {
  const std::unique_ptr<Task> task(static_cast<Task*>(parameter));
  std::unique_ptr<Report> report;
  try {
    report = std::make_unique<Report>(Run(task->connection));
  } catch (...) {
    report = nullptr;  // the window says so
  }
  if (PostMessageW(task->window, kDone, 0, reinterpret_cast<LPARAM>(report.get())) != FALSE) {
    static_cast<void>(report.release());  // NOLINT(bugprone-unused-return-value): the window's now
  }
  return 0;
}

LPCWSTR IconOf(State state) {
  switch (state) {
    case State::Fault:
      return IDI_ERROR;
    case State::Warning:
      return IDI_WARNING;
    case State::Fine:
      break;
  }
  return IDI_INFORMATION;
}

// One picture for each state, by its number.
HIMAGELIST StatePictures() {
  const int size = GetSystemMetrics(SM_CXSMICON);
  HIMAGELIST pictures = ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, 3, 0);
  for (const State state : {State::Fine, State::Warning, State::Fault}) {
    auto* const icon =
        static_cast<HICON>(LoadImageW(nullptr, IconOf(state), IMAGE_ICON, size, size, LR_SHARED));
    ImageList_AddIcon(pictures, icon);
  }
  return pictures;
}

RECT RectangleIn(HWND dialog, HWND control) {
  RECT rectangle{};
  GetWindowRect(control, &rectangle);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&rectangle), 2);
  return rectangle;
}

std::wstring OnOneLine(const std::u16string& text) {
  std::wstring line = com::Wide(text);
  std::replace_if(
      line.begin(), line.end(), [](wchar_t unit) { return unit < L' '; }, L' ');
  return line;
}

}  // namespace

std::optional<State> Window::Show(HINSTANCE program) {
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&controls);
  DialogBoxParamW(program, MAKEINTRESOURCEW(IDD_REPORT), nullptr, Procedure,
                  reinterpret_cast<LPARAM>(this));
  return report_.findings.empty() ? std::nullopt : std::optional(Worst(report_.findings));
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
      Begin();
      return TRUE;
    case WM_SIZE:
      Layout();
      return TRUE;
    case WM_GETMINMAXINFO:
      reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = smallest_;
      return TRUE;
    case WM_COMMAND:
      Command(LOWORD(wParam));
      return TRUE;
    case WM_NOTIFY:
      Notify(*reinterpret_cast<const NMHDR*>(lParam));
      return TRUE;
    case kDone:
      SetRunning(false);
      if (const std::unique_ptr<Report> report(reinterpret_cast<Report*>(lParam)); report) {
        Take(std::move(*report));
      } else {
        SetDlgItemTextW(dialog_, IDC_SUMMARY, L"Kontrollen kunde inte göras.");
      }
      return TRUE;
    default:
      return FALSE;
  }
}

void Window::Begin() {
  RECT whole{};
  GetWindowRect(dialog_, &whole);
  smallest_ = {whole.right - whole.left, whole.bottom - whole.top};
  for (const auto size : {ICON_SMALL, ICON_BIG}) {
    SendMessageW(dialog_, WM_SETICON, static_cast<WPARAM>(size),
                 reinterpret_cast<LPARAM>(LoadIconW(nullptr, IDI_INFORMATION)));
  }
  PrepareList();
  Layout();
  Start({});
}

void Window::PrepareList() {
  HWND list = Control(IDC_LIST);
  ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP);
  ListView_SetImageList(list, StatePictures(), LVSIL_SMALL);
  const std::array<const wchar_t*, 3> titles = {L"Läge", L"Kontroll", L"Resultat"};
  for (std::size_t column = 0; column < titles.size(); ++column) {
    LVCOLUMNW described{};
    described.mask = LVCF_TEXT;
    std::wstring title = titles.at(column);
    described.pszText = title.data();
    SendMessageW(list, LVM_INSERTCOLUMNW, column, reinterpret_cast<LPARAM>(&described));
  }
}

void Window::Start(std::optional<std::u16string> connection) {
  if (running_) {
    return;  // by F5; the buttons are disabled
  }
  SetDlgItemTextW(dialog_, IDC_SUMMARY, L"Kontrollerar…");
  auto task = std::make_unique<Task>(Task{dialog_, std::move(connection)});
  HANDLE thread = CreateThread(nullptr, 0, RunTask, task.get(), 0, nullptr);
  if (thread == nullptr) {
    SetDlgItemTextW(dialog_, IDC_SUMMARY, L"Kontrollen kunde inte startas.");
    return;
  }
  static_cast<void>(task.release());  // NOLINT(bugprone-unused-return-value): the thread's now
  CloseHandle(thread);
  SetRunning(true);
}

// Meanwhile the keyboard's focus is in the list: a disabled button would keep it.
void Window::SetRunning(bool running) {
  running_ = running;
  SendMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(IDC_LIST)), TRUE);
  for (const int button : {IDC_COPY, IDC_AGAIN, IDC_DATABASE}) {
    EnableWindow(Control(button), running ? FALSE : TRUE);
  }
}

void Window::Take(Report report) {
  report_ = std::move(report);
  listed_ = Sorted(report_.findings);
  SetDlgItemTextW(dialog_, IDC_SUMMARY, com::Wide(Summary(listed_)).c_str());
  FillList();
  FitColumns();
  ListView_SetItemState(Control(IDC_LIST), 0, LVIS_SELECTED | LVIS_FOCUSED,
                        LVIS_SELECTED | LVIS_FOCUSED);
  ShowDetail();
}

void Window::FillList() {
  HWND list = Control(IDC_LIST);
  ListView_DeleteAllItems(list);
  for (std::size_t row = 0; row < listed_.size(); ++row) {
    const Finding& finding = listed_[row];
    std::array<std::wstring, 3> texts = {com::Wide(NameOf(finding.state)),
                                         com::Wide(finding.check.title), OnOneLine(finding.text)};
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE;
    item.iItem = static_cast<int>(row);
    item.iImage = static_cast<int>(finding.state);
    item.pszText = texts[kStateColumn].data();
    SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    for (const int column : {kTitleColumn, kTextColumn}) {
      item.iSubItem = column;
      item.pszText = texts.at(static_cast<std::size_t>(column)).data();
      SendMessageW(list, LVM_SETITEMTEXTW, row, reinterpret_cast<LPARAM>(&item));
    }
  }
}

void Window::ShowDetail() {
  const int row = ListView_GetNextItem(Control(IDC_LIST), -1, LVNI_SELECTED);
  std::u16string text;
  if (row >= 0 && static_cast<std::size_t>(row) < listed_.size()) {
    const Finding& finding = listed_[static_cast<std::size_t>(row)];
    text = finding.text;
    if (!finding.advice.empty()) {
      text += u"\r\n\r\nÅtgärd: " + finding.advice;
    }
  }
  SetDlgItemTextW(dialog_, IDC_DETAIL, com::Wide(text).c_str());
}

void Window::Command(int control) {
  switch (control) {
    case IDCANCEL:
      EndDialog(dialog_, 0);
      break;
    case IDC_COPY:
      Copy();
      break;
    case IDC_AGAIN:
      Start({});
      break;
    case IDC_DATABASE:
      AskForDatabase();
      break;
    default:
      break;
  }
}

void Window::Notify(const NMHDR& notice) {
  if (notice.idFrom != IDC_LIST) {
    return;
  }
  if (notice.code == LVN_ITEMCHANGED) {
    ShowDetail();
  } else if (notice.code == LVN_KEYDOWN) {
    const auto& key = reinterpret_cast<const NMLVKEYDOWN&>(notice);
    if (key.wVKey == VK_F5) {
      Start({});
    } else if (key.wVKey == 'C' && GetKeyState(VK_CONTROL) < 0) {
      Copy();
    }
  }
}

void Window::Copy() {
  if (report_.findings.empty()) {
    return;
  }
  const bool copied = CopyToClipboard(dialog_, AsText(report_));
  const std::u16string said =
      copied ? u" Rapporten är kopierad." : u" Rapporten kunde inte kopieras.";
  const std::u16string summary = Summary(listed_) + (Summary(listed_).ends_with(u'.') ? u"" : u".");
  SetDlgItemTextW(dialog_, IDC_SUMMARY, com::Wide(summary + said).c_str());
}

void Window::AskForDatabase() {
  if (auto connection = AskForConnection(dialog_)) {
    Start(std::move(connection));
  }
}

void Window::Layout() {
  RECT client{};
  GetClientRect(dialog_, &client);
  RECT margin{7, 7, 7, 7};
  MapDialogRect(dialog_, &margin);
  // How far the right and lower edges are from where the controls end now.
  const LONG right = client.right - margin.right - RectangleIn(dialog_, Control(IDCANCEL)).right;
  const LONG down = client.bottom - margin.bottom - RectangleIn(dialog_, Control(IDCANCEL)).bottom;
  for (const Place& place : kPlaces) {
    RECT at = RectangleIn(dialog_, Control(place.control));
    at.left += place.moves ? right : 0;
    at.right += place.moves || place.widens ? right : 0;
    at.top += place.sinks ? down : 0;
    at.bottom += place.sinks || place.deepens ? down : 0;
    MoveWindow(Control(place.control), at.left, at.top, at.right - at.left, at.bottom - at.top,
               TRUE);
  }
  FitColumns();
}

void Window::FitColumns() {
  HWND list = Control(IDC_LIST);
  for (const int column : {kStateColumn, kTitleColumn}) {
    ListView_SetColumnWidth(list, column, LVSCW_AUTOSIZE_USEHEADER);
  }
  RECT client{};
  GetClientRect(list, &client);
  const LONG taken =
      ListView_GetColumnWidth(list, kStateColumn) + ListView_GetColumnWidth(list, kTitleColumn);
  ListView_SetColumnWidth(list, kTextColumn, std::max<LONG>(client.right - taken, 100));
}

}  // namespace diagnosis
