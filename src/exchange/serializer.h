#pragma once

#include <string>

#include "exchange/element.h"

namespace exchange {

// The document of `root` as the DOM's `save` writes it: the declaration "version='1.0'
// encoding='ISO-8859-1'", a line feed, the elements without indentation, a line feed. Characters
// outside Latin-1 become character references. Error -1072896760 for a character that XML forbids
// (a control character, half a surrogate pair).
std::string Serialize(const Element& root);

}  // namespace exchange
