#include "native/xml_documents.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <libxml/parser.h>
#include <limits>
#include <string_view>
#include <system_error>

#include "automation/automation_error.h"
#include "automation/text.h"
#include "native/paths.h"
#include "parser_limits/parser_limits.h"

namespace native {
namespace {

using automation::AutomationError;
using automation::FromUtf8;
using automation::RuntimeError;
using platform::Reason;

// MSXML's code for a missing file.
constexpr std::int32_t kFileNotFoundCode = -2146697210;
constexpr std::int32_t kFirstParserCode = -1072898560;
// Nothing outside the file is read.
constexpr int kParseOptions =
    XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_COMPACT;

using Document = std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)>;
using Context = std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)>;
using Content = std::unique_ptr<xmlChar, void (*)(void*)>;

std::string_view View(const xmlChar* text) {
  return text == nullptr ? std::string_view() : reinterpret_cast<const char*>(text);
}

xmlParserInput* RefuseEntity(const char* /*url*/, const char* /*id*/, xmlParserCtxt* /*context*/) {
  return nullptr;
}

// What is wrong with a document, its reader says.
// NOLINTNEXTLINE(cert-dcl50-cpp): the library's own kind of function
void PrintNothing(void* /*context*/, const char* /*format*/, ...) {}

void SetUpLibrary() {
  static const bool done = [] {
    xmlInitParser();
    xmlSetExternalEntityLoader(RefuseEntity);
    xmlSetGenericErrorFunc(nullptr, PrintNothing);
    return true;
  }();
  static_cast<void>(done);
}

// Nothing for a document that must not be given to a parser.
std::string Contents(std::ifstream& file, Reason& refusal) {
  file.seekg(0, std::ios::end);
  const auto size = static_cast<std::uint64_t>(std::max<std::streamoff>(file.tellg(), 0));
  if (size > parser_limits::kLargestDocument) {
    refusal = Reason::TooLarge;
    return {};
  }
  if (size == 0) {
    refusal = Reason::EmptyFile;
    return {};
  }
  refusal = Reason::Malformed;
  std::string bytes(static_cast<std::size_t>(size), '\0');
  file.seekg(0);
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!parser_limits::IsFitToParse(bytes)) {
    refusal = Reason::NotFit;
    return {};
  }
  return bytes;
}

// The next node in document order below `top`, or nothing. Not recursive: a hostile document may be
// deep.
const xmlNode* NodeAfter(const xmlNode* node, const xmlNode* top) {
  if (node->type == XML_ELEMENT_NODE && node->children != nullptr) {
    return node->children;
  }
  while (node != top && node->next == nullptr) {
    node = node->parent;
  }
  return node == top ? nullptr : node->next;
}

const xmlNode* FirstElement(const xmlNode* root, std::string_view name) {
  const xmlNode* node = root;
  while (node != nullptr && (node->type != XML_ELEMENT_NODE || View(node->name) != name)) {
    node = NodeAfter(node, root);
  }
  return node;
}

bool HasTooManyPieces(const xmlNode* element) {
  std::size_t count = 0;
  for (const auto* node = NodeAfter(element, element); node != nullptr;
       node = NodeAfter(node, element)) {
    ++count;
  }
  return count > parser_limits::kMostPieces;
}

class XmlDocument : public platform::ResultDocument {
 public:
  XmlDocument() { SetUpLibrary(); }

  void Load(const std::u16string& path) override {
    document_.reset();
    error_ = {};
    const auto native = NativePath(path);
    std::error_code failure;
    std::ifstream file(native, std::ios::binary);
    if (!file || std::filesystem::is_directory(native, failure)) {
      error_ = {.code = kFileNotFoundCode,
                .filePosition = 0,
                .reason = u"The system cannot locate the object specified.\r\n",
                .refusal = std::filesystem::exists(native, failure) ? Reason::Unreadable
                                                                    : Reason::NotFound};
      return;
    }
    Reason refusal{};
    const std::string bytes = Contents(file, refusal);
    Parse(bytes, refusal);
  }

  platform::ParseError GetParseError() override { return error_; }

  automation::Value FirstValue(const std::u16string& tagName) override {
    const xmlNode* root = document_ ? xmlDocGetRootElement(document_.get()) : nullptr;
    const xmlNode* element = FirstElement(root, automation::ToUtf8(tagName));
    if (element == nullptr) {
      throw AutomationError(RuntimeError::ObjectNotSet);
    }
    const Content content(xmlNodeGetContent(element), xmlFree);
    auto text = FromUtf8(View(content.get()));
    if (text.size() > parser_limits::kLongestValue || HasTooManyPieces(element)) {
      throw AutomationError(RuntimeError::OutOfMemory);
    }
    return text;
  }

 private:
  void Parse(std::string_view bytes, Reason refusal) {
    const Context context(xmlNewParserCtxt(), xmlFreeParserCtxt);
    if (!context || bytes.size() > std::numeric_limits<int>::max()) {
      throw AutomationError(RuntimeError::OutOfMemory);
    }
    Document loaded(xmlCtxtReadMemory(context.get(), bytes.data(), static_cast<int>(bytes.size()),
                                      nullptr, nullptr, kParseOptions),
                    xmlFreeDoc);
    if (loaded && context->wellFormed != 0) {
      document_ = std::move(loaded);
      return;
    }
    const xmlError* error = xmlCtxtGetLastError(context.get());
    error_ = {.code = kFirstParserCode + (error == nullptr ? 0 : error->code),
              .filePosition = static_cast<std::int32_t>(xmlByteConsumed(context.get())),
              .reason = error == nullptr || error->message == nullptr ? std::u16string()
                                                                      : FromUtf8(error->message),
              .refusal = refusal};
  }

  Document document_{nullptr, xmlFreeDoc};
  platform::ParseError error_;
};

}  // namespace

std::unique_ptr<platform::ResultDocument> XmlDocuments::New() {
  return std::make_unique<XmlDocument>();
}

}  // namespace native
