#include "windows/dom.h"

#include "automation/text.h"
#include "com/bstr.h"
#include "com/com_error.h"
#include "com/variant.h"

namespace benchmarks {
namespace {

using com::Bstr;
using com::Check;
using com::ComPtr;
using com::Variant;

constexpr CLSID kDomDocument = {
    0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

Content ContentOf(IXMLDOMNode* node) {
  Bstr name;
  Check(node->get_nodeName(name.Receive()));
  Content content{.name = name.Text(),
                  .asciiName = automation::ToUtf8(name.Text()),
                  .text = {},
                  .children = {}};
  ComPtr<IXMLDOMNode> child;
  for (Check(node->get_firstChild(child.Receive())); child;) {
    DOMNodeType type{};
    Check(child->get_nodeType(&type));
    if (type == NODE_ELEMENT) {
      content.children.push_back(ContentOf(child.get()));
    } else {
      Bstr text;
      Check(child->get_text(text.Receive()));
      content.text += text.Text();
    }
    ComPtr<IXMLDOMNode> next;
    child->get_nextSibling(next.Receive());
    child = std::move(next);
  }
  return content;
}

void Append(IXMLDOMDocument* document, IXMLDOMNode* parent, const Content& content) {
  ComPtr<IXMLDOMElement> node;
  Check(document->createElement(Bstr(content.name).get(), node.Receive()));
  if (!content.text.empty()) {
    Check(node->put_text(Bstr(content.text).get()));
  }
  ComPtr<IXMLDOMNode> appended;
  Check(parent->appendChild(node.get(), appended.Receive()));
  for (const auto& child : content.children) {
    Append(document, node.get(), child);
  }
}

}  // namespace

Dom::Dom() {
  Check(CoCreateInstance(kDomDocument, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument,
                         document_.ReceiveVoid()));
  Check(document_->put_async(VARIANT_FALSE));
}

void Dom::Load(const std::u16string& path) {
  const Variant source{automation::Value(path)};
  VARIANT_BOOL loaded = VARIANT_FALSE;
  Check(document_->load(source.get(), &loaded));
}

Content Dom::Read() const {
  ComPtr<IXMLDOMElement> root;
  Check(document_->get_documentElement(root.Receive()));
  return ContentOf(root.get());
}

void Dom::Build(const Content& root) {
  ComPtr<IXMLDOMProcessingInstruction> declaration;
  Check(document_->createProcessingInstruction(Bstr(u"xml").get(),
                                               Bstr(u"version='1.0' encoding='ISO-8859-1'").get(),
                                               declaration.Receive()));
  ComPtr<IXMLDOMNode> appended;
  Check(document_->appendChild(declaration.get(), appended.Receive()));
  Append(document_.get(), document_.get(), root);
  ComPtr<IXMLDOMElement> envelope;
  Check(document_->get_documentElement(envelope.Receive()));
  const Variant version{automation::Value(std::u16string(u"2.0"))};
  Check(envelope->setAttribute(Bstr(u"LIFFVersion").get(), version.get()));
}

void Dom::Save(const std::u16string& path) {
  const Variant destination{automation::Value(path)};
  Check(document_->save(destination.get()));
}

}  // namespace benchmarks
