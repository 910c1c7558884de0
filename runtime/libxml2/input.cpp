#include "input.h"

#include "heap.h"

#include <libxml/encoding.h>

#include <limits.h>
#include <string.h>

namespace rt {

namespace {

constexpr const char *utf8[] = {"utf-8", "utf8", nullptr};
constexpr const char *utf16Le[] = {"utf-16", "utf16", "utf-16le", "ucs-2", "iso-10646-ucs-2", nullptr};
constexpr const char *utf16Be[] = {"utf-16", "utf16", "utf-16be", "ucs-2", "iso-10646-ucs-2", nullptr};
constexpr const char *latin1[] = {"iso-8859-1", "iso8859-1", "iso_8859-1", "iso-latin-1", "latin1", "l1", nullptr};
constexpr const char *ascii[] = {"us-ascii", "ascii", "iso646-us", nullptr};
constexpr const char *utf32Le[] = {"utf-32", "utf32", "utf-32le", "ucs-4", "iso-10646-ucs-4", nullptr};
constexpr const char *utf32Be[] = {"utf-32", "utf32", "utf-32be", "ucs-4", "iso-10646-ucs-4", nullptr};

// How a document begins that does not begin with an ASCII character.
struct Signature {
  unsigned char bytes[4];
  size_t length;
  size_t skip;
  const char *encoding;
  const char *const *labels;
};

// In this order: the mark of UTF-16 is the beginning of one of UTF-32.
constexpr Signature signatures[] = {
    {{0xEF, 0xBB, 0xBF}, 3, 0, "", utf8}, // the parser skips it
    {{0xFF, 0xFE, 0x00, 0x00}, 4, 4, "UTF-32LE", utf32Le},
    {{0x00, 0x00, 0xFE, 0xFF}, 4, 4, "UTF-32BE", utf32Be},
    {{0xFF, 0xFE}, 2, 2, "UTF-16LE", utf16Le},
    {{0xFE, 0xFF}, 2, 2, "UTF-16BE", utf16Be},
    {{'<', 0, 0, 0}, 4, 0, "UTF-32LE", utf32Le},
    {{0, 0, 0, '<'}, 4, 0, "UTF-32BE", utf32Be},
    {{'<', 0, '?', 0}, 4, 0, "UTF-16LE", utf16Le},
    {{0, '<', 0, '?'}, 4, 0, "UTF-16BE", utf16Be},
};

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool isNameOfEncoding(Text name) {
  if (name.empty() || !isLetter(name.bytes[0])) return false;
  for (size_t i = 1; i < name.length; i++) {
    const char c = name.bytes[i];
    if (!isLetter(c) && !(c >= '0' && c <= '9') && c != '.' && c != '_' && c != '-') return false;
  }
  return true;
}

bool isLabel(Text name, const char *lower) {
  size_t i = 0;
  for (; i < name.length && lower[i] != '\0'; i++) {
    const char c = name.bytes[i];
    if ((c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c) != lower[i]) return false;
  }
  return i == name.length && lower[i] == '\0';
}

bool isOneOf(Text name, const char *const *labels) {
  for (; *labels != nullptr; labels++) {
    if (isLabel(name, *labels)) return true;
  }
  return false;
}

// Walks over an XML declaration.
class Declaration {
public:
  explicit Declaration(Text document) : at(document.bytes), end(document.bytes + document.length) {}

  bool blanks() {
    const char *begin = at;
    while (at < end && isBlank(*at))
      at++;
    return at != begin;
  }
  template <size_t size> bool word(const char (&literal)[size]) {
    if (!Text{at, static_cast<size_t>(end - at)}.begins(literal)) return false;
    at += size - 1;
    return true;
  }
  // "= 'value'" with either quote
  bool value(Text &found) {
    blanks();
    if (!word("=")) return false;
    blanks();
    if (at == end || (*at != '"' && *at != '\'')) return false;
    const char *begin = at + 1;
    const char *quote = static_cast<const char *>(memchr(begin, *at, static_cast<size_t>(end - begin)));
    if (quote == nullptr) return false;
    found = {begin, static_cast<size_t>(quote - begin)};
    at = quote + 1;
    return true;
  }

private:
  const char *at;
  const char *end;
};

// The name of the encoding in a document's XML declaration, or empty.
Text declaredLabel(Text document) {
  Declaration declaration(document);
  Text label;
  const bool found = declaration.word("<?xml") && declaration.blanks() && declaration.word("version") &&
                     declaration.value(label) && declaration.blanks() && declaration.word("encoding") &&
                     declaration.value(label) && isNameOfEncoding(label);
  return found ? label : Text();
}

// The declarations that nearly all documents begin with, ours among them.
constexpr char usualDeclaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
constexpr char shortDeclaration[] = "<?xml version=\"1.0\"?>";

// Bytes of a declaration that tells the parser only what it assumes anyway, so that it need not read them. What
// follows must not look like the beginning of a document that is encoded in another way, or declared again.
template <size_t size> size_t idleDeclaration(Text document, const char (&declaration)[size]) {
  if (document.length <= size || !document.begins(declaration)) return 0;
  const char next = document.bytes[size - 1];
  const char second = document.bytes[size];
  return next == '\n' || next == '\r' || (next == '<' && second != '?' && second != '\0') ? size - 1 : 0;
}

Encoding declaredEncoding(Text document) {
  Encoding encoding;
  encoding.skip = idleDeclaration(document, usualDeclaration);
  if (encoding.skip == 0) encoding.skip = idleDeclaration(document, shortDeclaration);
  if (encoding.skip != 0) return encoding;
  const Text label = declaredLabel(document);
  if (label.empty() || isOneOf(label, utf8)) return encoding;
  encoding.name = label;
  encoding.declared = true;
  return encoding;
}

// The encodings that libxml2 converts itself, by all the names that bodies give them. Any other name would make the C
// library look for a converter among its files, which a body from a stranger must not choose.
struct NamedConverter {
  const char *name;
  const char *const *labels;
};
constexpr NamedConverter converters[] = {
    {"UTF-16LE", utf16Le}, {"UTF-16BE", utf16Be}, {"ISO-8859-1", latin1}, {"ASCII", ascii}};

xmlCharEncodingHandlerPtr converterOf(const Encoding &encoding) {
  for (const NamedConverter &converter : converters) {
    if (isOneOf(encoding.name, converter.labels)) return xmlFindCharEncodingHandler(converter.name);
  }
  return nullptr;
}

int atMost(ptrdiff_t count) { return count > INT_MAX ? INT_MAX : static_cast<int>(count); }

// Converts as much as there is input and room. False: the input is malformed where it stopped.
bool convert(const xmlCharEncodingHandler &converter, const char *&in, const char *inEnd, char *&out,
             const char *outEnd) {
  int inCount = atMost(inEnd - in);
  int outCount = atMost(outEnd - out);
  const int result = converter.input(reinterpret_cast<unsigned char *>(out), &outCount,
                                     reinterpret_cast<const unsigned char *>(in), &inCount);
  in += inCount;
  out += outCount;
  return result >= 0;
}

// Room that every converter can make use of, whatever the next character is.
constexpr size_t leastRoom = 64;

} // namespace

Encoding encodingOf(Text document) {
  if (document.length < 2) return {};
  if (document.bytes[0] == '<' && document.bytes[1] != '\0') return declaredEncoding(document);
  for (const Signature &signature : signatures) {
    if (document.length < signature.length || memcmp(document.bytes, signature.bytes, signature.length) != 0) continue;
    return {{signature.encoding, strlen(signature.encoding)}, signature.skip, false, signature.labels};
  }
  return {};
}

Text contradictingLabel(const Encoding &encoding, Text text) {
  if (encoding.labels == nullptr) return {};
  if (text.begins("\xEF\xBB\xBF")) text = {text.bytes + 3, text.length - 3};
  const Text label = declaredLabel(text);
  return isOneOf(label, encoding.labels) ? Text() : label;
}

bool InputText::room(Heap &heap, size_t count) {
  return capacity - length > count || reserve(heap, capacity + capacity / 2 + count);
}

bool InputText::reserve(Heap &heap, size_t bytesNeeded) {
  if (bytesNeeded < capacity) return true;
  char *larger = static_cast<char *>(heap.systemAllocate(bytesNeeded + 1));
  if (larger == nullptr) return false;
  if (length != 0) memcpy(larger, bytes, length);
  heap.systemRelease(bytes);
  bytes = larger;
  capacity = bytesNeeded + 1;
  return true;
}

void InputText::destroy(Heap &heap) {
  heap.systemRelease(bytes);
  *this = {};
}

Transcoding transcode(Heap &heap, const Encoding &encoding, Text document, size_t limit, InputText &text) {
  text.length = 0;
  const xmlCharEncodingHandler *converter = converterOf(encoding);
  if (converter == nullptr || converter->input == nullptr) return Transcoding::unknownEncoding;
  const char *in = document.bytes + encoding.skip;
  const char *const inEnd = document.bytes + document.length;
  if (!text.reserve(heap, document.length + document.length / 8 + leastRoom)) return Transcoding::noMemory;
  while (in < inEnd) {
    if (!text.room(heap, leastRoom)) return Transcoding::noMemory;
    const char *inBefore = in;
    char *out = text.bytes + text.length;
    const bool sound = convert(*converter, in, inEnd, out, text.bytes + text.capacity - 1);
    const bool moved = in != inBefore || out != text.bytes + text.length;
    text.length = static_cast<size_t>(out - text.bytes);
    if (text.length > limit) return Transcoding::tooLong;
    if (!sound || !moved) return Transcoding::malformed; // not moved: the end of the input splits a character
  }
  text.bytes[text.length] = '\0';
  return Transcoding::done;
}

namespace {

// Behind a construct that begins at from and ends with literal, or end.
template <size_t size> const char *skipTo(const char *from, const char *end, const char (&literal)[size]) {
  const void *found = memmem(from, static_cast<size_t>(end - from), literal, size - 1);
  return found == nullptr ? end : static_cast<const char *>(found) + (size - 1);
}

// The attribute behind the first limit ones of the start tag at tag; null if there are no more, and end is behind it.
const char *findSurplusAttribute(const char *tag, const char *&end, uint32_t limit) {
  const char *name = tag;
  bool behindBlank = false;
  uint32_t count = 0;
  const char *at = tag;
  for (; at < end && *at != '>'; at++) {
    if (*at == '"' || *at == '\'') {
      if (count++ == limit) return name;
      at = static_cast<const char *>(memchr(at + 1, *at, static_cast<size_t>(end - at - 1)));
      if (at == nullptr) return nullptr;
    } else if (behindBlank && !isBlank(*at) && *at != '=') {
      name = at;
    }
    behindBlank = isBlank(*at);
  }
  end = at;
  return nullptr;
}

LongTag searchTags(const char *text, const char *end, uint32_t attributeLimit, size_t tagLimit) {
  const char *at = text;
  while ((at = static_cast<const char *>(memchr(at, '<', static_cast<size_t>(end - at)))) != nullptr) {
    const Text markup = {at, static_cast<size_t>(end - at)};
    if (markup.begins("<!--")) {
      at = skipTo(at + 4, end, "-->");
    } else if (markup.begins("<![CDATA[")) {
      at = skipTo(at + 9, end, "]]>");
    } else if (markup.begins("<?")) {
      at = skipTo(at + 2, end, "?>");
    } else {
      const char *tagEnd = end;
      const char *surplus = findSurplusAttribute(at + 1, tagEnd, attributeLimit);
      if (surplus != nullptr) return {.surplus = surplus};
      if (static_cast<size_t>(tagEnd - at) >= tagLimit) return {.tooLong = at}; // the ">" counts
      at = tagEnd;
    }
  }
  return {};
}

} // namespace

// A tag holds no other "<". So one that is longer than two strides leaves a whole stride without any.
LongTag findLongTag(Text text, uint32_t attributeLimit, size_t tagLimit) {
  constexpr size_t stride = leastTagLimit / 2;
  for (size_t at = 0; text.length - at >= stride; at += stride) {
    if (memchr(text.bytes + at, '<', stride) == nullptr)
      return searchTags(text.bytes, text.bytes + text.length, attributeLimit, tagLimit);
  }
  return {};
}

} // namespace rt
