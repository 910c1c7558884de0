#include "kinds.h"

#include <algorithm>
#include <array>

namespace differential {

namespace {

using What = SchemaComplaint::What;

template <class T, class... Others> bool isOneOf(const T &value, Others... others) {
  return ((value == others) || ...);
}

bool isOwn(const SchemaComplaint &c) { return c.uri == c.vocabulary->uri; }

// About an element that the library looks into.
bool isExamined(const SchemaComplaint &c) { return !c.foreign && !c.insideForeign; }

bool isAboutInstance(const SchemaComplaint &c) {
  return c.attribute.starts_with("xsi:") || c.what == What::notNillable || c.what == What::type;
}

const ElementRule *ruleOf(const SchemaComplaint &c) { return isOwn(c) ? c.vocabulary->find(c.element) : nullptr; }

const ElementRule *parentRule(const SchemaComplaint &c) { return c.vocabulary->find(c.parent); }

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// A child that the library knows by its local name.
bool isKnownByName(const SchemaComplaint &c) {
  const ElementRule *rule = parentRule(c);
  return rule != nullptr && rule->hasChild(localPart(c.element));
}

Form formOf(const SchemaComplaint &c) {
  const ElementRule *rule = ruleOf(c);
  if (rule == nullptr) return Form::none;
  if (c.attribute.empty()) return rule->form;
  const AttributeRule *attribute = rule->findAttribute(c.attribute);
  return attribute == nullptr ? Form::none : attribute->form;
}

Wildcard wildcardAround(const SchemaComplaint &c) {
  const ElementRule *rule = parentRule(c);
  return rule == nullptr ? Wildcard::none : rule->wildcard;
}

bool isRefusedAttribute(const SchemaComplaint &c) {
  return isExamined(c) && c.what == What::attributeRefused && !isAboutInstance(c);
}

// The schema takes the text of an element that has elements inside as empty.
bool isValueOfMixed(const SchemaComplaint &c) { return c.what == What::value && c.attribute.empty() && c.hasElements; }

bool isValue(const SchemaComplaint &c) { return isExamined(c) && c.what == What::value && !isValueOfMixed(c); }

bool isWithoutAttributes(const ElementRule &rule) { return rule.attributes.empty() && rule.form == Form::none; }

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isSpace(text.front()))
    text.remove_prefix(1);
  while (!text.empty() && isSpace(text.back()))
    text.remove_suffix(1);
  return text;
}

// Whether the element has the attribute that it lacks in the vocabulary's namespace.
bool isThereQualified(const SchemaComplaint &c) {
  const std::string name = "{" + std::string(c.vocabulary->uri) + "}" + c.attribute;
  return std::find(c.present.begin(), c.present.end(), name) != c.present.end();
}

constexpr std::array libraryAccepts = {
    Kind<SchemaComplaint>{"root-namespace",
                          [](const SchemaComplaint &c) {
                            return c.what == What::unknownRoot && !isOwn(c) &&
                                   c.vocabulary->findRoot(localPart(c.element)) != nullptr;
                          }},
    Kind<SchemaComplaint>{"child-namespace",
                          [](const SchemaComplaint &c) {
                            return isExamined(c) && c.what == What::childRefused && !isOwn(c) && isKnownByName(c);
                          }},
    Kind<SchemaComplaint>{"foreign-without-namespace",
                          [](const SchemaComplaint &c) {
                            return c.foreign && !c.insideForeign && c.what == What::childRefused && c.uri.empty() &&
                                   !isKnownByName(c);
                          }},
    Kind<SchemaComplaint>{"extension-namespace",
                          [](const SchemaComplaint &c) {
                            return c.foreign && !c.insideForeign && c.what == What::childRefused && isOwn(c) &&
                                   wildcardAround(c) == Wildcard::everything;
                          }},
    Kind<SchemaComplaint>{"foreign-content", [](const SchemaComplaint &c) { return c.insideForeign; }},
    Kind<SchemaComplaint>{"missing-child",
                          [](const SchemaComplaint &c) {
                            return isExamined(c) && c.what == What::childMissing &&
                                   isOneOf(c.element, "isComposing", "dialog", "session", "control", "validity");
                          }},
    Kind<SchemaComplaint>{"empty-list",
                          [](const SchemaComplaint &c) {
                            return isExamined(c) && c.what == What::childMissing &&
                                   isOneOf(c.element, "identity", "route-set");
                          }},
    Kind<SchemaComplaint>{"text-between-elements",
                          [](const SchemaComplaint &c) { return isExamined(c) && c.what == What::textRefused; }},
    Kind<SchemaComplaint>{"element-in-text",
                          [](const SchemaComplaint &c) {
                            const ElementRule *rule = ruleOf(c);
                            if (!isExamined(c) || rule == nullptr || !rule->attributes.empty()) return false;
                            return rule->form != Form::uri && (c.what == What::elementsInSimple || isValueOfMixed(c));
                          }},
    Kind<SchemaComplaint>{"attribute-of-a-type-without",
                          [](const SchemaComplaint &c) {
                            const ElementRule *rule = ruleOf(c);
                            return isRefusedAttribute(c) && rule != nullptr && isWithoutAttributes(*rule);
                          }},
    Kind<SchemaComplaint>{"attribute-like-a-declaration",
                          [](const SchemaComplaint &c) {
                            const ElementRule *rule = ruleOf(c);
                            if (isRefusedAttribute(c) && rule != nullptr && !isWithoutAttributes(*rule))
                              return c.attribute.starts_with("xmlns");
                            // The value is taken for the namespace of an element that the schema knows.
                            return c.foreign && !c.insideForeign && !isAboutInstance(c) &&
                                   wildcardAround(c) != Wildcard::everything &&
                                   (isOwn(c) || (c.uri.empty() && isKnownByName(c)));
                          }},
    Kind<SchemaComplaint>{"display-name",
                          [](const SchemaComplaint &c) {
                            return isRefusedAttribute(c) && c.attribute == "display-name" && ruleOf(c) != nullptr &&
                                   ruleOf(c)->form == Form::uri && isOneOf(c.element, "referred-by", "identity");
                          }},
    Kind<SchemaComplaint>{"qualified-attribute",
                          [](const SchemaComplaint &c) {
                            const ElementRule *rule = ruleOf(c);
                            if (!isExamined(c) || rule == nullptr || c.vocabulary->schema != "debuginfo.xsd")
                              return false;
                            if (isRefusedAttribute(c))
                              return c.attributeUri == c.uri && rule->findAttribute(localPart(c.attribute)) != nullptr;
                            return c.what == What::attributeMissing && isThereQualified(c);
                          }},
    Kind<SchemaComplaint>{"instance-attribute",
                          [](const SchemaComplaint &c) { return !c.insideForeign && isAboutInstance(c); }},
    Kind<SchemaComplaint>{"uri", [](const SchemaComplaint &c) { return isValue(c) && formOf(c) == Form::uri; }},
    Kind<SchemaComplaint>{"rule-id",
                          [](const SchemaComplaint &c) { return isValue(c) && formOf(c) == Form::identifier; }},
    Kind<SchemaComplaint>{"debug-time",
                          [](const SchemaComplaint &c) {
                            return isValue(c) && c.attribute.empty() && isOneOf(c.element, "time", "time-period");
                          }},
    Kind<SchemaComplaint>{"time-with-space",
                          [](const SchemaComplaint &c) {
                            const std::string_view time = trimmed(c.value);
                            return isValue(c) && formOf(c) == Form::dateTime && c.element != "time" &&
                                   time.size() < c.value.size() && isDateTime(std::string(time));
                          }},
};

bool isUnsignedBeyond32Bits(std::string_view text) {
  text = trimmed(text);
  if (text.starts_with("+")) text.remove_prefix(1);
  while (text.starts_with("0"))
    text.remove_prefix(1);
  if (!std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; })) return false;
  return text.size() > 10 || (text.size() == 10 && text > "4294967295");
}

// Of the year that a date begins with, whatever its sign.
bool isYearBeyond31Bits(std::string_view date) {
  date = trimmed(date);
  if (date.starts_with("-")) date.remove_prefix(1);
  const std::string_view year = date.substr(0, date.find('-'));
  return year.size() > 10 || (year.size() == 10 && year > "2147483647");
}

bool isPairsOfHexDigits(std::string_view text) {
  text = trimmed(text);
  return text.size() % 2 == 0 && std::all_of(text.begin(), text.end(), [](char c) {
           return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
         });
}

// The local names at the end of the path of open elements.
std::string_view elementOf(const LibraryComplaint &c) {
  return localPart(std::string_view(c.path).substr(c.path.rfind('/') + 1));
}

std::string_view parentOf(const LibraryComplaint &c) {
  const std::string_view above = std::string_view(c.path).substr(0, c.path.rfind('/'));
  return localPart(above.substr(above.rfind('/') + 1));
}

bool isAtRoot(const LibraryComplaint &c) { return c.path.rfind('/') == 0; }

constexpr std::array schemaAccepts = {
    Kind<LibraryComplaint>{"other-root",
                           [](const LibraryComplaint &c) {
                             return c.status == STATUS_ROOT_MISMATCH && isAtRoot(c) && elementOf(c) != c.root->name;
                           }},
    Kind<LibraryComplaint>{"no-validator",
                           [](const LibraryComplaint &c) {
                             return c.status == STATUS_NOT_SUPPORTED &&
                                    c.vocabulary->find(c.root->name)->form != Form::none;
                           }},
    Kind<LibraryComplaint>{"foreign-attribute",
                           [](const LibraryComplaint &c) {
                             const ElementRule *parent = c.vocabulary->find(parentOf(c));
                             return c.status == STATUS_UNKNOWN_ATTRIBUTE && c.params[0].empty() && parent != nullptr &&
                                    isOneOf(parent->wildcard, Wildcard::one, Wildcard::many);
                           }},
    Kind<LibraryComplaint>{"display",
                           [](const LibraryComplaint &c) {
                             return c.status == STATUS_UNKNOWN_ATTRIBUTE && c.params[0] == "tns_nameaddr" &&
                                    c.params[1] == "display";
                           }},
    Kind<LibraryComplaint>{"great-number",
                           [](const LibraryComplaint &c) {
                             if (c.status == STATUS_INVALID_ATTRIBUTE)
                               return localPart(c.params[1]) == "version" && isUnsignedBeyond32Bits(c.value);
                             return c.status == STATUS_INVALID_CONTENT &&
                                    isOneOf(elementOf(c), "refresh", "duration", "cseq") &&
                                    isUnsignedBeyond32Bits(c.params[0]);
                           }},
    Kind<LibraryComplaint>{"great-year",
                           [](const LibraryComplaint &c) {
                             return c.status == STATUS_INVALID_CONTENT &&
                                    isOneOf(elementOf(c), "lastactive", "from", "until") &&
                                    isYearBeyond31Bits(c.params[0]);
                           }},
    Kind<LibraryComplaint>{"debug-id",
                           [](const LibraryComplaint &c) {
                             return isOneOf(c.status, STATUS_INVALID_LEXICAL_FORM, STATUS_INVALID_CONTENT) &&
                                    elementOf(c) == "debug-id" && !isPairsOfHexDigits(c.place.text);
                           }},
    Kind<LibraryComplaint>{"repeated-validity",
                           [](const LibraryComplaint &c) {
                             return c.status == STATUS_UNEXPECTED_ELEMENT && parentOf(c) == "validity" &&
                                    isOneOf(elementOf(c), "from", "until") && c.place.before.size() >= 2;
                           }},
    Kind<LibraryComplaint>{"order-behind-foreign",
                           [](const LibraryComplaint &c) {
                             // Of the elements that the schema accepts there.
                             const auto isForeign = [&](const std::string &tag) {
                               const std::string name = tag.substr(1, tag.find_first_of(" />") - 1);
                               return name != c.params[0] || tag.find(" xmlns=") != std::string::npos;
                             };
                             return c.status == STATUS_UNEXPECTED_ELEMENT &&
                                    isOneOf(elementOf(c), "dialog", "debugconfig") &&
                                    isOneOf(parentOf(c), "dialog-info", "debuginfo") &&
                                    std::any_of(c.place.before.begin(), c.place.before.end(), isForeign);
                           }},
    Kind<LibraryComplaint>{"namespace-constraint",
                           [](const LibraryComplaint &c) {
                             return c.status == STATUS_PARSE_FAILED &&
                                    isOneOf(c.params[0], "a prefix cannot be undeclared",
                                            "misplaced colon in an element's name");
                           }},
    Kind<LibraryComplaint>{"attribute-limit",
                           [](const LibraryComplaint &c) {
                             return c.status == STATUS_LIMIT_EXCEEDED && c.params[0] == "attributeLimit" &&
                                    c.place.attributes >= 128;
                           }},
};

} // namespace

std::span<const Kind<SchemaComplaint>> acceptedByLibrary() { return libraryAccepts; }

std::span<const Kind<LibraryComplaint>> acceptedBySchema() { return schemaAccepts; }

} // namespace differential
