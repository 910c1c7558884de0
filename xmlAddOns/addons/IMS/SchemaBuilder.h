// Builds the tables of Schema.h from rows that a person can hold against the schema, and refuses at compile time
// what cannot be right.
//
// A row is one line: ELEMENT, ALTERNATIVE, ATTRIBUTE, CONTENT or CARRIED of a record type and its member, with what the
// member's C type cannot tell in named options behind it. The kind of a field is deduced from the member, its printed
// name is the member's, its element or attribute is found by order and compared by name.
#pragma once

#include "Schema.h"

#include <stddef.h>
#include <type_traits>

namespace ims {

// Refuses a table: never defined, so that a call of it is no constant expression. The compiler shows the reason.
void refuse(const char *reason);

// The schema of a record type, where it has one. Specialised by IMS_SCHEMA.
template <class Record> struct SchemaOf { static constexpr bool exists = false; };

#define IMS_SCHEMA(Record)                                                                                             \
  extern const ims::TypeSchema Record##Schema;                                                                         \
  template <> struct ims::SchemaOf<Record> {                                                                           \
    static constexpr bool exists = true;                                                                               \
    static constexpr const ims::TypeSchema *schema = &Record##Schema;                                                  \
  }

// Defines the schema of a record type from <Record>Rows and <Record>Options.
#define IMS_DEFINE(Record)                                                                                             \
  constexpr auto Record##Fields = ims::placeFields<Record>(Record##Rows, Record##Options);                             \
  constexpr ims::TypeSchema Record##Schema = ims::makeType<Record>(Record##Fields, Record##Options);

// Cells of state tables, and how often an element may stand, in the width of a table.
inline constexpr uint8_t no = RTSAX_NOT_ALLOWED;
inline constexpr uint8_t fin = RTSAX_FINAL;
inline constexpr uint32_t many = RTSAX_UNBOUNDED;

struct FieldOptions {
  uint32_t bit = 0;
  int flags = 0;
  uint16_t minimum = 0;
  uint16_t maximum = 0;
  const EnumSchema *enumeration = nullptr; // a 16-bit number is a code of it
  const TypeSchema *items = nullptr;       // a list holds records or choices of it
  bool foreign = false;                    // a text holds one foreign element
};

constexpr bool equal(const char *a, const char *b) {
  for (; *a && *a == *b; ++a, ++b) {
  }
  return *a == *b;
}

constexpr size_t lengthOf(const char *text) {
  size_t length = 0;
  while (text[length])
    ++length;
  return length;
}

template <class Member> constexpr Kind kindOf(const FieldOptions &options) {
  using M = std::remove_cv_t<Member>;
  if constexpr (std::is_same_v<M, RtxXmlString>) {
    return options.foreign ? Kind::foreign : Kind::text;
  } else if constexpr (std::is_same_v<M, uint32_t>) {
    return Kind::uint32;
  } else if constexpr (std::is_same_v<M, uint16_t>) {
    return options.enumeration ? Kind::enumeration : Kind::uint16;
  } else if constexpr (std::is_same_v<M, bool>) {
    return Kind::boolean;
  } else if constexpr (std::is_same_v<M, double>) {
    return Kind::decimal;
  } else if constexpr (std::is_same_v<M, RtxHexBinary>) {
    return Kind::hexBinary;
  } else if constexpr (std::is_same_v<M, RtxAnyList>) {
    return Kind::foreignList;
  } else if constexpr (std::is_same_v<M, RtxAttrList>) {
    return Kind::attributeList;
  } else if constexpr (std::is_same_v<M, RtxNsDeclList>) {
    return Kind::namespaceList;
  } else if constexpr (std::is_same_v<M, RtxList>) {
    if (!options.items) return Kind::textList;
    return options.items->content == Content::choice ? Kind::choiceList : Kind::recordList;
  } else {
    static_assert(SchemaOf<M>::exists, "the member's type has no schema");
    return SchemaOf<M>::schema->content == Content::choice ? Kind::choice : Kind::record;
  }
}

template <class Member>
constexpr Field makeField(const char *name, size_t offset, Part part, const FieldOptions &options) {
  Field field{};
  field.name = name;
  field.kind = kindOf<Member>(options);
  field.part = part;
  field.bit = options.bit;
  field.offset = static_cast<uint16_t>(offset);
  field.flags = static_cast<uint16_t>(options.flags);
  field.minimum = options.minimum;
  field.maximum = options.maximum;
  if (offset > UINT16_MAX) refuse("a record is too large");
  if (field.kind == Kind::enumeration) {
    field.enumeration = options.enumeration;
  } else if (field.kind == Kind::recordList || field.kind == Kind::choiceList) {
    field.type = options.items;
  } else if constexpr (SchemaOf<std::remove_cv_t<Member>>::exists) {
    field.type = SchemaOf<std::remove_cv_t<Member>>::schema;
  }
  if (options.enumeration && field.kind != Kind::enumeration) refuse("only a 16-bit number can be a code");
  if (options.items && field.kind != Kind::recordList && field.kind != Kind::choiceList)
    refuse("only a list has items");
  if (options.foreign && field.kind != Kind::foreign) refuse("only a text can hold one foreign element");
  if ((options.minimum || options.maximum) && field.kind != Kind::uint32 && field.kind != Kind::uint16)
    refuse("only a number has a range");
  if (equal(name, "items") || field.kind == Kind::foreignList) field.flags |= unnamed;
  return field;
}

#define IMS_FIELD(Record, member, part, ...)                                                                           \
  ims::makeField<decltype(Record::member)>(#member, offsetof(Record, member), part, ims::FieldOptions{__VA_ARGS__})

// A child element, or the foreign elements behind them.
#define ELEMENT(Record, member, ...) IMS_FIELD(Record, member, ims::Part::element, __VA_ARGS__)
// One alternative of a choice record.
#define ALTERNATIVE(Record, member, ...)                                                                               \
  ims::makeField<decltype(Record::u.member)>(#member, offsetof(Record, u.member), ims::Part::element,                  \
                                             ims::FieldOptions{__VA_ARGS__})
// An attribute of the schema.
#define ATTRIBUTE(Record, member, ...) IMS_FIELD(Record, member, ims::Part::attribute, __VA_ARGS__)
// The text of an element that has no children.
#define CONTENT(Record, member) IMS_FIELD(Record, member, ims::Part::content)
// Foreign attributes and namespace declarations kept with the element.
#define CARRIED(Record, member) IMS_FIELD(Record, member, ims::Part::carried)

inline constexpr size_t maximumElements = 16;
inline constexpr size_t maximumAttributes = 32; // the bits of those that a start tag had

// The rows of a type with their ids in place, the way back from an element id to its row, and what initialising clears.
template <size_t N> struct FieldTable {
  Field rows[N];
  uint8_t byElement[maximumElements];
  uint8_t clearedCount;
  ClearedPart cleared[N + 4];
};

// Tables that a type may be without.
struct ElementTable {
  const RtSaxElementInfo *rows = nullptr;
  size_t count = 0;
  constexpr ElementTable() = default;
  template <size_t N> constexpr ElementTable(const RtSaxElementInfo (&table)[N]) : rows(table), count(N) {}
};
struct StateTable { // a row of cells for each element
  const uint8_t *cells = nullptr;
  size_t count = 0;
  constexpr StateTable() = default;
  template <size_t N> constexpr StateTable(const uint8_t (&table)[N]) : cells(table), count(N) {}
};
struct NameTable {
  const char *const *names = nullptr;
  size_t count = 0;
  constexpr NameTable() = default;
  template <size_t N> constexpr NameTable(const char *const (&table)[N]) : names(table), count(N) {}
};
struct PinnedTable {
  const PinnedLine *lines = nullptr;
  size_t count = 0;
  constexpr PinnedTable() = default;
  template <size_t N> constexpr PinnedTable(const PinnedLine (&table)[N]) : lines(table), count(N) {}
};

struct TypeOptions {
  const char *name;
  const ModuleSchema *module;
  uint16_t number;
  HandlerCallbacks decoding{}; // a choice has none
  HandlerCallbacks validating{};
  Content content;
  int flags = 0;
  ElementTable elements{};
  StateTable states{};
  NameTable attributes{};
  uint32_t requiredAttributes = 0;
  PinnedTable pinned{};
};

// For a type that pins only the line at which initialising checks the context.
template <uint16_t Line> inline constexpr PinnedLine initialisesAt[] = {{File::base, 0, step::checkContext, Line}};

// The most fields whose sites fit into the lines of one type.
inline constexpr size_t maximumFields = linesPerType / stepsPerRow - 1;

// Whether a member carries an element's or attribute's name: the module's prefix, hyphens as underscores, and an
// underscore behind it where the name alone would be a keyword.
constexpr bool carriesName(const char *member, const char *prefix, const char *name) {
  for (; *prefix; ++prefix, ++member)
    if (*member != *prefix) return false;
  for (; *name; ++name, ++member)
    if (*member != (*name == '-' ? '_' : *name)) return false;
  return *member == '\0' || (member[0] == '_' && member[1] == '\0');
}

constexpr bool isList(Kind kind) {
  return kind == Kind::recordList || kind == Kind::textList || kind == Kind::choiceList || kind == Kind::foreignList;
}

constexpr uint8_t idsOf(const Field &field) {
  if (field.part == Part::attribute) return 1;
  if (field.part != Part::element) return 0;
  return field.kind == Kind::choice || field.kind == Kind::choiceList ? field.type->fieldCount : uint8_t{1};
}

// Whether a child is handed to a handler of its own, and to whose.
constexpr int delegationOf(const Field &field) {
  if (isForeign(field)) return delegatesForeign;
  if (field.kind == Kind::record || field.kind == Kind::recordList) return delegatesRecords;
  if (field.kind != Kind::choice && field.kind != Kind::choiceList) return 0;
  int flags = 0;
  for (uint8_t i = 0; i < field.type->fieldCount; ++i)
    flags |= delegationOf(field.type->fields[i]);
  return flags;
}

// The engines count on what is inside the element, its attributes and what is carried to stand in this order.
constexpr int placeOf(Part part) { return part == Part::attribute ? 1 : part == Part::carried ? 2 : 0; }

// Whether the engines convert a field of this kind where it stands.
constexpr bool fits(const Field &field) {
  switch (field.kind) {
  case Kind::text: return field.part != Part::carried;
  case Kind::boolean:
  case Kind::decimal: return field.part == Part::attribute;
  case Kind::uint32:
  case Kind::uint16:
  case Kind::enumeration: return field.part == Part::element || field.part == Part::attribute;
  case Kind::attributeList:
  case Kind::namespaceList: return field.part == Part::carried;
  case Kind::choiceList: // each alternative becomes an item at its start tag, which a text could not
    for (uint8_t i = 0; i < field.type->fieldCount; ++i)
      if (field.type->fields[i].kind == Kind::text) return false;
    return field.part == Part::element;
  default: return field.part == Part::element;
  }
}

// Compares one field with the element row of its id.
constexpr void checkElement(const Field &field, const RtSaxElementInfo &element, const char *prefix) {
  if (isForeign(field) != (element.name[0] == '\0')) refuse("the wildcard stands in another row than its field");
  if (!isForeign(field) && !carriesName(field.name, prefix, element.name))
    refuse("an element and its member have different names");
}

template <class Record> constexpr bool beginsWithPresence() {
  if constexpr (requires(Record record) { record.m; }) {
    static_assert(offsetof(Record, m) == 0, "the presence word comes first");
    return true;
  } else {
    return false;
  }
}

constexpr size_t clearedSize(const Field &field) {
  switch (field.kind) {
  case Kind::text:
  case Kind::foreign: return sizeof(RtxXmlString);
  case Kind::hexBinary: return sizeof(RtxHexBinary);
  case Kind::choice: return field.type->size;
  case Kind::recordList:
  case Kind::textList:
  case Kind::choiceList:
  case Kind::foreignList:
  case Kind::attributeList:
  case Kind::namespaceList: return sizeof(RtxList);
  default: return 0; // a scalar means something only while its presence bit is set
  }
}

template <size_t N> constexpr void addCleared(FieldTable<N> &table, size_t offset, size_t size) {
  if (size == 0) return;
  if (table.clearedCount > 0) {
    ClearedPart &last = table.cleared[table.clearedCount - 1];
    // Between the presence word and the first member there is only padding.
    bool touches = size_t{last.offset} + last.size == offset || (last.offset == 0 && offset == table.rows[0].offset);
    if (touches) {
      last.size = static_cast<uint16_t>(offset + size - last.offset);
      return;
    }
  }
  if (table.clearedCount == N + 4) refuse("too many parts to clear");
  table.cleared[table.clearedCount++] = {static_cast<uint16_t>(offset), static_cast<uint16_t>(size)};
}

template <class Record, size_t N> constexpr void findCleared(FieldTable<N> &table, bool isChoice) {
  if (isChoice) return addCleared(table, 0, sizeof(Record));
  if (beginsWithPresence<Record>()) addCleared(table, 0, sizeof(uint32_t));
  for (const Field &field : table.rows) {
    addCleared(table, field.offset, clearedSize(field));
    if (field.kind != Kind::record) continue;
    for (uint8_t i = 0; i < field.type->clearedCount; ++i)
      addCleared(table, size_t{field.offset} + field.type->cleared[i].offset, field.type->cleared[i].size);
  }
}

// Gives every field its id and its bit of the handler, and compares the rows with the tables.
template <class Record, size_t N>
constexpr FieldTable<N> placeFields(const Field (&rows)[N], const TypeOptions &options) {
  FieldTable<N> table{};
  const char *prefix = options.module->memberPrefix;
  uint8_t elements = 0;
  uint8_t attributes = 0;
  uint32_t nextBit = 1;
  uint32_t nextSeen = 1;
  if (options.elements.count > maximumElements) refuse("too many elements");
  if (options.attributes.count > maximumAttributes) refuse("too many attributes");
  if ((options.flags & noEmptyList) != 0 && (N != 1 || !isList(rows[0].kind)))
    refuse("only a record that is a list counts its items");
  for (size_t i = 0; i < N; ++i) {
    Field &field = table.rows[i];
    field = rows[i];
    bool alternative = options.content == Content::choice;
    if (!alternative && i > 0 && field.offset <= table.rows[i - 1].offset)
      refuse("the rows are not in the record's order");
    if (i > 0 && placeOf(field.part) < placeOf(table.rows[i - 1].part))
      refuse("elements or content come first, then attributes, then what is carried");
    if (!fits(field)) refuse("no element or attribute has a value of this kind");
    if (field.bit != 0) {
      if (field.bit != nextBit) refuse("presence bits are not handed out in order");
      if (isList(field.kind)) refuse("a list has no presence bit");
      nextBit <<= 1;
    }
    if (field.part == Part::element) {
      field.id = elements;
      uint8_t ids = idsOf(field);
      if (size_t{elements} + ids > options.elements.count) refuse("a field has no row in the element table");
      bool isChoice = field.kind == Kind::choice || field.kind == Kind::choiceList;
      for (uint8_t id = 0; id < ids; ++id)
        checkElement(isChoice ? field.type->fields[id] : field, options.elements.rows[elements + id], prefix);
      for (uint8_t id = 0; id < ids; ++id)
        table.byElement[elements + id] = static_cast<uint8_t>(i);
      elements = static_cast<uint8_t>(elements + ids);
      if (alternative && field.kind != Kind::record && field.kind != Kind::text && !isForeign(field))
        refuse("an alternative is a record, a text or foreign");
      bool seen = !alternative && field.bit == 0 && !isList(field.kind) && !isChoice && !isForeign(field);
      if (seen) {
        field.flags |= required;
        field.bit = nextSeen;
        nextSeen <<= 1;
      }
    } else if (field.part == Part::attribute) {
      field.id = attributes++;
      if (field.id >= options.attributes.count) refuse("a field has no row in the attribute table");
      const char *name = options.attributes.names[field.id];
      if (!carriesName(field.name, prefix, name)) refuse("an attribute and its member have different names");
      if (lengthOf(name) > UINT8_MAX) refuse("an attribute's name is too long");
      field.nameLength = static_cast<uint8_t>(lengthOf(name));
      bool isRequired = (options.requiredAttributes >> field.id & 1) != 0;
      if (isRequired == (field.bit != 0)) refuse("an attribute is either required or has a presence bit");
    }
  }
  if (options.content != Content::choice && elements != options.elements.count) refuse("an element id has no field");
  if (attributes != options.attributes.count) refuse("an attribute id has no field");
  findCleared<Record>(table, options.content == Content::choice);
  return table;
}

// The columns of a state table.
constexpr size_t statesOf(const TypeOptions &options) {
  return options.states.cells ? options.states.count / options.elements.count : 0;
}

constexpr void checkStates(const TypeOptions &options) {
  bool wanted = options.content == Content::elements;
  if (wanted != (options.states.cells != nullptr)) refuse("only children by tables have states");
  if (!wanted) return;
  size_t columns = statesOf(options);
  if (columns * options.elements.count != options.states.count) refuse("the state table is not rectangular");
  for (size_t i = 0; i < options.states.count; ++i) {
    uint8_t next = options.states.cells[i];
    if (next >= columns && next != RTSAX_NOT_ALLOWED && next != RTSAX_FINAL) refuse("a state leads past its table");
  }
}

constexpr void checkPinned(const PinnedTable &pinned) {
  for (size_t i = 0; i < pinned.count; ++i) {
    if (pinned.lines[i].line >= linesPerType || pinned.lines[i].step >= stepsPerRow)
      refuse("a pinned line is out of range");
    for (size_t j = 0; j < i; ++j)
      if (pinned.lines[i].file == pinned.lines[j].file && pinned.lines[i].line == pinned.lines[j].line)
        refuse("two sites have one line");
  }
}

template <class Record> constexpr bool beginsWithSelector() {
  if constexpr (requires(Record record) { record.t; }) {
    return offsetof(Record, t) == 0 && std::is_same_v<decltype(Record::t), uint16_t>;
  } else {
    return false;
  }
}

constexpr bool hasDefault(const Field &field) {
  return has(field, initialZero) || has(field, initialTrue) ||
         (field.kind == Kind::record && has(*field.type, hasDefaults));
}

// Builds a type from its placed fields.
template <class Record, size_t N>
constexpr TypeSchema makeType(const FieldTable<N> &table, const TypeOptions &options) {
  static_assert(std::is_standard_layout_v<Record> && std::is_trivially_copyable_v<Record>, "records are plain data");
  static_assert(N <= maximumFields, "too many fields for distinct lines");
  checkStates(options);
  checkPinned(options.pinned);
  if (options.number == 0 || options.number >= firstDocument) refuse("types are numbered from 1, below the documents");
  if (options.content == Content::choice && !beginsWithSelector<Record>()) refuse("a choice begins with its selector");
  TypeSchema type{};
  type.name = options.name;
  type.module = options.module;
  type.elements = options.elements.rows;
  type.states = options.states.cells;
  type.attributeNames = options.attributes.names;
  type.pinned = options.pinned.lines;
  type.cleared = table.cleared;
  type.clearedCount = table.clearedCount;
  type.decoding = options.decoding;
  type.validating = options.validating;
  type.requiredAttributes = options.requiredAttributes;
  type.size = static_cast<uint16_t>(sizeof(Record));
  type.number = options.number;
  type.flags = static_cast<uint16_t>(options.flags);
  type.content = options.content;
  type.fieldCount = static_cast<uint8_t>(N);
  type.elementCount = static_cast<uint8_t>(options.elements.count);
  type.stateCount = static_cast<uint8_t>(statesOf(options));
  type.attributeCount = static_cast<uint8_t>(options.attributes.count);
  type.pinnedCount = static_cast<uint8_t>(options.pinned.count);
  type.firstAttribute = noField;
  type.value = noField;
  type.namespaceList = noField;
  type.attributeList = noField;
  if (beginsWithPresence<Record>()) type.flags |= hasPresence;
  bool owned = options.content == Content::choice;
  type.fields = table.rows;
  type.fieldsByElement = table.byElement;
  for (size_t i = 0; i < N; ++i) {
    const Field &field = table.rows[i];
    auto index = static_cast<uint8_t>(i);
    if (field.bit != 0 && !has(field, required) && !has(type, hasPresence))
      refuse("a presence bit without a presence word");
    if (field.part != Part::attribute) owned = true;
    if (field.part == Part::element || field.part == Part::content) {
      if (type.contentCount != index) refuse("elements and text content come before attributes");
      ++type.contentCount;
    }
    if (field.part == Part::attribute && type.firstAttribute == noField) type.firstAttribute = index;
    if (field.part == Part::content) type.value = index;
    if (field.kind == Kind::namespaceList) type.namespaceList = index;
    if (field.kind == Kind::attributeList) type.attributeList = index;
    if (field.part == Part::element) type.flags = static_cast<uint16_t>(type.flags | delegationOf(field));
    if (hasDefault(field) && options.content != Content::choice) type.flags |= hasDefaults;
  }
  if (!owned) type.flags |= attributesOnly;
  if (type.attributeCount > 0 || type.namespaceList != noField || type.attributeList != noField)
    type.flags |= hasAttributes;
  if ((type.value != noField) != (options.content == Content::text)) refuse("text content and its member do not agree");
  return type;
}

// Compares a text with the length that stands beside it.
constexpr bool hasLength(const char *text, size_t length) {
  for (; length > 0; --length, ++text)
    if (*text == '\0') return false;
  return *text == '\0';
}

constexpr bool sortsBefore(const char *a, const char *b) {
  for (; *a && *a == *b; ++a, ++b) {
  }
  return static_cast<unsigned char>(*a) < static_cast<unsigned char>(*b);
}

// Builds an enumeration from its rows, which are sorted by text.
template <size_t N>
constexpr EnumSchema makeEnum(const char *name, const ModuleSchema *module, uint16_t number,
                              const RtxEnumRow (&rows)[N]) {
  if (number == 0) refuse("enumerations are numbered as types, from 1");
  for (size_t i = 0; i < N; ++i) {
    if (!hasLength(rows[i].text, rows[i].length)) refuse("a text and its length do not agree");
    if (i > 0 && !sortsBefore(rows[i - 1].text, rows[i].text)) refuse("the texts are not sorted");
    if (rows[i].rowOfCode >= N || rows[rows[i].rowOfCode].code != i) refuse("a code does not lead to its row");
  }
  return {name, module, rows, static_cast<uint16_t>(N), number};
}

struct DocumentOptions {
  const char *root;
  const ModuleSchema *module;
  uint16_t number;
  const TypeSchema *type = nullptr;
  const SimpleType *simple = nullptr;
  Declaration declaration = Declaration::none;
  const char *prefix = nullptr;
  PinnedTable pinned{};
};

constexpr DocumentSchema makeDocument(const DocumentOptions &options) {
  checkPinned(options.pinned);
  if (options.number == 0) refuse("documents are numbered from 1");
  if ((options.type == nullptr) == (options.simple == nullptr)) refuse("a document is a record or a simple value");
  bool prefixed = options.declaration == Declaration::prefix || options.declaration == Declaration::prefixInRecord;
  if (prefixed != (options.prefix != nullptr)) refuse("a prefix and its declaration belong together");
  if (options.declaration == Declaration::prefixInRecord && (!options.type || options.type->namespaceList == noField))
    refuse("the record has no list for its root's declaration");
  return {.root = options.root,
          .module = options.module,
          .type = options.type,
          .simple = options.simple,
          .prefix = options.prefix,
          .pinned = options.pinned.lines,
          .number = options.number,
          .pinnedCount = static_cast<uint8_t>(options.pinned.count),
          .declaration = options.declaration};
}

} // namespace ims
