#include "Engines.h"
#include "Member.h"
#include "rtxPrint.h"

#include <stdio.h>

namespace ims {

namespace {

// A name that grows by a part at each level; what does not fit is cut.
struct Name {
  char text[512];
  Name(const char *parent, const char *part) { snprintf(text, sizeof(text), "%s.%s", parent, part); }
  Name(const char *parent, const char *part, const char *member) {
    snprintf(text, sizeof(text), "%s.%s.%s", parent, part, member);
  }
  Name(const char *parent, int index) { snprintf(text, sizeof(text), "%s[%d]", parent, index); }
};

// Each of these returns the result of the last line that it printed, or result if there was none.

int printRecordAfter(int result, const char *name, const TypeSchema &type, const void *record);

int printItems(int result, const char *name, const Field &field, const RtxList &list) {
  int index = 0;
  for (const RtxListNode *node = list.head; node; node = node->next, ++index) {
    Name item(name, index);
    switch (field.kind) {
    case Kind::recordList:
    case Kind::choiceList: result = printRecordAfter(result, item.text, *field.type, node->data); break;
    case Kind::attributeList: {
      const auto *pair = static_cast<const RtxNamePair *>(node->data);
      result = rtxPrintNVP(item.text, pair->name, pair->value);
      break;
    }
    default: result = rtxPrintCharStr(item.text, static_cast<const RtxXmlString *>(node->data)->value); break;
    }
  }
  return result;
}

// Prints a member under its own, complete name.
int printMember(int result, const char *name, const Field &field, const void *record) {
  switch (field.kind) {
  case Kind::text:
  case Kind::foreign: return rtxPrintCharStr(name, memberAt<RtxXmlString>(record, field).value);
  case Kind::uint32: return rtxPrintUnsigned(name, memberAt<uint32_t>(record, field));
  case Kind::uint16: return rtxPrintUnsigned(name, memberAt<uint16_t>(record, field));
  case Kind::boolean: return rtxPrintBoolean(name, memberAt<bool>(record, field));
  case Kind::decimal: return rtxPrintReal(name, memberAt<double>(record, field));
  case Kind::hexBinary: {
    const auto &value = memberAt<RtxHexBinary>(record, field);
    return rtxPrintHexBinary(name, value.length, value.bytes);
  }
  case Kind::enumeration: return printEnum(name, *field.enumeration, memberAt<uint16_t>(record, field));
  case Kind::record:
  case Kind::choice:
    return printRecordAfter(result, name, *field.type, static_cast<const char *>(record) + field.offset);
  case Kind::namespaceList: return rtXmlPrintNSAttrs(name, &memberAt<RtxNsDeclList>(record, field));
  default: return printItems(result, name, field, listAt(record, field));
  }
}

int printField(int result, const char *name, const Field &field, const void *record) {
  if (has(field, unnamed)) return printItems(result, name, field, listAt(record, field));
  return printMember(result, Name(name, field.name).text, field, record);
}

int printChoice(int result, const char *name, const TypeSchema &type, const void *record) {
  if (printf("%s.t = %d\n", name, selectorOf(record)) < 0) result = -1;
  const Field *alternative = alternativeOf(type, record);
  return alternative ? printMember(result, Name(name, "u", alternative->name).text, *alternative, record) : result;
}

int printRecordAfter(int result, const char *name, const TypeSchema &type, const void *record) {
  if (type.content == Content::choice) return printChoice(result, name, type, record);
  if (has(type, attributesOnly)) result = rtxPrintNull(name);
  // Text and declarations belong to the element itself, ahead of its attributes.
  if (type.value != noField) result = printMember(result, name, type.fields[type.value], record);
  if (type.namespaceList != noField) result = printMember(result, name, type.fields[type.namespaceList], record);
  for (const Field &field : fieldsOf(type)) {
    if (field.part == Part::content || field.kind == Kind::namespaceList) continue;
    if (has(field, printedAlways) || isPresent(field, record)) result = printField(result, name, field, record);
  }
  return result;
}

} // namespace

int printRecord(const char *name, const TypeSchema &type, const void *record) {
  return printRecordAfter(0, name, type, record);
}

} // namespace ims
