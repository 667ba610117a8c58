// The text that a request carries and its result returns: fields separated by "&".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace exchange {

struct NewCaseData {
  std::int32_t bid = 0;
  std::int32_t rid = 0;
};

struct NewFHPData {
  std::int32_t pid = 0;
  std::int32_t bid = 0;
  std::int32_t rid = 0;
  // All text after the fourth "&".
  std::u16string kestraCaseId;
};

// "PID&BID&RID". Error 5 for a missing separator, 13 for a field that is not a number, 6 for one
// beyond 32 bits.
NewCaseData SplitNewCaseData(std::u16string_view userDefData);
// "PID&BID&RID&FHPId&case number"; the same errors for the first three fields. Kept: without a
// fourth separator no error is raised, and the whole text is the case number.
NewFHPData SplitNewFHPData(std::u16string_view userDefData);

}  // namespace exchange
