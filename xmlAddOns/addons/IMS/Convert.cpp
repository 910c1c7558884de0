// From text to a field's value, by the kind of the field.
#include "Engines.h"
#include "Handler.h"
#include "Parameter.h"

namespace ims {

namespace {

// Where a value goes that is only checked.
union Scratch {
  uint32_t u32;
  uint16_t u16;
  bool boolean;
  double decimal;
  RtxDateTime dateTime;
};

int convertScalar(RuntimeContext *ctx, const Field &field, void *target) {
  switch (field.kind) {
  case Kind::uint32: return rtXmlDecUInt(ctx, static_cast<uint32_t *>(target));
  case Kind::uint16: return rtXmlDecUInt16(ctx, static_cast<uint16_t *>(target));
  case Kind::boolean: return rtXmlDecBool(ctx, static_cast<bool *>(target));
  case Kind::decimal: return rtXmlDecDecimal(ctx, static_cast<double *>(target));
  case Kind::enumeration:
    return enumCode(*field.enumeration, ctx->buffer.data, ctx->buffer.size, static_cast<uint16_t *>(target));
  default: return STATUS_OK;
  }
}

uint32_t numberIn(const Field &field, const void *target) {
  return field.kind == Kind::uint16 ? *static_cast<const uint16_t *>(target) : *static_cast<const uint32_t *>(target);
}

bool isNumber(const Field &field) { return field.kind == Kind::uint32 || field.kind == Kind::uint16; }

} // namespace

template <class Handler> Conversion convert(Handler *handler, const Field &field, void *owner, const char *xmlName) {
  RuntimeContext *ctx = handler->context;
  Scratch scratch;
  void *target = &scratch;
  if constexpr (fillsRecord<Handler>) {
    target = static_cast<char *>(owner) + field.offset;
    if (has(field, collapsed)) rtXmlTreatWhitespaces(ctx, RTXML_WS_COLLAPSE);
    if (field.kind == Kind::text) return {rtXmlDecXmlStr(ctx, static_cast<RtxXmlString *>(target)), true};
  } else if (field.kind == Kind::text) {
    // Text has no lexical form of its own, and a copy would only be thrown away.
    return {has(field, checkedDateTime) ? rtXmlDecDateTime(ctx, &scratch.dateTime) : int{STATUS_OK}, true};
  }
  int status = convertScalar(ctx, field, target);
  if (status != 0 || !isNumber(field) || !isOutOfRange(field, numberIn(field, target))) return {status, true};
  uint32_t value = numberIn(field, target);
  if (!counted(handler)) return {STATUS_OK, false};
  if constexpr (fillsRecord<Handler>) {
    addMemberParameter(ctx, typeOf(handler), field.name);
  } else {
    rtxErrAddStrParm(ctx, xmlName);
  }
  rtxErrAddUIntParm(ctx, value);
  return {record(handler, STATUS_CONSTRAINT_VIOLATION, &field, step::range), false};
}

template Conversion convert(SaxTypeHandler *, const Field &, void *, const char *);
template Conversion convert(VsaxTypeHandler *, const Field &, void *, const char *);

} // namespace ims
