// The request files have the bytes that MSXML's own save writes for the same tree.
#include <objbase.h>

#include <algorithm>
#include <gtest/gtest.h>
#include <oleauto.h>

#include "automation/text.h"
#include "com/bstr.h"
#include "com/com_ptr.h"
#include "com/variant.h"
#include "contract/adapters.h"
#include "contract/temporary_folder.h"
#include "exchange/serializer.h"
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

// Builds an exchange tree node by node through the DOM and saves it.
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
  }

  void Append(const exchange::Element& root) { Append(document_.get(), root); }

  void Save(const std::u16string& path) {
    const Variant destination{automation::Value(path)};
    Check(document_->save(destination.get()));
  }

 private:
  void Append(IXMLDOMNode* parent, const exchange::Element& element) {
    ComPtr<IXMLDOMElement> node;
    Check(document_->createElement(Bstr(std::u16string(element.name())).get(), node.Receive()));
    for (const auto& attribute : element.attributes()) {
      const Variant value{automation::Value(attribute.value)};
      Check(node->setAttribute(Bstr(std::u16string(attribute.name)).get(), value.get()));
    }
    if (element.children().empty()) {
      Check(node->put_text(Bstr(element.text()).get()));
    }
    ComPtr<IXMLDOMNode> appended;
    Check(parent->appendChild(node.get(), appended.Receive()));
    for (const auto& child : element.children()) {
      Append(node.get(), child);
    }
  }

  ComPtr<IXMLDOMDocument> document_;
};

class MsxmlBytes : public testing::Test {
 protected:
  MsxmlBytes() { NewResultDocuments(); }

  void ExpectSame(const exchange::Element& root) {
    Dom dom;
    dom.Append(root);
    dom.Save(folder_ / "dom.xml");
    EXPECT_EQ(exchange::Serialize(root), folder_.Read("dom.xml"));
  }

  TemporaryFolder folder_;
};

TEST_F(MsxmlBytes, BytesOfAnEnvelopeMatchTheSerializer) {
  exchange::Element root(u"Envelope");
  root.SetAttribute(u"LIFFVersion", u"2.0");
  exchange::Element& request = root.Add(u"NewCase");
  request.Add(u"Title", u"(19850312-1234)");
  request.Add(u"PatientFirstName", u"Åsa-Märta");
  request.Add(u"PatientLastName");
  ExpectSame(root);
}

TEST_F(MsxmlBytes, BytesOfEveryLatin1CharacterMatchTheSerializer) {
  std::u16string text;
  for (char16_t unit = 0x20; unit <= 0xFF; ++unit) {
    text.push_back(unit);
  }
  ExpectSame(exchange::Element(u"E", text));
}

TEST_F(MsxmlBytes, BytesOfCharactersOutsideLatin1MatchTheSerializer) {
  ExpectSame(exchange::Element(u"E", u"Ā € 中 \U0001F600 \uFFFD"));
}

// Except U+FFFE, U+FFFF and control characters in an attribute: no parser reads what the DOM writes
// for them.
TEST_F(MsxmlBytes, BytesOfEveryCodeUnitMatchTheSerializer) {
  constexpr int kUnitsInADocument = 0x400;
  for (int first = 0; first < 0xFFFE; first += kUnitsInADocument) {
    SCOPED_TRACE(first);
    exchange::Element root(u"E");
    for (int number = first; number < std::min(first + kUnitsInADocument, 0xFFFE); ++number) {
      const auto unit = static_cast<char16_t>(number);
      const std::u16string text{u'q', unit, u'z'};
      root.Add(u"T", text);
      root.Add(u"T", std::u16string{unit});
      if (unit >= u' ' || unit == u'\t' || unit == u'\n' || unit == u'\r' || unit == u'\0') {
        root.Add(u"T").SetAttribute(u"a", text);
      }
    }
    ExpectSame(root);
  }
}

TEST_F(MsxmlBytes, BytesOfSurrogatesInAnyOrderMatchTheSerializer) {
  for (const std::u16string& text : {std::u16string{0xD83D, 0xDE00},
                                     {0xDE00, 0xD83D},
                                     {0xD83D, 0xD83D, 0xDE00},
                                     {u'x', 0xD83D},
                                     {0xDBFF, 0xE000},
                                     {0xD800, 0xDC00, 0xDBFF, 0xDFFF, 0xD83F, 0xDFFE}}) {
    exchange::Element root(u"E", text);
    root.SetAttribute(u"a", text);
    ExpectSame(root);
  }
}

TEST_F(MsxmlBytes, BytesOfMarkupAndLineBreaksMatchTheSerializer) {
  ExpectSame(exchange::Element(u"E", u"<a>&\"']]>\r\n\n\r\t"));
  ExpectSame(exchange::Element(u"E", u" "));
  ExpectSame(exchange::Element(u"E", u" a "));
}

TEST_F(MsxmlBytes, BytesOfAnAttributeMatchTheSerializer) {
  exchange::Element root(u"E");
  root.SetAttribute(u"a", u"\"<&>'Ö€");
  ExpectSame(root);
}

TEST_F(MsxmlBytes, BytesOfAnElementWithoutTextMatchTheSerializer) {
  ExpectSame(exchange::Element(u"E"));
}

}  // namespace
}  // namespace contract
