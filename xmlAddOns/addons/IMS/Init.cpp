#include "Contract.h"
#include "Engines.h"
#include "Member.h"
#include "rtxError.h"

#include <string.h>

namespace ims {

namespace {

void clear(const TypeSchema &type, void *record) {
  for (const ClearedPart *part = type.cleared, *end = part + type.clearedCount; part != end; ++part)
    memset(static_cast<char *>(record) + part->offset, 0, part->size);
}

void setDefaults(const TypeSchema &type, void *record) {
  for (const Field &field : fieldsOf(type)) {
    if (field.kind == Kind::record && has(*field.type, hasDefaults))
      setDefaults(*field.type, static_cast<char *>(record) + field.offset);
    if (!has(field, initialZero) && !has(field, initialTrue)) continue;
    if (field.kind == Kind::boolean) memberAt<bool>(record, field) = has(field, initialTrue);
    if (field.kind == Kind::enumeration) memberAt<uint16_t>(record, field) = 0;
  }
}

} // namespace

void clearRecord(const TypeSchema &type, void *record) {
  clear(type, record);
  if (has(type, hasDefaults)) setDefaults(type, record);
}

int initRecord(RuntimeContext *ctx, const TypeSchema &type, void *record) {
  const char *path = type.module->paths[int(File::base)];
  if (!keepsContract(ctx)) return recordOtherContract(ctx, path, siteLine(type, File::base, 0, step::checkContract));
  int status = rtxCheckContext(ctx);
  if (status < 0) return rtxErrSetData(ctx, status, path, siteLine(type, File::base, 0, step::checkContext));
  clearRecord(type, record);
  return STATUS_OK;
}

} // namespace ims
