#include "system/windows/noting_program.h"

#include <fstream>

#include "windows/win32.h"

namespace system_tests {
namespace {

constexpr std::wstring_view kNoteTo = L" note-to=";

}  // namespace

std::wstring NoteTo(const std::filesystem::path& file) {
  return std::wstring(kNoteTo) + file.wstring();
}

bool RanAsNotingProgram() {
  const std::wstring commandLine = GetCommandLineW();
  const auto found = commandLine.find(kNoteTo);
  if (found == std::wstring::npos) {
    return false;
  }
  const std::filesystem::path file = commandLine.substr(found + kNoteTo.size());
  // Under another name until it is whole, for the reader's sake. The tests' paths are ASCII.
  const std::filesystem::path unfinished = file.wstring() + L".unfinished";
  std::ofstream(unfinished, std::ios::binary)
      << std::string(commandLine.begin(), commandLine.end());
  std::filesystem::rename(unfinished, file);
  return true;
}

}  // namespace system_tests
