// Writing XML elements in ISO-8859-1.
#pragma once

#include <string>
#include <string_view>

namespace simulator {

// Appends "<name>text</name>" and a line break to `bytes`; escapes markup characters, and writes
// characters outside ISO-8859-1 as character references. Raises Problem if `text` contains a
// character that XML forbids.
void AppendElement(std::string& bytes, const char* name, std::u16string_view text);

}  // namespace simulator
