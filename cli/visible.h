// Text as it may go to a terminal: nothing in it moves the cursor, hides or reorders what stands around it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cli {

// A character of a text as it is shown.
struct Glyph {
  std::string shown;
  std::size_t width;  // columns of a terminal
  std::size_t length; // bytes of the text
};

// The first character of a text that is not empty. A tab reaches to the next multiple of eight columns; what cannot be
// shown, bytes that are not UTF-8 among them, is written as an escape.
Glyph firstGlyph(std::string_view text, std::size_t column);

// A whole text, in one line.
std::string visible(std::string_view text);

} // namespace cli
