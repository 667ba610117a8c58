#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// What is kept from a parser of result files: while it is busy the host waits, and its tree is in the
// host's memory.
namespace platform {

// In bytes. A larger file is refused without being read.
inline constexpr std::uint64_t kLargestDocument = std::uint64_t{64} << 20;

// In characters, and in texts, sections, comments and elements that it is put together from. A longer
// value is no value of a result: error 7.
inline constexpr std::size_t kLongestValue = 65'536;
inline constexpr std::size_t kMostPieces = 1'000;

// Whether a document, given as the bytes of its file, is one that no result is and that would keep a
// parser busy or become a tree many times its size: it has a document type, or too many parts (tags
// and attributes), or too many attributes or namespaces that are compared with each other. An adapter
// refuses it as no document. How long its texts are does not matter.
//
// The bytes are taken for ASCII with or without zero bytes between them: UTF-8, UTF-16, the code
// pages. What only looks like a part, in a text or a comment, is counted as well.
bool IsTooMuchToParse(std::string_view bytes);

}  // namespace platform
