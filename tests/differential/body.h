// XML bodies as trees that can be changed and written.
#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace differential {

struct Element;

struct Text {
  std::string value;
  bool section = false; // written as a CDATA section
};

using Content = std::variant<Text, Element>;

struct Element {
  std::string name; // as written, with its prefix
  std::vector<std::pair<std::string, std::string>> attributes;
  std::vector<Content> content;

  std::string prefix() const; // with its colon
  std::string localName() const;
  void set(const std::string &attribute, const std::string &value);
  bool has(const std::string &attribute) const;
};

// Each tag has its declarations first.
std::string written(const Element &root);

// The elements of a tree, the root first. Valid until the tree changes.
std::vector<Element *> elements(Element &root);

} // namespace differential
