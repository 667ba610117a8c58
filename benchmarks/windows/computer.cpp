#include "windows/computer.h"

#include "automation/date.h"
#include "automation/text.h"
#include "com/wide_text.h"
#include "com/win32.h"
#include "fakes/with.h"
#include "platform/clock.h"
#include "platform/conversions.h"
#include "platform/database.h"
#include "windows/harness.h"

namespace benchmarks {
namespace {

namespace fs = std::filesystem;

void RegisterPath(const wchar_t* key, const std::wstring& path) {
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, key, L"Path", REG_SZ, path.c_str(),
                  static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t)));
}

}  // namespace

std::u16string NowLiteral() {
  const automation::Date now = platform::Current().clock.Now();
  return u"#" + automation::FormatDate(now, u"mm-dd-yyyy") + u" " + automation::FormatTime(now) +
         u"#";
}

Computer::Computer(const fs::path& database)
    : folder_(fs::temp_directory_path() / L"Kestra"),
      connectionString_(u"Driver=SQLite3;Database=" +
                        com::FromWide((folder_ / L"kestra.db").wstring())),
      ports_(fakes::With(system_.platform(), dialogs_, processes_)) {
  fs::create_directories(exchangeFolder());
  fs::copy_file(database, folder_ / L"kestra.db", fs::copy_options::overwrite_existing);
  RegisterPath(L"SOFTWARE\\Kestra\\Kestra.Main.exe", folder_.wstring() + L"\\");
  RegisterPath(L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Link.exe", L"C:\\Link");
  platform::Use(ports_);
  vilnor_ = std::make_unique<host::BVilnor>(events_);
  vilnor_->InitVilnor(connectionString_, 1, 1);
  beside_ = ports_.database.NewConnection();
  beside_->Open(connectionString_, u"", u"", platform::kOptionsUnspecified);
}

Computer::~Computer() {
  vilnor_.reset();
  beside_.reset();
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

void Computer::Run(const std::u16string& statement) const {
  beside_->Execute(statement, platform::kOptionsUnspecified);
}

std::u16string Computer::Ask(const std::u16string& query) const {
  return platform::ToText(beside_->Execute(query, platform::kOptionsUnspecified)->Field(0));
}

void Computer::MustBeQuiet() const {
  if (!dialogs_.shown.empty()) {
    Fail("a box: " + automation::ToUtf8(dialogs_.shown.front().text));
  }
}

}  // namespace benchmarks
