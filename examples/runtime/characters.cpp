#include "characters.h"

#include <string.h>

namespace tiny {

namespace {

struct Range {
  uint32_t first;
  uint32_t last;
};
constexpr Range nameStarts[] = {{':', ':'},       {'A', 'Z'},       {'_', '_'},       {'a', 'z'},
                                {0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},
                                {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF},
                                {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF}};
constexpr Range nameRests[] = {{'-', '.'}, {'0', '9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

template <size_t count> bool isIn(const Range (&ranges)[count], uint32_t code) {
  for (const Range &range : ranges) {
    if (code >= range.first && code <= range.last) return true;
  }
  return false;
}

} // namespace

int hexDigit(char c) {
  if (isDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

size_t readCharacter(std::string_view text, uint32_t &code) {
  if (text.empty()) return 0;
  const unsigned char first = static_cast<unsigned char>(text[0]);
  code = first;
  if (first < 0x80) return 1;
  const size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || text.size() < length) return 0;
  code = first & (0x7Fu >> length);
  for (size_t i = 1; i < length; ++i) {
    const unsigned char next = static_cast<unsigned char>(text[i]);
    if ((next & 0xC0) != 0x80) return 0;
    code = code << 6 | (next & 0x3Fu);
  }
  constexpr uint32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  return code < least[length] || surrogate || code > 0x10FFFF ? 0 : length;
}

bool isUtf8(std::string_view text) {
  uint32_t code = 0;
  while (!text.empty()) {
    const size_t taken = readCharacter(text, code);
    if (taken == 0) return false;
    text.remove_prefix(taken);
  }
  return true;
}

bool isXmlCharacter(uint32_t code) {
  if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
  return code <= 0xD7FF || (code >= 0xE000 && code <= 0xFFFD) || (code >= 0x10000 && code <= 0x10FFFF);
}

size_t nameLength(std::string_view text) {
  const size_t whole = text.size();
  uint32_t code = 0;
  size_t taken = readCharacter(text, code);
  if (taken == 0 || !isIn(nameStarts, code)) return 0;
  while (taken != 0 && (isIn(nameStarts, code) || isIn(nameRests, code))) {
    text.remove_prefix(taken);
    taken = readCharacter(text, code);
  }
  return whole - text.size();
}

bool isNcName(std::string_view name) {
  return !name.empty() && nameLength(name) == name.size() && name.find(':') == name.npos;
}

bool isQualifiedName(std::string_view name) {
  const size_t colon = name.find(':');
  if (colon == name.npos) return isNcName(name);
  return isNcName({name.data(), colon}) && isNcName({name.data() + colon + 1, name.size() - colon - 1});
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isSpace(text.front()))
    text.remove_prefix(1);
  while (!text.empty() && isSpace(text.back()))
    text.remove_suffix(1);
  return text;
}

std::string_view prefixOf(std::string_view qualifiedName) {
  const size_t colon = qualifiedName.find(':');
  return {qualifiedName.data(), colon == qualifiedName.npos ? 0 : colon};
}

const char *localNameOf(const char *qualifiedName) {
  const char *colon = strchr(qualifiedName, ':');
  return colon ? colon + 1 : qualifiedName;
}

} // namespace tiny
