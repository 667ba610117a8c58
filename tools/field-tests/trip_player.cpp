#include "field-tests/trip_player.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>

#include "automation/automation_error.h"
#include "com/win32.h"
#include "field-tests/cannot_work.h"
#include "field-tests/child.h"
#include "field-tests/console.h"
#include "field-tests/core/text.h"
#include "field-tests/neighbours.h"
#include "field-tests/registry_state.h"
#include "field-tests/wide.h"

namespace field_tests {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds kLimit(120);
constexpr std::chrono::seconds kPatience(20);

std::string Contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

template <class Condition>
void WaitUntil(Condition&& condition, std::chrono::seconds patience) {
  const auto end = std::chrono::steady_clock::now() + patience;
  while (!condition() && std::chrono::steady_clock::now() < end) {
    Sleep(50);
  }
}

std::string Now() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", now.wYear, now.wMonth,
                now.wDay, now.wHour, now.wMinute, now.wSecond);
  return text.data();
}

std::string DecimalSeparator() {
  std::array<wchar_t, 8> text{};
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, text.data(), text.size());
  return Utf8(text.data());
}

class Player {
 public:
  Player(const Folders& folders, const Installation& installation, TestDatabase& database)
      : folders_(folders),
        installation_(installation),
        database_(database),
        kept_(folders.work / "kept") {}

  Case Play(const Trip& trip) {
    fs::remove_all(installation_.Exchange());
    fs::remove_all(kept_);
    Case result = {.program = "trips", .name = trip.name, .outcome = Outcome::Failed, .text = {}};
    try {
      RequireNoPracticeProgram();
      database_.Fill();
      const auto faults = Faults(trip, Make(trip), Places());
      result.outcome = faults.empty() ? Outcome::Passed : Outcome::Failed;
      result.text = Joined(faults, "\n");
    } catch (const CannotWork& obstacle) {
      result.text = obstacle.what();
    } catch (const automation::AutomationError& error) {
      result.text = "the database: " + automation::ToUtf8(error.description());
    }
    return result;
  }

 private:
  TripPlaces Places() const {
    return {.linkProgram = Utf8(installation_.Link().wstring()),
            .exchangeFolder = Utf8(installation_.Exchange().wstring()),
            .decimalSeparator = DecimalSeparator()};
  }

  std::wstring CommandLine(const Trip& trip) const {
    return Quoted((folders_.programs / "KestraHost.exe").wstring()) + L" --connection " +
           Quoted(com::Wide(database_.connectionString())) + L" --dbtype " +
           std::to_wstring(database_.DbType()) + L" --answer-boxes " + WideOf(trip.answer) +
           (trip.waits ? L" --wait-result 60 " : L" ") + WideOf(trip.call);
  }

  TripOutcome Make(const Trip& trip) {
    const auto before = database_.Written();
    const std::string began = Now();
    SetEnvironmentVariableW(L"VILNOR_LINK_PLAN",
                            (WideOf(trip.plan) + L";wait=30000;keep=" + kept_.wstring()).c_str());
    Child host(CommandLine(trip), folders_.work / "output.txt");
    SetEnvironmentVariableW(L"VILNOR_LINK_PLAN", nullptr);
    TripOutcome outcome;
    const bool ended = host.started() && host.WaitFor(kLimit);
    outcome.exitCode = ended ? host.ExitCode() : -1;
    TakeStart(trip, outcome);
    outcome.output = HostLines(host.Output());
    outcome.changes = Changes(before, database_.Written(), began, Now());
    outcome.left = FilesLeft();
    return outcome;
  }

  // The link program may still be at work when the host has ended.
  void TakeStart(const Trip& trip, TripOutcome& outcome) const {
    // A host that failed has probably started none.
    const auto patience = outcome.exitCode == 0 ? kPatience : std::chrono::seconds(0);
    if (!trip.request) {
      outcome.commandLine = fs::exists(kept_) ? "the link program was started" : "";
      return;
    }
    const std::string stem = trip.request->substr(0, trip.request->rfind(".xml"));
    const fs::path note = kept_ / (stem.empty() ? "commandline.txt" : stem + ".commandline.txt");
    WaitUntil([&] { return Contents(note).ends_with('\n'); }, patience);
    outcome.commandLine = Trimmed(Contents(note));
    if (!trip.request->empty()) {
      if (!trip.waits) {
        WaitUntil([&] { return !fs::exists(installation_.Exchange() / *trip.request); }, patience);
      }
      outcome.request = Contents(kept_ / *trip.request);
    }
  }

  // Without the link program's own log, whose lines begin with the time.
  static std::vector<std::string> HostLines(const std::string& output) {
    auto lines = LinesOf(output);
    std::erase_if(lines, [](const std::string& line) {
      return line.size() > 10 && line[4] == '-' && line[7] == '-' && line[10] == ' ';
    });
    return lines;
  }

  std::vector<std::string> FilesLeft() const {
    std::vector<std::string> names;
    std::error_code missing;
    for (const auto& file : fs::directory_iterator(installation_.Exchange(), missing)) {
      names.push_back(WithoutTime(Utf8(file.path().filename().wstring())));
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  const Folders& folders_;
  const Installation& installation_;
  TestDatabase& database_;
  fs::path kept_;
};

}  // namespace

Installation::Installation(const Folders& folders, bool asUser)
    : host_(folders.work / "host"), link_(folders.work / "link" / "Link.exe") {
  // Its path is not quoted when it is started, and the folder of the programs may have blanks.
  fs::create_directories(host_);
  fs::create_directories(link_.parent_path());
  fs::copy_file(folders.programs / "Link.exe", link_, fs::copy_options::overwrite_existing);
  if (!SetRegistryText(kHostKey, L"Path", host_.wstring() + L"\\")) {
    problem_ =
        "HKEY_LOCAL_MACHINE\\SOFTWARE\\Kestra cannot be written: start run.cmd as administrator";
    return;
  }
  if (!asUser && SetRegistryText(kLinkKey, L"Path", link_.parent_path().wstring())) {
    return;
  }
  if (!RegistryText(kLinkKey, L"Path").empty()) {
    problem_ =
        "a Vilnor Link is installed on this computer, and only an administrator may replace "
        "it for the trips: start run.cmd as administrator";
  } else if (!SetRegistryText(kSettingKey, L"Vilnor", link_.wstring())) {
    problem_ = "the user's settings cannot be written";
  }
}

Cases PlayTrips(const Folders& folders, const Circumstances& circumstances,
                const Installation& installation, TestDatabase* database) {
  Cases cases;
  for (const auto& trip : Trips()) {
    const auto reason =
        Stopped() ? "stopped by Ctrl+C" : WhyNotRun("trips", trip.name, circumstances);
    if (reason.empty() && database != nullptr) {
      cases.push_back(Player(folders, installation, *database).Play(trip));
    } else {
      cases.push_back(
          {.program = "trips", .name = trip.name, .outcome = Outcome::NotRun, .text = reason});
    }
  }
  return cases;
}

}  // namespace field_tests
