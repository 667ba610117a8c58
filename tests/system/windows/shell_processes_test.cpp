#include "windows/shell_processes.h"

#include <array>
#include <fstream>
#include <gmock/gmock.h>
#include <string>

#include "com/wide_text.h"
#include "com/win32.h"
#include "fakes/printing.h"
#include "system/windows/noting_program.h"

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
    // The program may still be about to end.
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

  // The lines that the program recorded, once they can be read; "" when they never can.
  struct Note {
    std::wstring commandLine;
    std::wstring window;
  };
  Note Noted() const {
    std::string commandLine;
    std::string window;
    Wait([&] {
      std::ifstream file(note_, std::ios::binary);
      return std::getline(file, commandLine) && std::getline(file, window);
    });
    return {{commandLine.begin(), commandLine.end()}, {window.begin(), window.end()}};
  }

  // The number of the error that starting raises, 0 for none.
  std::int32_t ErrorOf(const std::wstring& commandLine) {
    return fakes::ErrorNumberOf([&] { processes_.Start(::com::FromWide(commandLine)); });
  }

  fs::path folder_ = fs::temp_directory_path() / L"windows_tests";
  fs::path program_ = folder_ / L"Noting.exe";
  fs::path note_ = folder_ / L"note.txt";
  ::windows::ShellProcesses processes_;
};

TEST_F(ShellProcesses, CommandLineIsPassedUnchanged) {
  const std::wstring commandLine =
      program_.wstring() + L" path=\"C:\\X\\InNewCase1.xml\" version=2" + NoteTo(note_);
  EXPECT_EQ(ErrorOf(commandLine), 0);
  EXPECT_EQ(Noted().commandLine, commandLine);
}

TEST_F(ShellProcesses, ProgramIsStartedWithANormalWindow) {
  EXPECT_EQ(ErrorOf(program_.wstring() + NoteTo(note_)), 0);
  EXPECT_EQ(Noted().window, L"show 1");
}

TEST_F(ShellProcesses, StartDoesNotWaitForTheProgramsEnd) {
  const std::wstring name = L"Vilnor test " + std::to_wstring(GetCurrentProcessId());
  const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, name.c_str());
  const std::wstring commandLine = program_.wstring() + WaitFor(name) + NoteTo(note_);
  EXPECT_EQ(ErrorOf(commandLine), 0);
  EXPECT_FALSE(fs::exists(note_));
  SetEvent(event);
  EXPECT_EQ(Noted().commandLine, commandLine);
  CloseHandle(event);
}

// Otherwise the host's files and connections would stay open as long as the program runs.
TEST_F(ShellProcesses, ProgramInheritsNoHandleOfTheHost) {
  const std::wstring name = L"Vilnor test " + std::to_wstring(GetCurrentProcessId());
  const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, name.c_str());
  SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
  HANDLE reading = nullptr;
  HANDLE writing = nullptr;
  ASSERT_NE(CreatePipe(&reading, &writing, &inheritable, 0), FALSE);
  EXPECT_EQ(ErrorOf(program_.wstring() + WaitFor(name) + NoteTo(note_)), 0);
  CloseHandle(writing);
  // The program is running and has no other end of the pipe.
  EXPECT_EQ(PeekNamedPipe(reading, nullptr, 0, nullptr, nullptr, nullptr), FALSE);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_BROKEN_PIPE));
  SetEvent(event);
  EXPECT_EQ(Noted().window, L"show 1");
  CloseHandle(reading);
  CloseHandle(event);
}

TEST_F(ShellProcesses, UnquotedProgramPathWithBlanksIsFound) {
  const fs::path inBlanks = folder_ / L"Program folder" / L"Link program.exe";
  fs::create_directory(inBlanks.parent_path());
  fs::copy_file(program_, inBlanks);
  EXPECT_EQ(ErrorOf(inBlanks.wstring() + NoteTo(note_)), 0);
  EXPECT_THAT(Noted().commandLine, testing::HasSubstr(inBlanks.wstring()));
}

TEST_F(ShellProcesses, MissingProgramIsReportedAsMissing) {
  constexpr std::int32_t kFileNotFound = 53;
  EXPECT_EQ(ErrorOf((folder_ / L"Missing.exe").wstring()), kFileNotFound);
  EXPECT_EQ(ErrorOf((folder_ / L"No folder" / L"Missing.exe").wstring()), kFileNotFound);
}

TEST_F(ShellProcesses, FileThatIsNotAProgramIsRefused) {
  constexpr std::int32_t kInvalidProcedureCall = 5;
  const fs::path text = folder_ / L"Text.exe";
  std::ofstream(text) << "no program";
  EXPECT_EQ(ErrorOf(text.wstring()), kInvalidProcedureCall);
  EXPECT_EQ(ErrorOf(L""), kInvalidProcedureCall);
}

}  // namespace
}  // namespace system_tests
