// The full application's document, both forms with forty rows, built node by node and saved: by the
// component's tree and serializer, and by the trees of libxml2 and pugixml.
#include <benchmark/benchmark.h>
#include <filesystem>
#include <libxml/tree.h>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "automation/text.h"
#include "exchange/envelope.h"
#include "exchange/serializer.h"
#include "native/application.h"

namespace {

using benchmarks::Application;
using benchmarks::Clinic;

constexpr int kRows = 40;

// The document's contents, as the component's strings and as the libraries'.
struct Content {
  std::u16string_view name;
  std::u16string text;
  std::string utf8Name;
  std::string utf8Text;
  std::vector<Content> children;
};

Content ContentOf(const exchange::Element& element) {
  Content content{.name = element.name(),
                  .text = element.text(),
                  .utf8Name = automation::ToUtf8(element.name()),
                  .utf8Text = automation::ToUtf8(element.text()),
                  .children = {}};
  for (const auto& child : element.children()) {
    content.children.push_back(ContentOf(child));
  }
  return content;
}

struct Document {
  Document() : clinic(benchmarks::SmallPractice()), application(clinic, kRows) {
    const Clinic::Inside inside(clinic);
    content = ContentOf(application.Build());
  }
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  ~Document() { std::filesystem::remove(path); }

  Clinic clinic;
  Application application;
  Content content;
  std::string path = (std::filesystem::temp_directory_path() / "vilnor-bench.xml").string();
};

Document& TheDocument() {
  static Document document;
  return document;
}

void Add(exchange::Element& parent, const std::vector<Content>& children) {
  for (const auto& child : children) {
    Add(parent.Add(child.name, child.text), child.children);
  }
}

exchange::Element VilnorTree(const Content& content) {
  exchange::Element envelope = exchange::NewEnvelope();
  Add(envelope, content.children);
  return envelope;
}

const xmlChar* Xml(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}

void Add(xmlNode* parent, const std::vector<Content>& children) {
  for (const auto& child : children) {
    Add(xmlNewTextChild(parent, nullptr, Xml(child.utf8Name),
                        child.utf8Text.empty() ? nullptr : Xml(child.utf8Text)),
        child.children);
  }
}

using LibxmlDocument = std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)>;

LibxmlDocument LibxmlTree(const Content& content) {
  LibxmlDocument document(xmlNewDoc(Xml("1.0")), xmlFreeDoc);
  xmlNode* const root = xmlNewNode(nullptr, Xml(content.utf8Name));
  xmlDocSetRootElement(document.get(), root);
  xmlNewProp(root, Xml("LIFFVersion"), Xml("2.0"));
  Add(root, content.children);
  return document;
}

void Add(pugi::xml_node parent, const std::vector<Content>& children) {
  for (const auto& child : children) {
    pugi::xml_node node = parent.append_child(child.utf8Name.c_str());
    if (!child.utf8Text.empty()) {
      node.append_child(pugi::node_pcdata).set_value(child.utf8Text.c_str());
    }
    Add(node, child.children);
  }
}

void PugixmlTree(pugi::xml_document& document, const Content& content) {
  pugi::xml_node root = document.append_child(content.utf8Name.c_str());
  root.append_attribute("LIFFVersion").set_value("2.0");
  Add(root, content.children);
}

// --- Built, and written to memory.

void VilnorBuilds(benchmark::State& state) {
  const Content& content = TheDocument().content;
  for (auto _ : state) {
    benchmark::DoNotOptimize(exchange::Serialize(VilnorTree(content)));
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
    exchange::Save(VilnorTree(document.content), path);
  }
}

void VilnorSavesFromRecords(benchmark::State& state) {
  Document& document = TheDocument();
  const Clinic::Inside inside(document.clinic);
  const std::u16string path = automation::FromUtf8(document.path);
  for (auto _ : state) {
    exchange::Save(document.application.Build(), path);
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
