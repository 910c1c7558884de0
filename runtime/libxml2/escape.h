// Which bytes may stand in XML as they are, and what stands for the others.
#pragma once

#include <stddef.h>

namespace rt {

enum class Escape {
  Text,
  Attribute,
  AttributeBytes // an attribute's value that need not be UTF-8: bytes from 0x80 on are taken as they are
};

// Copies the bytes at the beginning of a text that may stand as they are and need no look at the character that they
// belong to: no markup, and ASCII unless bytes are taken as they are. Returns their number. Both ranges have length
// bytes.
size_t copyPlain(char *to, const char *text, size_t length, Escape escape);

// What is written for the first character of a text. taken 0: XML cannot carry it, or it is not UTF-8.
struct Escaped {
  const char *bytes;
  size_t length;
  size_t taken; // bytes of the text that it stands for
};
Escaped escapeFirst(const char *text, size_t length, Escape escape);

// Bytes of the well-formed UTF-8 sequence of two to four bytes at the beginning of a text, if XML may carry its
// character; else 0.
size_t multiByteCharacter(const char *text, size_t length);

// Copies a text. False if it is not UTF-8 or XML cannot carry all its characters; then some of it may be copied.
bool copyXmlText(char *to, const char *text, size_t length);

// True if copyXmlText can copy the text.
bool isXmlText(const char *text, size_t length);

// Writes the digits of a double into digits: the fewest that give the same number back, no exponent, and no point if
// it is whole. Returns their number, or 0 if it is not a number or infinite.
inline constexpr size_t decimalDigits = 352;
size_t writeDecimal(double value, char (&digits)[decimalDigits]);

} // namespace rt
