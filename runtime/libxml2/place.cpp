#include "place.h"

#include "internals.h"
#include "reader.h"
#include "usable.h"

#include <string.h>

namespace rt {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

bool isInReference(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '#';
}

// First byte of a piece of text that the parser has built outside the input and whose end it had reached at behind: a
// reference, a CDATA section's content, or text that is not all ASCII. Line ends count as one byte in the piece.
const char *startOfPiece(const char *base, const char *behind, size_t length) {
  const char *at = behind;
  if (at - base >= 3 && at[-1] == ';') {
    const char *reference = at - 2;
    while (reference > base && isInReference(*reference))
      reference--;
    if (*reference == '&') return reference;
  }
  if (at - base >= 3 && memcmp(at - 3, "]]>", 3) == 0) at -= 3;
  for (; length > 0 && at > base; length--) {
    at--;
    if (*at == '\n' && at > base && at[-1] == '\r') at--;
  }
  return at;
}

const char *skipBlanks(const char *at, const char *end) {
  while (at < end && isBlank(*at))
    at++;
  return at;
}

// Behind the value of the attribute whose name is at at.
const char *skipAttribute(const char *at, const char *end) {
  while (at < end && *at != '"' && *at != '\'')
    at++;
  const void *quote = at == end ? nullptr : memchr(at + 1, *at, static_cast<size_t>(end - at - 1));
  return quote == nullptr ? end : static_cast<const char *>(quote) + 1;
}

const char *placeInStartTag(RtSaxReader &reader) {
  const char *value = reader.context.buffer.data;
  if (value != nullptr && reader.attributes != nullptr) {
    for (uint32_t i = 0; reader.attributes[2 * i] != nullptr; i++) {
      if (reader.attributes[2 * i + 1] == value) return startOfAttribute(reader, i);
    }
  }
  return startOfTag(reader, reader.current->tagEnd);
}

// A text is at fault in an end tag only while it is being converted.
const char *placeInContent(const RtSaxReader &reader) {
  const OpenElement &element = *reader.current;
  const bool converting = reader.event == Event::text || reader.context.buffer.data != nullptr;
  if (converting && element.text != nullptr) return startOfText(reader, element);
  return startOfTag(reader, element.tagEnd);
}

const char *placeOf(RtSaxReader &reader) {
  switch (reader.event) {
  case Event::startTag: return placeInStartTag(reader);
  case Event::text:
  case Event::endTag: return placeInContent(reader);
  case Event::fault: return reader.faultAt;
  case Event::none: break;
  }
  return nullptr;
}

void writePath(const RtSaxReader &reader, char *path, size_t pathSize) {
  size_t used = 0;
  for (const OpenElement *element = reader.elements + 1; element <= reader.current && used + 1 < pathSize; element++) {
    path[used++] = '/';
    const size_t taken = strnlen(element->name, pathSize - 1 - used);
    memcpy(path + used, element->name, taken);
    used += taken;
  }
  path[used] = '\0';
}

// Counts on to the line of at, or back to it: errors of an element come after those of its children.
const LineCount &countLines(RtSaxReader &reader, const char *at) {
  LineCount &lines = reader.lines;
  if (lines.document != reader.base) lines = {reader.base, reader.base, reader.base, 1};
  while (at < lines.start) {
    lines.counted = lines.start - 1;
    const void *end = memrchr(reader.base, '\n', static_cast<size_t>(lines.counted - reader.base));
    lines.start = end == nullptr ? reader.base : static_cast<const char *>(end) + 1;
    lines.line--;
  }
  while (lines.counted < at) {
    const void *end = memchr(lines.counted, '\n', static_cast<size_t>(at - lines.counted));
    lines.counted = end == nullptr ? at : static_cast<const char *>(end) + 1;
    if (end == nullptr) break;
    lines.start = lines.counted;
    lines.line++;
  }
  return lines;
}

} // namespace

const char *startOfText(const RtSaxReader &reader, const OpenElement &element) {
  return element.pieceLength == 0 ? element.text : startOfPiece(reader.base, element.text, element.pieceLength);
}

// Values hold no "<", so the next one to the left is the tag's own.
const char *startOfTag(const RtSaxReader &reader, const char *tagEnd) {
  const void *found = memrchr(reader.base, '<', static_cast<size_t>(tagEnd - reader.base));
  return found == nullptr ? reader.base : static_cast<const char *>(found);
}

const char *startOfAttribute(RtSaxReader &reader, uint32_t index) {
  const char *const tagEnd = reader.current->tagEnd;
  FoundAttribute &found = reader.found;
  if (found.tagEnd != tagEnd || index < found.index) {
    found = {tagEnd, startOfTag(reader, tagEnd), 0};
    while (found.name < tagEnd && !isBlank(*found.name))
      found.name++;
    found.name = skipBlanks(found.name, tagEnd);
  }
  for (; found.index < index; found.index++)
    found.name = skipBlanks(skipAttribute(found.name, tagEnd), tagEnd);
  return found.name;
}

Place currentPlace(const RuntimeContext *ctx, char *path, size_t pathSize) {
  if (pathSize != 0) *path = '\0';
  if (!usable(ctx)) return {};
  RtSaxReader *reader = ctx->internals->reader;
  const char *at = reader == nullptr || !reader->parsing ? nullptr : placeOf(*reader);
  if (at == nullptr) return {};
  if (pathSize != 0) writePath(*reader, path, pathSize);

  const LineCount &lines = countLines(*reader, at);
  Place place;
  place.line = lines.line;
  place.column = static_cast<uint32_t>(at - lines.start) + 1;
  place.offset = static_cast<size_t>(at - reader->base);
  place.transcoded = reader->transcoded;
  return place;
}

} // namespace rt
