// The text that a request sends along and its result brings back, fields separated by "&".
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
  // All text behind the fourth "&".
  std::u16string kestraCaseId;
};

// "PID&BID&RID". Error 5 when a separator is missing, 13 for a field that is no number, 6 for one
// beyond 32 bits.
NewCaseData SplitNewCaseData(std::u16string_view userDefData);
// "PID&BID&RID&FHPId&case number"; the same errors for the first three fields. Kept: without a
// fourth separator there is no error and the whole text is the case number.
NewFHPData SplitNewFHPData(std::u16string_view userDefData);

}  // namespace exchange
