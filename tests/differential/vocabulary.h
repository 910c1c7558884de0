// What the four formats with a schema consist of.
#pragma once

#include "rtx.h"

#include <string_view>
#include <vector>

namespace differential {

enum class Form {
  none,
  text,
  uri,
  unsignedNumber,
  positive,
  code,
  dateTime,
  period,
  bytes,
  list,
  identifier
};

struct AttributeRule {
  std::string_view name;
  Form form;
  bool required;
  std::vector<std::string_view> values = {}; // of Form::list
};

struct ChildRule {
  std::string_view name;
  unsigned least;
  unsigned most; // in a random body; 2 stands for any number
};

// The foreign elements that an element takes.
enum class Wildcard {
  none,
  one,       // of another namespace
  many,      // of other namespaces, behind the children
  everything // no child is looked at
};

struct ElementRule {
  std::string_view name;
  std::vector<AttributeRule> attributes;
  std::vector<ChildRule> children; // in this order, or if shuffled in any
  Wildcard wildcard = Wildcard::none;
  bool shuffled = false;
  Form form = Form::none;
  std::vector<std::string_view> values = {}; // of Form::list

  bool hasChild(std::string_view child) const;
  const AttributeRule *findAttribute(std::string_view attribute) const; // null: there is no such attribute
};

struct Root {
  std::string_view name;
  int (*validate)(RuntimeContext *ctx);
};

struct Vocabulary {
  std::string_view uri;
  std::string_view schema; // the name of its file
  std::vector<ElementRule> elements;
  std::vector<Root> roots;

  const ElementRule *find(std::string_view name) const; // null: there is no such element
  const Root *findRoot(std::string_view name) const;
};

const std::vector<Vocabulary> &vocabularies();

// Of a name as written.
std::string_view localPart(std::string_view name);

} // namespace differential
