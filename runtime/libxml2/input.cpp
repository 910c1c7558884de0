#include "input.h"

#include "heap.h"

#include <libxml/encoding.h>

#include <errno.h>
#include <limits.h>
#include <string.h>

namespace rt {

namespace {

struct Signature {
  unsigned char bytes[4];
  size_t length;
  size_t skip;
  const char *encoding;
};

// In this order: the mark of UTF-16 is the beginning of one of UTF-32.
constexpr Signature signatures[] = {
    {{0xEF, 0xBB, 0xBF}, 3, 0, nullptr}, // the parser skips it
    {{0xFF, 0xFE, 0x00, 0x00}, 4, 4, "UTF-32LE"},
    {{0x00, 0x00, 0xFE, 0xFF}, 4, 4, "UTF-32BE"},
    {{0xFF, 0xFE}, 2, 2, "UTF-16LE"},
    {{0xFE, 0xFF}, 2, 2, "UTF-16BE"},
    {{'<', 0, 0, 0}, 4, 0, "UTF-32LE"},
    {{0, 0, 0, '<'}, 4, 0, "UTF-32BE"},
    {{'<', 0, '?', 0}, 4, 0, "UTF-16LE"},
    {{0, '<', 0, '?'}, 4, 0, "UTF-16BE"},
};

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool isNameOfEncoding(const char *name, size_t length) {
  if (length == 0 || !isLetter(name[0])) return false;
  for (size_t i = 1; i < length; i++) {
    const char c = name[i];
    if (!isLetter(c) && !(c >= '0' && c <= '9') && c != '.' && c != '_' && c != '-') return false;
  }
  return true;
}

bool equalsIgnoringCase(const char *text, size_t length, const char *lower) {
  size_t i = 0;
  for (; i < length && lower[i] != '\0'; i++) {
    const char c = text[i] >= 'A' && text[i] <= 'Z' ? static_cast<char>(text[i] + ('a' - 'A')) : text[i];
    if (c != lower[i]) return false;
  }
  return i == length && lower[i] == '\0';
}

// Walks over an XML declaration.
class Declaration {
public:
  Declaration(const char *begin, const char *behind) : at(begin), end(behind) {}

  bool blanks() {
    const char *begin = at;
    while (at < end && isBlank(*at))
      at++;
    return at != begin;
  }
  template <size_t size> bool word(const char (&literal)[size]) {
    if (static_cast<size_t>(end - at) < size - 1 || memcmp(at, literal, size - 1) != 0) return false;
    at += size - 1;
    return true;
  }
  // "= 'value'" with either quote
  bool value(const char *&begin, size_t &length) {
    blanks();
    if (!word("=")) return false;
    blanks();
    if (at == end || (*at != '"' && *at != '\'')) return false;
    begin = at + 1;
    const char *quote = static_cast<const char *>(memchr(begin, *at, static_cast<size_t>(end - begin)));
    if (quote == nullptr) return false;
    length = static_cast<size_t>(quote - begin);
    at = quote + 1;
    return true;
  }

private:
  const char *at;
  const char *end;
};

// The declarations that nearly all documents begin with, ours among them.
constexpr char usualDeclaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
constexpr char shortDeclaration[] = "<?xml version=\"1.0\"?>";

// Bytes of a declaration that tells the parser only what it assumes anyway, so that it need not read them. What
// follows must not look like the beginning of a document that is encoded in another way, or declared again.
template <size_t size> size_t idleDeclaration(const char *bytes, size_t length, const char (&declaration)[size]) {
  if (length <= size || memcmp(bytes, declaration, size - 1) != 0) return 0;
  const char next = bytes[size - 1];
  const char second = bytes[size];
  return next == '\n' || next == '\r' || (next == '<' && second != '?' && second != '\0') ? size - 1 : 0;
}

Encoding declaredEncoding(const char *bytes, size_t length) {
  if (const size_t idle = idleDeclaration(bytes, length, usualDeclaration)) return {nullptr, 0, idle, false};
  if (const size_t idle = idleDeclaration(bytes, length, shortDeclaration)) return {nullptr, 0, idle, false};
  Declaration declaration(bytes, bytes + length);
  const char *text = nullptr;
  size_t textLength = 0;
  if (!declaration.word("<?xml") || !declaration.blanks()) return {};
  if (!declaration.word("version") || !declaration.value(text, textLength)) return {};
  if (!declaration.blanks() || !declaration.word("encoding") || !declaration.value(text, textLength)) return {};
  if (!isNameOfEncoding(text, textLength)) return {};
  if (equalsIgnoringCase(text, textLength, "utf-8") || equalsIgnoringCase(text, textLength, "utf8")) return {};
  return {text, textLength, 0, true};
}

// The converter of an encoding to UTF-8. Closed when it goes.
class Converter {
public:
  explicit Converter(const Encoding &encoding) {
    char name[64];
    if (encoding.nameLength >= sizeof name) return;
    memcpy(name, encoding.name, encoding.nameLength);
    name[encoding.nameLength] = '\0';
    handler = xmlFindCharEncodingHandler(name);
  }
  ~Converter() {
    if (handler != nullptr) xmlCharEncCloseFunc(handler);
  }
  Converter(const Converter &) = delete;
  Converter &operator=(const Converter &) = delete;

  bool usable() const { return handler != nullptr && (handler->input != nullptr || handler->iconv_in != nullptr); }

  // Writes what the converter still holds at the end of the input.
  bool finish(char *&out, const char *outEnd) {
    if (handler->input != nullptr) return true;
    size_t outCount = static_cast<size_t>(outEnd - out);
    return iconv(handler->iconv_in, nullptr, nullptr, &out, &outCount) != static_cast<size_t>(-1);
  }

  // Converts as much as there is input and room. False: the input is malformed where it stopped.
  bool run(const char *&in, const char *inEnd, char *&out, const char *outEnd) {
    if (handler->input != nullptr) {
      int inCount = atMost(inEnd - in);
      int outCount = atMost(outEnd - out);
      const int result = handler->input(reinterpret_cast<unsigned char *>(out), &outCount,
                                        reinterpret_cast<const unsigned char *>(in), &inCount);
      in += inCount;
      out += outCount;
      return result >= 0;
    }
    char *inAt = const_cast<char *>(in);
    size_t inCount = static_cast<size_t>(inEnd - in);
    size_t outCount = static_cast<size_t>(outEnd - out);
    const size_t result = iconv(handler->iconv_in, &inAt, &inCount, &out, &outCount);
    in = inAt;
    return result != static_cast<size_t>(-1) || errno != EILSEQ;
  }

private:
  static int atMost(ptrdiff_t count) { return count > INT_MAX ? INT_MAX : static_cast<int>(count); }

  xmlCharEncodingHandlerPtr handler = nullptr;
};

// Room that every converter can make use of, whatever the next character is.
constexpr size_t leastRoom = 64;

} // namespace

Encoding encodingOf(const char *bytes, size_t length) {
  if (length < 2) return {};
  if (bytes[0] == '<' && bytes[1] != '\0') return declaredEncoding(bytes, length);
  for (const Signature &signature : signatures) {
    if (length >= signature.length && memcmp(bytes, signature.bytes, signature.length) == 0)
      return {signature.encoding, signature.encoding == nullptr ? 0 : strlen(signature.encoding), signature.skip,
              false};
  }
  return {};
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

Transcoding transcode(Heap &heap, const Encoding &encoding, const char *bytes, size_t length, size_t limit,
                      InputText &text) {
  text.length = 0;
  Converter converter(encoding);
  if (!converter.usable()) return Transcoding::unknownEncoding;
  const char *in = bytes + encoding.skip;
  const char *const inEnd = bytes + length;
  if (!text.reserve(heap, length + length / 8 + leastRoom)) return Transcoding::noMemory;
  while (in < inEnd) {
    if (!text.room(heap, leastRoom)) return Transcoding::noMemory;
    const char *inBefore = in;
    char *out = text.bytes + text.length;
    const bool sound = converter.run(in, inEnd, out, text.bytes + text.capacity - 1);
    const bool moved = in != inBefore || out != text.bytes + text.length;
    text.length = static_cast<size_t>(out - text.bytes);
    if (text.length > limit) return Transcoding::tooLong;
    if (!sound || !moved) return Transcoding::malformed; // not moved: the end of the input splits a character
  }
  if (!text.room(heap, leastRoom)) return Transcoding::noMemory;
  char *out = text.bytes + text.length;
  if (!converter.finish(out, text.bytes + text.capacity - 1)) return Transcoding::malformed;
  text.length = static_cast<size_t>(out - text.bytes);
  if (text.length > limit) return Transcoding::tooLong;
  *out = '\0';
  return Transcoding::done;
}

namespace {

const char *findText(const char *from, const char *end, const char *literal, size_t length) {
  if (from >= end) return nullptr;
  return static_cast<const char *>(memmem(from, static_cast<size_t>(end - from), literal, length));
}

// Behind a construct that begins at from and ends with literal, or end.
template <size_t size> const char *skipTo(const char *from, const char *end, const char (&literal)[size]) {
  const char *found = findText(from, end, literal, size - 1);
  return found == nullptr ? end : found + (size - 1);
}

template <size_t size> bool begins(const char *text, const char *end, const char (&literal)[size]) {
  return static_cast<size_t>(end - text) >= size - 1 && memcmp(text, literal, size - 1) == 0;
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

const char *searchTags(const char *text, const char *end, uint32_t limit) {
  const char *at = text;
  while ((at = findText(at, end, "<", 1)) != nullptr) {
    if (begins(at, end, "<!--")) {
      at = skipTo(at + 4, end, "-->");
    } else if (begins(at, end, "<![CDATA[")) {
      at = skipTo(at + 9, end, "]]>");
    } else if (begins(at, end, "<?")) {
      at = skipTo(at + 2, end, "?>");
    } else {
      const char *tagEnd = end;
      const char *surplus = findSurplusAttribute(at + 1, tagEnd, limit);
      if (surplus != nullptr) return surplus;
      at = tagEnd;
    }
  }
  return nullptr;
}

} // namespace

// A tag holds no other "<". So one that is longer than two strides leaves a whole stride without any.
const char *findCrowdedTag(const char *text, size_t length, uint32_t limit) {
  constexpr size_t stride = 1024;
  for (size_t at = 0; length - at >= stride; at += stride) {
    if (memchr(text + at, '<', stride) == nullptr) return searchTags(text, text + length, limit);
  }
  return nullptr;
}

} // namespace rt
