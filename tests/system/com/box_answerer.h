// The user who answers the component's message boxes.
#pragma once

#include <atomic>
#include <string>
#include <vector>

#include "system/com/thread.h"

namespace system_tests {

struct ShownBox {
  std::wstring title;
  std::wstring text;
  HICON icon = nullptr;
  HWND owner = nullptr;
  // The button that Enter presses: IDOK, IDYES or IDNO.
  int defaultButton = 0;
};

// FirstOfThisProcess does not look at a second box, which ends by itself: the server of the next
// Debian's Wine loops for ever when a box is destroyed while its windows are listed.
enum class Boxes { OfThisProcess, FirstOfThisProcess, OfEveryProcess };

// Answers every message box while it lives.
class BoxAnswerer {
 public:
  // Answers with the button `answer`, after `atBox` has run on the answerer's thread.
  explicit BoxAnswerer(Boxes which = Boxes::OfThisProcess, int answer = IDOK,
                       std::function<void()> atBox = {})
      : which_(which), answer_(answer), atBox_(std::move(atBox)) {}
  BoxAnswerer(const BoxAnswerer&) = delete;
  BoxAnswerer& operator=(const BoxAnswerer&) = delete;
  ~BoxAnswerer();

  // The boxes answered so far.
  std::vector<ShownBox> Shown() const;
  std::vector<std::wstring> Texts() const;

 private:
  void Watch();
  bool IsMine(HWND box) const;
  void Answer(HWND box);

  Boxes which_;
  int answer_;
  std::function<void()> atBox_;
  mutable Mutex mutex_;
  std::vector<ShownBox> shown_;
  std::atomic<bool> ending_ = false;
  // Last member: the thread starts when everything it uses exists, and ends first.
  Thread thread_{[this] { Watch(); }};
};

}  // namespace system_tests
