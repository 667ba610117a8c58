// How MSXML is created and loaded. result_documents_test.cpp tests what it then reads.
#include "windows/msxml_documents.h"

#include <gtest/gtest.h>
#include <string>

#include "com/com_ptr.h"
#include "contract/adapters.h"
#include "contract/temporary_folder.h"
#include "contract/windows/dom_double.h"
#include "fakes/printing.h"
// Needs the headers above.
#include <msxml.h>

namespace contract {
namespace {

using automation::Value;

constexpr VARTYPE kStream = VT_UNKNOWN;
constexpr VARTYPE kArray = VT_ARRAY | VT_UI1;
constexpr VARTYPE kName = VT_BSTR;
using Types = std::vector<VARTYPE>;

class MsxmlDocuments : public testing::Test {
 protected:
  std::unique_ptr<platform::ResultDocument> Load(const std::string& bytes) {
    folder_.Write("Out.xml", bytes);
    auto document = documents_->New();
    document->Load(folder_ / "Out.xml");
    return document;
  }

  // Brings the thread into its apartment.
  std::unique_ptr<platform::ResultDocuments> documents_ = NewResultDocuments();
  DomDouble dom_;
  TemporaryFolder folder_;
};

TEST_F(MsxmlDocuments, DocumentIsLoadedSynchronouslyAndNeitherValidatedNorResolved) {
  const auto document = documents_->New();
  ::com::ComPtr<IXMLDOMDocument> dom;
  ASSERT_EQ(
      ::windows::DispatchOf(*document)->QueryInterface(IID_IXMLDOMDocument, dom.ReceiveVoid()),
      S_OK);
  for (const auto property : {&IXMLDOMDocument::get_async, &IXMLDOMDocument::get_validateOnParse,
                              &IXMLDOMDocument::get_resolveExternals}) {
    VARIANT_BOOL is = VARIANT_TRUE;
    ASSERT_EQ((dom.get()->*property)(&is), S_OK);
    EXPECT_EQ(is, VARIANT_FALSE);
  }
}

TEST_F(MsxmlDocuments, DocumentIsLoadedFromAStream) {
  EXPECT_EQ(Load("<r><a>1</a></r>")->FirstValue(u"a"), Value(u"1"));
  EXPECT_EQ(dom_.loadedFrom, Types{kStream});
}

TEST_F(MsxmlDocuments, LargeDocumentIsLoadedFromAnArray) {
  const std::string text(4 << 20, 'x');
  EXPECT_EQ(Load("<r><a>1</a><b>" + text + "</b><b/></r>")->FirstValue(u"a"), Value(u"1"));
  EXPECT_EQ(dom_.loadedFrom, Types{kArray});
}

TEST_F(MsxmlDocuments, DocumentIsLoadedByNameWhenItsBytesAreNotAccepted) {
  dom_.refusesMemory = true;
  EXPECT_EQ(Load("<r><a>1</a></r>")->FirstValue(u"a"), Value(u"1"));
  EXPECT_EQ(dom_.loadedFrom, (Types{kStream, kName}));
}

TEST_F(MsxmlDocuments, DocumentIsLoadedByNameWhenThereAreNoBytes) {
  EXPECT_NE(Load("")->GetParseError().code, 0);
  EXPECT_EQ(dom_.loadedFrom, Types{kName});
}

TEST_F(MsxmlDocuments, DocumentUnfitToParseIsNotLoaded) {
  dom_.refusesMemory = true;
  const auto document = Load("<!DOCTYPE r [<!ENTITY b 'c'>]><r><a>1</a></r>");
  EXPECT_NE(document->GetParseError().code, 0);
  EXPECT_EQ(dom_.loadedFrom, Types{});
}

}  // namespace
}  // namespace contract
