#pragma once

#include <string>

#include "exchange/element.h"

namespace exchange {

// The document with this root, as the DOM's `save` writes it: the declaration "version='1.0'
// encoding='ISO-8859-1'", a line feed, the elements without indentation, a line feed. Characters
// outside Latin-1 become character references. Characters that XML does not allow are written as
// the DOM writes them: a text ends at U+0000 and loses its other control characters, and half a
// surrogate pair becomes U+FFFD. Where the DOM would write invalid XML, U+FFFE and U+FFFF become
// U+FFFD, and control characters in an attribute are omitted.
std::string Serialize(const Element& root);

}  // namespace exchange
