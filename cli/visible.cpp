#include "visible.h"

#include <cstdint>
#include <cstdio>

namespace cli {

namespace {

struct CodePoint {
  std::uint32_t value;
  std::size_t length; // 0: not UTF-8
};

CodePoint firstCodePoint(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return {lead, 0};
  std::uint32_t value = lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0) != 0x80) return {lead, 0};
    value = value << 6 | (byte & 0x3Fu);
  }
  const bool overlong = (length == 3 && value < 0x800) || (length == 4 && value < 0x10000);
  const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
  return {value, overlong || surrogate || value > 0x10FFFF ? 0 : length};
}

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};

template <std::size_t count> bool isIn(const Range (&ranges)[count], std::uint32_t value) {
  for (const Range &range : ranges)
    if (value >= range.first && value <= range.last) return true;
  return false;
}

// Controls, line separators, and marks that change the direction of writing.
constexpr Range unsafe[] = {{0x00, 0x1F},     {0x7F, 0x9F},     {0x61C, 0x61C},  {0x200E, 0x200F},
                            {0x2028, 0x202E}, {0x2066, 0x206F}, {0xFFF9, 0xFFFB}};

// Marks that stand on the character before them, and characters without width.
constexpr Range withoutWidth[] = {{0x300, 0x36F},   {0x483, 0x489},   {0x591, 0x5BD},   {0x64B, 0x65F},
                                  {0x200B, 0x200D}, {0x20D0, 0x20F0}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}};

constexpr std::uint32_t byteOrderMark = 0xFEFF;

// Characters of two columns: East Asian scripts and pictographs.
constexpr Range wide[] = {{0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},   {0xAC00, 0xD7A3},
                          {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},
                          {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};

Glyph escaped(const char *format, std::uint32_t value, std::size_t length) {
  char text[16];
  const int width = std::snprintf(text, sizeof(text), format, static_cast<unsigned>(value));
  return {text, static_cast<std::size_t>(width), length};
}

} // namespace

Glyph firstGlyph(std::string_view text, std::size_t column) {
  if (text[0] == '\t') {
    const std::size_t width = 8 - column % 8;
    return {std::string(width, ' '), width, 1};
  }
  const CodePoint point = firstCodePoint(text);
  if (point.value == byteOrderMark && point.length != 0) return {"", 0, point.length};
  if (point.length == 0) return escaped("\\x%02x", point.value, 1);
  if (isIn(unsafe, point.value)) return escaped(point.value < 0x80 ? "\\x%02x" : "\\u%04x", point.value, point.length);
  const std::size_t width = isIn(withoutWidth, point.value) ? 0 : isIn(wide, point.value) ? 2 : 1;
  return {std::string(text.substr(0, point.length)), width, point.length};
}

std::string visible(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const Glyph glyph = text[0] == '\t' ? escaped("\\x%02x", '\t', 1) : firstGlyph(text, 0);
    result += glyph.shown;
    text.remove_prefix(glyph.length);
  }
  return result;
}

} // namespace cli
