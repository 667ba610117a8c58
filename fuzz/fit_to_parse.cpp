// Any bytes as a document. One that a parser accepts, without declarations in its document type,
// must pass the limits.
#include <libxml/parser.h>
#include <memory>

#include "fuzz/world.h"
#include "parser_limits/parser_limits.h"

namespace {

void PrintNothing(void* /*context*/, const char* /*format*/, ...) {}

bool IsReadByAParser(const std::string& bytes) {
  xmlSetGenericErrorFunc(nullptr, PrintNothing);
  const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
      xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr,
                    XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
      xmlFreeDoc);
  return document != nullptr &&
         (document->intSubset == nullptr || bytes.find('[') == std::string::npos);
}

// Encodings that the limits do not check.
bool IsOddlyEncoded(const std::string& bytes) {
  return bytes.find("encoding") != std::string::npos || bytes.find('\0') != std::string::npos ||
         bytes.starts_with("\x4C\x6F\xA7\x94");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes = fuzz::Bytes(data, size);
  const bool fit = parser_limits::IsFitToParse(bytes);
  fuzz::Require(fit || IsOddlyEncoded(bytes) || !IsReadByAParser(bytes));
  return 0;
}
