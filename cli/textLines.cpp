#include "textLines.h"

#include <algorithm>

namespace cli {

TextLines::TextLines(std::string_view text, std::size_t begin, std::size_t end, std::string_view commonIndentation)
    : all(text.substr(0, end)), indentation(commonIndentation), at(begin) {}

bool TextLines::next(Line &line) {
  if (at >= all.size()) return false;
  const std::size_t lineBreak = all.find('\n', at);
  line.start = at;
  line.end = std::min(lineBreak, all.size());
  line.next = lineBreak == std::string_view::npos ? all.size() : lineBreak + 1;
  if (lineBreak != std::string_view::npos && line.end > line.start && all[line.end - 1] == '\r') --line.end;
  line.begin = line.start;
  for (const char c : indentation) {
    if (line.begin == line.end || all[line.begin] != c) break;
    ++line.begin;
  }
  at = line.next;
  return true;
}

} // namespace cli
