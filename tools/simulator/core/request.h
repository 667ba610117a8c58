// A request from the component, as the link program reads it.
#pragma once

#include <cstdint>
#include <string>

#include "platform/files.h"
#include "platform/result_document.h"

namespace simulator {

enum class RequestKind { NewCase, PriorApproval, ExistingCase, Search };

// "Nytt ärende", ... as the window and the log show it.
std::u16string KindText(RequestKind kind);

// How to notify the host of the result: a message to post, and the window.
struct Notification {
  std::u16string className;
  std::uint32_t message = 0;
  std::int32_t wParam = 0;
};

struct Request {
  RequestKind kind = RequestKind::NewCase;
  // New case and prior approval only; texts may be empty.
  std::u16string title;
  std::u16string firstName;
  std::u16string lastName;
  // Personal identity number; empty for an existing case.
  std::u16string patientId;
  // Existing case only.
  std::u16string caseId;
  // The link program's user that the host names; may be empty.
  std::u16string participant;
  // All kinds except Search expect an answer.
  std::u16string resultPath;
  std::u16string userDefData;
  Notification notification;

  bool ExpectsAnswer() const { return kind != RequestKind::Search; }
};

// Reads the request file at `path`. Raises Problem for a file that is missing, empty or not XML, an
// envelope without a request, or a request that lacks what its answer needs.
Request ReadRequest(platform::Files& files, platform::ResultDocuments& documents,
                    const std::u16string& path);

}  // namespace simulator
