#include "host/b_vilnor.h"

#include <limits>
#include <memory>

#include "automation/automation_error.h"
#include "db/case_types.h"
#include "db/connection_state.h"
#include "db/db_vilnor.h"
#include "exchange/request_writers.h"
#include "fhp/application.h"
#include "fhp/send_check.h"
#include "host/link_program.h"
#include "host/notification_window.h"
#include "platform/conversions.h"
#include "platform/database.h"
#include "platform/platform.h"
#include "util/date_format.h"
#include "util/guarded.h"
#include "util/session.h"
#include "util/ssn.h"

namespace host {
namespace {

using automation::AutomationError;
using automation::RuntimeError;
using util::Guarded;
using util::kBVilnorIcon;

// What an Open operation finds before its own work begins. `exePath` is empty when the link program
// is not there; the operation then ends.
struct Ways {
  std::u16string outputPath;
  std::u16string exePath;
};

// In this order, so that the directory is made, and a missing host registration reported, even when
// the link program is not found afterwards.
Ways FindWays() {
  Ways ways;
  ways.outputPath = GetVilnorOutputPath();
  ways.exePath = GetVilnorCommandLine();
  return ways;
}

// The full personal identity number of the patient in hand.
std::u16string SSNOf(platform::Recordset& patient) {
  const automation::Date birthDate = platform::ToDate(patient.Field(u"FDato"));
  return util::MakeSSN(birthDate, patient.Field(u"PersNr"), true);
}

}  // namespace

BVilnor::BVilnor(Events& events) : events_(events) {
  NotifyWnd() = CreateForm();
}

BVilnor::~BVilnor() {
  DestroyForm(NotifyWnd());
  // What an operation has left there would keep the host's database open after the session.
  db::ReleaseGDB();
}

void BVilnor::InitVilnor(const std::u16string& connectionParameter, std::int16_t kestraLangID,
                         std::int16_t dbType) {
  Guarded(u" in InitVilnor", kBVilnorIcon, [&] {
    util::Session& session = util::CurrentSession();
    session.gConnectionParameter = connectionParameter;
    session.gKestraLangID = kestraLangID;
    session.gDbType = dbType;
    session.gDateFormat = util::GetLanguageDateFormat();
  });
}

void BVilnor::OpenExistCase(std::int32_t vilnorId) {
  Guarded(u" in OpenExistCase", kBVilnorIcon, [&] {
    const Ways ways = FindWays();
    if (ways.exePath.empty()) {
      return;
    }
    const auto requestPath = exchange::WriteExistCase(vilnorId, ways.outputPath);
    CountLaunch();
    // Kept: not looked at; a request that could not be written starts the program without one.
    StartVilnor(ways.exePath, requestPath);
  });
}

void BVilnor::OpenExistFHP(std::int32_t fhpId) {
  // Kept: reports the name of the operation that it passes on to.
  Guarded(u" in OpenExistCase", kBVilnorIcon, [&] {
    const std::int32_t vilnorId = db::RenewGDB()->GetVilnorIdByFHPId(fhpId);
    db::ReleaseGDB();
    OpenExistCase(vilnorId);
  });
}

void BVilnor::OpenSearchPatient(std::int32_t pid) {
  Guarded(u" in OpenSearchPatient", kBVilnorIcon, [&] {
    const std::weak_ptr<db::DBVilnor> made = db::RenewGDB();
    auto patient = platform::Current().database.NewRecordset();
    const Ways ways = FindWays();
    if (ways.exePath.empty()) {
      return;  // kept: the database object stays for the next operation to replace
    }
    patient = db::KeptOrRenewed(made)->GetPatientSSNByPID(pid);
    const std::u16string ssn = SSNOf(platform::Existing(patient));
    db::ReleaseGDB();
    patient.reset();
    const auto requestPath = exchange::WriteSearchPatient(ssn, ways.outputPath);
    CountLaunch();
    StartVilnor(ways.exePath, requestPath);
  });
}

void BVilnor::OpenWithNewCase(std::int32_t pid, std::int32_t bid, std::int32_t rid) {
  Guarded(u" in OpenWithNewCase", kBVilnorIcon, [&] {
    const std::weak_ptr<db::DBVilnor> made = db::RenewGDB();
    auto patient = platform::Current().database.NewRecordset();
    const Ways ways = FindWays();
    if (ways.exePath.empty()) {
      return;  // kept: the database object stays for the next operation to replace
    }
    patient = db::KeptOrRenewed(made)->GetPatientByPID(pid);
    const std::u16string ssn = SSNOf(platform::Existing(patient));
    const std::u16string firstName = platform::ToText(patient->Field(u"fornavn"));
    const std::u16string lastName = platform::ToText(patient->Field(u"Navn"));
    db::ReleaseGDB();
    patient.reset();
    const auto requestPath = WriteNewCase(pid, bid, rid, ssn, firstName, lastName, ways.outputPath);
    CountLaunch();
    StartVilnor(ways.exePath, requestPath);
  });
}

void BVilnor::OpenWithNewFHP(std::int32_t pid, std::int32_t bid, std::int32_t rid,
                             std::int32_t fhpId) {
  Guarded(u" in OpenWithNewFHP", kBVilnorIcon, [&] {
    const Ways ways = FindWays();
    if (ways.exePath.empty()) {
      return;
    }
    const auto requestPath = fhp::WriteNewFHP(pid, bid, rid, fhpId, ways.outputPath);
    if (!requestPath.empty()) {
      StartVilnor(ways.exePath, requestPath);
    }
  });
}

void BVilnor::OpenVilnor() {
  Guarded(u" in OpenVilnor", kBVilnorIcon, [] {
    const std::u16string exePath = GetVilnorCommandLine();
    if (!exePath.empty()) {
      StartVilnor(exePath, {});
    }
  });
}

void BVilnor::ReadNewFHP(std::int32_t fhpId) {
  exchange::ReadNewFHP(fhpId, *this);
}

void BVilnor::ReadExistCase(std::int32_t vilnorId) {
  exchange::ReadExistCase(vilnorId, *this);
}

void BVilnor::ReadNewCase(std::int32_t pid) {
  exchange::ReadNewCase(pid, *this);
}

bool BVilnor::FHPExists(std::int32_t fhpId) {
  return Guarded(u" in FHPExists", kBVilnorIcon, [&] {
    // Kept: the host refreshes its journal at each of the four events.
    RaiseUpdateJournal();
    const std::weak_ptr<db::DBVilnor> made = db::RenewGDB();
    RaiseUpdateJournal();
    const auto exists = db::KeptOrRenewed(made)->CaseExists(fhpId, db::kPriorApproval);
    if (exists.error) {
      db::ReleaseGDB();
      return false;
    }
    RaiseUpdateJournal();
    db::ReleaseGDB();
    RaiseUpdateJournal();
    return exists.value;
  });
}

std::u16string BVilnor::WriteNewCase(std::int32_t pid, std::int32_t bid, std::int32_t rid,
                                     const std::u16string& ssn, const std::u16string& firstName,
                                     const std::u16string& lastName,
                                     const std::u16string& vilnorOutputPath) {
  return exchange::WriteNewCase({.pid = pid,
                                 .bid = bid,
                                 .rid = rid,
                                 .ssn = ssn,
                                 .firstName = firstName,
                                 .lastName = lastName},
                                vilnorOutputPath);
}

void BVilnor::AddNewVilnorUser(std::int32_t pid, const std::u16string& userName) {
  Guarded(u" in AddNewVilnorUser", kBVilnorIcon, [&] {
    db::RenewGDB()->AddNewVilnorUser(pid, userName);
    db::ReleaseGDB();
  });
}

void BVilnor::UpdateVilnorUser(std::int32_t pid, const std::u16string& userName) {
  Guarded(u" in UpdateVilnorUser", kBVilnorIcon, [&] {
    db::RenewGDB()->UpdateVilnorUser(pid, userName);
    db::ReleaseGDB();
  });
}

void BVilnor::DeleteVilnorUser(std::int32_t pid) {
  Guarded(u" in DeleteVilnorUser", kBVilnorIcon, [&] {
    db::RenewGDB()->DeleteVilnorUser(pid);
    db::ReleaseGDB();
  });
}

std::u16string BVilnor::GetVilnorUserByPID(std::int32_t pid) {
  return Guarded(u" in GetVilnorUserByPID", kBVilnorIcon, [&] {
    auto userName = db::RenewGDB()->GetVilnorUserByPID(pid);
    db::ReleaseGDB();
    return userName;
  });
}

bool BVilnor::OKToSend(std::int32_t fhpId, std::int16_t& errCode, std::u16string& errMsg) {
  return fhp::OKToSend(fhpId, errCode, errMsg);
}

std::u16string BVilnor::GetVilnorOutputPath() {
  return host::GetVilnorOutputPath();
}

void BVilnor::RaiseUpdateJournal() {
  events_.UpdateJournal();
}

void BVilnor::CountLaunch() {
  if (launchCount_ == std::numeric_limits<std::int16_t>::max()) {
    throw AutomationError(RuntimeError::Overflow);
  }
  ++launchCount_;
}

}  // namespace host
