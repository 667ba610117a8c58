// Records the lines of the trace while somebody listens.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "automation/text.h"
#include "platform/trace.h"

namespace fakes {

class Trace : public platform::Trace {
 public:
  ~Trace() override { platform::traceIsOn = false; }
  // As if a session had begun.
  void TurnOn() { platform::traceIsOn = true; }
  void TurnOff() { platform::traceIsOn = false; }

  std::int64_t Now() noexcept override { return now += 100; }
  void Write(const platform::TraceLine& line) noexcept override { lines.push_back(line); }

  // A line as support reads it, without its duration: "XMLReadNewCase Failed 13", "ReadNewCase
  // NewCase Kept NotFound".
  static std::string TextOf(const platform::TraceLine& line) {
    std::string text = automation::ToUtf8(line.procedure.name());
    for (const char* word : {NameOf(line.file), NameOf(line.ending), NameOf(line.reason)}) {
      text += *word == '\0' ? std::string() : std::string(" ") + word;
    }
    return line.error == 0 ? text : text + " " + std::to_string(line.error);
  }
  // Those that matter to whoever looks at a trip: not the procedures that just went well.
  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const auto& line : lines) {
      if (LevelOf(line) != platform::TraceLevel::Verbose) {
        texts.push_back(TextOf(line));
      }
    }
    return texts;
  }

  std::vector<platform::TraceLine> lines;
  std::int64_t now = 0;
};

}  // namespace fakes
