// The reader: the document, the elements that are open in it, and the callbacks that hear of them.
#pragma once

#include "namespaces.h"
#include "rtSax.h"
#include "storage.h"

#include <string_view>

namespace tiny {

constexpr size_t nowhere = SIZE_MAX;

struct Place;

// An element that is open. Places are offsets in the document.
struct Element {
  size_t at;
  size_t name; // in the reader's names
  size_t nameLength;
  size_t text; // the first character data directly inside, or nowhere
  size_t textLength;
  Namespaces::Mark outside; // what was bound before its declarations
};

// An attribute of the start tag that is read. Name and value are texts in the reader's values.
struct Attribute {
  size_t at;
  size_t name;
  size_t value;
};

// How far the lines of a document are counted. An error may be told at the end of an element whose children had errors,
// so the next place may be before this one.
struct LineCount {
  uint32_t line;
  size_t start; // of the line
  size_t at;    // in it

  void moveTo(std::string_view document, size_t offset);
};

// What the reader is doing, for the places of errors.
enum class Event {
  none,
  start,
  text,
  end
};

} // namespace tiny

struct RtSaxReader {
  // ---- Life
  RuntimeContext *context;
  void *handler;
  RtSaxStartElement startElement;
  RtSaxEndElement endElement;
  RtSaxCharacters characters;
  bool active; // between creation and release
  bool parsing;
  RtxTextBuffer buffer; // of the context, to be put back
  uint32_t errorLimit;
  uint32_t errorCount;
  uint32_t depthLimit;
  uint32_t attributeLimit;
  size_t tagLimit;
  size_t textLimit;
  size_t borrowable; // bytes of declarations that foreign elements may still take over from around them
  int status;

  // ---- Events
  tiny::Event event;
  tiny::Array<tiny::Element> open;
  tiny::Array<char> names; // of the open elements, each with a NUL
  tiny::Array<tiny::Attribute> attributes;
  tiny::Array<char> values;
  tiny::Array<const char *> callbackAttributes;
  bool skipAsked;
  size_t skipDepth;    // of the element that is skipped; 0: none
  bool skipSparesEnd;  // its end tag is delivered
  bool deliverStart(); // of the innermost element
  bool deliverText(std::string_view text, size_t place);
  void deliverEnd();
  void prepareCallback(tiny::Event next);

  // ---- Document
  std::string_view document;
  size_t at;
  tiny::LineCount lines;
  bool fail(const char *reason, size_t place);
  bool exceed(const char *limit, size_t value, size_t place);
  bool lackStorage(size_t place);

  bool atEnd() const { return at == document.size(); }
  bool looksAt(std::string_view literal) const;
  bool take(std::string_view literal);
  bool takeSpace();
  std::string_view takeName();
  bool takeCharacter();
  bool skipBehind(std::string_view literal);

  bool readDocument();
  bool readDeclaration();
  bool readPseudoAttribute(std::string_view name, std::string_view &value);
  bool readAround(); // what may stand before and behind the root
  bool readContent();
  bool readMarkup();
  bool readComment();
  bool readInstruction();
  bool readSection();
  bool readCharacters(bool inSection);
  size_t plainLength(bool inSection) const;
  bool readReference(char (&bytes)[4], size_t &length);
  bool readStartTag();
  bool readAttribute();
  bool readValue();
  bool openElement(std::string_view name, size_t place);
  bool readEndTag();

  std::string_view nameOf(const tiny::Element &element) const {
    return {names.items + element.name, element.nameLength};
  }
  void destroy(tiny::System &system);
};

namespace tiny {

// The place of what the reader is doing, or of an offset; line 0 without a reader at work.
Place currentPlace(RuntimeContext *ctx);
Place placeAt(RuntimeContext *ctx, size_t offset);

// Tells the host's trace of the entry and exit of a callback.
class CallbackTrace {
public:
  CallbackTrace(void *callee, const char *function, const char *element);
  ~CallbackTrace();
  CallbackTrace(const CallbackTrace &) = delete;
  CallbackTrace &operator=(const CallbackTrace &) = delete;

private:
  void *handler;
  const char *functionName;
  const char *elementName;
};

} // namespace tiny
