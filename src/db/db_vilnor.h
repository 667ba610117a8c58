// DBVilnor: the link records between the host's database and Vilnor Link, and the lookups that the
// exports need. The host creates objects of this class too.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/database.h"
#include "util/attempt.h"

namespace db {

// A link to write, for a case that Vilnor Link has accepted. Case types: db/case_types.h.
struct NewLink {
  std::int32_t pid;
  std::int32_t bid;
  std::int32_t rid;
  std::u16string caseId;
  std::int32_t fhpId;
  std::int32_t caseType;
  std::int32_t status;
  std::u16string vilnorUser;
  // The host's own number for an application.
  std::u16string kestraCaseId;
};

// The result of updating a link.
struct [[nodiscard]] UpdateAttempt {
  util::Attempt<void> update;
  // Retrying would only fail again: there is no such link, or its journal line's text has no "!"
  // before the number.
  bool isFinal = false;
};

// Every operation except InitConnection runs under the error trap: if it fails, it has shown its
// box, has rolled back its transaction and returns its empty result. Those that begin with Try are
// for callers inside the component that must tell a failure from an empty result. A returned
// recordset belongs to the caller and stays open when the shared one is closed; nullptr if no row
// was found.
// Key numbers are the host's: `pid` patient, `bid` practitioner, `rid` provider company, `fhpId`
// prior-approval application; `vilnorId` is the key of a link record, `caseId` the case number that
// Vilnor Link gave. Case types: db/case_types.h.
class DBVilnor {
 public:
  // Opens the thread's shared connection; errors go to the creator. If another object of the thread
  // has it open, raises 3705 and changes nothing.
  DBVilnor();
  // Releases the shared connection and recordset for every other object of the thread, too.
  ~DBVilnor();
  DBVilnor(const DBVilnor&) = delete;
  DBVilnor& operator=(const DBVilnor&) = delete;

  // Opens the shared connection with the session's connection string.
  // Kept: it has no error trap, so that an object's creator learns that there is no database: 3705
  // if the connection is already open, otherwise the provider's error.
  void InitConnection();

  // Deletes the application's link and its journal line.
  void DeleteFHP(std::int32_t fhpId);
  void DeleteCase(const std::u16string& caseId);
  std::u16string GetCaseIdByVilnorId(std::int32_t vilnorId);
  bool CaseExists(std::int32_t fhpId, std::int32_t caseTypeId);
  bool CaseExistsPID(std::int32_t pid, std::int32_t caseTypeId, const std::u16string& caseId);
  // All columns of the application.
  std::unique_ptr<platform::Recordset> GetFHPById(std::int32_t fhpId);
  // 0 when the application has no link.
  std::int32_t GetVilnorIdByFHPId(std::int32_t fhpId);

  // Practitioner.
  std::unique_ptr<platform::Recordset> GetBIDById(std::int32_t bid);
  // Provider company.
  std::unique_ptr<platform::Recordset> GetRIDById(std::int32_t rid);
  // Patient with name, birth date and identity number.
  std::unique_ptr<platform::Recordset> GetPIDById(std::int32_t pid);
  std::u16string GetCityByPostnr(std::int32_t postnr);
  bool PreRequestCostExists(std::int32_t fhpId);
  // The application's estimate rows; equal ones are merged, with their count in SelectNoOf.
  std::unique_ptr<platform::Recordset> GetPreRequestCostByFHPid(std::int32_t fhpId);

  // Writes a link, its journal line, and the line's key into the link.
  void AddNewCase(std::int32_t pid, std::int32_t bid, std::int32_t rid,
                  const std::u16string& caseId, std::int32_t fhpId, std::int32_t caseTypeId,
                  std::int32_t statusCode, const std::u16string& vilnorUser,
                  const std::u16string& kestraCaseId = {});
  // Stores the case's new number and status; the number also replaces the end of the journal
  // line's text, from its first "!" on.
  void UpdateCaseById(std::int32_t vilnorId, const std::u16string& caseId, std::int32_t caseStatus);
  // The same for the link of an application (type 1, `kestraId` is its id) or for the links of a
  // patient (type 9, `kestraId` is the patient's); for any other type it does nothing.
  void UpdateCase(const std::u16string& caseId, std::int32_t kestraId, std::int32_t caseStatus,
                  std::int32_t caseTypeId);

  std::unique_ptr<platform::Recordset> GetPatientByPID(std::int32_t pid);
  std::unique_ptr<platform::Recordset> GetPatientSSNByPID(std::int32_t pid);

  // The Vilnor Link user of a patient (the host keeps its own users as patients, too).
  void AddNewVilnorUser(std::int32_t pid, const std::u16string& userName);
  // An empty name deletes the mapping.
  void UpdateVilnorUser(std::int32_t pid, const std::u16string& userName);
  void DeleteVilnorUser(std::int32_t pid);
  std::u16string GetVilnorUserByPID(std::int32_t pid);
  std::u16string GetVilnorUserByCode1(std::int32_t code1);

  // The same as the operations above.
  util::Attempt<void> TryDeleteCase(const std::u16string& caseId);
  util::Attempt<std::u16string> TryGetCaseIdByVilnorId(std::int32_t vilnorId);
  util::Attempt<bool> TryCaseExists(std::int32_t fhpId, std::int32_t caseTypeId);
  util::Attempt<bool> TryCaseExistsPID(std::int32_t pid, std::int32_t caseTypeId,
                                       const std::u16string& caseId);
  util::Attempt<void> TryAddNewCase(const NewLink& link);
  UpdateAttempt TryUpdateCaseById(std::int32_t vilnorId, const std::u16string& caseId,
                                  std::int32_t caseStatus);
  UpdateAttempt TryUpdateCase(const std::u16string& caseId, std::int32_t kestraId,
                              std::int32_t caseStatus, std::int32_t caseTypeId);
};

}  // namespace db
