#include "Engines.h"
#include "Member.h"
#include "rtxError.h"

#include <string.h>

namespace ims {

namespace {

void clear(const TypeSchema &type, void *record);

void clearField(const Field &field, void *record) {
  switch (field.kind) {
  case Kind::text:
  case Kind::foreign: memberAt<RtxXmlString>(record, field) = {false, nullptr}; break;
  case Kind::hexBinary: memberAt<RtxHexBinary>(record, field) = {0, nullptr}; break;
  case Kind::record:
  case Kind::choice: clear(*field.type, static_cast<char *>(record) + field.offset); break;
  case Kind::recordList:
  case Kind::textList:
  case Kind::choiceList:
  case Kind::foreignList:
  case Kind::attributeList:
  case Kind::namespaceList: listAt(record, field) = {0, nullptr, nullptr}; break;
  // A scalar means something only while its presence bit is set, so it keeps what the storage held.
  case Kind::boolean:
    if (has(field, initialZero) || has(field, initialTrue)) memberAt<bool>(record, field) = has(field, initialTrue);
    break;
  case Kind::enumeration:
    if (has(field, initialZero)) memberAt<uint16_t>(record, field) = 0;
    break;
  case Kind::uint32:
  case Kind::uint16:
  case Kind::decimal: break;
  }
}

void clear(const TypeSchema &type, void *record) {
  if (type.content == Content::choice) {
    memset(record, 0, type.size);
    return;
  }
  if (has(type, hasPresence)) presenceOf(record) = 0;
  for (const Field &field : fieldsOf(type))
    clearField(field, record);
}

} // namespace

int initRecord(RuntimeContext *ctx, const TypeSchema &type, void *record) {
  int status = rtxCheckContext(ctx);
  if (status < 0) {
    return rtxErrSetData(ctx, status, type.module->paths[int(File::base)],
                         siteLine(type, File::base, 0, step::checkContext));
  }
  clear(type, record);
  return STATUS_OK;
}

} // namespace ims
