// The bytes of a request file, written in document order into one buffer.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace exchange {

// The pieces of a text, which are written one after the other. A surrogate pair must not be
// divided.
using Pieces = std::initializer_list<std::u16string_view>;

// An envelope, and in it the elements without indentation, as the DOM's `save` writes them. Element
// names are the component's literals, in ASCII.
class RequestDocument {
 public:
  RequestDocument();

  // Adds an element with what `body` adds. An element with nothing in it is written as empty.
  template <class Body>
  void Add(std::string_view name, Body body) {
    const std::size_t content = Open(name);
    body();
    Close(name, content);
  }
  // Adds an element with a text (document_text.h says how it is written).
  void Add(std::string_view name, Pieces text);

  // The whole document, valid as long as this object; nothing can be added to it any more.
  std::string_view Finish();

 private:
  // Returns where the element's content begins.
  std::size_t Open(std::string_view name);
  void Close(std::string_view name, std::size_t content);

  std::string bytes_;
};

}  // namespace exchange
