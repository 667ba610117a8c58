// MSXML's DOM, used in the usual way.
#pragma once

#include <string>
#include <vector>

#include "com/com_ptr.h"
#include "com/win32.h"
// Must follow win32.h.
#include <msxml.h>

namespace benchmarks {

// An element of a document, to be rebuilt.
struct Content {
  std::u16string name;
  // For the component, whose names are in ASCII.
  std::string asciiName;
  std::u16string text;
  std::vector<Content> children;
};

class Dom {
 public:
  Dom();
  void Load(const std::u16string& path);
  // The elements of the loaded document.
  Content Read() const;
  // Built node by node, after the declaration that every request has.
  void Build(const Content& root);
  void Save(const std::u16string& path);

 private:
  com::ComPtr<IXMLDOMDocument> document_;
};

}  // namespace benchmarks
