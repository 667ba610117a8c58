#include "diagnosis/windows/run.h"

#include <iterator>

#include "automation/date.h"
#include "com/win32.h"
#include "diagnosis/core/diagnosis.h"
#include "diagnosis/windows/windows_computer.h"
#include "platform/clock.h"
#include "windows/system_platform.h"

namespace diagnosis {
namespace {

struct Apartment {
  Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() { CoUninitialize(); }
};

}  // namespace

Report Run(const std::optional<std::u16string>& connection) {
  const Apartment apartment;
  windows::SystemPlatform system;
  platform::Platform& platform = system.platform();
  WindowsComputer computer;
  Report report;
  const automation::Date now = platform.clock.Now();
  constexpr std::size_t hoursAndMinutes = 5;
  report.time = automation::FormatDate(now, u"yyyy-mm-dd") + u" " +
                automation::FormatTime(now).substr(0, hoursAndMinutes);
  report.version = computer.Examine(computer.OwnPath()).version;
  report.findings = Diagnose({platform, computer});
  if (connection) {
    Findings more = DiagnoseDatabase(platform, *connection);
    std::move(more.begin(), more.end(), std::back_inserter(report.findings));
  }
  return report;
}

}  // namespace diagnosis
