// The simulator's window: what the request says, and a button for each outcome.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "automation/value.h"
#include "com/win32.h"
#include "platform/files.h"
#include "simulator/core/delivery.h"
#include "simulator/core/unattended.h"

namespace simulator {

// Title of the window and of its message boxes.
inline constexpr const wchar_t* kTitle = L"Vilnor Link – simulator";

// Shows a text that ends the program, for an error or for help.
void ShowText(const std::u16string& text, bool error);

class Window {
 public:
  // `request` is empty when the program was started without one. All are kept alive by the caller.
  Window(const CommandLine& commandLine, const std::optional<Request>& request,
         platform::Files& files, HostWindows& hosts, automation::Date now);

  // Shows the window and works until it is closed.
  ExitCode Run(HINSTANCE program);

 private:
  static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR Handle(UINT message, WPARAM wParam, LPARAM lParam);
  void Fill();
  void FillRequest();
  void Command(int control);
  void Give(Outcome outcome);
  // Tries once to tell the host; ends the program, or goes on trying until the bound is reached.
  void TryToNotify();
  void CloseWithoutAnswer();
  void RemoveRequest();
  void End();
  void EnableAnswers(bool enabled);
  // A text of the request, a dash for an empty one.
  void ShowField(int control, const std::u16string& text);
  void SetText(int control, const std::u16string& text);
  std::u16string TextOf(int control) const;
  void ShowProblem(const std::u16string& text);

  const CommandLine& commandLine_;
  const std::optional<Request>& request_;
  automation::Date now_;
  std::optional<Delivery> delivery_;
  HWND dialog_ = nullptr;
  ExitCode exitCode_ = ExitCode::Done;
  // When to give up looking for the host's window, in the system's milliseconds.
  ULONGLONG notifyUntil_ = 0;
};

}  // namespace simulator
