#include "resultSize.h"

#include "Member.h"

#include <string.h>

namespace bench {

namespace {

using namespace ims;

size_t textSize(const char *text) { return text ? strlen(text) + 1 : 0; }

size_t contentSize(const TypeSchema &type, const void *record);

template <class Item> size_t listSize(const RtxList &list, Item itemSize) {
  size_t size = 0;
  for (const RtxListNode *node = list.head; node; node = node->next)
    size += sizeof(RtxListNode) + itemSize(node->data);
  return size;
}

size_t textItemSize(const void *item) {
  return sizeof(RtxXmlString) + textSize(static_cast<const RtxXmlString *>(item)->value);
}

size_t pairSize(const void *item) {
  const auto *pair = static_cast<const RtxNamePair *>(item);
  return sizeof(RtxNamePair) + textSize(pair->name) + textSize(pair->value);
}

size_t declarationSize(const void *item) {
  const auto *declaration = static_cast<const RtxNsDecl *>(item);
  return sizeof(RtxNsDecl) + textSize(declaration->prefix) + textSize(declaration->uri);
}

size_t contentSize(const Field &field, const void *record) {
  switch (field.kind) {
  case Kind::text:
  case Kind::foreign: return textSize(memberAt<RtxXmlString>(record, field).value);
  case Kind::hexBinary: return memberAt<RtxHexBinary>(record, field).length;
  case Kind::record:
  case Kind::choice: return contentSize(*field.type, static_cast<const char *>(record) + field.offset);
  case Kind::recordList:
  case Kind::choiceList:
    return listSize(listAt(record, field), [&](const void *item) { return resultSize(*field.type, item); });
  case Kind::textList:
  case Kind::foreignList: return listSize(listAt(record, field), textItemSize);
  case Kind::attributeList: return listSize(listAt(record, field), pairSize);
  case Kind::namespaceList: return listSize(listAt(record, field), declarationSize);
  default: return 0;
  }
}

// What a record refers to.
size_t contentSize(const TypeSchema &type, const void *record) {
  if (type.content == Content::choice) {
    const Field *alternative = alternativeOf(type, record);
    return alternative ? contentSize(*alternative, record) : 0;
  }
  size_t size = 0;
  for (const Field &field : fieldsOf(type))
    if (isPresent(field, record)) size += contentSize(field, record);
  return size;
}

} // namespace

size_t resultSize(const TypeSchema &type, const void *record) { return type.size + contentSize(type, record); }

} // namespace bench
