// A program that the field tests start.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>

#include "field-tests/handle.h"

namespace field_tests {

// Everything that it started in turn ends with this object.
class Child {
 public:
  // Its output goes to `output`, a new file: a pipe would stay open as long as any program that it
  // started.
  Child(std::wstring commandLine, std::filesystem::path output);

  // False if it had to be ended.
  bool WaitFor(std::chrono::seconds limit);
  bool started() const { return process_ != nullptr; }
  int ExitCode() const;
  // What it printed so far.
  std::string Output() const;

 private:
  std::filesystem::path output_;
  Handle job_;
  Handle process_;
};

std::wstring Quoted(const std::wstring& argument);

// "0xC0000005" for a crash's code, otherwise the number.
std::string ExitCodeText(int code);

}  // namespace field_tests
