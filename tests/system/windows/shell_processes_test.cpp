#include "windows/shell_processes.h"

#include <array>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>

#include "fakes/printing.h"
#include "system/windows/noting_program.h"
#include "windows/wide_text.h"
#include "windows/win32.h"

namespace system_tests {
namespace {

namespace fs = std::filesystem;

// A folder that holds a program.
class ShellProcesses : public testing::Test {
 protected:
  ShellProcesses() {
    fs::create_directories(folder_);
    std::array<wchar_t, 1024> self{};
    GetModuleFileNameW(nullptr, self.data(), static_cast<DWORD>(self.size()));
    fs::copy_file(self.data(), program_, fs::copy_options::overwrite_existing);
  }
  ~ShellProcesses() override {
    // The program may be about to end still.
    Wait([&] {
      std::error_code error;
      fs::remove_all(folder_, error);
      return !error;
    });
  }

  template <class Condition>
  static bool Wait(Condition&& condition) {
    const ULONGLONG end = GetTickCount64() + 20'000;
    while (!condition() && GetTickCount64() < end) {
      Sleep(10);
    }
    return condition();
  }

  // What the program noted, as soon as it can be read; "" when it never can.
  std::wstring Note() const {
    std::string noted;
    Wait([&] {
      std::ifstream file(note_, std::ios::binary);
      noted.assign(std::istreambuf_iterator<char>(file), {});
      return !noted.empty();
    });
    return {noted.begin(), noted.end()};
  }

  // The number of the error that starting raises, 0 for none.
  std::int32_t ErrorOf(const std::wstring& commandLine) {
    return fakes::ErrorNumberOf([&] { processes_.Start(::windows::FromWide(commandLine)); });
  }

  fs::path folder_ = fs::temp_directory_path() / L"windows_tests";
  fs::path program_ = folder_ / L"Noting.exe";
  fs::path note_ = folder_ / L"note.txt";
  ::windows::ShellProcesses processes_;
};

TEST_F(ShellProcesses, HandOverTheCommandLineAsItIs) {
  const std::wstring commandLine =
      program_.wstring() + L" path=\"C:\\X\\InNewCase1.xml\" version=2" + NoteTo(note_);
  EXPECT_EQ(ErrorOf(commandLine), 0);
  EXPECT_EQ(Note(), commandLine);
}

TEST_F(ShellProcesses, FindAProgramWhosePathHasBlanksAndNoQuotes) {
  const fs::path inBlanks = folder_ / L"Program folder" / L"Link program.exe";
  fs::create_directory(inBlanks.parent_path());
  fs::copy_file(program_, inBlanks);
  EXPECT_EQ(ErrorOf(inBlanks.wstring() + NoteTo(note_)), 0);
  EXPECT_THAT(Note(), testing::HasSubstr(inBlanks.wstring()));
}

TEST_F(ShellProcesses, MissAProgramThatIsNotThere) {
  constexpr std::int32_t kFileNotFound = 53;
  EXPECT_EQ(ErrorOf((folder_ / L"Missing.exe").wstring()), kFileNotFound);
  EXPECT_EQ(ErrorOf((folder_ / L"No folder" / L"Missing.exe").wstring()), kFileNotFound);
}

TEST_F(ShellProcesses, RefuseWhatIsNoProgram) {
  constexpr std::int32_t kInvalidProcedureCall = 5;
  const fs::path text = folder_ / L"Text.exe";
  std::ofstream(text) << "no program";
  EXPECT_EQ(ErrorOf(text.wstring()), kInvalidProcedureCall);
  EXPECT_EQ(ErrorOf(L""), kInvalidProcedureCall);
}

}  // namespace
}  // namespace system_tests
