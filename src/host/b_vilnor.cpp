#include "host/b_vilnor.h"

#include <limits>
#include <memory>
#include <optional>
#include <utility>

#include "automation/automation_error.h"
#include "db/case_types.h"
#include "db/connection_state.h"
#include "db/db_vilnor.h"
#include "exchange/request_writers.h"
#include "exchange/result_readers.h"
#include "fhp/application.h"
#include "fhp/send_check.h"
#include "host/link_program.h"
#include "host/notification_window.h"
#include "platform/conversions.h"
#include "platform/database.h"
#include "platform/platform.h"
#include "util/date_format.h"
#include "util/error_trap.h"
#include "util/session_settings.h"
#include "util/ssn.h"

namespace host {
namespace {

using automation::AutomationError;
using automation::RuntimeError;
using exchange::RequestKind;
using util::kBVilnorIcon;
using util::UnderTrap;

// The paths that an Open operation looks up first.
struct LaunchPaths {
  std::u16string outputPath;
  std::u16string exePath;
};

// Nothing if the link program is missing; the operation then ends. The order matters: even if the
// link program is not found, the directory is created and a missing host registration reported.
std::optional<LaunchPaths> FindLaunchPaths() {
  // Kept: without a host registration the request continues without a directory.
  auto outputPath = GetVilnorOutputPath().OrEmpty();
  auto exePath = GetVilnorCommandLine();
  if (!exePath) {
    return std::nullopt;
  }
  return LaunchPaths{.outputPath = std::move(outputPath), .exePath = std::move(*exePath)};
}

// The full personal identity number of the current patient.
std::u16string SSNOf(platform::Recordset& patient) {
  const automation::Date birthDate = platform::ToDate(patient.Field(u"FDato"));
  return util::MakeSSN(birthDate, patient.Field(u"PersNr"), true);
}

}  // namespace

BVilnor::BVilnor() {
  NotifyWnd() = CreateForm();
}

BVilnor::BVilnor(exchange::Events& events) : BVilnor() {
  events_ = &events;
}

BVilnor::~BVilnor() {
  DestroyForm(NotifyWnd());
  // An object left there would keep the host's database open after the session.
  db::ReleaseGDB();
}

void BVilnor::InitVilnor(const std::u16string& connectionParameter, std::int16_t kestraLangID,
                         std::int16_t dbType) {
  UnderTrap(u" in InitVilnor", kBVilnorIcon, [&] {
    util::SessionSettings& session = util::CurrentSettings();
    session.gConnectionParameter = connectionParameter;
    session.gKestraLangID = kestraLangID;
    session.gDbType = dbType;
    session.gDateFormat = util::GetLanguageDateFormat();
  });
}

void BVilnor::OpenExistCase(std::int32_t vilnorId) {
  UnderTrap(u" in OpenExistCase", kBVilnorIcon, [&] {
    const auto paths = FindLaunchPaths();
    if (!paths) {
      return;
    }
    const auto request = exchange::WriteExistCase(vilnorId, paths->outputPath);
    CountLaunch();
    // Kept: if the request could not be written, the program starts without one.
    StartVilnor(paths->exePath, request.OrEmpty());
  });
}

void BVilnor::OpenExistFHP(std::int32_t fhpId) {
  // Kept: reports errors under the name of the operation that it calls.
  UnderTrap(u" in OpenExistCase\0OpenExistFHP", kBVilnorIcon, [&] {
    const std::int32_t vilnorId =
        db::WithGDB([&](auto& gDB) { return gDB.GetVilnorIdByFHPId(fhpId); });
    OpenExistCase(vilnorId);
  });
}

void BVilnor::OpenSearchPatient(std::int32_t pid) {
  UnderTrap(u" in OpenSearchPatient", kBVilnorIcon, [&] {
    const std::weak_ptr<db::DBVilnor> made = db::RenewGDB();
    auto patient = platform::Current().database.NewRecordset();
    const auto paths = FindLaunchPaths();
    if (!paths) {
      return;  // kept: the database object stays for the next operation to replace
    }
    patient = db::KeptOrRenewed(made)->GetPatientSSNByPID(pid);
    const std::u16string ssn = SSNOf(platform::Require(patient));
    db::ReleaseGDB();
    patient.reset();
    const auto request = exchange::WriteSearchPatient(ssn, paths->outputPath);
    CountLaunch();
    StartVilnor(paths->exePath, request.OrEmpty());
  });
}

void BVilnor::OpenWithNewCase(std::int32_t pid, std::int32_t bid, std::int32_t rid) {
  UnderTrap(u" in OpenWithNewCase", kBVilnorIcon, [&] {
    const std::weak_ptr<db::DBVilnor> made = db::RenewGDB();
    auto patient = platform::Current().database.NewRecordset();
    const auto paths = FindLaunchPaths();
    if (!paths) {
      return;  // kept: the database object stays for the next operation to replace
    }
    patient = db::KeptOrRenewed(made)->GetPatientByPID(pid);
    const std::u16string ssn = SSNOf(platform::Require(patient));
    const std::u16string firstName = platform::ToText(patient->Field(u"fornavn"));
    const std::u16string lastName = platform::ToText(patient->Field(u"Navn"));
    db::ReleaseGDB();
    patient.reset();
    const auto requestPath =
        WriteNewCase(pid, bid, rid, ssn, firstName, lastName, paths->outputPath);
    CountLaunch();
    StartVilnor(paths->exePath, requestPath);
  });
}

void BVilnor::OpenWithNewFHP(std::int32_t pid, std::int32_t bid, std::int32_t rid,
                             std::int32_t fhpId) {
  UnderTrap(u" in OpenWithNewFHP", kBVilnorIcon, [&] {
    const auto paths = FindLaunchPaths();
    if (!paths) {
      return;
    }
    const auto request = fhp::WriteNewFHP(pid, bid, rid, fhpId, paths->outputPath);
    if (!request.Failed()) {
      StartVilnor(paths->exePath, request.Value());
    }
  });
}

void BVilnor::OpenVilnor() {
  UnderTrap(u" in OpenVilnor", kBVilnorIcon, [] {
    if (const auto exePath = GetVilnorCommandLine()) {
      StartVilnor(*exePath, {});
    }
  });
}

void BVilnor::ReadResult(exchange::RequestKind kind, std::int32_t key) {
  // Kept: without a host registration the result is searched for without a directory.
  exchange::ReadResult(
      {.kind = kind, .key = key, .folder = GetVilnorOutputPath().OrEmpty(), .events = events_});
}

void BVilnor::ReadNewFHP(std::int32_t fhpId) {
  ReadResult(RequestKind::NewFHP, fhpId);
}

void BVilnor::ReadExistCase(std::int32_t vilnorId) {
  ReadResult(RequestKind::ExistCase, vilnorId);
}

void BVilnor::ReadNewCase(std::int32_t pid) {
  ReadResult(RequestKind::NewCase, pid);
}

bool BVilnor::FHPExists(std::int32_t fhpId) {
  return UnderTrap(u" in FHPExists", kBVilnorIcon, [&] {
    // Kept: the host refreshes its journal at each of the four events.
    RaiseUpdateJournal();
    const std::weak_ptr<db::DBVilnor> made = db::RenewGDB();
    RaiseUpdateJournal();
    const auto exists =
        db::KeptOrRenewed(made)->TryCaseExists(fhpId, Number(db::CaseType::PriorApproval));
    if (exists.Failed()) {
      db::ReleaseGDB();
      return false;
    }
    RaiseUpdateJournal();
    db::ReleaseGDB();
    RaiseUpdateJournal();
    return exists.Value();
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
                                vilnorOutputPath)
      .OrEmpty();
}

void BVilnor::AddNewVilnorUser(std::int32_t pid, const std::u16string& userName) {
  UnderTrap(u" in AddNewVilnorUser", kBVilnorIcon,
            [&] { db::WithGDB([&](auto& gDB) { return gDB.AddNewVilnorUser(pid, userName); }); });
}

void BVilnor::UpdateVilnorUser(std::int32_t pid, const std::u16string& userName) {
  UnderTrap(u" in UpdateVilnorUser", kBVilnorIcon,
            [&] { db::WithGDB([&](auto& gDB) { return gDB.UpdateVilnorUser(pid, userName); }); });
}

void BVilnor::DeleteVilnorUser(std::int32_t pid) {
  UnderTrap(u" in DeleteVilnorUser", kBVilnorIcon,
            [&] { db::WithGDB([&](auto& gDB) { return gDB.DeleteVilnorUser(pid); }); });
}

std::u16string BVilnor::GetVilnorUserByPID(std::int32_t pid) {
  return UnderTrap(u" in GetVilnorUserByPID", kBVilnorIcon, [&] {
    return db::WithGDB([&](auto& gDB) { return gDB.GetVilnorUserByPID(pid); });
  });
}

bool BVilnor::OKToSend(std::int32_t fhpId, std::int16_t& errCode, std::u16string& errMsg) {
  return fhp::OKToSend(fhpId, errCode, errMsg);
}

void BVilnor::RaiseUpdateJournal() {
  if (events_ != nullptr) {
    events_->UpdateJournal();
  }
}

void BVilnor::CountLaunch() {
  if (launchCount_ == std::numeric_limits<std::int16_t>::max()) {
    throw AutomationError(RuntimeError::Overflow);
  }
  ++launchCount_;
}

}  // namespace host
