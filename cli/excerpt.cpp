#include "excerpt.h"

#include "visible.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace cli {

namespace {

constexpr std::size_t reach = 400;  // bytes that are looked at on either side: a document may be one long line
constexpr std::size_t widest = 100; // columns of an excerpt
constexpr std::size_t context = 60; // columns kept before the caret when the line is longer
constexpr std::string_view ellipsis = "...";

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// The part of a text that an excerpt is taken from.
struct Stretch {
  std::size_t begin;
  std::size_t end;
  bool cutBefore; // the line begins before it
  bool cutBehind; // the line ends behind it
};

Stretch stretchAround(std::string_view text, std::size_t offset) {
  Stretch stretch{offset - std::min(offset, reach), std::min(text.size(), offset + reach), false, false};
  const std::size_t lineBreak = text.substr(stretch.begin, offset - stretch.begin).rfind('\n');
  if (lineBreak != std::string_view::npos) {
    stretch.begin += lineBreak + 1;
  } else if (stretch.begin > 0 && text[stretch.begin - 1] != '\n') {
    stretch.cutBefore = true;
    while (stretch.begin < offset && isContinuation(text[stretch.begin]))
      ++stretch.begin;
  }
  const std::size_t end = text.substr(0, stretch.end + 1).find('\n', offset);
  if (end != std::string_view::npos) {
    stretch.end = end;
    if (stretch.end > offset && text[stretch.end - 1] == '\r') --stretch.end;
  } else if (stretch.end < text.size()) {
    stretch.cutBehind = true;
    while (stretch.end > offset && isContinuation(text[stretch.end]))
      --stretch.end;
  }
  return stretch;
}

// What an excerpt shows, from left to right.
struct Row {
  struct Cell {
    Glyph glyph;
    std::size_t column;
  };
  std::vector<Cell> cells;
  std::size_t width = 0;
  std::size_t caret = 0;
};

Row layOut(std::string_view text, std::size_t caretAt) {
  Row row;
  for (std::size_t at = 0; at < text.size();) {
    if (at <= caretAt) row.caret = row.width;
    Glyph glyph = firstGlyph(text.substr(at), row.width);
    at += glyph.length;
    row.cells.push_back({std::move(glyph), row.width});
    row.width += row.cells.back().glyph.width;
  }
  if (caretAt >= text.size()) row.caret = row.width;
  return row;
}

} // namespace

std::string excerpt(std::string_view text, std::size_t offset, std::uint32_t lineNumber, const Paint &paint) {
  offset = std::min(offset, text.size());
  const Stretch stretch = stretchAround(text, offset);
  const Row row = layOut(text.substr(stretch.begin, stretch.end - stretch.begin), offset - stretch.begin);

  // The columns that are shown: the whole row, or as much as fits with the caret in view.
  std::size_t first = 0;
  if (row.width > widest && row.caret > context) first = std::min(row.caret - context, row.width - widest);
  const std::size_t last = first + widest;

  std::string line;
  std::size_t origin = row.caret; // column of the first glyph shown
  for (const auto &[glyph, column] : row.cells) {
    if (column < first || column + glyph.width > last) continue;
    origin = std::min(origin, column);
    line += glyph.shown;
  }
  std::size_t caret = row.caret - origin;
  if (stretch.cutBefore || first > 0) {
    line.insert(0, ellipsis);
    caret += ellipsis.size();
  }
  if (stretch.cutBehind || row.width > last) line += ellipsis;

  char gutter[32];
  std::snprintf(gutter, sizeof(gutter), "%5u | ", static_cast<unsigned>(lineNumber));
  const std::string numbered = gutter + line + "\n";
  std::snprintf(gutter, sizeof(gutter), "%5s | ", "");
  return numbered + gutter + std::string(caret, ' ') + paint.success("^") + "\n";
}

} // namespace cli
