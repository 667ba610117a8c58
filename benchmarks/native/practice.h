// The host's databases that tests/schema/make_practice.py makes, and the component on top of one.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "db/connection_state.h"
#include "fakes/ports.h"
#include "host/b_vilnor.h"
#include "portable/odbc_database.h"
#include "util/session_settings.h"

namespace benchmarks {

// Keys of the practice's rows begin here.
inline constexpr std::int32_t kFirstKey = 100'000;

struct PracticeDatabase {
  std::string product;
  // How much of the whole practice it holds: "1%".
  std::string part;
  std::u16string connectionString;
  // The kind of date literals, as the host passes it to InitVilnor.
  std::int16_t dbType;
};

// Those that ./bench has made: the environment names each in VILNOR_BENCH_SQLITE_1 and the like.
const std::vector<PracticeDatabase>& PracticeDatabases();
// The small one on SQLite, with the sample applications.
const PracticeDatabase& SmallPractice();

class NoEvents : public exchange::Events {
 public:
  void UpdateJournal() override {}
};

// A clinic's computer: a real database and real files, the rest doubles. There may be several; the
// thread's calls go to the one that it is inside of.
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
  // Runs a statement beside the component, on its connection where it has one: a statement on
  // another one would make SQLite forget the pages that it holds.
  void Run(const std::u16string& statement) const;
  // What the component told the user first, "" if nothing.
  std::string FirstComplaint() const;

 private:
  void ExchangeThreadState();

  fakes::Ports doubles_;
  portable::OdbcDatabase database_;
  platform::Platform ports_ = fakes::With(doubles_.ports, database_);
  // What the component keeps for a thread, while the thread is elsewhere.
  db::ConnectionState connectionState_;
  util::SessionSettings session_;
  NoEvents events_;
  std::unique_ptr<host::BVilnor> vilnor_;
  std::unique_ptr<platform::Connection> beside_;
  std::int32_t patients_ = 0;
};

}  // namespace benchmarks
