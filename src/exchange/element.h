// The element tree of a request file: elements with text or children, in document order.
#pragma once

#include <list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace exchange {

struct Attribute {
  std::u16string_view name;
  std::u16string value;
};

// Names are the component's literals and are not copied. A reference to an element is valid for as
// long as its root lives.
class Element {
 public:
  explicit Element(std::u16string_view name, std::u16string text = {})
      : name_(name), text_(std::move(text)) {}

  // Appends an element and returns it. An empty text makes an empty element.
  Element& Add(std::u16string_view name, std::u16string text = {}) {
    return children_.emplace_back(name, std::move(text));
  }
  void SetAttribute(std::u16string_view name, std::u16string value) {
    attributes_.push_back({name, std::move(value)});
  }

  std::u16string_view name() const { return name_; }
  // Written before the children.
  const std::u16string& text() const { return text_; }
  const std::vector<Attribute>& attributes() const { return attributes_; }
  const std::list<Element>& children() const { return children_; }

 private:
  std::u16string_view name_;
  std::u16string text_;
  std::vector<Attribute> attributes_;
  std::list<Element> children_;
};

}  // namespace exchange
