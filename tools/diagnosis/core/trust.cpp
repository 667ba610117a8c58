#include "diagnosis/core/trust.h"

namespace diagnosis {
namespace {

constexpr std::int32_t Code(std::uint32_t code) {
  return static_cast<std::int32_t>(code);
}

}  // namespace

Signature SignatureOf(std::int32_t status) {
  switch (status) {
    case 0:
      return Signature::Good;
    case Code(0x800B0100):  // TRUST_E_NOSIGNATURE
    case Code(0x800B0001):  // TRUST_E_PROVIDER_UNKNOWN
    case Code(0x800B0003):  // TRUST_E_SUBJECT_FORM_UNKNOWN
      return Signature::None;
    case Code(0x80096010):  // TRUST_E_BAD_DIGEST
      return Signature::Broken;
    default:
      return Signature::Untrusted;
  }
}

}  // namespace diagnosis
