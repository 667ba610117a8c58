#pragma once

#include <string>

#include "exchange/element.h"

namespace exchange {

// The document of `root` as the DOM's `save` writes it: the declaration "version='1.0'
// encoding='ISO-8859-1'", a line feed, the elements without indentation, a line feed. Characters
// outside Latin-1 become character references. Characters that XML does not allow are
// written as the DOM writes them: a text ends at U+0000 and loses its other control characters, and
// half a surrogate pair becomes U+FFFD. Where the DOM would write what is no XML (U+FFFE and
// U+FFFF; control characters in an attribute), they become U+FFFD or are left out as well.
std::string Serialize(const Element& root);

}  // namespace exchange
