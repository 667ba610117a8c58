// FieldTests.exe, which run.cmd starts.
#include <array>
#include <exception>

#include "com/win32.h"
#include "field-tests/computer.h"
#include "field-tests/console.h"
#include "field-tests/core/options.h"
#include "field-tests/field_run.h"
#include "field-tests/wide.h"
#include "field-tests/work_folder.h"

namespace field_tests {
namespace {

constexpr const char* kIntroduction =
    "\r\n"
    "What this does   It runs Vilnor's own tests on this computer, plays whole trips between a\r\n"
    "                 practice program and a simulator of Vilnor Link, and writes a report: one\r\n"
    "                 page for you to send back. It takes some minutes. Windows and message\r\n"
    "                 boxes come and go; please leave mouse and keyboard alone.\r\n"
    "What it needs    Nothing installed. With an empty test database it tests more.\r\n"
    "What it changes  A folder VilnorFieldTests for temporary files, some registry keys of the\r\n"
    "                 practice program and of Vilnor Link, tables in the test database. All is\r\n"
    "                 put back at the end. Nothing is registered or installed.\r\n"
    "Ctrl+C           stops early and puts everything back.\r\n";

constexpr const char* kQuestion =
    "Type the word access to create an empty Access database with the parts of Windows,\r\n"
    "or the connection string of an EMPTY test database, for example\r\n"
    "    Provider=SQLOLEDB;Server=.;Database=Empty;Integrated Security=SSPI\r\n"
    "or just press Enter to test without a database:\r\n> ";

std::filesystem::path ProgramFolder() {
  std::array<wchar_t, 1024> path{};
  GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  return std::filesystem::path(path.data()).parent_path();
}

int RunAsTold(Options options) {
  PrintLine("Vilnor field tests, " + ComponentVersion(ProgramFolder() / "Vilnor.dll"));
  if (options.restoreOnly) {
    const WorkFolder work;
    return work.PutBackRegistry() && work.Remove() ? kAllPassed : kSomethingFailed;
  }
  PrintLine(kIntroduction);
  if (options.connection.empty() && !options.newAccess) {
    Print(kQuestion);
    SetDatabase(options, ReadLine());
    PrintLine("");
  }
  CatchCtrlC();
  return Run(options, ProgramFolder());
}

int Main(const std::vector<std::string>& words) {
  try {
    const Options options = ParseOptions(words);
    if (options.help) {
      Print(kUsage);
      return kAllPassed;
    }
    return RunAsTold(options);
  } catch (const UsageError& error) {
    PrintLine(std::string(error.what()) + "\r\n");
    Print(kUsage);
  } catch (const std::exception& error) {
    PrintLine(error.what());
  }
  return kCouldNotBegin;
}

}  // namespace
}  // namespace field_tests

int wmain(int count, wchar_t** words) {
  CoInitialize(nullptr);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) {
    arguments.push_back(field_tests::Utf8(words[i]));
  }
  const int result = field_tests::Main(arguments);
  field_tests::WaitForEnter();
  CoUninitialize();
  return result;
}
