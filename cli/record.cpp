#include "record.h"

#include "Engines.h"
#include "rtxMemory.h"
#include "rtxPrint.h"

#include <algorithm>
#include <cstdint>

namespace cli {

namespace {

std::size_t sizeOf(const ims::DocumentSchema &document) {
  if (document.type) return document.type->size;
  return std::max({sizeof(RtxXmlString), sizeof(RtxHexBinary), sizeof(std::uint16_t)});
}

void freeSimple(RuntimeContext *ctx, const ims::SimpleType &simple, const void *value) {
  switch (simple.kind) {
  case ims::Kind::enumeration: break;
  case ims::Kind::hexBinary: rtxMemHeapFreePtr(ctx, static_cast<const RtxHexBinary *>(value)->bytes); break;
  default: rtxMemHeapFreePtr(ctx, static_cast<const RtxXmlString *>(value)->value); break;
  }
}

void printSimple(const char *name, const ims::SimpleType &simple, const void *value) {
  switch (simple.kind) {
  case ims::Kind::enumeration:
    ims::printEnum(name, *simple.enumeration, *static_cast<const std::uint16_t *>(value));
    break;
  case ims::Kind::hexBinary: {
    const auto *binary = static_cast<const RtxHexBinary *>(value);
    rtxPrintHexBinary(name, binary->length, binary->bytes);
    break;
  }
  default: rtxPrintCharStr(name, static_cast<const RtxXmlString *>(value)->value); break;
  }
}

} // namespace

Record::Record(RuntimeContext *ctx, const ims::DocumentSchema &kind)
    : context(ctx), document(kind), storage(sizeOf(kind) / sizeof(std::max_align_t) + 1) {}

Record::~Record() {
  if (document.type) {
    ims::freeRecord(context, *document.type, storage.data());
  } else {
    freeSimple(context, *document.simple, value());
  }
}

int Record::decode() { return ims::decodeDocument(context, document, storage.data()); }

int Record::encode() const { return ims::encodeDocument(context, document, value()); }

void Record::print() const {
  if (document.type) {
    ims::printRecord(document.root, *document.type, value());
  } else {
    printSimple(document.root, *document.simple, value());
  }
}

} // namespace cli
