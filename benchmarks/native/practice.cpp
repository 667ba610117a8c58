#include "native/practice.h"

#include <array>
#include <cstdlib>
#include <utility>

#include "automation/text.h"
#include "platform/conversions.h"

namespace benchmarks {
namespace {

constexpr std::int16_t kHashDates = 1;
constexpr std::int16_t kQuotedDates = 2;

}  // namespace

const std::vector<PracticeDatabase>& PracticeDatabases() {
  static const std::vector<PracticeDatabase> databases = [] {
    struct Place {
      const char* variable;
      PracticeDatabase database;
    };
    const std::array places = {
        Place{"VILNOR_BENCH_SQLITE_1", {"SQLite", "1%", u"", kHashDates}},
        Place{"VILNOR_BENCH_SQLITE_100", {"SQLite", "100%", u"", kHashDates}},
        Place{"VILNOR_BENCH_POSTGRESQL_1", {"PostgreSQL", "1%", u"", kQuotedDates}},
        Place{"VILNOR_BENCH_POSTGRESQL_100", {"PostgreSQL", "100%", u"", kQuotedDates}},
    };
    std::vector<PracticeDatabase> made;
    for (const auto& [variable, database] : places) {
      // NOLINTNEXTLINE(concurrency-mt-unsafe): before any thread is started
      if (const char* const connectionString = std::getenv(variable)) {
        made.push_back(database);
        made.back().connectionString = automation::FromUtf8(connectionString);
      }
    }
    return made;
  }();
  return databases;
}

const PracticeDatabase& SmallPractice() {
  return PracticeDatabases().at(0);
}

Clinic::Clinic(const PracticeDatabase& practice) {
  const Inside inside(*this);
  doubles_.locale.UseSwedish();
  vilnor_ = std::make_unique<host::BVilnor>(events_);
  vilnor_->InitVilnor(practice.connectionString, 1, practice.dbType);
  beside_ = database_.NewConnection();
  beside_->Open(practice.connectionString, u"", u"", platform::kOptionsUnspecified);
  const auto count =
      beside_->Execute(u"SELECT COUNT(*) FROM SEPrerequest WHERE SEPrerequestID >= " +
                           automation::Decimal10(kFirstKey),
                       platform::kOptionsUnspecified);
  patients_ = platform::ToInt32(count->Field(0));
}

Clinic::~Clinic() {
  const Inside inside(*this);
  vilnor_.reset();
  db::ReleaseShared();
}

void Clinic::ExchangeThreadState() {
  platform::Use(ports_);
  std::swap(connectionState_, db::CurrentConnectionState());
  std::swap(session_, util::CurrentSettings());
}

void Clinic::Run(const std::u16string& statement) const {
  const auto& connection = db::CurrentConnectionState().gConnection;
  (connection ? connection : beside_)->Execute(statement, platform::kOptionsUnspecified);
}

std::string Clinic::FirstComplaint() const {
  return doubles_.dialogs.shown.empty() ? ""
                                        : automation::ToUtf8(doubles_.dialogs.shown.front().text);
}

}  // namespace benchmarks
