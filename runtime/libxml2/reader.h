// The reader: one parser of libxml2 for each context, kept and reset between documents.
#pragma once

#include "input.h"
#include "names.h"
#include "namespace.h"
#include "place.h"
#include "rtSax.h"

#include <libxml/parser.h>

struct RtxInternals;

namespace rt {

// Records of the runtime itself name this source and one of these lines.
inline constexpr char readerPath[] = "runtime/reader";
enum ReaderLine : int {
  lineNotWellFormed = 10,
  lineNamespaces = 20,
  lineEncoding = 30,
  lineLimit = 40,
  lineStorage = 50,
  lineUnexpectedElement = 60,
  lineMissingAttribute = 70,
  lineUnknownAttribute = 80,
  lineAnyStorage = 90,
  lineSimpleRoot = 100,
  lineSimpleElement = 110,
  lineSimpleStorage = 120
};

inline constexpr uint32_t deepest = 256; // where the parser itself stops

// An element whose end tag is still to come. Pointers into the input are kept as the parser had them; what they mean
// for people is worked out when an error asks.
struct OpenElement {
  const char *name; // as written
  const char *localName;
  const char *tagEnd; // the ">" or "/>" of its start tag
  const char *text;   // null: no text yet. First byte of its text if pieceLength is 0, else behind the first piece,
  size_t pieceLength; // which is this long and lies outside the input
  size_t textLength;  // of all its text so far
  NamespaceStack::Mark outside; // bindings without its own
};

// How far the lines of a document have been counted. Errors come nearly in its order, so that none counts them all.
struct LineCount {
  const char *document = nullptr;
  const char *start = nullptr;   // of the line
  const char *counted = nullptr; // no line ends between start and here
  uint32_t line = 1;
};

// The attribute of a start tag that was looked for last. Errors come in the order of attributes.
struct FoundAttribute {
  const char *tagEnd = nullptr;
  const char *name = nullptr;
  uint32_t index = 0;
};

// What the parser is at.
enum class Event : uint8_t {
  none,
  startTag,
  text,
  endTag,
  fault // found by the reader, at faultAt
};

// Prefixes that a fragment declares itself, and those that it uses from outside.
struct FragmentNames {
  NamespaceStack inside;
  NamespaceStack fromOutside;
  size_t borrowable = 0; // bytes of declarations that fragments of this document may still take from outside
};

} // namespace rt

struct RtSaxReader {
  explicit RtSaxReader(RuntimeContext *owner);

  RuntimeContext &context;
  RtxInternals &internals;
  rt::NamespaceStack &namespaces; // the context's

  // The parser and the one input that it ever reads.
  xmlParserCtxtPtr parser = nullptr;
  xmlParserInputPtr source = nullptr;
  rt::NameCache names;
  rt::InputText text; // of a document that cannot be read where it is
  rt::FragmentNames fragment;

  // Of the document.
  void *handler = nullptr;
  RtSaxStartElement startElement = nullptr;
  RtSaxEndElement endElement = nullptr;
  RtSaxCharacters characters = nullptr;
  RtxTextBuffer input = {}; // the context's text buffer, to be put back
  rt::NamespaceStack::Outer outer = {};
  uint32_t errorLimit = 0;
  uint32_t errorCount = 0;

  // Of the parse.
  bool parsing = false;
  rt::Event event = rt::Event::none;
  bool transcoded = false;
  bool skipAsked = false;      // by the callback that is running
  bool endIsDelivered = false; // of the element being skipped
  int status = 0;              // of the parse, once it has failed
  rt::OpenElement *current = elements;
  rt::OpenElement *deepestAllowed = elements;
  rt::OpenElement *skipped = nullptr; // element being skipped; the document itself: nothing is delivered any more
  const char *base = nullptr;
  size_t length = 0;
  const char *faultAt = nullptr;
  rt::LineCount lines;
  rt::FoundAttribute found;
  const char *const *attributes = nullptr; // of the start tag
  uint32_t attributeLimit = 0;
  size_t textLimit = 0;
  size_t comparisons = 0;       // left of comparisonLimit
  int namesKept = 0;            // in the parser's dictionary when the document began
  uint32_t missesUncounted = 0; // of names, until the dictionary's names have to be counted

  rt::OpenElement elements[rt::deepest + 1]; // the first stands for the document and has no name
};

namespace rt {

// The reader of a context, made when it is first wanted; null: no storage.
RtSaxReader *keptReader(RuntimeContext *ctx);

void destroyReader(RtxInternals &internals);

// In the input: the first byte of an element's text, the "<" of the start tag whose end is at tagEnd, and the name of
// the index-th attribute of the innermost open element.
const char *startOfText(const RtSaxReader &reader, const OpenElement &element);
const char *startOfTag(const RtSaxReader &reader, const char *tagEnd);
const char *startOfAttribute(RtSaxReader &reader, uint32_t index);

// Traces a callback of the runtime's own handlers.
class CallbackTrace {
public:
  CallbackTrace(void *tracedHandler, const char *name, const char *elementName)
      : handler(tracedHandler), function(name), element(elementName) {
    rtSaxDiagStartFunc(handler, function, element);
  }
  ~CallbackTrace() { rtSaxDiagEndFunc(handler, function, element); }
  CallbackTrace(const CallbackTrace &) = delete;
  CallbackTrace &operator=(const CallbackTrace &) = delete;

private:
  void *const handler;
  const char *const function;
  const char *const element;
};

} // namespace rt
