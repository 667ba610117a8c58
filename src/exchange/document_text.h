#pragma once

#include <string>
#include <string_view>

namespace exchange {

// Appends an element's text in ISO-8859-1 as the DOM's `save` writes it; characters outside Latin-1
// become character references. Characters that XML does not allow are written as the DOM writes
// them: a text ends at U+0000 and loses its other control characters, and half a surrogate pair
// becomes U+FFFD. U+FFFE and U+FFFF, with which the DOM would write invalid XML, become U+FFFD.
// Returns whether the text goes on: false if U+0000 ended it.
bool AppendText(std::string& bytes, std::u16string_view text);

}  // namespace exchange
