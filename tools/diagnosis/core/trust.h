// What the system says about a signature.
#pragma once

#include <cstdint>

#include "diagnosis/core/computer.h"

namespace diagnosis {

// `status` is the result of WinVerifyTrust.
Signature SignatureOf(std::int32_t status);

}  // namespace diagnosis
