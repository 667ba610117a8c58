#include "field-tests/child.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <utility>

#include "field-tests/console.h"

namespace field_tests {
namespace {

Handle NewJob() {
  Handle job(CreateJobObjectW(nullptr, nullptr));
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
  return job;
}

Handle OpenInherited(const wchar_t* name, DWORD access, DWORD disposition) {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  return Owned(CreateFileW(name, access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                           disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

}  // namespace

Child::Child(std::wstring commandLine, std::filesystem::path output)
    : output_(std::move(output)), job_(NewJob()) {
  const Handle input = OpenInherited(L"NUL", GENERIC_READ, OPEN_EXISTING);
  const Handle printed = OpenInherited(output_.c_str(), GENERIC_WRITE, CREATE_ALWAYS);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = input.get();
  startup.hStdOutput = printed.get();
  startup.hStdError = printed.get();
  PROCESS_INFORMATION process{};
  if (CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr,
                     nullptr, &startup, &process) == FALSE) {
    return;
  }
  process_.reset(process.hProcess);
  const Handle thread(process.hThread);
  // Windows 7 refuses when this program itself is in a job. Then only the program is ended.
  AssignProcessToJobObject(job_.get(), process.hProcess);
  ResumeThread(process.hThread);
}

bool Child::WaitFor(std::chrono::seconds limit) {
  constexpr DWORD kLook = 100;  // milliseconds
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!Closing() && std::chrono::steady_clock::now() < end) {
    if (WaitForSingleObject(process_.get(), kLook) == WAIT_OBJECT_0) {
      return true;
    }
  }
  TerminateProcess(process_.get(), 1);
  TerminateJobObject(job_.get(), 1);
  WaitForSingleObject(process_.get(), INFINITE);
  return false;
}

int Child::ExitCode() const {
  DWORD code = 0;
  GetExitCodeProcess(process_.get(), &code);
  return static_cast<int>(code);
}

std::string Child::Output() const {
  std::ifstream file(output_, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::wstring Quoted(const std::wstring& argument) {
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t letter : argument) {
    // Backslashes count double in front of a quotation mark only.
    quoted.append(letter == L'"' ? backslashes + 1 : 0, L'\\');
    backslashes = letter == L'\\' ? backslashes + 1 : 0;
    quoted += letter;
  }
  return quoted.append(backslashes, L'\\') + L"\"";
}

std::string ExitCodeText(int code) {
  if (code >= 0) {
    return std::to_string(code);
  }
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "0x%08X", static_cast<unsigned>(code));
  return text.data();
}

}  // namespace field_tests
