// Text of the component: UTF-16. Positions and lengths count UTF-16 units, positions from 1, with
// the edge cases of the classic string functions.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace automation {

// Malformed input becomes U+FFFD in either direction.
std::u16string FromUtf8(std::string_view text);
std::string ToUtf8(std::u16string_view text);

// Plain decimal text of a number, with "-" before a negative one.
std::u16string Decimal10(std::int64_t number);

// First `length` units; the whole text when it is shorter. Error 5 for a negative length.
std::u16string Left(std::u16string_view text, std::int32_t length);
// Last `length` units; the whole text when it is shorter. Error 5 for a negative length.
std::u16string Right(std::u16string_view text, std::int32_t length);
// `length` units from `start` (from 1); fewer if the text ends first, none if `start` is past its
// end. Error 5 for a start below 1 or a negative length.
std::u16string Mid(std::u16string_view text, std::int32_t start, std::int32_t length);
std::u16string Mid(std::u16string_view text, std::int32_t start);
// Position of the first `part` at or after `start`, 0 if there is none; `start` if `part` is empty
// and `start` is within the text. Error 5 for a start below 1.
std::int32_t InStr(std::int32_t start, std::u16string_view text, std::u16string_view part);
// The pieces between the separators: none for an empty text, otherwise one more than separators.
std::vector<std::u16string> Split(std::u16string_view text, char16_t separator);
// Without leading and trailing blanks (U+0020 only).
std::u16string Trim(std::u16string_view text);
// Replaces every `part`, ignoring ASCII letter case; the search continues after each replacement.
std::u16string ReplaceNoCase(std::u16string_view text, std::u16string_view part,
                             std::u16string_view replacement);
// Upper case letter by letter, for ASCII and Latin-1 like the classic runtime in Western locales (ß
// and ÿ stay).
std::u16string UCase(std::u16string_view text);
bool EqualsNoCase(std::u16string_view left, std::u16string_view right);

}  // namespace automation
