// The lines of a part of a text that may be indented as a whole.
#pragma once

#include <cstddef>
#include <string_view>

namespace cli {

// Offsets in the text.
struct Line {
  std::size_t start; // of the line
  std::size_t begin; // behind the indentation
  std::size_t end;   // before the line break
  std::size_t next;  // of the next line
};

class TextLines {
public:
  // Lines of text from begin to end. Each line loses as much of the indentation as it has.
  TextLines(std::string_view text, std::size_t begin, std::size_t end, std::string_view indentation);

  // Takes the next line. False at the end.
  bool next(Line &line);

  std::string_view contentOf(const Line &line) const { return all.substr(line.begin, line.end - line.begin); }

  std::size_t position() const { return at; }

private:
  std::string_view all; // up to the end
  std::string_view indentation;
  std::size_t at;
};

} // namespace cli
