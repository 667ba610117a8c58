// The host's databases made by tests/schema/make_practice.py, and the component on top of one.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "db/connection_state.h"
#include "fakes/ports.h"
#include "host/b_vilnor.h"
#include "native/odbc_database.h"
#include "util/session_settings.h"

namespace benchmarks {

// The lowest key of the practice's rows.
inline constexpr std::int32_t kFirstKey = 100'000;

struct PracticeDatabase {
  std::string product;
  // Its share of the whole practice: "1%".
  std::string part;
  std::u16string connectionString;
  // The kind of date literals, as passed to InitVilnor.
  std::int16_t dbType;
};

// The databases that ./bench has made; the environment names each, in VILNOR_BENCH_SQLITE_1 etc.
const std::vector<PracticeDatabase>& PracticeDatabases();
// The small one on SQLite, with the sample applications.
const PracticeDatabase& SmallPractice();

class NoEvents : public exchange::Events {
 public:
  void UpdateJournal() override {}
};

// A clinic's computer: a real database and real files, doubles for the rest. There may be several;
// the thread's calls go to the one that it is inside.
class Clinic {
 public:
  explicit Clinic(const PracticeDatabase& practice);
  Clinic(const Clinic&) = delete;
  Clinic& operator=(const Clinic&) = delete;
  ~Clinic();

  class Inside {
   public:
    explicit Inside(Clinic& clinic) : clinic_(clinic) { clinic.ExchangeThreadState(); }
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;
    ~Inside() { clinic_.ExchangeThreadState(); }

   private:
    Clinic& clinic_;
  };

  std::int32_t patients() const { return patients_; }
  host::BVilnor& vilnor() { return *vilnor_; }
  // Runs a statement independently of the component, but on its connection if it has one: a
  // statement on another connection would make SQLite drop its cached pages.
  void Run(const std::u16string& statement) const;
  // The first message that the component showed, "" if none.
  std::string FirstComplaint() const;

 private:
  void ExchangeThreadState();

  fakes::Ports doubles_;
  native::OdbcDatabase database_;
  platform::Platform ports_ = fakes::With(doubles_.ports, database_);
  // The component's per-thread state, while the thread is outside.
  db::ConnectionState connectionState_;
  util::SessionSettings session_;
  NoEvents events_;
  std::unique_ptr<host::BVilnor> vilnor_;
  std::unique_ptr<platform::Connection> beside_;
  std::int32_t patients_ = 0;
};

}  // namespace benchmarks
