// The cost of the operations of DBVilnor, and of BVilnor's user mapping, in a small part of a
// practice and in all of it. Each turn uses another patient.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "automation/text.h"
#include "db/case_types.h"
#include "db/db_vilnor.h"
#include "native/practice.h"

namespace {

using automation::Decimal10;
using benchmarks::Clinic;
using benchmarks::kFirstKey;
using benchmarks::PracticeDatabase;
using db::DBVilnor;
constexpr std::int32_t kOrdinaryCase = Number(db::CaseType::OrdinaryCase);
constexpr std::int32_t kPriorApproval = Number(db::CaseType::PriorApproval);

constexpr std::int32_t kPractitionerOf = 1000;  // so many patients have one practitioner,
constexpr std::int32_t kCompanyOf = 5000;       // one company,
constexpr std::int32_t kUserOf = 100;           // one Vilnor Link user,
constexpr std::int32_t kPostcodeOf = 10;        // one postcode

// One patient's turn, and its keys in the practice.
struct Turn {
  Clinic& clinic;
  std::int32_t patient;  // counted from 0
  std::int32_t number;   // of the turn

  std::int32_t PID() const { return kFirstKey + patient; }
  std::int32_t FHPId() const { return kFirstKey + patient; }
  std::int32_t BID() const { return OneFor(kPractitionerOf); }
  std::int32_t RID() const { return OneFor(kCompanyOf); }
  std::int32_t user() const { return OneFor(kUserOf); }
  std::int32_t postcode() const { return 10'001 + (OneFor(kPostcodeOf) - kFirstKey) * 16; }
  // An application with estimate rows: every fifth has none, the one before it has four.
  std::int32_t estimatedFHPId() const { return FHPId() - patient % 5 + 4; }
  // The patient's first ordinary case.
  std::int32_t VilnorId() const { return kFirstKey + clinic.patients() + patient; }
  std::u16string caseId() const { return Decimal10(26'000'000 + clinic.patients() + patient); }
  // Keys that the practice does not contain: a case, its link and journal line, its application, a
  // user.
  std::u16string newCaseId() const { return Decimal10(27'000'000 + patient); }
  std::int32_t newKey() const { return 10'000'000 + patient; }
  // A different one each turn, so that there is always something to change.
  std::u16string changedCaseId() const { return Decimal10(28'000'000 + number); }

 private:
  std::int32_t OneFor(std::int32_t patientsEach) const {
    return kFirstKey + patient % std::max(1, clinic.patients() / patientsEach);
  }
};

// How the component is called: through a connected DBVilnor, or through an operation that connects
// by itself.
enum class Reach { Connected, ByItself };

using Statements = std::vector<std::u16string> (*)(const Turn& turn);

// `run` is measured, and returns whether it succeeded; the statements around it are not measured.
struct Operation {
  const char* name;
  Reach reach;
  std::function<bool(DBVilnor*, const Turn&)> run;
  Statements before = nullptr;
  Statements after = nullptr;
};

template <class Run>
Operation Lookup(const char* name, Run run) {
  return {name, Reach::Connected,
          [run](DBVilnor* vilnor, const Turn& turn) { return run(*vilnor, turn); }};
}

template <class Run>
Operation Write(const char* name, Run run, Statements before, Statements after) {
  return {name, Reach::Connected,
          [run](DBVilnor* vilnor, const Turn& turn) {
            run(*vilnor, turn);
            return true;
          },
          before, after};
}

template <class Run>
Operation UserWrite(const char* name, Run run, Statements before, Statements after) {
  return {name, Reach::ByItself,
          [run](DBVilnor* /*vilnor*/, const Turn& turn) {
            run(turn.clinic.vilnor(), turn);
            return true;
          },
          before, after};
}

std::vector<std::u16string> PutCaseThere(const Turn& turn) {
  const std::u16string key = Decimal10(turn.newKey());
  const std::u16string people =
      Decimal10(turn.PID()) + u"," + Decimal10(turn.BID()) + u"," + Decimal10(turn.RID());
  return {u"INSERT INTO Journal (ID, PID, BID, RID, Tekst, KODE, RefTBID) VALUES (" + key + u"," +
              people + u",'ref.nr 1',22302," + key + u")",
          u"INSERT INTO Vilnor (VilnorId, PID, BID, RID, FHP_ID, CaseId, CaseType, Journal_ID) "
          u"VALUES (" +
              key + u"," + people + u"," + key + u",'" + turn.newCaseId() + u"',1," + key + u")"};
}

std::vector<std::u16string> TakeCaseAway(const Turn& turn) {
  const std::u16string chosen = u" WHERE CaseId = '" + turn.newCaseId() + u"'";
  return {u"DELETE FROM Journal WHERE ID IN (SELECT Journal_ID FROM Vilnor" + chosen + u")",
          u"DELETE FROM Vilnor" + chosen};
}

std::vector<std::u16string> PutUserThere(const Turn& turn) {
  return {u"INSERT INTO VilnorPasient (PID, UserName) VALUES (" + Decimal10(turn.newKey()) +
          u",'per')"};
}

std::vector<std::u16string> TakeUserAway(const Turn& turn) {
  return {u"DELETE FROM VilnorPasient WHERE PID = " + Decimal10(turn.newKey())};
}

// Only a text with a "!" can be rewritten.
std::vector<std::u16string> MarkJournal(const Turn& turn) {
  return {u"UPDATE Journal SET Tekst = 'ref.nr !1' WHERE KODE = 22302 AND PID = " +
          Decimal10(turn.PID())};
}

std::vector<Operation> Lookups() {
  return {
      {"InitConnection", Reach::ByItself,
       [](DBVilnor* /*vilnor*/, const Turn& /*turn*/) {
         const DBVilnor fresh;
         return true;
       }},
      Lookup("GetCaseIdByVilnorId",
             [](auto& vilnor, auto& turn) {
               return !vilnor.GetCaseIdByVilnorId(turn.VilnorId()).empty();
             }),
      Lookup(
          "CaseExists",
          [](auto& vilnor, auto& turn) { return vilnor.CaseExists(turn.FHPId(), kPriorApproval); }),
      Lookup("CaseExistsPID",
             [](auto& vilnor, auto& turn) {
               return vilnor.CaseExistsPID(turn.PID(), kOrdinaryCase, turn.caseId());
             }),
      Lookup("GetFHPById",
             [](auto& vilnor, auto& turn) { return vilnor.GetFHPById(turn.FHPId()) != nullptr; }),
      Lookup("GetVilnorIdByFHPId",
             [](auto& vilnor, auto& turn) { return vilnor.GetVilnorIdByFHPId(turn.FHPId()) != 0; }),
      Lookup("GetBIDById",
             [](auto& vilnor, auto& turn) { return vilnor.GetBIDById(turn.BID()) != nullptr; }),
      Lookup("GetRIDById",
             [](auto& vilnor, auto& turn) { return vilnor.GetRIDById(turn.RID()) != nullptr; }),
      Lookup("GetPIDById",
             [](auto& vilnor, auto& turn) { return vilnor.GetPIDById(turn.PID()) != nullptr; }),
      Lookup("GetCityByPostnr",
             [](auto& vilnor, auto& turn) {
               return !vilnor.GetCityByPostnr(turn.postcode()).empty();
             }),
      Lookup("PreRequestCostExists",
             [](auto& vilnor, auto& turn) {
               return vilnor.PreRequestCostExists(turn.estimatedFHPId());
             }),
      Lookup("GetPreRequestCostByFHPid",
             [](auto& vilnor, auto& turn) {
               return vilnor.GetPreRequestCostByFHPid(turn.estimatedFHPId()) != nullptr;
             }),
      Lookup(
          "GetPatientByPID",
          [](auto& vilnor, auto& turn) { return vilnor.GetPatientByPID(turn.PID()) != nullptr; }),
      Lookup("GetPatientSSNByPID",
             [](auto& vilnor, auto& turn) {
               return vilnor.GetPatientSSNByPID(turn.PID()) != nullptr;
             }),
      Lookup(
          "GetVilnorUserByPID",
          [](auto& vilnor, auto& turn) { return !vilnor.GetVilnorUserByPID(turn.user()).empty(); }),
      Lookup("GetVilnorUserByCode1",
             [](auto& vilnor, auto& /*turn*/) {
               constexpr std::int32_t kWithoutEstimate = -32000;
               return !vilnor.GetVilnorUserByCode1(kWithoutEstimate).empty();
             }),
      {"BVilnor.GetVilnorUserByPID", Reach::ByItself,
       [](DBVilnor* /*vilnor*/, const Turn& turn) {
         return !turn.clinic.vilnor().GetVilnorUserByPID(turn.user()).empty();
       }},
  };
}

std::vector<Operation> Writes() {
  return {
      Write(
          "AddNewCase",
          [](auto& vilnor, auto& turn) {
            vilnor.AddNewCase(turn.PID(), turn.BID(), turn.RID(), turn.newCaseId(), 0,
                              kOrdinaryCase, 5, u"bjorn.ek");
          },
          nullptr, TakeCaseAway),
      Write(
          "AddNewCase_application",
          [](auto& vilnor, auto& turn) {
            vilnor.AddNewCase(turn.PID(), turn.BID(), turn.RID(), turn.newCaseId(), turn.newKey(),
                              kPriorApproval, 5, u"bjorn.ek", u"2026-1");
          },
          nullptr, TakeCaseAway),
      Write(
          "DeleteCase", [](auto& vilnor, auto& turn) { vilnor.DeleteCase(turn.newCaseId()); },
          PutCaseThere, nullptr),
      Write(
          "DeleteFHP", [](auto& vilnor, auto& turn) { vilnor.DeleteFHP(turn.newKey()); },
          PutCaseThere, nullptr),
      Write(
          "UpdateCaseById",
          [](auto& vilnor, auto& turn) {
            vilnor.UpdateCaseById(turn.VilnorId(), turn.changedCaseId(), 5);
          },
          MarkJournal, nullptr),
      Write(
          "UpdateCase_application",
          [](auto& vilnor, auto& turn) {
            vilnor.UpdateCase(turn.changedCaseId(), turn.FHPId(), 5, kPriorApproval);
          },
          MarkJournal, nullptr),
      Write(
          "UpdateCase_patient",
          [](auto& vilnor, auto& turn) {
            vilnor.UpdateCase(turn.changedCaseId(), turn.PID(), 5, kOrdinaryCase);
          },
          MarkJournal, nullptr),
      Write(
          "AddNewVilnorUser",
          [](auto& vilnor, auto& turn) { vilnor.AddNewVilnorUser(turn.newKey(), u"'per'"); },
          nullptr, TakeUserAway),
      Write(
          "UpdateVilnorUser",
          [](auto& vilnor, auto& turn) { vilnor.UpdateVilnorUser(turn.user(), u"'per'"); }, nullptr,
          nullptr),
      Write(
          "DeleteVilnorUser",
          [](auto& vilnor, auto& turn) { vilnor.DeleteVilnorUser(turn.newKey()); }, PutUserThere,
          nullptr),
      UserWrite(
          "BVilnor.AddNewVilnorUser",
          [](auto& vilnor, auto& turn) { vilnor.AddNewVilnorUser(turn.newKey(), u"'per'"); },
          nullptr, TakeUserAway),
      UserWrite(
          "BVilnor.UpdateVilnorUser",
          [](auto& vilnor, auto& turn) { vilnor.UpdateVilnorUser(turn.user(), u"'per'"); }, nullptr,
          nullptr),
      UserWrite(
          "BVilnor.DeleteVilnorUser",
          [](auto& vilnor, auto& turn) { vilnor.DeleteVilnorUser(turn.newKey()); }, PutUserThere,
          nullptr),
  };
}

void RunAll(Statements statements, const Turn& turn) {
  if (statements != nullptr) {
    for (const auto& statement : statements(turn)) {
      turn.clinic.Run(statement);
    }
  }
}

// An operation on one database, one turn at a time, with patients whose rows are far apart.
class Measurement {
 public:
  Measurement(const Operation& operation, const PracticeDatabase& practice)
      : operation_(operation), clinic_(practice) {
    // Enough for the database to fill its cache; each connecting operation starts without one
    // anyway.
    constexpr int kWarmUps = 1000;
    constexpr int kConnectingWarmUps = 20;
    const Clinic::Inside inside(clinic_);
    const bool connected = operation.reach == Reach::Connected;
    if (connected) {
      vilnor_ = std::make_unique<DBVilnor>();
    }
    for (int turn = 0; turn < (connected ? kWarmUps : kConnectingWarmUps); ++turn) {
      TakeTurn();
    }
  }
  Measurement(const Measurement&) = delete;
  Measurement& operator=(const Measurement&) = delete;
  ~Measurement() {
    const Clinic::Inside inside(clinic_);
    vilnor_.reset();
  }

  // In seconds.
  double Next() {
    const Clinic::Inside inside(clinic_);
    return TakeTurn();
  }

  // "" if every turn succeeded.
  std::string Failure() const {
    return failed_ ? "nothing was found; " + clinic_.FirstComplaint() : clinic_.FirstComplaint();
  }

 private:
  double TakeTurn() {
    constexpr std::int64_t kStride = 7919;
    const Turn turn{clinic_, static_cast<std::int32_t>(turns_ * kStride % clinic_.patients()),
                    turns_};
    ++turns_;
    RunAll(operation_.before, turn);
    const auto start = std::chrono::steady_clock::now();
    const bool done = operation_.run(vilnor_.get(), turn);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    RunAll(operation_.after, turn);
    failed_ = failed_ || !done;
    return time.count();
  }

  Operation operation_;
  Clinic clinic_;
  std::unique_ptr<DBVilnor> vilnor_;
  std::int32_t turns_ = 0;
  bool failed_ = false;
};

// Keeps the database open between repetitions, so that repetitions can be short and the databases
// can alternate often.
Measurement& MeasurementOf(const std::string& name, const Operation& operation,
                           const PracticeDatabase& practice) {
  static std::map<std::string, std::unique_ptr<Measurement>> measurements;
  auto& measurement = measurements[name];
  if (!measurement) {
    measurement = std::make_unique<Measurement>(operation, practice);
  }
  return *measurement;
}

void Measure(benchmark::State& state, const std::string& name, const Operation& operation,
             const PracticeDatabase& practice) {
  Measurement& measurement = MeasurementOf(name, operation, practice);
  for (auto _ : state) {
    state.SetIterationTime(measurement.Next());
  }
  if (const std::string failure = measurement.Failure(); !failure.empty()) {
    state.SkipWithError(failure.c_str());
  }
}

void Register(const std::string& kind, const std::vector<Operation>& operations) {
  constexpr int kTurns = 4;
  for (const auto& operation : operations) {
    for (const auto& practice : benchmarks::PracticeDatabases()) {
      const std::string name =
          kind + "/" + operation.name + "/" + practice.product + "/" + practice.part;
      benchmark::RegisterBenchmark(name.c_str(), Measure, name, operation, practice)
          ->UseManualTime()
          ->Iterations(operation.reach == Reach::ByItself ? 1 : kTurns);
    }
  }
}

const bool kRegistered = [] {
  Register("lookup", Lookups());
  Register("write", Writes());
  return true;
}();

}  // namespace
