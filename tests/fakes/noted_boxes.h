// Notes the message boxes that tests provoke in the file named by VILNOR_BOXES, if it is set. Each
// is a line with title, icon and text, separated by tabs. tests/messages looks them up in
// docs/meddelanden.md.
#pragma once

#include <array>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

#include "automation/text.h"
#include "platform/dialogs.h"

namespace fakes {

// On one line, as the sample host prints it.
inline std::string OnOneLine(std::u16string_view text) {
  std::string line;
  for (const char letter : automation::ToUtf8(text)) {
    line += letter == '\r'   ? "\\r"
            : letter == '\n' ? "\\n"
            : letter == '\t' ? " "
                             : std::string(1, letter);
  }
  return line;
}

inline void NoteBox(const platform::MessageBox& box) {
  static constexpr std::array kIcons = {"none", "critical", "question", "exclamation"};
  if (const char* file = std::getenv("VILNOR_BOXES"); file != nullptr) {
    std::ofstream(file, std::ios::app | std::ios::binary)
        << OnOneLine(box.title) + "\t" + kIcons.at(static_cast<std::size_t>(box.icon)) + "\t" +
               OnOneLine(box.text) + "\n";
  }
}

}  // namespace fakes
