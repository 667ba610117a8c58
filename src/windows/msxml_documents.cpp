#include "windows/msxml_documents.h"

#include <utility>

#include "automation/automation_error.h"
#include "platform/parser_limits.h"
#include "windows/bstr.h"
#include "windows/com_error.h"
#include "windows/com_ptr.h"
#include "windows/document_source.h"
#include "windows/variant.h"
#include "windows/wide_text.h"
#include "windows/win32.h"
// Needs win32.h in front of it.
#include <msxml.h>

namespace windows {
namespace {

using automation::AutomationError;
using automation::RuntimeError;

// DOMDocument, by the class id that the host's machines have registered.
constexpr CLSID kDomDocument = {
    0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

// The pieces that an element's value is put together from. Wine's parser copies all that it has so
// far for each of them.
class Pieces {
 public:
  explicit Pieces(IXMLDOMNode& element) { Add(element); }

  bool AreTooMany() const {
    return count_ > platform::kMostPieces || characters_ > platform::kLongestValue;
  }

 private:
  void Add(IXMLDOMNode& parent) {
    ComPtr<IXMLDOMNode> piece;
    CheckCall([&] { return parent.get_firstChild(piece.Receive()); });
    while (piece && !AreTooMany()) {
      ++count_;
      DOMNodeType type{};
      CheckCall([&] { return piece->get_nodeType(&type); });
      if (type == NODE_TEXT || type == NODE_CDATA_SECTION) {
        Variant text;
        CheckCall([&] { return piece->get_nodeValue(text.Receive()); });
        characters_ += SysStringLen(V_BSTR(&text.get()));
      }
      Add(*piece.get());
      ComPtr<IXMLDOMNode> next;
      CheckCall([&] { return piece->get_nextSibling(next.Receive()); });
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
    CheckCall([&] { return document_->put_async(VARIANT_FALSE); });
    CheckCall([&] { return document_->put_validateOnParse(VARIANT_FALSE); });
    CheckCall([&] { return document_->put_resolveExternals(VARIANT_FALSE); });
  }

  // From memory, since the parser goes through the system's internet library for a file that it is
  // given by name, which takes three times as long as parsing a result. Only a file whose bytes
  // cannot be had, or that the parser does not take from memory, is given by name.
  void Load(const std::u16string& path) override {
    const DocumentSource source = ReadDocument(calls_, path);
    const VARIANT& bytes = source.bytes.get();
    VARIANT_BOOL loaded = VARIANT_FALSE;
    if (!source.isFitToParse) {
      // For the parse error.
      const Bstr blank(u" ");
      CheckCall([&] { return document_->loadXML(blank.get(), &loaded); });
      return;
    }
    // A document that is not well-formed or not there is no failed call but a parse error.
    if (V_VT(&bytes) == VT_EMPTY || FAILED(document_->load(bytes, &loaded))) {
      const Variant name{automation::Value(path)};
      CheckCall([&] { return document_->load(name.get(), &loaded); });
    }
  }

  platform::ParseError GetParseError() override {
    ComPtr<IXMLDOMParseError> error;
    CheckCall([&] { return document_->get_parseError(error.Receive()); });
    long code = 0;
    CheckCall([&] { return error->get_errorCode(&code); });
    if (code == 0) {
      return {};
    }
    long position = 0;
    Bstr reason;
    // Wine's MSXML does not tell the position (E_NOTIMPL); it stays 0 then.
    error->get_filepos(&position);
    CheckCall([&] { return error->get_reason(reason.Receive()); });
    return {.code = code, .filePosition = position, .reason = reason.Text()};
  }

  automation::Value FirstValue(const std::u16string& tagName) override {
    const Bstr name(tagName);
    ComPtr<IXMLDOMNodeList> elements;
    CheckCall([&] { return document_->getElementsByTagName(name.get(), elements.Receive()); });
    ComPtr<IXMLDOMNode> first;
    CheckCall([&] { return elements->get_item(0, first.Receive()); });
    if (!first) {
      throw AutomationError(RuntimeError::ObjectNotSet);
    }
    if (Pieces(*first.get()).AreTooMany()) {
      throw AutomationError(RuntimeError::OutOfMemory);
    }
    Variant value;
    CheckCall([&] { return first->get_nodeTypedValue(value.Receive()); });
    return ToValue(value.get());
  }

  IXMLDOMDocument* document() const { return document_.get(); }

 private:
  FileCalls& calls_;
  ComPtr<IXMLDOMDocument> document_;
};

}  // namespace

std::unique_ptr<platform::ResultDocument> MsxmlDocuments::New() {
  return std::make_unique<MsxmlDocument>(calls_);
}

ComPtr<IDispatch> DispatchOf(platform::ResultDocument& document) {
  return ComPtr<IDispatch>(static_cast<MsxmlDocument&>(document).document());
}

}  // namespace windows
