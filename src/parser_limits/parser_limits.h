#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// What is kept from a parser of result files: while it is busy the host waits, and its tree is in
// the host's memory.
namespace parser_limits {

// In bytes. A larger file is refused without being read.
inline constexpr std::uint64_t kLargestDocument = std::uint64_t{64} << 20;

// In characters, and in texts, sections, comments and elements that it is put together from. A
// longer value is no value of a result: error 7.
inline constexpr std::size_t kLongestValue = 65'536;
inline constexpr std::size_t kMostPieces = 1'000;

// Whether a document, given as the bytes of its file, may be given to a parser. It may when a
// parser would find nothing but markup in order (parsers go on after an error, and some errors cost
// them more the longer the file is), no declarations in a document type, and no more of anything
// than a result could have: elements and texts, attributes, levels, references. How long its texts
// are hardly matters. Any encoding is taken that has ASCII's characters as ASCII's bytes, and
// UTF-16.
bool IsFitToParse(std::string_view bytes);

}  // namespace parser_limits
