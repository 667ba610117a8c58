// The request files for new cases, existing cases and patient searches. Each writer runs under the
// error trap and returns the full path of the file that it saved.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "util/attempt.h"

namespace exchange {

// Of the file of a patient search, as the words in request_kinds.h.
inline constexpr std::u16string_view kSearchWord = u"\\Search";

struct NewCaseRequest {
  std::int32_t pid = 0;
  std::int32_t bid = 0;
  std::int32_t rid = 0;
  // Personal identity number as MakeSSN composes it.
  std::u16string ssn;
  std::u16string firstName;
  std::u16string lastName;
};

util::Attempt<std::u16string> WriteNewCase(const NewCaseRequest& request,
                                           const std::u16string& vilnorOutputPath);
// Looks up the link record's case id; it is empty if the link does not exist.
util::Attempt<std::u16string> WriteExistCase(std::int32_t vilnorId,
                                             const std::u16string& vilnorOutputPath);
// Expects no answer.
util::Attempt<std::u16string> WriteSearchPatient(const std::u16string& ssn,
                                                 const std::u16string& vilnorOutputPath);

}  // namespace exchange
