#include "minimal.h"

#include "Engines.h"
#include "Member.h"
#include "rtxMemory.h"
#include "rtxText.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace cli {

namespace {

using ims::Field;
using ims::Kind;
using ims::Part;
using ims::TypeSchema;

// What stands for a text that is required. Rows of a type of its own come before those of any type.
struct Placeholder {
  std::string_view type; // empty: any
  std::string_view name; // of the element or attribute; empty: the content of the type's element
  const char *text;
};

constexpr char address[] = "sip:user@example.com";
constexpr char moment[] = "2000-01-01T00:00:00Z";

constexpr Placeholder placeholders[] = {
    {"tns__isComposing", "state", "idle"},
    {"tns__state", "", "confirmed"},
    {"", "entity", address},
    {"", "aor", address},
    {"", "from", address},
    {"", "to", address},
    {"", "id", "1"},
    {"", "method", "INVITE"},
    {"", "time", moment},
    {"", "time-period", "PT1H"},
    {"", "icsi", "urn:urn-7:3gpp-service.ims.icsi.mmtel"},
    {"", "iari", "urn:urn-7:3gpp-application.ims.iari.example"},
    {"", "interface", "Gm"},
    {"", "type", "emergency"},
    {"", "action", "emergency-registration"},
};

const char *placeholderOf(std::string_view type, std::string_view name, bool dateTime) {
  if (dateTime) return moment;
  for (const Placeholder &placeholder : placeholders)
    if ((placeholder.type.empty() || placeholder.type == type) && placeholder.name == name) return placeholder.text;
  return "text";
}

std::string_view schemaName(const TypeSchema &type, const Field &field) {
  switch (field.part) {
  case Part::element: return type.elements[field.id].name;
  case Part::attribute: return type.attributeNames[field.id];
  case Part::content:
  case Part::carried: break;
  }
  return {};
}

bool isList(Kind kind) {
  switch (kind) {
  case Kind::recordList:
  case Kind::textList:
  case Kind::choiceList:
  case Kind::foreignList:
  case Kind::attributeList:
  case Kind::namespaceList: return true;
  default: return false;
  }
}

// Whether a valid record has something in this member.
bool isRequired(const TypeSchema &type, const Field &field) {
  switch (field.part) {
  case Part::attribute: return (type.requiredAttributes >> field.id & 1u) != 0;
  case Part::element:
    if (isList(field.kind)) return ims::has(type, ims::noEmptyList);
    return field.bit == 0 || ims::has(field, ims::required);
  case Part::content: return true;
  case Part::carried: break;
  }
  return false;
}

class Filler {
public:
  explicit Filler(RuntimeContext *ctx) : context(ctx) {}

  bool complete() const { return !exhausted; }

  void fillText(RtxXmlString &text, const char *value) { text.value = checked(rtxUTF8Strdup(context, value)); }

  void fillBytes(RtxHexBinary &binary) {
    auto *bytes = static_cast<std::uint8_t *>(checked(rtxMemHeapAlloc(context, 1)));
    if (!bytes) return;
    *bytes = 0x01;
    binary.bytes = bytes;
    binary.length = 1;
  }

  void fillRecord(const TypeSchema &type, void *record) {
    ims::clearRecord(type, record);
    if (type.content == ims::Content::choice) {
      ims::selectorOf(record) = 1;
      fillMember(type, type.fields[0], record);
      return;
    }
    for (const Field &field : ims::fieldsOf(type))
      if (isRequired(type, field)) fillMember(type, field, record);
  }

private:
  template <class Pointer> Pointer checked(Pointer pointer) {
    if (!pointer) exhausted = true;
    return pointer;
  }

  const char *textOf(const TypeSchema &type, const Field &field) const {
    return placeholderOf(type.name, schemaName(type, field), ims::has(field, ims::checkedDateTime));
  }

  // Appends an item, all zero, for its owner to fill. Null if there is no storage.
  template <class Item> Item *appendTo(const Field &field, void *record, std::size_t size) {
    void *item = checked(rtxMemHeapAlloc(context, size));
    if (!item) return nullptr;
    std::memset(item, 0, size);
    RtxList &list = ims::listAt(record, field);
    checked(rtxDListAppend(context, &list, item));
    return static_cast<Item *>(item);
  }

  void fillMember(const TypeSchema &type, const Field &field, void *record) {
    switch (field.kind) {
    case Kind::text: fillText(ims::memberAt<RtxXmlString>(record, field), textOf(type, field)); return;
    case Kind::uint32: ims::memberAt<std::uint32_t>(record, field) = field.minimum; return;
    case Kind::uint16: ims::memberAt<std::uint16_t>(record, field) = field.minimum; return;
    case Kind::boolean: ims::memberAt<bool>(record, field) = false; return;
    case Kind::decimal: ims::memberAt<double>(record, field) = 1; return;
    case Kind::hexBinary: fillBytes(ims::memberAt<RtxHexBinary>(record, field)); return;
    case Kind::enumeration: ims::memberAt<std::uint16_t>(record, field) = field.enumeration->rows[0].code; return;
    case Kind::record:
    case Kind::choice: fillRecord(*field.type, static_cast<char *>(record) + field.offset); return;
    case Kind::recordList:
    case Kind::choiceList:
      if (void *item = appendTo<void>(field, record, field.type->size)) fillRecord(*field.type, item);
      return;
    case Kind::textList:
      if (auto *item = appendTo<RtxXmlString>(field, record, sizeof(RtxXmlString)))
        fillText(*item, textOf(type, field));
      return;
    case Kind::foreign:
    case Kind::foreignList:
    case Kind::attributeList:
    case Kind::namespaceList: return; // nothing requires what is foreign
    }
  }

  RuntimeContext *context;
  bool exhausted = false;
};

} // namespace

bool fillMinimal(RuntimeContext *ctx, const ims::DocumentSchema &kind, void *value) {
  Filler filler(ctx);
  if (kind.type) {
    filler.fillRecord(*kind.type, value);
    return filler.complete();
  }
  switch (kind.simple->kind) {
  case Kind::enumeration: *static_cast<std::uint16_t *>(value) = kind.simple->enumeration->rows[0].code; break;
  case Kind::hexBinary: filler.fillBytes(*static_cast<RtxHexBinary *>(value)); break;
  default: filler.fillText(*static_cast<RtxXmlString *>(value), placeholderOf({}, kind.root, false)); break;
  }
  return filler.complete();
}

} // namespace cli
