#include "platform/parser_limits.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace platform {
namespace {

// A result has a dozen parts, one that brings its whole form along a few thousand. In Wine's parser
// each of them takes up to nine microseconds and a hundred bytes, however few bytes of the file it
// is.
constexpr std::size_t kMostParts = 100'000;
// An attribute is compared with those before it, each name with the namespaces around it, and a tag
// may be looked up in the document type: half a second.
constexpr std::uint64_t kMostComparisons = 100'000'000;
// What it declares can be called in by the thousand. No result has a document type at all.
constexpr std::uint64_t kLongestDocumentType = 1'000;

bool IsBlank(char character) {
  return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

// How often an equals sign is followed by a quotation mark.
std::size_t CountAttributes(std::string_view bytes) {
  std::size_t count = 0;
  for (auto equals = bytes.find('='); equals != bytes.npos; equals = bytes.find('=', equals + 1)) {
    const auto* const value = std::find_if_not(bytes.begin() + equals + 1, bytes.end(), IsBlank);
    count += value != bytes.end() && (*value == '"' || *value == '\'') ? 1 : 0;
  }
  return count;
}

std::size_t CountReferences(std::string_view bytes) {
  return static_cast<std::size_t>(std::ranges::count(bytes, '&'));
}

std::size_t CountNamespaces(std::string_view bytes) {
  constexpr std::string_view kDeclaration = "xmlns";
  std::size_t count = 0;
  for (auto place = bytes.find(kDeclaration); place != bytes.npos;
       place = bytes.find(kDeclaration, place + kDeclaration.size())) {
    ++count;
  }
  return count;
}

class Limits {
 public:
  // What stands from one "<" to the next: a tag and the text behind it.
  void Add(std::string_view piece) {
    const std::size_t attributes = CountAttributes(piece);
    ++tags_;
    attributes_ += attributes;
    // Only a document type has entities besides the five that are characters.
    references_ += documentType_ == 0 ? 0 : CountReferences(piece);
    comparedAttributes_ += std::uint64_t{attributes} * attributes;
    namespaces_ += attributes == 0 ? 0 : CountNamespaces(piece);
    documentType_ += IsOfDocumentType(piece) ? piece.size() : 0;
  }

  bool AreExceeded() const {
    const std::size_t parts = tags_ + attributes_ + references_;
    const std::uint64_t comparisons =
        comparedAttributes_ + namespaces_ * (tags_ + attributes_) + documentType_ * tags_;
    return parts > kMostParts || comparisons > kMostComparisons ||
           documentType_ > kLongestDocumentType;
  }

 private:
  // "<!DOCTYPE" and the declarations in it, not "<!--" nor "<![CDATA[".
  static bool IsOfDocumentType(std::string_view piece) {
    return piece.size() > 2 && piece[1] == '!' && piece[2] >= 'A' && piece[2] <= 'Z';
  }

  std::size_t tags_ = 0;
  std::size_t attributes_ = 0;
  std::size_t references_ = 0;
  std::uint64_t comparedAttributes_ = 0;
  std::uint64_t namespaces_ = 0;
  // In bytes.
  std::uint64_t documentType_ = 0;
};

bool AreLimitsExceeded(std::string_view bytes) {
  Limits limits;
  bytes.remove_prefix(std::min(bytes.find('<'), bytes.size()));
  while (!bytes.empty() && !limits.AreExceeded()) {
    const std::string_view piece = bytes.substr(0, bytes.find('<', 1));
    limits.Add(piece);
    bytes.remove_prefix(piece.size());
  }
  return limits.AreExceeded();
}

}  // namespace

bool IsTooMuchToParse(std::string_view bytes) {
  // A document begins with "<", a blank or a mark in front of it.
  if (bytes.substr(0, 4).find('\0') == bytes.npos) {
    return AreLimitsExceeded(bytes);
  }
  std::string withoutZeros(bytes);
  std::erase(withoutZeros, '\0');
  return AreLimitsExceeded(withoutZeros);
}

}  // namespace platform
