#pragma once

#include <string>

namespace platform {

class Processes {
 public:
  virtual ~Processes() = default;
  // Starts the program of the command line in a normal, focused window and returns at once.
  // Errors: 53 "File not found", 5 if the command line is empty or the start fails otherwise, as in
  // the classic Shell function.
  virtual void Start(const std::u16string& commandLine) = 0;
};

}  // namespace platform
