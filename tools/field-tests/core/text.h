// Small helpers for UTF-8 text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace field_tests {

// Without line ends, whether "\n" or "\r\n".
std::vector<std::string> LinesOf(std::string_view text);

std::string Trimmed(std::string_view text);

// ASCII letters only.
std::string Lower(std::string_view text);

void ReplaceAll(std::string& text, std::string_view from, std::string_view to);

// "*" stands for any characters.
bool Matches(std::string_view pattern, std::string_view text);

// Whether the bytes contain the text in UTF-16, low bytes first, with a zero behind it.
bool HoldsUtf16(std::string_view bytes, std::u16string_view text);

// "a, b"
std::string Joined(const std::vector<std::string>& texts, std::string_view separator);

}  // namespace field_tests
