#include "exchange/request_document.h"

#include "exchange/document_text.h"

namespace exchange {
namespace {

constexpr std::string_view kStart =
    "<?xml version='1.0' encoding='ISO-8859-1'?>\n<Envelope LIFFVersion=\"2.0\">";
constexpr std::string_view kEnd = "</Envelope>\n";
// Of most applications; a longer document makes the buffer grow.
constexpr std::size_t kUsualSize = std::size_t{16} * 1024;

}  // namespace

RequestDocument::RequestDocument() {
  bytes_.reserve(kUsualSize);
  bytes_ = kStart;
}

void RequestDocument::Add(std::string_view name, Pieces text) {
  const std::size_t content = Open(name);
  for (const std::u16string_view piece : text) {
    if (!AppendText(bytes_, piece)) {
      break;
    }
  }
  Close(name, content);
}

std::string_view RequestDocument::Finish() {
  return bytes_.append(kEnd);
}

std::size_t RequestDocument::Open(std::string_view name) {
  bytes_.push_back('<');
  bytes_.append(name).push_back('>');
  return bytes_.size();
}

void RequestDocument::Close(std::string_view name, std::size_t content) {
  if (bytes_.size() == content) {
    bytes_.back() = '/';
    bytes_.push_back('>');
  } else {
    bytes_.append("</").append(name).push_back('>');
  }
}

}  // namespace exchange
