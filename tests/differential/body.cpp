#include "body.h"

#include <algorithm>

namespace differential {

namespace {

void write(std::string &out, const std::string &text) {
  for (char c : text) {
    switch (c) {
    case '&': out += "&amp;"; break;
    case '<': out += "&lt;"; break;
    case '>': out += "&gt;"; break;
    case '"': out += "&quot;"; break;
    default: out += c;
    }
  }
}

bool isDeclaration(const std::string &attribute) { return attribute == "xmlns" || attribute.starts_with("xmlns:"); }

// The declarations, or the others.
void writeAttributes(std::string &out, const Element &element, bool declarations) {
  for (const auto &[name, value] : element.attributes) {
    if (isDeclaration(name) != declarations) continue;
    out += " " + name + "=\"";
    write(out, value);
    out += "\"";
  }
}

void write(std::string &out, const Element &element) {
  out += "<" + element.name;
  writeAttributes(out, element, true);
  writeAttributes(out, element, false);
  if (element.content.empty()) {
    out += "/>";
    return;
  }
  out += ">";
  for (const Content &item : element.content) {
    if (const Text *text = std::get_if<Text>(&item)) {
      if (text->section)
        out += "<![CDATA[" + text->value + "]]>";
      else
        write(out, text->value);
    } else {
      write(out, std::get<Element>(item));
    }
  }
  out += "</" + element.name + ">";
}

void collect(std::vector<Element *> &all, Element &element) {
  all.push_back(&element);
  for (Content &item : element.content)
    if (Element *child = std::get_if<Element>(&item)) collect(all, *child);
}

} // namespace

std::string Element::prefix() const { return name.substr(0, name.find(':') + 1); }

std::string Element::localName() const { return name.substr(name.find(':') + 1); }

bool Element::has(const std::string &attribute) const {
  return std::any_of(attributes.begin(), attributes.end(), [&](const auto &pair) { return pair.first == attribute; });
}

void Element::set(const std::string &attribute, const std::string &value) {
  for (auto &[present, old] : attributes) {
    if (present != attribute) continue;
    old = value;
    return;
  }
  attributes.emplace_back(attribute, value);
}

std::string written(const Element &root) {
  std::string out;
  write(out, root);
  return out;
}

std::vector<Element *> elements(Element &root) {
  std::vector<Element *> all;
  collect(all, root);
  return all;
}

} // namespace differential
