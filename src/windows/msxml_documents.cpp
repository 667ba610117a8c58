#include "windows/msxml_documents.h"

#include <utility>

#include "automation/automation_error.h"
#include "com/bstr.h"
#include "com/com_error.h"
#include "com/com_ptr.h"
#include "com/variant.h"
#include "com/wide_text.h"
#include "com/win32.h"
#include "parser_limits/parser_limits.h"
#include "windows/document_source.h"
// Must follow win32.h.
#include <msxml.h>

namespace windows {
namespace {

using automation::AutomationError;
using automation::RuntimeError;

// DOMDocument, under the class id registered on the host's machines.
constexpr CLSID kDomDocument = {
    0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

// The pieces that an element's value is assembled from. For each of them, Wine's parser copies
// everything collected so far.
class Pieces {
 public:
  explicit Pieces(IXMLDOMNode& element) { Add(element); }

  bool AreTooMany() const {
    return count_ > parser_limits::kMostPieces || characters_ > parser_limits::kLongestValue;
  }

 private:
  void Add(IXMLDOMNode& parent) {
    com::ComPtr<IXMLDOMNode> piece;
    com::CheckCall([&] { return parent.get_firstChild(piece.Receive()); });
    while (piece && !AreTooMany()) {
      ++count_;
      DOMNodeType type{};
      com::CheckCall([&] { return piece->get_nodeType(&type); });
      if (type == NODE_TEXT || type == NODE_CDATA_SECTION) {
        com::Variant text;
        com::CheckCall([&] { return piece->get_nodeValue(text.Receive()); });
        characters_ += SysStringLen(V_BSTR(&text.get()));
      }
      Add(*piece.get());
      com::ComPtr<IXMLDOMNode> next;
      com::CheckCall([&] { return piece->get_nextSibling(next.Receive()); });
      piece = std::move(next);
    }
  }

  std::size_t count_ = 0;
  std::size_t characters_ = 0;
};

class MsxmlDocument : public platform::ResultDocument {
 public:
  explicit MsxmlDocument(FileCalls& calls) : calls_(calls) {
    if (FAILED(CoCreateInstance(kDomDocument, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument,
                                document_.ReceiveVoid()))) {
      throw AutomationError(RuntimeError::CannotCreateObject);
    }
    com::CheckCall([&] { return document_->put_async(VARIANT_FALSE); });
    com::CheckCall([&] { return document_->put_validateOnParse(VARIANT_FALSE); });
    com::CheckCall([&] { return document_->put_resolveExternals(VARIANT_FALSE); });
  }

  // Loads from memory: given a file name, the parser goes through the system's internet library,
  // which takes three times as long as parsing a result. The name is used only if the file cannot
  // be read, or the parser rejects its bytes.
  void Load(const std::u16string& path) override {
    const DocumentSource source = ReadDocument(calls_, path);
    refusal_ = source.refusal;
    const VARIANT& bytes = source.bytes.get();
    VARIANT_BOOL loaded = VARIANT_FALSE;
    if (!source.isFitToParse) {
      // To get a parse error.
      const com::Bstr blank(u" ");
      com::CheckCall([&] { return document_->loadXML(blank.get(), &loaded); });
      return;
    }
    // A malformed or missing document is a parse error, not a failed call.
    if (V_VT(&bytes) == VT_EMPTY || FAILED(document_->load(bytes, &loaded))) {
      const com::Variant name{automation::Value(path)};
      com::CheckCall([&] { return document_->load(name.get(), &loaded); });
    }
  }

  platform::ParseError GetParseError() override {
    com::ComPtr<IXMLDOMParseError> error;
    com::CheckCall([&] { return document_->get_parseError(error.Receive()); });
    long code = 0;
    com::CheckCall([&] { return error->get_errorCode(&code); });
    if (code == 0) {
      return {};
    }
    long position = 0;
    com::Bstr reason;
    // Wine's MSXML does not report the position (E_NOTIMPL); it then stays 0.
    error->get_filepos(&position);
    com::CheckCall([&] { return error->get_reason(reason.Receive()); });
    return {.code = code, .filePosition = position, .reason = reason.Text(), .refusal = refusal_};
  }

  automation::Value FirstValue(const std::u16string& tagName) override {
    const com::Bstr name(tagName);
    com::ComPtr<IXMLDOMNodeList> elements;
    com::CheckCall([&] { return document_->getElementsByTagName(name.get(), elements.Receive()); });
    com::ComPtr<IXMLDOMNode> first;
    com::CheckCall([&] { return elements->get_item(0, first.Receive()); });
    if (!first) {
      throw AutomationError(RuntimeError::ObjectNotSet);
    }
    if (Pieces(*first.get()).AreTooMany()) {
      throw AutomationError(RuntimeError::OutOfMemory);
    }
    com::Variant value;
    com::CheckCall([&] { return first->get_nodeTypedValue(value.Receive()); });
    return com::ToValue(value.get());
  }

  IXMLDOMDocument* document() const { return document_.get(); }

 private:
  FileCalls& calls_;
  com::ComPtr<IXMLDOMDocument> document_;
  platform::Reason refusal_ = platform::Reason::Malformed;
};

}  // namespace

std::unique_ptr<platform::ResultDocument> MsxmlDocuments::New() {
  return std::make_unique<MsxmlDocument>(calls_);
}

com::ComPtr<IDispatch> DispatchOf(platform::ResultDocument& document) {
  return com::ComPtr<IDispatch>(static_cast<MsxmlDocument&>(document).document());
}

}  // namespace windows
