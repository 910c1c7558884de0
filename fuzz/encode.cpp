// A record made at random from the tables and damaged: texts that are no UTF-8 or missing, codes, selectors and
// presence bits without a meaning, names that are none, numbers out of range. It is printed and encoded, into all room
// or little, with allocations that fail.
#include "Catalogue.h"
#include "Engines.h"
#include "Member.h"
#include "check.h"
#include "rtxMemory.h"
#include "world.h"

#include <cstring>
#include <string>
#include <vector>

using namespace fuzz;
using namespace ims;

namespace {

class Filler {
public:
  Filler(RuntimeContext *context, Bytes source) : ctx(context), bytes(source) {}

  // Attributes are written byte by byte, whatever they are beyond ASCII.
  bool attributesAreUtf8() const { return utf8; }
  // Foreign attributes are written by the names that they have, whether their prefixes are declared or not.
  bool namesArePlain() const { return plain; }

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
        fillField(field, record);
        if (optional) presenceOf(record) |= field.bit;
      }
      if (has(type, hasPresence) && bytes.below(16) == 15) presenceOf(record) |= bytes.number();
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
    case Kind::text:
      memberAt<RtxXmlString>(record, field) = field.part == Part::attribute ? attributeText() : text();
      break;
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
    case Kind::choiceList: fillRecords(*field.type, listAt(record, field)); break;
    case Kind::textList: fillList<RtxXmlString>(listAt(record, field), [&] { return text(); }); break;
    case Kind::foreignList: fillList<RtxXmlString>(listAt(record, field), [&] { return foreignElement(); }); break;
    case Kind::attributeList:
      fillList<RtxNamePair>(listAt(record, field), [&] { return RtxNamePair{name(), attributeText().value}; });
      break;
    case Kind::namespaceList:
      fillList<RtxNsDecl>(listAt(record, field), [&] { return RtxNsDecl{prefix(), attributeText().value}; });
      break;
    }
  }

  void fillRecords(const TypeSchema &type, RtxList &list) {
    for (uint32_t left = bytes.below(4); left != 0; --left) {
      void *item = newBlock(type.size);
      if (!item) return;
      initRecord(ctx, type, item);
      fill(type, item);
      if (append(list, item)) continue;
      discardRecord(ctx, type, item);
      rtxMemHeapFreePtr(ctx, item);
    }
  }

  template <class Item, class Make> void fillList(RtxList &list, Make make) {
    for (uint32_t left = bytes.below(4); left != 0; --left) {
      auto *item = static_cast<Item *>(newBlock(sizeof(Item)));
      if (!item) return;
      *item = make();
      if (append(list, item)) continue;
      release(*item);
      rtxMemHeapFreePtr(ctx, item);
    }
  }

  bool append(RtxList &list, void *item) {
    const uint32_t before = list.count;
    return appendItem(ctx, &list, item) != before;
  }

  void release(const RtxXmlString &text) { rtxMemHeapFreePtr(ctx, text.value); }
  void release(const RtxNamePair &pair) {
    rtxMemHeapFreePtr(ctx, pair.name);
    rtxMemHeapFreePtr(ctx, pair.value);
  }
  void release(const RtxNsDecl &declaration) {
    rtxMemHeapFreePtr(ctx, declaration.prefix);
    rtxMemHeapFreePtr(ctx, declaration.uri);
  }

  void *newBlock(size_t size) {
    void *block = rtxMemHeapAlloc(ctx, size);
    if (block) std::memset(block, 0, size);
    return block;
  }

  const char *copy(std::string_view value) {
    auto *block = static_cast<char *>(newBlock(value.size() + 1));
    if (block) std::memcpy(block, value.data(), value.size());
    return block;
  }

  // Any bytes but NUL, or null; a few are longer than what buffers begin with.
  RtxXmlString text() {
    const uint8_t shape = bytes.byte();
    if (shape == 0) return {false, nullptr};
    const std::string_view piece = bytes.take(shape & 0x1F);
    std::string value(piece);
    if ((shape & 0x7F) == 0x7F)
      for (int i = 0; i < 40; ++i)
        value += piece;
    return {(shape & 0x80) != 0, copy(value)};
  }

  RtxXmlString attributeText() {
    const RtxXmlString made = text();
    const std::string_view value = made.value == nullptr ? std::string_view() : made.value;
    const bool isXml = value.find("\xEF\xBF\xBE") == value.npos && value.find("\xEF\xBF\xBF") == value.npos;
    utf8 = utf8 && isXml && rtxValidateUTF8(ctx, made.value) == 0;
    return made;
  }

  const char *name() {
    static constexpr std::string_view names[] = {"one", "two", "p:one", "xml:lang", "xmlns:p", "xmlns", "a b", ""};
    const uint32_t which = bytes.below(10);
    if (which == 9) return nullptr;
    const std::string_view made = which == 8 ? bytes.take(bytes.below(8)) : names[which];
    plain = plain && made.find(':') == made.npos;
    return copy(made);
  }

  const char *prefix() {
    static constexpr std::string_view prefixes[] = {"p", "q", "tns", "cp", "", "xml", "xmlns", "a b"};
    const uint32_t which = bytes.below(10);
    if (which == 9) return nullptr;
    return copy(which == 8 ? bytes.take(bytes.below(8)) : prefixes[which]);
  }

  RtxXmlString foreignElement() {
    static constexpr std::string_view elements[] = {"<x:a xmlns:x='urn:x'>t<x:b/></x:a>", "<a xmlns='urn:a' b='c'/>",
                                                    "<a xmlns=''/>", ""};
    const uint32_t which = bytes.below(5);
    return {false, which == 4 ? nullptr : copy(elements[which])};
  }

  RtxHexBinary hexBytes() {
    const std::string_view value = bytes.take(bytes.below(20));
    const auto *block = reinterpret_cast<const uint8_t *>(copy(value));
    return {block ? static_cast<uint32_t>(value.size()) : 0, block};
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
  bool utf8 = true;
  bool plain = true;
};

// With a letter for each byte beyond ASCII.
std::string inAscii(std::string_view text) {
  std::string ascii(text);
  for (char &byte : ascii)
    if (static_cast<unsigned char>(byte) >= 0x80) byte = 'x';
  return ascii;
}

void requireGoodXml(std::string_view text, const Filler &filler) {
  const auto told = [&] { return text; };
  const Xml verdict = judge(filler.attributesAreUtf8() ? std::string(text) : inAscii(text));
  require(verdict != Xml::broken, "what is written is well-formed", told);
  require(verdict == Xml::namespaced || !filler.namesArePlain(), "what is written declares its prefixes", told);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const Input input(data, size);
  World world(input);
  if (!world) return 0;
  const DocumentSchema &document = *input.document;
  std::vector<char> buffer(input.room);
  {
    Value value(world, document);
    Filler filler(world, Bytes(input.body));
    if (document.type) {
      ims::initRecord(world, *document.type, value.data());
      filler.fill(*document.type, value.data());
    } else {
      filler.fillSimple(document.simple->kind, value.data());
    }
    value.printed();
    if (input.namespacesPreset) world->flags |= NamespacesPreset;
    int status = input.room == 0 ? rtxSetOutputDynamic(world) : rtxSetOutput(world, buffer.data(), buffer.size());
    if (status == 0) {
      status = ims::encodeDocument(world, document, value.data());
      require(status == 0 || rtxErrCount(world) > 0, "a failure is recorded");
      size_t length = 0;
      const char *output = rtxGetOutput(world, &length);
      require(length <= (input.room == 0 ? length : buffer.size()), "a document stays in its room");
      if (status == 0) {
        require(std::strlen(output) == length, "a document ends with a NUL");
        requireGoodXml({output, length}, filler);
        const bool declared = input.namespacesPreset || !filler.attributesAreUtf8() || !filler.namesArePlain();
        require(declared || hasRootOf(document, output), "a root is of its document's namespace",
                [&] { return output; });
      }
    }
    world->flags &= ~uint32_t{NamespacesPreset};
  }
  world.requireNothingLeft();
  world.requireUsable();
  return 0;
}
