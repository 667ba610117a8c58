#pragma once

#include <cstdint>
#include <string>

namespace fhp {

// Whether an application's treatment plan fits the link program, which takes at most four planned
// measures for each tooth and for each jaw. `errCode` becomes 0 or 100, `errMsg` "" or the message
// for the user; after an error both keep their values and the result is false.
bool OKToSend(std::int32_t fhpId, std::int16_t& errCode, std::u16string& errMsg);

}  // namespace fhp
