// The tables that describe record types, enumerations and documents, and that every engine interprets.
//
// A record type is described once, by one constant TypeSchema. Nothing here names a particular type: what an
// engine has to know about one stands in its table.
#pragma once

#include "Namespaces.h"
#include "rtSax.h"

namespace ims {

struct TypeSchema;

// ---- Where errors are found -----------------------------------------------------------------------------------

// The five sources of a module, by the family of functions that they hold.
enum class File : uint8_t {
  base,
  encoder,
  decoder,
  handlers,
  validators
};
inline constexpr int fileCount = 5;

// The lines of a file: a thousand for each type, sixteen steps for itself and for each of its fields. Documents
// follow the types.
inline constexpr int linesPerType = 1000;
inline constexpr int stepsPerRow = 16;
inline constexpr int firstDocument = 50;

// Steps at which an error is found or passed on. Together with the file, the type and the row of its field a step
// gives the line that the error carries. They stay below 16.
namespace step {

enum Base : uint8_t {
  checkContext = 1,
  checkContract
};

enum EncodeType : uint8_t { // row 0: of the type
  wrapStart = 1,
  wrapContents,
  wrapEnd,
  startTag,
  startRoom,
  contentsRoom,
  endTag,
  endRoom,
  declarations,
  listCount,
  selector
};

enum EncodeField : uint8_t { // rows from 1: of a field
  validate = 1,
  write,
  facet,
  openRoom,
  qualifiedName,
  closeRoom
};

enum Handler : uint8_t { // row 0, both kinds of handlers
  rootName = 1,
  scope,
  lookup,
  refused,
  unexpectedAttributes,
  unknownAttribute,
  invalidAttribute,
  missingAttribute,
  append,
  content,
  childScope,
  ownCount,
  storage,
  declaration
};

enum HandlerField : uint8_t { // rows from 1, both kinds of handlers
  range = 1,
  enumeration,
  conversion
};

enum Document : uint8_t { // in the sources of encoders, decoders and validators
  otherContract = 0,
  reader,
  installTable,
  startDocument,
  wrapRootStart,
  wrapRootContents,
  wrapRootEnd,
  declareNamespace,
  rootStart,
  rootDeclarations,
  rootStartRoom,
  rootContentsRoom,
  rootEnd,
  rootEndRoom,
  convert,
  checkText
};

} // namespace step

// A line that differs from the computed one. Row 0 is the type or document itself.
struct PinnedLine {
  File file;
  uint8_t row;
  uint8_t step;
  uint16_t line;
};

// ---- Modules --------------------------------------------------------------------------------------------------

struct ModuleSchema {
  const char *name;
  const char *paths[fileCount];      // of its sources, by File
  const char *memberPrefix;          // of the members that carry a name of the schema
  const NamespaceFamily *namespaces; // null: none
  int8_t namespaceIndex;
  const char *uri;          // empty: none
  bool qualifiedAttributes; // attributes belong to the module's namespace
};

// ---- Enumerations ---------------------------------------------------------------------------------------------

struct EnumSchema {
  const char *name;
  const ModuleSchema *module;
  const RtxEnumRow *rows; // sorted by text
  uint16_t count;
  uint16_t number; // among the module's types
};

// ---- Fields ---------------------------------------------------------------------------------------------------

enum class Kind : uint8_t {
  text,
  uint32,
  uint16,
  boolean,
  decimal,
  hexBinary,
  enumeration,
  record,      // by value
  choice,      // by value: one alternative of several elements
  recordList,  // items are records
  textList,    // items are texts of elements
  choiceList,  // items are choices
  foreign,     // one foreign element as XML text
  foreignList, // foreign elements as XML text
  attributeList,
  namespaceList
};

// What part of an element a field stands for.
enum class Part : uint8_t {
  element,
  attribute,
  content,
  carried
};

// What holds for a field beyond its kind.
enum FieldFlag : uint16_t {
  collapsed = 1 << 0,       // white space is collapsed before the text is converted
  presentAlways = 1 << 1,   // an attribute's presence bit is set even if its text does not convert
  lenient = 1 << 2,         // a text that does not convert is no error
  enumErrorOnly = 1 << 3,   // a text that is no value is recorded as just that
  printedAlways = 1 << 4,   // printed whether present or not
  appendedAtEnd = 1 << 5,   // an item enters its list when its element has ended
  initialZero = 1 << 6,     // a scalar that initialising sets to zero
  initialTrue = 1 << 7,     // a boolean that initialising sets
  checkedDateTime = 1 << 8, // kept as text, but the validator wants a date and time
  required = 1 << 9,        // set by the builder: bit is one of the handler's seen bits
  unnamed = 1 << 10         // set by the builder: a list that prints under the record's own name
};

struct Field {
  const char *name; // of the member
  union {
    const TypeSchema *type;        // record, recordList, choice, choiceList
    const EnumSchema *enumeration; // enumeration
  };
  uint32_t bit; // of the presence word, or of the handler's seen bits if required; 0: none
  uint16_t offset;
  uint16_t flags;
  uint16_t minimum; // of a number; 0: none
  uint16_t maximum; // of a number; 0: none
  Kind kind;
  Part part;
  uint8_t id;         // first element id, or attribute id
  uint8_t nameLength; // set by the builder: of an attribute's name in the schema, in bytes
};

constexpr bool has(const Field &field, FieldFlag flag) { return (field.flags & flag) != 0; }
constexpr bool isForeign(const Field &field) { return field.kind == Kind::foreign || field.kind == Kind::foreignList; }

// ---- Record types ---------------------------------------------------------------------------------------------

// What an element may contain.
enum class Content : uint8_t {
  nothing,  // no child elements
  text,     // text and no child elements
  elements, // children by the element and state tables
  named,    // children of one name, compared without their namespace
  anything, // every child is foreign
  choice    // no element of its own: one alternative of its parent's children
};

enum TypeFlag : uint16_t {
  refusesAtOnce = 1 << 0,    // a child that the tables refuse is not looked up by name alone
  presenceOnly = 1 << 1,     // the validator looks at attributes only for the required ones
  countedByMember = 1 << 2,  // the decoder names an empty list by its member alone
  noEmptyList = 1 << 3,      // the record's list must have an item when encoded or decoded
  hasPresence = 1 << 4,      // set by the builder: the record begins with a presence word
  attributesOnly = 1 << 5,   // set by the builder: owns no list and no content; never released on its own
  hasAttributes = 1 << 6,    // set by the builder: start tags are written with attributes or declarations
  delegatesRecords = 1 << 7, // set by the builder: some child is a record
  delegatesForeign = 1 << 8, // set by the builder: some child is foreign
  hasDefaults = 1 << 9       // set by the builder: initialising gives values to scalars
};

// Bytes of a record that initialising sets to zero, those of the records in it among them.
struct ClearedPart {
  uint16_t offset;
  uint16_t size;
};

// The callbacks of a type's handlers.
struct HandlerCallbacks {
  RtSaxStartElement startElement;
  RtSaxEndElement endElement;
  RtSaxCharacters characters;
};

inline constexpr uint8_t noField = 0xFF;

struct TypeSchema {
  const char *name;
  const ModuleSchema *module;
  const Field *fields;
  const RtSaxElementInfo *elements;
  const uint8_t *fieldsByElement;    // index of the field that an element id fills
  const uint8_t *states;             // elementCount rows of stateCount cells
  const char *const *attributeNames; // by attribute id
  const PinnedLine *pinned;
  const ClearedPart *cleared;
  HandlerCallbacks decoding;
  HandlerCallbacks validating;
  uint32_t requiredAttributes; // bits by attribute id
  uint16_t size;               // of the record
  uint16_t number;             // among the module's types, from 1
  uint16_t flags;
  Content content;
  uint8_t fieldCount;
  uint8_t contentCount; // of the leading fields that stand for elements or text content
  uint8_t elementCount;
  uint8_t stateCount;
  uint8_t attributeCount;
  uint8_t pinnedCount;
  uint8_t clearedCount;
  uint8_t firstAttribute; // field of attribute id 0
  uint8_t value;          // fields that play a part of their own, or noField
  uint8_t namespaceList;
  uint8_t attributeList;
};

constexpr bool has(const TypeSchema &type, TypeFlag flag) { return (type.flags & flag) != 0; }

// The number of a field's row in site numbers.
constexpr uint8_t rowOf(const TypeSchema &type, const Field &field) {
  return static_cast<uint8_t>(&field - type.fields + 1);
}

// ---- Documents ------------------------------------------------------------------------------------------------

// Where a root declares its namespace.
enum class Declaration : uint8_t {
  none,
  prefix,         // bound to the module's prefix unless the host has declared it
  prefixInRecord, // the same, kept in the record's own list
  defaultAlways   // always the default namespace
};

// A value without a record type: the whole content of a document.
struct SimpleType {
  Kind kind; // text, hexBinary or enumeration
  const EnumSchema *enumeration;
  bool collapsed;
};

struct DocumentSchema {
  const char *root; // local name
  const ModuleSchema *module;
  const TypeSchema *type;   // null: a simple type
  const SimpleType *simple; // null: a record
  const char *prefix;       // for Declaration::prefix and prefixInRecord
  const PinnedLine *pinned;
  uint16_t number; // among the module's documents, from 1
  uint8_t pinnedCount;
  Declaration declaration;
};

// ---- Sites ----------------------------------------------------------------------------------------------------

// The line of a site: distinct in its file by arithmetic, unless it is pinned below all computed ones.
int siteLine(const TypeSchema &type, File file, uint8_t row, uint8_t step);
int siteLine(const EnumSchema &type, uint8_t step);
int siteLine(const DocumentSchema &document, File file, uint8_t step);

} // namespace ims
