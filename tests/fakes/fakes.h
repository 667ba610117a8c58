// Settable and recording stand-ins for the ports that need no adapter of their own.
#pragma once

#include <algorithm>
#include <deque>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "automation/automation_error.h"
#include "automation/date.h"
#include "fakes/noted_boxes.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/locale.h"
#include "platform/processes.h"
#include "platform/user_settings.h"
#include "platform/window_system.h"

namespace fakes {

class Clock : public platform::Clock {
 public:
  automation::Date Now() override { return automation::MakeDate(now); }
  automation::DateParts now{2026, 11, 16, 14, 5, 0};
};

class Locale : public platform::Locale {
 public:
  automation::Regional Regional() override { return regional; }
  std::u16string Info(std::int32_t item) override {
    return item == 31 ? shortDateAnswer : std::u16string();
  }
  void UseSwedish() {
    shortDateAnswer = u"yyyy-MM-dd";
    regional = {.shortDate = u"yyyy-MM-dd",
                .decimalSeparator = u',',
                .groupSeparator = u'\u00A0',
                .twelveHourClock = false};
  }
  automation::Regional regional;
  std::u16string shortDateAnswer = u"M/d/yyyy";
};

// Records and notes every box; answers from `answers` in turn, then with OK or No.
class Dialogs : public platform::Dialogs {
 public:
  platform::Answer Show(const platform::MessageBox& box) override {
    NoteBox(box);
    shown.push_back(box);
    if (!answers.empty()) {
      const auto answer = answers.front();
      answers.pop_front();
      return answer;
    }
    return box.buttons == platform::Buttons::Ok ? platform::Answer::Ok : platform::Answer::No;
  }
  // Only the texts, for tests that ignore icons.
  std::vector<std::u16string> Texts() const {
    std::vector<std::u16string> texts;
    std::transform(shown.begin(), shown.end(), std::back_inserter(texts),
                   [](const auto& box) { return box.text; });
    return texts;
  }
  std::vector<platform::MessageBox> shown;
  std::deque<platform::Answer> answers;
};

class Processes : public platform::Processes {
 public:
  void Start(const std::u16string& commandLine) override {
    if (fails) {
      throw automation::AutomationError(automation::RuntimeError::FileNotFound);
    }
    started.push_back(commandLine);
  }
  std::vector<std::u16string> started;
  bool fails = false;
};

class UserSettings : public platform::UserSettings {
 public:
  std::u16string Get(const std::u16string& application, const std::u16string& section,
                     const std::u16string& key) override {
    const auto found = stored.find({application, section, key});
    return found == stored.end() ? std::u16string() : found->second;
  }
  void Save(const std::u16string& application, const std::u16string& section,
            const std::u16string& key, const std::u16string& text) override {
    stored[{application, section, key}] = text;
  }
  std::map<std::tuple<std::u16string, std::u16string, std::u16string>, std::u16string> stored;
};

// Windows as numbers from 1; a class can be unregistered once its last window is gone.
class WindowSystem : public platform::WindowSystem {
 public:
  std::int32_t RegisterClass(const platform::WindowClass& windowClass) override {
    if (classes.contains(windowClass.className)) {
      return 0;
    }
    classes[windowClass.className] = windowClass;
    return 0xC000 + static_cast<std::int32_t>(classes.size());
  }
  bool UnregisterClass(const std::u16string& className, std::int32_t instance) override {
    const bool used = std::any_of(windows.begin(), windows.end(), [&](const auto& window) {
      return window.second.className == className;
    });
    const auto registered = classes.find(className);
    if (used || registered == classes.end() || registered->second.instance != instance) {
      return false;
    }
    classes.erase(registered);
    return true;
  }
  platform::WindowHandle CreateWindow(const platform::WindowDescription& description) override {
    if (!classes.contains(description.className)) {
      return 0;
    }
    windows[++lastHandle] = description;
    return lastHandle;
  }
  bool DestroyWindow(platform::WindowHandle window) override { return windows.erase(window) > 0; }
  std::int32_t DefaultProcedure(platform::WindowHandle window, std::int32_t message,
                                std::int32_t wParam, std::int32_t lParam) override {
    defaulted.emplace_back(window, message, wParam, lParam);
    return defaultResult;
  }
  // Delivers a message to the window's procedure, as the system would.
  std::int32_t Send(platform::WindowHandle window, std::int32_t message, std::int32_t wParam,
                    std::int32_t lParam = 0) {
    return classes.at(windows.at(window).className).procedure(window, message, wParam, lParam);
  }
  std::map<std::u16string, platform::WindowClass> classes;
  std::map<platform::WindowHandle, platform::WindowDescription> windows;
  std::vector<std::tuple<std::int32_t, std::int32_t, std::int32_t, std::int32_t>> defaulted;
  std::int32_t defaultResult = 0;
  platform::WindowHandle lastHandle = 0;
};

}  // namespace fakes
