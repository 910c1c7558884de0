// A record made at random from the tables and damaged: texts that are no UTF-8 or missing, codes and selectors without
// a meaning, numbers out of range. It is encoded, into all room or little, with allocations that fail.
#include "Catalogue.h"
#include "Engines.h"
#include "Member.h"
#include "check.h"
#include "rtxMemory.h"
#include "world.h"

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

using namespace fuzz;
using namespace ims;

namespace {

class Filler {
public:
  Filler(RuntimeContext *context, Bytes source) : ctx(context), bytes(source) {}

  // Attributes are written byte by byte, whatever they are.
  bool allUtf8() const { return onlyUtf8; }

  void fill(const TypeSchema &type, void *record) {
    if (++depth > 8) {
      --depth;
      return;
    }
    if (type.content == Content::choice) {
      fillChoice(type, record);
    } else {
      if (has(type, hasPresence)) presenceOf(record) = 0;
      for (const Field &field : fieldsOf(type)) {
        const bool optional = field.bit != 0 && !has(field, required);
        if (optional && bytes.below(2) == 0) continue;
        if (optional) presenceOf(record) |= field.bit;
        fillField(field, record);
      }
    }
    --depth;
  }

  void fillSimple(Kind kind, void *value) {
    if (kind == Kind::enumeration) *static_cast<uint16_t *>(value) = code();
    if (kind == Kind::hexBinary) *static_cast<RtxHexBinary *>(value) = hexBytes();
    if (kind == Kind::text) *static_cast<RtxXmlString *>(value) = text();
  }

private:
  void fillChoice(const TypeSchema &type, void *choice) {
    const uint16_t selector = static_cast<uint16_t>(bytes.below(type.fieldCount + 2u));
    selectorOf(choice) = selector;
    if (const Field *alternative = alternativeOf(type, choice)) {
      void *member = static_cast<char *>(choice) + alternative->offset;
      if (alternative->kind == Kind::record) initRecord(ctx, *alternative->type, member);
      fillField(*alternative, choice);
    }
  }

  void fillField(const Field &field, void *record) {
    switch (field.kind) {
    case Kind::text: memberAt<RtxXmlString>(record, field) = text(); break;
    case Kind::foreign: memberAt<RtxXmlString>(record, field) = foreignElement(); break;
    case Kind::uint32: memberAt<uint32_t>(record, field) = bytes.number() * 65521u; break;
    case Kind::uint16: memberAt<uint16_t>(record, field) = static_cast<uint16_t>(bytes.number()); break;
    case Kind::boolean: memberAt<bool>(record, field) = bytes.below(2) != 0; break;
    case Kind::decimal: memberAt<double>(record, field) = decimal(); break;
    case Kind::enumeration: memberAt<uint16_t>(record, field) = code(); break;
    case Kind::hexBinary: memberAt<RtxHexBinary>(record, field) = hexBytes(); break;
    case Kind::record:
    case Kind::choice: fill(*field.type, static_cast<char *>(record) + field.offset); break;
    case Kind::recordList:
    case Kind::choiceList:
      for (uint32_t left = bytes.below(4); left != 0; --left) {
        void *item = newItem(field.type->size);
        if (!item) return;
        initRecord(ctx, *field.type, item);
        fill(*field.type, item);
        appendItem(ctx, &listAt(record, field), item);
      }
      break;
    case Kind::textList: appendTexts(listAt(record, field), &Filler::text); break;
    case Kind::foreignList: appendTexts(listAt(record, field), &Filler::foreignElement); break;
    case Kind::attributeList:
      for (uint32_t left = bytes.below(3); left != 0; --left)
        if (auto *pair = static_cast<RtxNamePair *>(newItem(sizeof(RtxNamePair)))) {
          *pair = {copy(left == 1 ? "one" : "two"), text().value};
          appendItem(ctx, &listAt(record, field), pair);
        }
      break;
    case Kind::namespaceList:
      for (uint32_t left = bytes.below(3); left != 0; --left)
        if (auto *declaration = static_cast<RtxNsDecl *>(newItem(sizeof(RtxNsDecl)))) {
          *declaration = {copy(left == 1 ? "p" : "tns"), copy(bytes.below(2) == 0 ? "urn:p" : "urn:q")};
          appendItem(ctx, &listAt(record, field), declaration);
        }
      break;
    }
  }

  void appendTexts(RtxList &list, RtxXmlString (Filler::*make)()) {
    for (uint32_t left = bytes.below(4); left != 0; --left)
      if (auto *item = static_cast<RtxXmlString *>(newItem(sizeof(RtxXmlString)))) {
        *item = (this->*make)();
        appendItem(ctx, &list, item);
      }
  }

  void *newItem(size_t size) {
    void *item = rtxMemHeapAlloc(ctx, size);
    if (item) std::memset(item, 0, size);
    return item;
  }

  const char *copy(std::string_view value) {
    auto *block = static_cast<char *>(newItem(value.size() + 1));
    if (block) std::memcpy(block, value.data(), value.size());
    return block;
  }

  // Any bytes but NUL, or null.
  RtxXmlString text() {
    const uint8_t shape = bytes.byte();
    if (shape == 0) return {false, nullptr};
    const RtxXmlString made = {(shape & 0x80) != 0, copy(bytes.take(shape & 0x1F))};
    onlyUtf8 = onlyUtf8 && rtxValidateUTF8(ctx, made.value) == 0;
    return made;
  }

  RtxXmlString foreignElement() {
    static constexpr std::string_view elements[] = {"<x:a xmlns:x='urn:x'>t<x:b/></x:a>", "<a xmlns='urn:a' b='c'/>",
                                                    "<a xmlns=''/>", ""};
    const uint32_t which = bytes.below(5);
    return {false, which == 4 ? nullptr : copy(elements[which])};
  }

  RtxHexBinary hexBytes() {
    const std::string_view value = bytes.take(bytes.below(20));
    return {static_cast<uint32_t>(value.size()), reinterpret_cast<const uint8_t *>(copy(value))};
  }

  uint16_t code() { return static_cast<uint16_t>(bytes.below(12) == 11 ? bytes.number() : bytes.below(3)); }

  double decimal() {
    double value = 0;
    const std::string_view bits = bytes.take(sizeof value);
    std::memcpy(&value, bits.data(), bits.size());
    return value;
  }

  RuntimeContext *ctx;
  Bytes bytes;
  int depth = 0;
  bool onlyUtf8 = true;
};

} // namespace

// The first bytes are the choices, the rest makes the record.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  Bytes bytes(data, size);
  const uint8_t choices[] = {0, static_cast<uint8_t>(1 + bytes.byte() % 27), 0, 0, 0, 0, 0, bytes.byte(), bytes.byte()};
  const uint32_t room = bytes.number();
  const bool preset = bytes.below(4) == 1;
  const Input input(choices, sizeof choices);
  World world(input);
  if (!world) return 0;
  const DocumentSchema &document = *input.document;
  std::vector<char> buffer(room % 4096);
  {
    Value value(world, document);
    Filler filler(world, bytes);
    if (document.type) {
      ims::initRecord(world, *document.type, value.data());
      filler.fill(*document.type, value.data());
    } else {
      filler.fillSimple(document.simple->kind, value.data());
    }
    if (preset) world->flags |= NamespacesPreset;
    int status = room == 0 ? rtxSetOutputDynamic(world) : rtxSetOutput(world, buffer.data(), buffer.size());
    if (status == 0) status = ims::encodeDocument(world, document, value.data());
    require(status == 0 || rtxErrCount(world) > 0 || input.failingAllocation != 0, "a failure is recorded");
    size_t length = 0;
    const char *output = rtxGetOutput(world, &length);
    if (status == 0)
      require(judge({output, length}) == Xml::namespaced || !filler.allUtf8(),
              "what is written is well-formed with its namespaces", {output, length});
    require(status != 0 || room == 0 || length < buffer.size(), "there is room for the closing NUL");
    world->flags &= ~uint32_t{NamespacesPreset};
    value.printed();
  }
  RtxHeapStats stats;
  rtxHeapStats(world, &stats);
  require(stats.blocks == 0 || input.failingAllocation != 0, "an encoder leaves nothing on the heap");
  world.requireUsable();
  return 0;
}
