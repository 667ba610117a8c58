// Link.exe: simulates the link program, in a window or by a plan.
#include <optional>

#include "automation/text.h"
#include "com/wide_text.h"
#include "com/win32.h"
#include "simulator/core/problem.h"
#include "simulator/core/unattended.h"
#include "simulator/desktop.h"
#include "simulator/window.h"
#include "windows/msxml_documents.h"
#include "windows/system_clock.h"
#include "windows/win32_files.h"

namespace {

using simulator::ExitCode;

constexpr const char16_t* kHelp =
    u"Link.exe path=\"BEGÄRANSFIL\" version=2 caller=NAMN removefiles=1\r\n\r\n"
    u"Står i stället för Vilnor Link: läser begäran, låter dig välja utfall, skriver "
    u"resultatfilen och meddelar värdprogrammet. Utan argument visas ett tomt fönster.\r\n\r\n"
    u"Utan fönster: en plan i miljövariabeln VILNOR_LINK_PLAN eller i filen Link.plan bredvid "
    u"Link.exe, med rader (eller delar åtskilda av semikolon):\r\n\r\n"
    u"outcome=sent | changed | withdrawn | cancelled | deleted | unreadable | none\r\n"
    u"caseid=ÄRENDENUMMER\r\n"
    u"user=ANVÄNDARE\r\n"
    u"cancelled=TEXT, status=TEXT: i stället för utfallets egna (tomt: elementet utelämnas)\r\n"
    u"keep=MAPP: kopior av begäran, resultat och kommandorad\r\n"
    u"log=FIL\r\n"
    u"wait=MILLISEKUNDER: hur länge värdprogrammets fönster söks\r\n\r\n"
    u"Slutkod: 0 klart, 2 fel i kommandorad eller plan, 3 oläslig begäran, 4 fel vid skrivning, "
    u"5 värdprogrammet hittades inte.";

struct Apartment {
  Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() { CoUninitialize(); }
};

std::u16string ProgramPath() {
  constexpr std::size_t longestPath = 32768;
  std::wstring path(longestPath, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return com::FromWide(path);
}

std::u16string EnvironmentPlan() {
  constexpr const wchar_t* variable = L"VILNOR_LINK_PLAN";
  std::wstring text(GetEnvironmentVariableW(variable, nullptr, 0), L'\0');
  text.resize(GetEnvironmentVariableW(variable, text.data(), static_cast<DWORD>(text.size())));
  return com::FromWide(text);
}

// The text of Link.plan beside the program, or nothing if there is no such file.
std::optional<std::u16string> FilePlan(const std::u16string& programPath) {
  const auto path = programPath.substr(0, programPath.rfind(u'\\') + 1) + u"Link.plan";
  HANDLE file = CreateFileW(com::Wide(path).c_str(), GENERIC_READ,
                            FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return std::nullopt;
  }
  constexpr std::size_t longestPlan = 65536;
  std::string bytes(longestPlan, '\0');
  DWORD length = 0;
  ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &length, nullptr);
  CloseHandle(file);
  bytes.resize(length);
  return automation::FromUtf8(bytes);
}

std::optional<simulator::Plan> FindPlan(const std::u16string& programPath) {
  const auto environment = EnvironmentPlan();
  const auto text = environment.empty() ? FilePlan(programPath) : environment;
  return text ? std::optional(simulator::ParsePlan(*text)) : std::nullopt;
}

std::u16string LogFileOf(const simulator::Plan& plan) {
  const bool inKeepFolder = plan.logFile.empty() && !plan.keepFolder.empty();
  return inKeepFolder ? plan.keepFolder + u"\\Link.log" : plan.logFile;
}

ExitCode RunByPlan(const simulator::CommandLine& commandLine, const simulator::Plan& plan) {
  windows::Win32Files files;
  windows::MsxmlDocuments documents;
  simulator::Desktop desktop(LogFileOf(plan));
  simulator::Unattended run{files, documents, desktop, windows::SystemClock().Now()};
  return run.Run(commandLine, com::FromWide(GetCommandLineW()), plan);
}

ExitCode RunInWindow(const simulator::CommandLine& commandLine, HINSTANCE program) {
  if (!commandLine.problems.empty()) {
    std::u16string text = u"Kommandoraden kan inte förstås.\r\n";
    for (const auto& problem : commandLine.problems) {
      text += u"\r\n" + problem;
    }
    simulator::ShowText(text + u"\r\n\r\n" + com::FromWide(GetCommandLineW()), true);
    return ExitCode::BadCall;
  }
  windows::Win32Files files;
  windows::MsxmlDocuments documents;
  simulator::Desktop desktop({});
  std::optional<simulator::Request> request;
  try {
    if (!commandLine.requestPath.empty()) {
      request = simulator::ReadRequest(files, documents, commandLine.requestPath);
    }
  } catch (const simulator::Problem& problem) {
    simulator::ShowText(problem.text(), true);
    return ExitCode::UnreadableRequest;
  }
  simulator::Window window(commandLine, request, files, desktop, windows::SystemClock().Now());
  return window.Run(program);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE program, HINSTANCE /*previous*/, PWSTR /*arguments*/, int /*show*/) {
  const Apartment apartment;
  const auto programPath = ProgramPath();
  const auto commandLine =
      simulator::ParseCommandLine(com::FromWide(GetCommandLineW()), programPath);
  if (commandLine.help) {
    simulator::ShowText(kHelp, false);
    return static_cast<int>(ExitCode::Done);
  }
  const auto plan = FindPlan(programPath);
  return static_cast<int>(plan ? RunByPlan(commandLine, *plan) : RunInWindow(commandLine, program));
}
