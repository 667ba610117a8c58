#include "windows/document.h"

#include "exchange/envelope.h"
#include "exchange/serializer.h"
#include "windows/dom.h"
#include "windows/harness.h"
#include "windows/wide_text.h"

namespace benchmarks {
namespace {

void Add(exchange::Element& parent, const std::vector<Content>& children) {
  for (const auto& child : children) {
    Add(parent.Add(child.name, child.text), child.children);
  }
}

void BuildAndSave(const Content& content, const std::u16string& path) {
  exchange::Element envelope = exchange::NewEnvelope();
  Add(envelope, content.children);
  exchange::Save(envelope, path);
}

volatile std::size_t length = 0;

void Build(const Content& content) {
  exchange::Element envelope = exchange::NewEnvelope();
  Add(envelope, content.children);
  length = exchange::Serialize(envelope).size();
}

void BuildAndSaveByDom(const Content& content, const std::u16string& path) {
  Dom dom;
  dom.Build(content);
  dom.Save(path);
}

}  // namespace

void MeasureDocument(Computer& computer) {
  computer.vilnor().OpenWithNewFHP(kPatient, 12, 3, kFullApplication);
  computer.MustBeQuiet();
  const auto path = [&](const wchar_t* name) {
    return windows::FromWide((computer.exchangeFolder() / name).wstring());
  };
  Dom written;
  written.Load(path(L"InNewFHP1017.xml"));
  const Content content = written.Read();
  const std::u16string vilnors = path(L"vilnor.xml");
  const std::u16string doms = path(L"dom.xml");
  Measure("document",
          {{.name = "Vilnor", .run = [&] { BuildAndSave(content, vilnors); }},
           {.name = "Vilnor without the file", .run = [&] { Build(content); }},
           {.name = "MSXML", .run = [&] { BuildAndSaveByDom(content, doms); }}},
          60, 3);
  if (std::filesystem::file_size(computer.exchangeFolder() / L"vilnor.xml") !=
      std::filesystem::file_size(computer.exchangeFolder() / L"InNewFHP1017.xml")) {
    Fail("the document was not built whole");
  }
}

}  // namespace benchmarks
