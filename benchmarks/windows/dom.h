// MSXML's DOM, used as one usually does.
#pragma once

#include <string>
#include <vector>

#include "com/com_ptr.h"
#include "com/win32.h"
// Needs win32.h in front of it.
#include <msxml.h>

namespace benchmarks {

// An element of a document, to be built again.
struct Content {
  std::u16string name;
  std::u16string text;
  std::vector<Content> children;
};

class Dom {
 public:
  Dom();
  void Load(const std::u16string& path);
  // The elements of the loaded document.
  Content Read() const;
  // Node by node, behind the declaration that every request has.
  void Build(const Content& root);
  void Save(const std::u16string& path);

 private:
  com::ComPtr<IXMLDOMDocument> document_;
};

}  // namespace benchmarks
