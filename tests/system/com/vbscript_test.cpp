// Scripts that call the component late bound, run by the system's script host.
#include <array>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>

#include "com/wide_text.h"
#include "system/com/box_answerer.h"
#include "system/com/component.h"
#include "system/com/database.h"
#include "system/com/host_registration.h"

namespace system_tests {
namespace {

struct ScriptRun {
  DWORD exitCode = static_cast<DWORD>(-1);
  std::string output;
};

std::wstring Quoted(const std::wstring& argument) {
  return L" \"" + argument + L"\"";
}

std::string ReadAll(HANDLE pipe) {
  std::string text;
  std::array<char, 4096> buffer{};
  DWORD length = 0;
  while (ReadFile(pipe, buffer.data(), buffer.size(), &length, nullptr) != FALSE && length > 0) {
    text.append(buffer.data(), length);
  }
  return text;
}

// Runs a script of the folder "vbscript" beside the program until it ends.
ScriptRun RunScript(const std::wstring& name, const std::vector<std::wstring>& arguments) {
  std::wstring command = L"cscript.exe //nologo" + Quoted(ProgramFolder() + L"\\vbscript\\" + name);
  for (const auto& argument : arguments) {
    command += Quoted(argument);
  }
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  HANDLE readEnd = nullptr;
  HANDLE writeEnd = nullptr;
  CreatePipe(&readEnd, &writeEnd, &inherited, 0);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = writeEnd;
  startup.hStdError = writeEnd;
  PROCESS_INFORMATION process{};
  ScriptRun run;
  if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                     &process) == FALSE) {
    run.output = "cscript.exe did not start";
  }
  CloseHandle(writeEnd);
  if (process.hProcess != nullptr) {
    const Thread limit([&] {
      constexpr DWORD kOneMinute = 60'000;
      if (WaitForSingleObject(process.hProcess, kOneMinute) != WAIT_OBJECT_0) {
        TerminateProcess(process.hProcess, static_cast<UINT>(-1));
      }
    });
    run.output = ReadAll(readEnd);
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &run.exitCode);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
  }
  CloseHandle(readEnd);
  return run;
}

std::string Contents(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class VbScript : public testing::Test {
 protected:
  std::wstring Connection() const { return com::Wide(database_.ConnectionString()); }

  TestDatabase database_;
  HostRegistration host_;
  BoxAnswerer boxes_{Boxes::OfEveryProcess};
};

TEST_F(VbScript, ScriptCallsBothClassesLateBound) {
  const auto run = RunScript(L"late_binding.vbs", {Connection(), host_.ExchangeFolder().wstring()});
  EXPECT_EQ(run.exitCode, 0U);
  EXPECT_EQ(run.output, "17 passed, 0 failed\r\n");
  EXPECT_THAT(boxes_.Texts(), testing::IsEmpty());
}

TEST_F(VbScript, ScriptAndEarlyBoundHostWriteTheSameNewCaseRequest) {
  const auto session = NewBVilnor();
  ASSERT_TRUE(session);
  Init(*session.get(), database_.ConnectionString());
  long pid = 4711;
  long bid = 12;
  long rid = 3;
  ASSERT_EQ(session->OpenWithNewCase(&pid, &bid, &rid), S_OK);
  const auto request = host_.ExchangeFolder() / L"InNewCase4711.xml";
  const std::wstring expectedCommandLine = host_.LinkProgram().wstring() + L" path=\"" +
                                           request.wstring() +
                                           L"\" version=2 caller=KestraDental removefiles=1";
  EXPECT_EQ(host_.TakeCommandLine(), expectedCommandLine);
  const std::string expected = Contents(request);
  EXPECT_THAT(expected, testing::HasSubstr("<PatientFirstName>\xC5sa-M\xE4rta</PatientFirstName>"));
  std::filesystem::remove(request);

  const auto run = RunScript(L"open_with_new_case.vbs", {Connection(), L"4711", L"12", L"3"});
  EXPECT_EQ(run.exitCode, 0U);
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(host_.TakeCommandLine(), expectedCommandLine);
  EXPECT_EQ(Contents(request), expected);
  EXPECT_THAT(boxes_.Texts(), testing::IsEmpty());
}

}  // namespace
}  // namespace system_tests
