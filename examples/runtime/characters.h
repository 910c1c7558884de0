// What XML says of characters, in UTF-8.
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <string_view>

namespace tiny {

inline bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
inline bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Value of a hexadecimal digit, or -1.
int hexDigit(char c);

// Bytes of the first character, which goes to code; 0 if the text does not begin with well-formed UTF-8.
size_t readCharacter(std::string_view text, uint32_t &code);

bool isUtf8(std::string_view text);

// Whether XML can carry a character at all.
bool isXmlCharacter(uint32_t code);

// Bytes of the name that the text begins with, colons included; 0 if it begins with none.
size_t nameLength(std::string_view text);

// A name without colon, and one with a colon at most, in the middle.
bool isNcName(std::string_view name);
bool isQualifiedName(std::string_view name);

// Without white space at both ends.
std::string_view trimmed(std::string_view text);

// The part of a qualified name before its colon, empty without one, and the part behind.
std::string_view prefixOf(std::string_view qualifiedName);
const char *localNameOf(const char *qualifiedName);

// Whether an attribute's name is taken by rtXmlDecNSAttr.
inline bool isDeclaration(std::string_view name) { return name.starts_with("xmlns"); }

} // namespace tiny
