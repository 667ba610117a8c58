// The simulator's window: the request's contents, and a button for each outcome.
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

// Shows the program's last message, an error or help.
void ShowText(const std::u16string& text, bool error);

class Window {
 public:
  // `request` is empty if the program was started without one. All arguments must outlive this
  // object.
  Window(const CommandLine& commandLine, const std::optional<Request>& request,
         platform::Files& files, HostWindows& hosts, automation::Date now);

  // Shows the window and runs until it is closed.
  ExitCode Run(HINSTANCE program);

 private:
  static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR Handle(UINT message, WPARAM wParam, LPARAM lParam);
  void Fill();
  void FillRequest();
  void Command(int control);
  void Give(Outcome outcome);
  // Tries once to notify the host. Ends the program on success; gives up if the time limit has
  // passed.
  void TryToNotify();
  void CloseWithoutAnswer();
  void RemoveRequest();
  void End();
  void EnableAnswers(bool enabled);
  // Shows a text of the request, or a dash if it is empty.
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
