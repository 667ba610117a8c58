// VilnorCheck.exe: says why Vilnor does not work on a computer. It changes nothing.
#include <array>
#include <exception>

#include "com/wide_text.h"
#include "com/win32.h"
#include "diagnosis/core/options.h"
#include "diagnosis/windows/console.h"
#include "diagnosis/windows/run.h"
#include "diagnosis/windows/window.h"

namespace {

using diagnosis::Options;

// A console that Windows made for this program alone would stand empty behind the window.
void CloseOwnConsole() {
  std::array<DWORD, 2> processes{};
  if (GetConsoleProcessList(processes.data(), processes.size()) == 1) {
    FreeConsole();
  }
}

int RunInWindow() {
  CloseOwnConsole();
  diagnosis::Window window;
  const auto worst = window.Show(GetModuleHandleW(nullptr));
  return worst ? diagnosis::ExitCodeOf(*worst) : diagnosis::kNotDone;
}

int RunOnConsole(const Options& options) {
  std::optional<std::u16string> connection;
  if (options.database) {
    connection = diagnosis::AskFor(u"Kestra Dentals anslutningssträng: ");
  }
  const diagnosis::Report report = diagnosis::Run(connection);
  const bool printed =
      diagnosis::Print(options.output == Options::Output::Json ? AsJson(report) : AsText(report));
  return printed ? diagnosis::ExitCodeOf(Worst(report.findings)) : diagnosis::kNotDone;
}

int RunWith(const Options& options) {
  if (options.wrong) {
    diagnosis::PrintError(std::u16string(u"Okänd kommandorad.\r\n\r\n") + diagnosis::kHelp);
    return diagnosis::kNotDone;
  }
  switch (options.output) {
    case Options::Output::Help:
      return diagnosis::Print(diagnosis::kHelp) ? 0 : diagnosis::kNotDone;
    case Options::Output::Window:
      return RunInWindow();
    default:
      return RunOnConsole(options);
  }
}

}  // namespace

int wmain(int count, wchar_t** words) {
  int code = diagnosis::kNotDone;
  try {
    std::vector<std::u16string> arguments;
    for (int i = 1; i < count; ++i) {
      arguments.push_back(com::FromWide(words[i]));
    }
    code = RunWith(diagnosis::ReadOptions(arguments));
  } catch (const std::exception&) {
    diagnosis::PrintError(u"Kontrollen kunde inte göras.\r\n");
  }
  // Not by returning: a database that does not answer may keep the window's other thread.
  ExitProcess(static_cast<UINT>(code));
}
