#include "windows/document.h"

#include <fstream>

#include "com/wide_text.h"
#include "exchange/envelope.h"
#include "exchange/serializer.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "windows/dom.h"
#include "windows/harness.h"

namespace benchmarks {
namespace {

void Add(exchange::Element& parent, const std::vector<Content>& children) {
  for (const auto& child : children) {
    Add(parent.Add(child.name, child.text), child.children);
  }
}

exchange::Element Tree(const Content& content) {
  exchange::Element envelope = exchange::NewEnvelope();
  Add(envelope, content.children);
  return envelope;
}

void BuildAndSaveByDom(const Content& content, const std::u16string& path) {
  Dom dom;
  dom.Build(content);
  dom.Save(path);
}

// Stores results that only the timing needs, so that they are not optimised away.
volatile std::size_t made = 0;

// Simply overwrites a file, as bare programs do.
void WriteOver(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

}  // namespace

void MeasureDocument(Computer& computer) {
  computer.vilnor().OpenWithNewFHP(kPatient, 12, 3, kFullApplication);
  computer.MustBeQuiet();
  const auto path = [&](const wchar_t* name) {
    return com::FromWide((computer.exchangeFolder() / name).wstring());
  };
  Dom written;
  written.Load(path(L"InNewFHP1017.xml"));
  const Content content = written.Read();
  const std::u16string vilnors = path(L"vilnor.xml");
  const std::u16string doms = path(L"dom.xml");
  const std::string bytes = exchange::Serialize(Tree(content));
  Measure("document",
          {{.name = "Vilnor", .run = [&] { exchange::Save(Tree(content), vilnors); }},
           {.name = "MSXML", .run = [&] { BuildAndSaveByDom(content, doms); }}},
          60, 3);
  if (std::filesystem::file_size(vilnors) != bytes.size() ||
      std::filesystem::file_size(path(L"InNewFHP1017.xml")) != bytes.size()) {
    Fail("the document was not built whole");
  }
  auto& files = platform::Current().files;
  Measure(
      "document-parts",
      {{.name = "the tree", .run = [&] { made = Tree(content).children().size(); }},
       {.name = "the tree and its bytes",
        .run = [&] { made = exchange::Serialize(Tree(content)).size(); }},
       {.name = "putting the file in place", .run = [&] { files.ReplaceContents(vilnors, bytes); }},
       {.name = "only writing it",
        .run = [&] { WriteOver(computer.exchangeFolder() / L"over.xml", bytes); }},
       {.name = "MSXML without the file",
        .run =
            [&] {
              Dom dom;
              dom.Build(content);
            }}},
      60, 3);
}

}  // namespace benchmarks
