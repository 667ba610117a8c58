#include "windows/document.h"

#include <fstream>

#include "com/wide_text.h"
#include "exchange/envelope.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "windows/dom.h"
#include "windows/harness.h"

namespace benchmarks {
namespace {

void Add(exchange::RequestDocument& document, const std::vector<Content>& children) {
  for (const auto& child : children) {
    if (child.children.empty()) {
      document.Add(child.asciiName, {child.text});
    } else {
      document.Add(child.asciiName, [&] { Add(document, child.children); });
    }
  }
}

exchange::RequestDocument DocumentOf(const Content& content) {
  exchange::RequestDocument document;
  Add(document, content.children);
  return document;
}

void SaveByVilnor(const Content& content, const std::u16string& path) {
  exchange::RequestDocument document = DocumentOf(content);
  exchange::Save(document, path);
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
  const std::string bytes(DocumentOf(content).Finish());
  Measure("document",
          {{.name = "Vilnor", .run = [&] { SaveByVilnor(content, vilnors); }},
           {.name = "MSXML", .run = [&] { BuildAndSaveByDom(content, doms); }}},
          60, 3);
  if (std::filesystem::file_size(vilnors) != bytes.size() ||
      std::filesystem::file_size(path(L"InNewFHP1017.xml")) != bytes.size()) {
    Fail("the document was not built whole");
  }
  auto& files = platform::Current().files;
  Measure("document-memory",
          {{.name = "Vilnor", .run = [&] { made = DocumentOf(content).Finish().size(); }},
           {.name = "MSXML",
            .run =
                [&] {
                  Dom dom;
                  dom.Build(content);
                }}},
          60, 3);
  Measure(
      "document-parts",
      {{.name = "putting the file in place", .run = [&] { files.ReplaceContents(vilnors, bytes); }},
       {.name = "only writing it",
        .run = [&] { WriteOver(computer.exchangeFolder() / L"over.xml", bytes); }}},
      60, 3);
}

}  // namespace benchmarks
