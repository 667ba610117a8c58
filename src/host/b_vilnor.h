// BVilnor, the session object that the host creates.
#pragma once

#include <cstdint>
#include <string>

#include "exchange/events.h"
#include "exchange/request_kinds.h"

namespace host {

// Every operation runs under the error trap: a failure is shown to the user, and the operation
// returns an empty result. Identifiers are the host's: `pid` Pasient.ID, `bid` Worker.ID, `rid`
// company.id, `fhpId` SEPrerequest.SEPrerequestID, `vilnorId` the key of a link record.
class BVilnor {
 public:
  // Creates the notification window. Raises no events.
  BVilnor();
  // `events` outlives the object.
  explicit BVilnor(exchange::Events& events);
  BVilnor(const BVilnor&) = delete;
  BVilnor& operator=(const BVilnor&) = delete;
  // Destroys the window created last on the thread, and releases gDB if an operation left it.
  ~BVilnor();

  // Stores the session settings for every object of the thread; opens no connection. `dbType` 1 or
  // 2 chooses the delimiter of date literals.
  void InitVilnor(const std::u16string& connectionParameter, std::int16_t kestraLangID,
                  std::int16_t dbType);

  // These write a request file and start the link program on it; they return when it has started.
  void OpenExistCase(std::int32_t vilnorId);
  void OpenExistFHP(std::int32_t fhpId);
  void OpenSearchPatient(std::int32_t pid);
  void OpenWithNewCase(std::int32_t pid, std::int32_t bid, std::int32_t rid);
  void OpenWithNewFHP(std::int32_t pid, std::int32_t bid, std::int32_t rid, std::int32_t fhpId);
  // Starts the link program without a request.
  void OpenVilnor();

  // These read the result file of a finished request and enter it into the host's database. Each
  // looks up the exchange directory again.
  void ReadResult(exchange::RequestKind kind, std::int32_t key);
  void ReadNewFHP(std::int32_t fhpId);
  void ReadExistCase(std::int32_t vilnorId);
  void ReadNewCase(std::int32_t pid);

  // Whether a link record of case type 1 exists for the application. Raises UpdateJournal four
  // times: before and after the database object is created, and before and after it is released. A
  // failure ends the events: only one is raised if the object cannot be created, two if the query
  // fails.
  bool FHPExists(std::int32_t fhpId);

  // Writes the new-case request file and returns its full path.
  std::u16string WriteNewCase(std::int32_t pid, std::int32_t bid, std::int32_t rid,
                              const std::u16string& ssn, const std::u16string& firstName,
                              const std::u16string& lastName,
                              const std::u16string& vilnorOutputPath);

  // The mapping of the host's users to users of the link program.
  void AddNewVilnorUser(std::int32_t pid, const std::u16string& userName);
  void UpdateVilnorUser(std::int32_t pid, const std::u16string& userName);
  void DeleteVilnorUser(std::int32_t pid);
  std::u16string GetVilnorUserByPID(std::int32_t pid);

  // Whether the application may be sent; see fhp/send_check.h.
  bool OKToSend(std::int32_t fhpId, std::int16_t& errCode, std::u16string& errMsg);

 private:
  void RaiseUpdateJournal();
  void CountLaunch();

  exchange::Events* events_ = nullptr;
  // How often the program was about to be started on a request. Nothing reads it; kept, with its
  // overflow, which the operation reports.
  std::int16_t launchCount_ = 0;
};

}  // namespace host
