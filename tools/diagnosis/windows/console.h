// Standard input and output.
#pragma once

#include <string>
#include <string_view>

namespace diagnosis {

// As UTF-8 to a file or pipe, as text to a console. False if it could not be written.
bool Print(std::u16string_view text);
void PrintError(std::u16string_view text);

// The first line that the user types (which stays invisible), or of a file or pipe in UTF-8.
std::u16string AskFor(std::u16string_view question);

}  // namespace diagnosis
