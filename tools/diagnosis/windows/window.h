// The window: a list of the findings, the chosen one in full, and the buttons.
#pragma once

#include <optional>
#include <string>

#include "com/win32.h"
#include "diagnosis/core/report.h"

namespace diagnosis {

class Window {
 public:
  // Shows the window until it is closed; the diagnosis runs on another thread meanwhile. Returns
  // the worst state of the last report; nothing if it was closed before there was one, or could not
  // be shown.
  std::optional<State> Show(HINSTANCE program);

 private:
  static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR Handle(UINT message, WPARAM wParam, LPARAM lParam);
  void Begin();
  void PrepareList();
  void Command(int control);
  void Notify(const NMHDR& notice);
  void Start(std::optional<std::u16string> connection);
  void SetRunning(bool running);
  void Take(Report report);
  void FillList();
  void ShowDetail();
  void Copy();
  void AskForDatabase();
  void Layout();
  void FitColumns();

  HWND Control(int control) const { return GetDlgItem(dialog_, control); }

  HWND dialog_ = nullptr;
  // Smallest size of the window, in pixels.
  POINT smallest_{};
  bool running_ = false;
  Report report_;
  // As listed: the worst first.
  Findings listed_;
};

}  // namespace diagnosis
