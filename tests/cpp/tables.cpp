#include "tables.h"

#include "Catalogue.h"
#include "Member.h"
#include "rtx.h"

#include <cstdlib>
#include <string_view>
#include <utility>

namespace tables {

using ims::Field;
using ims::Kind;
using ims::listAt;
using ims::memberAt;
using ims::TypeSchema;

namespace {

bool isOptional(const Field &field) { return field.bit != 0 && !has(field, ims::required); }

void *within(void *record, const Field &field) { return static_cast<char *>(record) + field.offset; }
const void *within(const void *record, const Field &field) { return static_cast<const char *>(record) + field.offset; }

// ---- Filling --------------------------------------------------------------------------------------------------

class Filler {
public:
  Filler(RuntimeContext *context, unsigned selected) : ctx(context), variant(selected) {}

  void record(const TypeSchema &type, void *record, unsigned alternative) {
    if (type.content == ims::Content::choice) {
      const unsigned index = alternative % type.fieldCount;
      ims::selectorOf(record) = static_cast<uint16_t>(index + 1);
      return member(type.fields[index], record);
    }
    for (const Field &field : fieldsOf(type)) {
      if (isOptional(field)) ims::presenceOf(record) |= field.bit;
      member(field, record);
    }
  }

  bool complete = true;

private:
  void member(const Field &field, void *record) {
    switch (field.kind) {
    case Kind::text:
    case Kind::foreign: text(memberAt<RtxXmlString>(record, field)); break;
    case Kind::uint32: memberAt<uint32_t>(record, field) = ++counter; break;
    case Kind::uint16: memberAt<uint16_t>(record, field) = static_cast<uint16_t>(++counter); break;
    case Kind::boolean: memberAt<bool>(record, field) = true; break;
    case Kind::decimal: memberAt<double>(record, field) = ++counter + 0.5; break;
    case Kind::hexBinary: bytes(memberAt<RtxHexBinary>(record, field)); break;
    case Kind::enumeration: memberAt<uint16_t>(record, field) = 1; break;
    case Kind::record:
    case Kind::choice: this->record(*field.type, within(record, field), variant); break;
    default: list(field, listAt(record, field));
    }
  }

  void list(const Field &field, RtxList &items) {
    const unsigned count = field.kind == Kind::choiceList ? field.type->fieldCount : 2;
    for (unsigned i = 0; i < count; ++i) {
      switch (field.kind) {
      case Kind::recordList:
      case Kind::choiceList:
        if (void *item = append(items, field.type->size)) record(*field.type, item, i);
        break;
      case Kind::attributeList:
        if (void *item = append(items, sizeof(RtxNamePair))) *static_cast<RtxNamePair *>(item) = {unique(), unique()};
        break;
      case Kind::namespaceList:
        if (void *item = append(items, sizeof(RtxNsDecl)))
          *static_cast<RtxNsDecl *>(item) = {i == 0 ? nullptr : unique(), unique()};
        break;
      default:
        if (void *item = append(items, sizeof(RtxXmlString))) text(*static_cast<RtxXmlString *>(item));
      }
    }
  }

  void *append(RtxList &items, size_t size) {
    void *item = rtxAppendItem(ctx, &items, size);
    if (item == nullptr) complete = false;
    return item;
  }
  const char *unique() {
    const char *copy = rtxUTF8Strdup(ctx, ("t" + std::to_string(++counter)).c_str());
    if (copy == nullptr) complete = false;
    return copy;
  }
  void text(RtxXmlString &member) {
    member.value = unique();
    member.cdata = counter % 2 != 0;
  }
  void bytes(RtxHexBinary &member) {
    auto *copy = static_cast<uint8_t *>(rtxMemHeapAlloc(ctx, 3));
    if (copy == nullptr) {
      complete = false;
      return;
    }
    copy[0] = static_cast<uint8_t>(++counter);
    copy[1] = 0;
    copy[2] = 0xFF;
    member = {3, copy};
  }

  RuntimeContext *ctx;
  unsigned variant;
  unsigned counter = 0;
};

// ---- Showing --------------------------------------------------------------------------------------------------

std::string shown(const char *text) { return text != nullptr ? "'" + std::string(text) + "'" : "-"; }
std::string shown(const RtxXmlString &text) { return (text.cdata ? "cdata " : "") + shown(text.value); }

std::string showMember(const Field &field, const void *record) {
  switch (field.kind) {
  case Kind::text:
  case Kind::foreign: return shown(memberAt<RtxXmlString>(record, field));
  case Kind::uint32: return std::to_string(memberAt<uint32_t>(record, field));
  case Kind::uint16:
  case Kind::enumeration: return std::to_string(memberAt<uint16_t>(record, field));
  case Kind::boolean: return memberAt<bool>(record, field) ? "true" : "false";
  case Kind::decimal: return std::to_string(memberAt<double>(record, field));
  case Kind::hexBinary: {
    const auto &bytes = memberAt<RtxHexBinary>(record, field);
    std::string text = std::to_string(bytes.length) + " bytes";
    for (uint32_t i = 0; i < bytes.length; ++i)
      text += " " + std::to_string(bytes.bytes[i]);
    return text;
  }
  case Kind::record:
  case Kind::choice: return show(*field.type, within(record, field));
  default: break;
  }
  std::string text = "[";
  const RtxList &list = listAt(record, field);
  const RtxListNode *last = nullptr;
  uint32_t count = 0;
  for (const RtxListNode *node = list.head; node != nullptr; last = node, node = node->next, ++count) {
    if (node->prev != last) text += "broken link ";
    switch (field.kind) {
    case Kind::recordList:
    case Kind::choiceList: text += show(*field.type, node->data); break;
    case Kind::attributeList: {
      const auto *pair = static_cast<const RtxNamePair *>(node->data);
      text += shown(pair->name) + "=" + shown(pair->value) + " ";
      break;
    }
    case Kind::namespaceList: {
      const auto *declaration = static_cast<const RtxNsDecl *>(node->data);
      text += shown(declaration->prefix) + "=" + shown(declaration->uri) + " ";
      break;
    }
    default: text += shown(*static_cast<const RtxXmlString *>(node->data)) + " ";
    }
  }
  if (list.tail != last || list.count != count) text += "broken list";
  return text + "]";
}

// ---- Changing -------------------------------------------------------------------------------------------------

class Changer {
public:
  explicit Changer(const std::function<void(const std::string &place)> &told) : changed(told) {}

  void record(const std::string &name, const TypeSchema &type, void *record) {
    if (type.content == ims::Content::choice) {
      uint16_t &selector = ims::selectorOf(record);
      if (const Field *chosen = alternativeOf(type, record)) member(name + "." + chosen->name, *chosen, record);
      change(name + ".t of none", selector, uint16_t{0});
      return change(name + ".t of no alternative", selector, static_cast<uint16_t>(type.fieldCount + 1));
    }
    for (const Field &field : fieldsOf(type)) {
      const std::string place = name + "." + field.name;
      if (isPresent(field, record)) member(place, field, record);
      if (isOptional(field))
        change(place + "'s presence", ims::presenceOf(record), ims::presenceOf(record) ^ field.bit);
    }
  }

  std::set<Kind> kinds;

private:
  template <class Value> void change(const std::string &place, Value &value, Value other) {
    const Value kept = std::exchange(value, other);
    changed(place);
    value = kept;
  }

  void text(const std::string &place, const char *&value) {
    const std::string longer = (value != nullptr ? value : "") + std::string("x");
    change<const char *>(place + " grown", value, longer.c_str());
    if (value == nullptr || *value == '\0') return;
    const std::string shorter(value, longer.size() - 2);
    change<const char *>(place + " cut", value, shorter.c_str());
    std::string other(value);
    other.back() = '?';
    change<const char *>(place + " replaced", value, other.c_str());
    change<const char *>(place + " unset", value, nullptr);
  }

  void bytes(const std::string &place, RtxHexBinary &value) {
    const std::basic_string<uint8_t> kept(value.bytes, value.length);
    std::basic_string<uint8_t> other = kept + uint8_t{1};
    change(place + " grown", value, {value.length + 1, other.data()});
    if (kept.empty()) return;
    change(place + " cut", value, {value.length - 1, value.bytes});
    change(place + " unset", value, {0, nullptr});
    other[kept.size() - 1] ^= 1;
    change(place + " replaced", value, {value.length, other.data()});
  }

  void member(const std::string &place, const Field &field, void *record) {
    kinds.insert(field.kind);
    switch (field.kind) {
    case Kind::text:
    case Kind::foreign: return text(place, memberAt<RtxXmlString>(record, field).value);
    case Kind::uint32: return change(place, memberAt<uint32_t>(record, field), memberAt<uint32_t>(record, field) + 1);
    case Kind::uint16:
    case Kind::enumeration: {
      auto &value = memberAt<uint16_t>(record, field);
      return change(place, value, static_cast<uint16_t>(value + 1));
    }
    case Kind::boolean: return change(place, memberAt<bool>(record, field), !memberAt<bool>(record, field));
    case Kind::decimal: return change(place, memberAt<double>(record, field), memberAt<double>(record, field) + 0.25);
    case Kind::hexBinary: return bytes(place, memberAt<RtxHexBinary>(record, field));
    case Kind::record:
    case Kind::choice: return this->record(place, *field.type, within(record, field));
    default: return list(place, field, listAt(record, field));
    }
  }

  void list(const std::string &place, const Field &field, RtxList &items) {
    if (items.count == 0) return;
    change(place + " emptied", items, RtxList{});
    if (items.count > 1) {
      // Without the first, the last, and with the last two the other way round.
      change(place + "'s first", items, RtxList{items.count - 1, items.head->next, items.tail});
      RtxListNode &beforeLast = *items.tail->prev;
      beforeLast.next = nullptr;
      change(place + "'s last", items, RtxList{items.count - 1, items.head, &beforeLast});
      beforeLast.next = items.tail;
      std::swap(beforeLast.data, items.tail->data);
      changed(place + "'s order");
      std::swap(beforeLast.data, items.tail->data);
    }
    size_t index = 0;
    for (RtxListNode *node = items.head; node != nullptr; node = node->next) {
      const std::string name = place + "[" + std::to_string(index++) + "]";
      switch (field.kind) {
      case Kind::recordList:
      case Kind::choiceList: record(name, *field.type, node->data); break;
      case Kind::attributeList:
        text(name + ".name", static_cast<RtxNamePair *>(node->data)->name);
        text(name + ".value", static_cast<RtxNamePair *>(node->data)->value);
        break;
      case Kind::namespaceList:
        text(name + ".prefix", static_cast<RtxNsDecl *>(node->data)->prefix);
        text(name + ".uri", static_cast<RtxNsDecl *>(node->data)->uri);
        break;
      default: text(name, static_cast<RtxXmlString *>(node->data)->value);
      }
    }
  }

  const std::function<void(const std::string &place)> &changed;
};

} // namespace

const TypeSchema &typeOf(const char *root) {
  for (const ims::DocumentSchema *document : ims::allDocuments())
    if (document->type != nullptr && std::string_view(document->root) == root) return *document->type;
  std::abort();
}

bool fill(RuntimeContext *ctx, const TypeSchema &type, void *record, unsigned variant) {
  Filler filler(ctx, variant);
  filler.record(type, record, variant);
  return filler.complete;
}

std::string show(const TypeSchema &type, const void *record) {
  std::string text = "{";
  if (type.content == ims::Content::choice) {
    text += std::to_string(ims::selectorOf(record)) + " ";
    if (const Field *chosen = alternativeOf(type, record)) text += showMember(*chosen, record);
    return text + "}";
  }
  for (const Field &field : fieldsOf(type))
    if (isPresent(field, record)) text += std::string(field.name) + " " + showMember(field, record) + "; ";
  return text + "}";
}

std::set<Kind> changeEach(const TypeSchema &type, void *record,
                          const std::function<void(const std::string &place)> &changed) {
  Changer changer(changed);
  changer.record(type.name, type, record);
  return changer.kinds;
}

} // namespace tables
