#include "minimal.h"

#include "Engines.h"
#include "Member.h"
#include "rtxMemory.h"
#include "rtxText.h"
#include "schemaName.h"

#include <cstdint>
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

const char *placeholderOf(std::string_view type, std::string_view name) {
  for (const Placeholder &placeholder : placeholders)
    if ((placeholder.type.empty() || placeholder.type == type) && placeholder.name == name) return placeholder.text;
  return "text";
}

// Whether a valid record must have a value in this member. A list that is empty is one.
bool isRequired(const TypeSchema &type, const Field &field) {
  switch (field.part) {
  case Part::attribute: return (type.requiredAttributes >> field.id & 1u) != 0;
  case Part::element: return field.bit == 0 || ims::has(field, ims::required);
  case Part::content: return true;
  case Part::carried: break;
  }
  return false;
}

class Filler {
public:
  explicit Filler(RuntimeContext *ctx) : context(ctx) {}

  bool complete() const { return !exhausted; }

  void fillText(RtxXmlString &text, const char *value) {
    text.value = rtxUTF8Strdup(context, value);
    if (!text.value) exhausted = true;
  }

  void fillBytes(RtxHexBinary &binary) {
    auto *bytes = static_cast<std::uint8_t *>(rtxMemHeapAlloc(context, 1));
    if (bytes) {
      *bytes = 0x01;
      binary = {.length = 1, .bytes = bytes};
    } else {
      exhausted = true;
    }
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
  // Numbers stay zero and lists empty.
  void fillMember(const TypeSchema &type, const Field &field, void *record) {
    switch (field.kind) {
    case Kind::text:
      fillText(ims::memberAt<RtxXmlString>(record, field), placeholderOf(type.name, schemaName(type, field)));
      break;
    case Kind::hexBinary: fillBytes(ims::memberAt<RtxHexBinary>(record, field)); break;
    case Kind::decimal: ims::memberAt<double>(record, field) = 1; break;
    case Kind::enumeration: ims::memberAt<std::uint16_t>(record, field) = field.enumeration->rows[0].code; break;
    case Kind::record:
    case Kind::choice: fillRecord(*field.type, static_cast<char *>(record) + field.offset); break;
    default: break;
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
  default: filler.fillText(*static_cast<RtxXmlString *>(value), placeholderOf({}, kind.root)); break;
  }
  return filler.complete();
}

} // namespace cli
