#include "platform/parser_limits.h"

#include <algorithm>
#include <string>

namespace platform {
namespace {

// A result has a dozen parts, one that brings its whole form along a few thousand. In Wine's parser
// each of them takes up to nine microseconds and a hundred bytes, however few bytes of the file it
// is.
constexpr std::size_t kMostParts = 100'000;
// An attribute is compared with those before it, each name with the namespaces around it: half a
// second.
constexpr std::uint64_t kMostComparisons = 100'000'000;
// Its entities can grow without end, and some six hundred bytes of them keep Wine's parser in a
// loop that it does not leave.
constexpr std::string_view kDocumentType = "<!DOCTYPE";

bool IsBlank(char character) {
  return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

// How often an equals sign is followed by a quotation mark.
std::size_t CountAttributes(std::string_view tag) {
  std::size_t count = 0;
  for (auto equals = tag.find('='); equals != tag.npos; equals = tag.find('=', equals + 1)) {
    const auto* const value = std::find_if_not(tag.begin() + equals + 1, tag.end(), IsBlank);
    count += value != tag.end() && (*value == '"' || *value == '\'') ? 1 : 0;
  }
  return count;
}

std::size_t CountNamespaces(std::string_view tag) {
  constexpr std::string_view kDeclaration = "xmlns";
  std::size_t count = 0;
  for (auto place = tag.find(kDeclaration); place != tag.npos;
       place = tag.find(kDeclaration, place + kDeclaration.size())) {
    ++count;
  }
  return count;
}

class Parts {
 public:
  // `piece` is what stands from one "<" to the next: a tag and the text behind it.
  void Add(std::string_view piece) {
    // A value may have a ">" of its own, so it is the last that surely ends the tag.
    const std::string_view tag = piece.substr(0, piece.rfind('>'));
    const std::size_t attributes = CountAttributes(tag);
    count_ += 1 + attributes;
    comparedAttributes_ += std::uint64_t{attributes} * attributes;
    namespaces_ += attributes == 0 ? 0 : CountNamespaces(tag);
  }

  bool AreTooMany() const {
    return count_ > kMostParts || comparedAttributes_ + namespaces_ * count_ > kMostComparisons;
  }

 private:
  std::size_t count_ = 0;
  std::uint64_t comparedAttributes_ = 0;
  std::uint64_t namespaces_ = 0;
};

bool HasTooManyParts(std::string_view bytes) {
  Parts parts;
  bytes.remove_prefix(std::min(bytes.find('<'), bytes.size()));
  while (!bytes.empty() && !parts.AreTooMany()) {
    const std::string_view piece = bytes.substr(0, bytes.find('<', 1));
    parts.Add(piece);
    bytes.remove_prefix(piece.size());
  }
  return parts.AreTooMany();
}

}  // namespace

bool IsTooMuchToParse(std::string_view bytes) {
  std::string withoutZeros;
  // They need not begin with the file: a declaration in ASCII may be followed by UTF-16.
  if (bytes.find('\0') != bytes.npos) {
    withoutZeros = bytes;
    std::erase(withoutZeros, '\0');
    bytes = withoutZeros;
  }
  return bytes.find(kDocumentType) != bytes.npos || HasTooManyParts(bytes);
}

}  // namespace platform
