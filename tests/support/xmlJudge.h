// A second opinion on XML: documents as a strict, namespace-aware tree parser sees them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace support {

struct XmlElement {
  std::string uri;
  std::string name;
  std::vector<std::pair<std::string, std::string>> attributes; // "{uri}name" and value, in order of names
  std::vector<XmlElement> children;
  std::string text;     // all character data directly inside, joined
  std::string sequence; // the whole content in one spelling: texts, children, nothing else

  // "{uri}name[attribute="value"](content)": equal for documents of equal infoset but for comments and declarations.
  std::string infoset() const;
};

// The root, or nothing if the document is not well-formed.
std::optional<XmlElement> parseXml(std::string_view document);

// The same, and nothing either if a prefix is undeclared or a name is no qualified name.
std::optional<XmlElement> parseNamespacedXml(std::string_view document);

} // namespace support
