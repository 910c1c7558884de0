#include "tableDump.h"

#include "Member.h"
#include "sites.h"

using namespace ims;

namespace frame {

namespace {

const char *nameOf(Kind kind) {
  switch (kind) {
  case Kind::text: return "text";
  case Kind::uint32: return "uint32";
  case Kind::uint16: return "uint16";
  case Kind::boolean: return "boolean";
  case Kind::decimal: return "decimal";
  case Kind::hexBinary: return "hexBinary";
  case Kind::enumeration: return "enumeration";
  case Kind::record: return "record";
  case Kind::choice: return "choice";
  case Kind::recordList: return "recordList";
  case Kind::textList: return "textList";
  case Kind::choiceList: return "choiceList";
  case Kind::foreign: return "foreign";
  case Kind::foreignList: return "foreignList";
  case Kind::attributeList: return "attributeList";
  case Kind::namespaceList: return "namespaceList";
  }
  return "?";
}

const char *nameOf(Part part) {
  switch (part) {
  case Part::element: return "element";
  case Part::attribute: return "attribute";
  case Part::content: return "content";
  case Part::carried: return "carried";
  }
  return "?";
}

const char *nameOf(Content content) {
  switch (content) {
  case Content::nothing: return "nothing";
  case Content::text: return "text";
  case Content::elements: return "elements";
  case Content::named: return "named";
  case Content::anything: return "anything";
  case Content::choice: return "choice";
  }
  return "?";
}

const char *nameOf(Declaration declaration) {
  switch (declaration) {
  case Declaration::none: return "none";
  case Declaration::prefix: return "prefix";
  case Declaration::prefixInRecord: return "prefixInRecord";
  case Declaration::defaultAlways: return "defaultAlways";
  }
  return "?";
}

struct Flag {
  int bit;
  const char *name;
};

constexpr Flag fieldFlags[] = {{collapsed, "collapsed"},
                               {presentAlways, "presentAlways"},
                               {lenient, "lenient"},
                               {enumErrorOnly, "enumErrorOnly"},
                               {printedAlways, "printedAlways"},
                               {appendedAtEnd, "appendedAtEnd"},
                               {initialZero, "initialZero"},
                               {initialTrue, "initialTrue"},
                               {checkedDateTime, "checkedDateTime"},
                               {required, "required"},
                               {unnamed, "unnamed"}};

constexpr Flag typeFlags[] = {
    {refusesAtOnce, "refusesAtOnce"}, {presenceOnly, "presenceOnly"},         {countedByMember, "countedByMember"},
    {noEmptyList, "noEmptyList"},     {hasPresence, "hasPresence"},           {attributesOnly, "attributesOnly"},
    {hasAttributes, "hasAttributes"}, {delegatesRecords, "delegatesRecords"}, {delegatesForeign, "delegatesForeign"}};

template <size_t N> std::string flagsOf(int flags, const Flag (&names)[N]) {
  std::string all;
  for (const Flag &flag : names) {
    if ((flags & flag.bit) == 0) continue;
    all += " ";
    all += flag.name;
    flags &= ~flag.bit;
  }
  return flags == 0 ? all : all + " +" + std::to_string(flags);
}

std::string number(uint64_t value) { return std::to_string(value); }

std::string dump(const Field &field) {
  std::string line = "  " + number(field.offset) + " " + field.name + ": " + nameOf(field.part) + " " +
                     number(field.id) + " " + nameOf(field.kind);
  switch (field.kind) {
  case Kind::record:
  case Kind::choice:
  case Kind::recordList:
  case Kind::choiceList: line += std::string(" of ") + field.type->name; break;
  case Kind::enumeration: line += std::string(" of ") + field.enumeration->name; break;
  default: break;
  }
  if (field.bit != 0) line += " bit " + number(field.bit);
  if (field.minimum != 0) line += " from " + number(field.minimum);
  if (field.maximum != 0) line += " to " + number(field.maximum);
  return line + flagsOf(field.flags, fieldFlags) + "\n";
}

std::string stateName(uint8_t state) {
  if (state == RTSAX_NOT_ALLOWED) return "-";
  return state == RTSAX_FINAL ? "end" : number(state);
}

std::string dump(const TypeSchema &type) {
  std::string text = std::string("type ") + type.name + " #" + number(type.number) + " of " + type.module->name + ", " +
                     number(type.size) + " bytes, contains " + nameOf(type.content) + flagsOf(type.flags, typeFlags) +
                     "\n";
  for (const Field &field : fieldsOf(type))
    text += dump(field);
  for (uint8_t i = 0; i < type.elementCount; ++i) {
    const RtSaxElementInfo &element = type.elements[i];
    text += "  child \"" + std::string(element.name) + "\" ns " + std::to_string(element.namespaceIndex) + " " +
            number(element.minOccurs) + ".." +
            (element.maxOccurs == RTSAX_UNBOUNDED ? std::string("*") : number(element.maxOccurs));
    for (uint8_t state = 0; state < type.stateCount; ++state)
      text += (state == 0 ? ": " : " ") + stateName(type.states[i * type.stateCount + state]);
    text += "\n";
  }
  for (uint8_t i = 0; i < type.attributeCount; ++i)
    text += "  attribute \"" + std::string(type.attributeNames[i]) + "\"" +
            ((type.requiredAttributes >> i & 1) != 0 ? " required\n" : "\n");
  return text;
}

std::string dump(const EnumSchema &type) {
  std::string text =
      std::string("enumeration ") + type.name + " #" + number(type.number) + " of " + type.module->name + "\n";
  for (uint16_t i = 0; i < type.count; ++i)
    text += "  \"" + std::string(type.rows[i].text) + "\" code " + number(type.rows[i].code) + " length " +
            number(type.rows[i].length) + " row of code " + number(type.rows[i].rowOfCode) + "\n";
  return text;
}

std::string dump(const DocumentSchema &document) {
  const ModuleSchema &module = *document.module;
  std::string text = std::string("document ") + document.root + " #" + number(document.number) + " of " + module.name;
  if (document.type) {
    text += std::string(", type ") + document.type->name;
  } else {
    text += std::string(", ") + nameOf(document.simple->kind);
    if (document.simple->enumeration) text += std::string(" of ") + document.simple->enumeration->name;
    if (document.simple->collapsed) text += " collapsed";
  }
  text += std::string(", declares ") + nameOf(document.declaration);
  if (document.prefix) text += std::string(" ") + document.prefix;
  text += "\n  namespace ";
  text += *module.uri ? module.uri : "none";
  text += " ns " + std::to_string(module.namespaceIndex) + (module.qualifiedAttributes ? " qualified attributes" : "");
  text += "\n";
  for (const char *path : module.paths)
    text += std::string("  ") + path + "\n";
  return text;
}

} // namespace

std::string dumpTables(const std::vector<const DocumentSchema *> &documents) {
  std::string text;
  for (const DocumentSchema *document : documents)
    text += dump(*document) + "\n";
  const Reachable found = reachable(documents);
  for (const TypeSchema *type : found.types)
    text += dump(*type) + "\n";
  for (const EnumSchema *type : found.enumerations)
    text += dump(*type) + "\n";
  for (const Site &site : sites(documents))
    if (site.line < linesPerType)
      text += "line " + std::to_string(site.line) + " of " + site.path + ": " + site.where + "\n";
  return text;
}

} // namespace frame
