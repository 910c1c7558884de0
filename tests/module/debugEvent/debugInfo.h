// What the tests of debug information share: its seventeen documents as a table, records by hand, reading and writing.
#pragma once

#include "DebugEvent/QxXmlDebugEvent.h"
#include "context.h"
#include "documentReading.h"
#include "documents.h"
#include "errors.h"
#include "lists.h"
#include "output.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace debugInfo {

using namespace std::string_literals;
using namespace std::string_view_literals;

using support::itemsOf;

inline constexpr const char *namespaceUri = "urn:ietf:params:xml:ns:debuginfo";

// ---- Documents ------------------------------------------------------------------------------------------------

// The value of any document. Tests start from storage with a pattern in it, so that a member that nobody wrote shows.
union Value {
  RtxXmlString text;
  RtxHexBinary bytes;
  uint16_t code;
  tns__start_trigger start_trigger;
  tns__stop_trigger stop_trigger;
  tns__control control;
  tns__session session;
  tns__debugconfig debugconfig;
  tns__debuginfo debuginfo;
};

void fillWithPattern(Value &value);

// What record types have beside their document.
struct RecordType {
  const char *name; // "tns__session"
  size_t size;
  int (*init)(RuntimeContext *ctx, Value &value);
  int (*release)(RuntimeContext *ctx, Value &value);
  int (*print)(const char *name, const Value &value);

  int (*encode)(RuntimeContext *ctx, const Value &value, const char *element, const RtxNamespace *ns);
  int (*start)(RuntimeContext *ctx, const Value &value, const char *element, const RtxNamespace *ns);
  int (*attributes)(RuntimeContext *ctx, const Value &value, const RtxNamespace *ns); // null: the type has none
  int (*contents)(RuntimeContext *ctx, const Value &value, const RtxNamespace *ns);
  int (*end)(RuntimeContext *ctx, const char *element, const RtxNamespace *ns);

  int (*initFilling)(RuntimeContext *ctx, SaxTypeHandler *handler, Value &value, int32_t level);
  RtSaxHandler filling; // its callbacks
  int (*initChecking)(RuntimeContext *ctx, VsaxTypeHandler *handler, int32_t level);
  RtSaxHandler checking;
};

enum class Kind {
  text,
  bytes,
  code,
  record
};

struct Document {
  const char *root;
  const char *function; // as function names spell the root
  Kind kind;
  const RecordType *type; // of a record
  int (*encode)(RuntimeContext *ctx, const Value &value);
  int (*start)(RuntimeContext *ctx, const Value &value);
  int (*contents)(RuntimeContext *ctx, const Value &value);
  int (*end)(RuntimeContext *ctx, const Value &value);
  int (*decode)(RuntimeContext *ctx, Value &value);
  int (*validate)(RuntimeContext *ctx);
};

const std::vector<Document> &allDocuments();
const Document &documentOf(std::string_view root);
std::vector<const Document *> recordDocuments(); // six, from the inside out
std::vector<const Document *> simpleDocuments(); // eleven

// ---- Values by hand -------------------------------------------------------------------------------------------

// Puts members into values, as copies on the context's heap.
class Builder {
public:
  explicit Builder(RuntimeContext *context) : ctx(context) {}

  RtxXmlString text(std::string_view text, bool cdata = false);
  RtxHexBinary bytes(std::string_view digits);
  tns__session *session(tns__debugconfig &config);       // initialised, at the end of the list
  tns__debugconfig *debugconfig(tns__debuginfo &record); // the same
  void foreign(tns__debuginfo &record, std::string_view element);

  // Every member present, each with a value of its own.
  void complete(tns__start_trigger &record);
  void complete(tns__stop_trigger &record);
  void complete(tns__control &record);
  void complete(tns__session &record, std::string_view id = "4");
  void complete(tns__debugconfig &record, std::string_view aor = "sip:alice@example.com");
  void complete(tns__debuginfo &record);
  void complete(const Document &document, Value &value);

  bool failed = false; // storage gave out; what was built can be released

private:
  void *allocate(size_t size);
  RuntimeContext *ctx;
};

// What complete gives, as dump shows it, and in XML with every name of the module written "q:name".
std::string completeDump(const Document &document);
std::string completeBody(const Document &document);

// Gives back what a value holds.
void release(RuntimeContext *ctx, const Document &document, Value &value);

// A value of a document in storage with a pattern, released at its end if it is owned.
class Held {
public:
  Held(RuntimeContext *context, const Document &ofDocument);
  ~Held();
  Held(const Held &) = delete;
  Held &operator=(const Held &) = delete;

  Held &init();     // a record
  Held &complete(); // initialised, and every member set
  operator Value &() { return value; }
  Value *operator->() { return &value; }

  Value value;
  bool owned = false;

private:
  RuntimeContext *ctx;
  const Document &document;
};

// Every member that is present, in XML's order and names: "id=4 start{from=f debug-id=0A} stop{} control{interface=i}".
// A null text is "-", a number that nobody wrote "?".
std::string dump(const tns__start_trigger &record);
std::string dump(const tns__stop_trigger &record);
std::string dump(const tns__control &record);
std::string dump(const tns__session &record);
std::string dump(const tns__debugconfig &record);
std::string dump(const tns__debuginfo &record);
std::string dump(const Document &document, const Value &value);

// ---- Reading and writing ----------------------------------------------------------------------------------------

// "-44(abc,tns__control,depth); -41(x)": the records of a context without the places that they name.
std::string brief(RuntimeContext *ctx);

// The value of a Reading is its record: as dump, "untouched" for storage that is as it was.
using support::Reading;

// Decodes, validates the context's input, and releases what it got.
Reading decodeInput(RuntimeContext *ctx, const Document &document);
Reading decode(RuntimeContext *ctx, const Document &document, const std::string &text);
Reading decode(const Document &document, const std::string &text);
Reading decode(std::string_view root, const std::string &text);
Reading validate(RuntimeContext *ctx, const Document &document, const std::string &text);
Reading validate(const Document &document, const std::string &text);
Reading validate(std::string_view root, const std::string &text);

// A text with the module's namespace as the default one around content: element("session", "id=\"4\"", "...").
std::string element(std::string_view root, std::string_view attributes, std::string_view content);
std::string element(std::string_view root, std::string_view content);

// What a document's encoder writes, without the XML declaration.
std::string encode(RuntimeContext *ctx, const Document &document, const Value &value);

// A body with every "q:" replaced: "tns:", or nothing.
std::string spelled(std::string_view body, std::string_view prefix);

} // namespace debugInfo
