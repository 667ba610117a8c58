#pragma once

namespace fhp {

// How often the program that this is linked into has allocated memory by `new`.
long Allocations();

}  // namespace fhp
