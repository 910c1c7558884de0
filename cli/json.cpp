#include "json.h"

#include "Engines.h"
#include "Member.h"

#include <cstdint>
#include <cstdio>

namespace cli {

namespace {

using ims::Field;
using ims::Kind;

Json textJson(const char *text) { return text ? Json(text) : Json(nullptr); }

Json hexJson(const RtxHexBinary &binary) {
  static constexpr char digits[] = "0123456789ABCDEF";
  std::string text;
  for (std::uint32_t i = 0; i < binary.length; ++i) {
    text += digits[binary.bytes[i] >> 4];
    text += digits[binary.bytes[i] & 15];
  }
  return text;
}

Json listJson(const Field &field, const void *record) {
  Json items = Json::array();
  for (const RtxListNode *node = ims::listAt(record, field).head; node; node = node->next)
    items.push_back(itemJson(field, node->data));
  return items;
}

Json choiceJson(const ims::TypeSchema &type, const void *choice) {
  Json object = {{"t", ims::selectorOf(choice)}};
  if (const Field *alternative = ims::alternativeOf(type, choice))
    object[alternative->name] = memberJson(*alternative, choice);
  return object;
}

} // namespace

Json itemJson(const Field &field, const void *item) {
  switch (field.kind) {
  case Kind::recordList:
  case Kind::choiceList: return recordJson(*field.type, item);
  case Kind::attributeList: {
    const auto &attribute = *static_cast<const RtxNamePair *>(item);
    return {{"name", textJson(attribute.name)}, {"value", textJson(attribute.value)}};
  }
  case Kind::namespaceList: {
    const auto &declaration = *static_cast<const RtxNsDecl *>(item);
    return {{"prefix", textJson(declaration.prefix)}, {"uri", textJson(declaration.uri)}};
  }
  default: return textJson(static_cast<const RtxXmlString *>(item)->value);
  }
}

Json memberJson(const Field &field, const void *record) {
  switch (field.kind) {
  case Kind::text:
  case Kind::foreign: return textJson(ims::memberAt<RtxXmlString>(record, field).value);
  case Kind::uint32: return ims::memberAt<std::uint32_t>(record, field);
  case Kind::uint16: return ims::memberAt<std::uint16_t>(record, field);
  case Kind::boolean: return ims::memberAt<bool>(record, field);
  case Kind::decimal: return ims::memberAt<double>(record, field);
  case Kind::hexBinary: return hexJson(ims::memberAt<RtxHexBinary>(record, field));
  case Kind::enumeration: return ims::enumText(*field.enumeration, ims::memberAt<std::uint16_t>(record, field));
  case Kind::record:
  case Kind::choice: return recordJson(*field.type, static_cast<const char *>(record) + field.offset);
  case Kind::recordList:
  case Kind::textList:
  case Kind::choiceList:
  case Kind::foreignList:
  case Kind::attributeList:
  case Kind::namespaceList: return listJson(field, record);
  }
  return nullptr;
}

Json recordJson(const ims::TypeSchema &type, const void *record) {
  if (type.content == ims::Content::choice) return choiceJson(type, record);
  Json object = Json::object();
  for (const Field &field : ims::fieldsOf(type))
    if (ims::has(field, ims::printedAlways) || ims::isPresent(field, record))
      object[field.name] = memberJson(field, record);
  return object;
}

Json documentJson(const ims::DocumentSchema &document, const void *value) {
  if (document.type) return recordJson(*document.type, value);
  Field whole{};
  whole.kind = document.simple->kind;
  whole.enumeration = document.simple->enumeration;
  return memberJson(whole, value);
}

std::string jsonLine(const Json &value) { return value.dump(-1, ' ', false, Json::error_handler_t::replace); }

void printJson(const Json &value) { std::puts(value.dump(2, ' ', false, Json::error_handler_t::replace).c_str()); }

} // namespace cli
