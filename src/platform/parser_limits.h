#pragma once

#include <cstdint>
#include <string_view>

namespace platform {

// In bytes. A larger file is refused without being read: in the time of a parser, too, it is the
// host that waits.
inline constexpr std::uint64_t kLargestDocument = std::uint64_t{64} << 20;

// Whether a document, given as the bytes of its file, would keep a parser busy for more than a
// second or two, or would become a tree many times its size: an adapter refuses it as no document.
// There are too many parts (tags, attributes, references to entities of its own), too many
// attributes or namespaces that the parser compares with each other, or too long a document type.
// How long its texts are does not matter. The bytes are taken for ASCII with or without zero bytes
// between them (UTF-8, UTF-16, the code pages); what a text or a comment has of the same characters
// is counted as well.
bool IsTooMuchToParse(std::string_view bytes);

}  // namespace platform
