// The full application's document, both forms with forty rows, built node by node and saved: by the
// component's writer, and by the trees of libxml2 and pugixml.
#include <benchmark/benchmark.h>
#include <filesystem>
#include <libxml/tree.h>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "automation/text.h"
#include "exchange/envelope.h"
#include "native/application.h"
#include "platform/files.h"

namespace {

using benchmarks::Application;
using benchmarks::Clinic;

constexpr int kRows = 40;

// An element of the document, as the component takes it and as the libraries do.
struct Content {
  std::string name;
  std::u16string text;
  std::string utf8Text;
  std::vector<Content> children;
};

Content ContentOf(pugi::xml_node element) {
  Content content{.name = element.name(),
                  .text = automation::FromUtf8(element.text().get()),
                  .utf8Text = element.text().get(),
                  .children = {}};
  for (const auto child : element.children()) {
    if (child.type() == pugi::node_element) {
      content.children.push_back(ContentOf(child));
    }
  }
  return content;
}

// The root of the document.
Content ContentOf(const std::string& bytes) {
  pugi::xml_document document;
  document.load_buffer(bytes.data(), bytes.size(), pugi::parse_default | pugi::parse_ws_pcdata,
                       pugi::encoding_latin1);
  return ContentOf(document.document_element());
}

struct Document {
  Document() : clinic(benchmarks::SmallPractice()), application(clinic, kRows) {
    const Clinic::Inside inside(clinic);
    bytes = application.Build();
    content = ContentOf(bytes);
  }
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  ~Document() { std::filesystem::remove(path); }

  Clinic clinic;
  Application application;
  std::string bytes;
  Content content;
  std::string path = (std::filesystem::temp_directory_path() / "vilnor-bench.xml").string();
};

Document& TheDocument() {
  static Document document;
  return document;
}

void Add(exchange::RequestDocument& document, const std::vector<Content>& children) {
  for (const auto& child : children) {
    if (child.children.empty()) {
      document.Add(child.name, {child.text});
    } else {
      document.Add(child.name, [&] { Add(document, child.children); });
    }
  }
}

exchange::RequestDocument VilnorDocument(const Content& content) {
  exchange::RequestDocument document;
  Add(document, content.children);
  return document;
}

const xmlChar* Xml(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

void Add(xmlNode* parent, const std::vector<Content>& children) {
  for (const auto& child : children) {
    Add(xmlNewTextChild(parent, nullptr, Xml(child.name),
                        child.utf8Text.empty() ? nullptr : Xml(child.utf8Text)),
        child.children);
  }
}

using LibxmlDocument = std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)>;

LibxmlDocument LibxmlTree(const Content& content) {
  LibxmlDocument document(xmlNewDoc(Xml("1.0")), xmlFreeDoc);
  xmlNode* const root = xmlNewNode(nullptr, Xml(content.name));
  xmlDocSetRootElement(document.get(), root);
  xmlNewProp(root, Xml("LIFFVersion"), Xml("2.0"));
  Add(root, content.children);
  return document;
}

void Add(pugi::xml_node parent, const std::vector<Content>& children) {
  for (const auto& child : children) {
    pugi::xml_node node = parent.append_child(child.name.c_str());
    if (!child.utf8Text.empty()) {
      node.append_child(pugi::node_pcdata).set_value(child.utf8Text.c_str());
    }
    Add(node, child.children);
  }
}

void PugixmlTree(pugi::xml_document& document, const Content& content) {
  pugi::xml_node root = document.append_child(content.name.c_str());
  root.append_attribute("LIFFVersion").set_value("2.0");
  Add(root, content.children);
}

// --- Built, and written to memory.

void VilnorBuilds(benchmark::State& state) {
  const Document& document = TheDocument();
  if (VilnorDocument(document.content).Finish() != document.bytes) {
    state.SkipWithError("the document is another one");
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(VilnorDocument(document.content).Finish());
  }
}

void LibxmlBuilds(benchmark::State& state) {
  const Content& content = TheDocument().content;
  for (auto _ : state) {
    xmlChar* bytes = nullptr;
    int length = 0;
    xmlDocDumpMemoryEnc(LibxmlTree(content).get(), &bytes, &length, "ISO-8859-1");
    xmlFree(bytes);
  }
}

struct MemoryWriter : pugi::xml_writer {
  void write(const void* data, std::size_t size) override {
    bytes.append(static_cast<const char*>(data), size);
  }
  std::string bytes;
};

void PugixmlBuilds(benchmark::State& state) {
  const Content& content = TheDocument().content;
  for (auto _ : state) {
    pugi::xml_document document;
    PugixmlTree(document, content);
    MemoryWriter writer;
    document.save(writer, "", pugi::format_raw, pugi::encoding_latin1);
    benchmark::DoNotOptimize(writer.bytes);
  }
}

// --- Built, and saved to a file.

void VilnorSaves(benchmark::State& state) {
  Document& document = TheDocument();
  const Clinic::Inside inside(document.clinic);
  const std::u16string path = automation::FromUtf8(document.path);
  for (auto _ : state) {
    exchange::RequestDocument request = VilnorDocument(document.content);
    exchange::Save(request, path);
  }
}

void VilnorSavesFromRecords(benchmark::State& state) {
  Document& document = TheDocument();
  const Clinic::Inside inside(document.clinic);
  const std::u16string path = automation::FromUtf8(document.path);
  for (auto _ : state) {
    platform::Current().files.ReplaceContents(path, document.application.Build());
  }
}

void LibxmlSaves(benchmark::State& state) {
  const Document& document = TheDocument();
  for (auto _ : state) {
    xmlSaveFormatFileEnc(document.path.c_str(), LibxmlTree(document.content).get(), "ISO-8859-1",
                         0);
  }
}

void PugixmlSaves(benchmark::State& state) {
  const Document& document = TheDocument();
  for (auto _ : state) {
    pugi::xml_document tree;
    PugixmlTree(tree, document.content);
    tree.save_file(document.path.c_str(), "", pugi::format_raw, pugi::encoding_latin1);
  }
}

BENCHMARK(VilnorBuilds)->Name("document/memory/Vilnor")->MinTime(0.01);
BENCHMARK(LibxmlBuilds)->Name("document/memory/libxml2")->MinTime(0.01);
BENCHMARK(PugixmlBuilds)->Name("document/memory/pugixml")->MinTime(0.01);
BENCHMARK(VilnorSaves)->Name("document/file/Vilnor")->MinTime(0.01);
BENCHMARK(VilnorSavesFromRecords)->Name("document/file/Vilnor from records")->MinTime(0.01);
BENCHMARK(LibxmlSaves)->Name("document/file/libxml2")->MinTime(0.01);
BENCHMARK(PugixmlSaves)->Name("document/file/pugixml")->MinTime(0.01);

}  // namespace
