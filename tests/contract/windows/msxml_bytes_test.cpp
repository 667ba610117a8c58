// The request files have the bytes that MSXML's own save writes for the same tree.
#include <objbase.h>

#include <algorithm>
#include <gtest/gtest.h>
#include <oleauto.h>
#include <string>
#include <vector>

#include "automation/text.h"
#include "com/bstr.h"
#include "com/com_ptr.h"
#include "com/variant.h"
#include "contract/adapters.h"
#include "contract/temporary_folder.h"
#include "exchange/request_document.h"
#include "platform/result_document.h"
// Needs the headers above.
#include <msxml.h>

namespace contract {
namespace {

using ::com::Bstr;
using ::com::ComPtr;
using ::com::Variant;

constexpr CLSID kDomDocument = {
    0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

void Check(HRESULT result) {
  ASSERT_TRUE(SUCCEEDED(result)) << std::hex << result;
}

struct Element {
  std::string name;
  std::u16string text;
  std::vector<Element> children;
};

std::u16string Wide(const std::string& name) {
  return automation::FromUtf8(name);
}

// Builds an envelope node by node through the DOM and saves it.
class Dom {
 public:
  Dom() {
    Check(CoCreateInstance(kDomDocument, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument,
                           document_.ReceiveVoid()));
    ComPtr<IXMLDOMProcessingInstruction> instruction;
    Check(document_->createProcessingInstruction(Bstr(u"xml").get(),
                                                 Bstr(u"version='1.0' encoding='ISO-8859-1'").get(),
                                                 instruction.Receive()));
    VARIANT nothing;
    VariantInit(&nothing);
    V_VT(&nothing) = VT_DISPATCH;
    V_DISPATCH(&nothing) = nullptr;
    ComPtr<IXMLDOMNode> inserted;
    Check(document_->insertBefore(instruction.get(), nothing, inserted.Receive()));
    Check(document_->createElement(Bstr(u"Envelope").get(), envelope_.Receive()));
    const Variant version{automation::Value(std::u16string(u"2.0"))};
    Check(envelope_->setAttribute(Bstr(u"LIFFVersion").get(), version.get()));
    Check(document_->appendChild(envelope_.get(), inserted.Receive()));
  }

  void Append(const std::vector<Element>& elements) { Append(envelope_.get(), elements); }

  void Save(const std::u16string& path) {
    const Variant destination{automation::Value(path)};
    Check(document_->save(destination.get()));
  }

 private:
  void Append(IXMLDOMNode* parent, const std::vector<Element>& elements) {
    for (const auto& element : elements) {
      ComPtr<IXMLDOMElement> node;
      Check(document_->createElement(Bstr(Wide(element.name)).get(), node.Receive()));
      if (element.children.empty()) {
        Check(node->put_text(Bstr(element.text).get()));
      }
      ComPtr<IXMLDOMNode> appended;
      Check(parent->appendChild(node.get(), appended.Receive()));
      Append(node.get(), element.children);
    }
  }

  ComPtr<IXMLDOMDocument> document_;
  ComPtr<IXMLDOMElement> envelope_;
};

void Add(exchange::RequestDocument& document, const std::vector<Element>& elements) {
  for (const auto& element : elements) {
    if (element.children.empty()) {
      document.Add(element.name, {element.text});
    } else {
      document.Add(element.name, [&] { Add(document, element.children); });
    }
  }
}

class MsxmlBytes : public testing::Test {
 protected:
  MsxmlBytes() { NewResultDocuments(); }

  void ExpectSame(const std::vector<Element>& elements) {
    Dom dom;
    dom.Append(elements);
    dom.Save(folder_ / "dom.xml");
    exchange::RequestDocument document;
    Add(document, elements);
    EXPECT_EQ(document.Finish(), folder_.Read("dom.xml"));
  }
  void ExpectSame(const std::u16string& text) { ExpectSame({Element{"E", text, {}}}); }

  TemporaryFolder folder_;
};

TEST_F(MsxmlBytes, BytesOfAnEnvelopeMatchTheDocument) {
  ExpectSame({Element{"NewCase",
                      u"",
                      {{"Title", u"(19850312-1234)", {}},
                       {"PatientFirstName", u"Åsa-Märta", {}},
                       {"PatientLastName", u"", {}},
                       {"Contribution", u"", {{"Heading", u"", {}}}}}}});
}

TEST_F(MsxmlBytes, BytesOfEveryLatin1CharacterMatchTheDocument) {
  std::u16string text;
  for (char16_t unit = 0x20; unit <= 0xFF; ++unit) {
    text.push_back(unit);
  }
  ExpectSame(text);
}

TEST_F(MsxmlBytes, BytesOfCharactersOutsideLatin1MatchTheDocument) {
  ExpectSame(u"Ā € 中 \U0001F600 \uFFFD");
}

// Except U+FFFE and U+FFFF: no parser reads what the DOM writes for them.
TEST_F(MsxmlBytes, BytesOfEveryCodeUnitMatchTheDocument) {
  constexpr int kUnitsInADocument = 0x400;
  for (int first = 0; first < 0xFFFE; first += kUnitsInADocument) {
    SCOPED_TRACE(first);
    std::vector<Element> elements;
    for (int number = first; number < std::min(first + kUnitsInADocument, 0xFFFE); ++number) {
      const auto unit = static_cast<char16_t>(number);
      elements.push_back({"T", {u'q', unit, u'z'}, {}});
      elements.push_back({"T", {unit}, {}});
    }
    ExpectSame(elements);
  }
}

TEST_F(MsxmlBytes, BytesOfSurrogatesInAnyOrderMatchTheDocument) {
  for (const std::u16string& text : {std::u16string{0xD83D, 0xDE00},
                                     {0xDE00, 0xD83D},
                                     {0xD83D, 0xD83D, 0xDE00},
                                     {u'x', 0xD83D},
                                     {0xDBFF, 0xE000},
                                     {0xD800, 0xDC00, 0xDBFF, 0xDFFF, 0xD83F, 0xDFFE}}) {
    ExpectSame(text);
  }
}

TEST_F(MsxmlBytes, BytesOfMarkupAndLineBreaksMatchTheDocument) {
  ExpectSame(u"<a>&\"']]>\r\n\n\r\t");
  ExpectSame(u" ");
  ExpectSame(u" a ");
}

TEST_F(MsxmlBytes, BytesOfAnElementWithoutTextMatchTheDocument) {
  ExpectSame(u"");
}

}  // namespace
}  // namespace contract
