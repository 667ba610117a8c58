#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// Limits checked before a result file is parsed: the host waits while the parser is busy, and the
// parser's tree is in the host's memory.
namespace parser_limits {

// In bytes. A larger file is refused without being read.
inline constexpr std::uint64_t kLargestDocument = std::uint64_t{64} << 20;

// In characters, and in the texts, sections, comments and elements that make up the value. No
// result has a longer value: error 7.
inline constexpr std::size_t kLongestValue = 65'536;
inline constexpr std::size_t kMostPieces = 1'000;

// Whether a document, given as the bytes of its file, may be parsed. No markup may be malformed
// (parsers go on after an error, and some errors cost them more the longer the file is), its
// document type may have no declarations, and it may not have more elements and texts, attributes,
// levels or references than a result could have. The length of its texts hardly matters. UTF-16 is
// accepted, and any encoding that stores ASCII's characters as ASCII's bytes.
bool IsFitToParse(std::string_view bytes);

}  // namespace parser_limits
