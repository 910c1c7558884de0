#include "xmlName.h"

#include "text.h"

#include <stdint.h>
#include <string.h>

namespace rt {

namespace {

// Beyond ASCII. The gaps are few: signs that only continue a name, arithmetic, private use.
struct Range {
  uint32_t first;
  uint32_t last;
};
constexpr Range starts[] = {{0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},
                            {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF},
                            {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF}};
constexpr Range continuations[] = {{0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

template <size_t count> bool isIn(const Range (&ranges)[count], uint32_t character) {
  for (const Range &range : ranges) {
    if (character <= range.last) return character >= range.first;
  }
  return false;
}

// Of a well-formed sequence of two to four bytes.
uint32_t codePoint(const char *text, size_t length) {
  uint32_t character = static_cast<unsigned char>(text[0]) & (0x7FU >> length);
  for (size_t i = 1; i < length; i++)
    character = character << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
  return character;
}

bool isAsciiStart(unsigned char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_';
}

bool isAsciiContinuation(unsigned char byte) { return (byte >= '0' && byte <= '9') || byte == '-' || byte == '.'; }

} // namespace

size_t nameStart(const char *text, size_t length) {
  const unsigned char byte = static_cast<unsigned char>(*text);
  if (byte < 0x80) return isAsciiStart(byte) ? 1 : 0;
  const size_t taken = utf8Sequence(text, length);
  return taken != 0 && isIn(starts, codePoint(text, taken)) ? taken : 0;
}

size_t nameCharacter(const char *text, size_t length) {
  const unsigned char byte = static_cast<unsigned char>(*text);
  if (byte < 0x80) return isAsciiStart(byte) || isAsciiContinuation(byte) ? 1 : 0;
  const size_t taken = utf8Sequence(text, length);
  if (taken == 0) return 0;
  const uint32_t character = codePoint(text, taken);
  return isIn(starts, character) || isIn(continuations, character) ? taken : 0;
}

bool isNcName(const char *name, size_t length) {
  if (length == 0) return false;
  size_t taken = nameStart(name, length);
  for (size_t i = taken; taken != 0 && i < length; i += taken)
    taken = nameCharacter(name + i, length - i);
  return taken != 0;
}

bool isQualifiedName(const char *name, size_t length) {
  const char *colon = length == 0 ? nullptr : static_cast<const char *>(memchr(name, ':', length));
  if (colon == nullptr) return isNcName(name, length);
  const size_t prefixLength = static_cast<size_t>(colon - name);
  return isNcName(name, prefixLength) && isNcName(colon + 1, length - prefixLength - 1);
}

} // namespace rt
