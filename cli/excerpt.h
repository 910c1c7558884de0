// The line in which an error was found.
#pragma once

#include "paint.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace cli {

// The line around a byte of a text, as far as it fits, and a caret under the byte; two lines, each with its line break.
std::string excerpt(std::string_view text, std::size_t offset, std::uint32_t lineNumber, const Paint &paint);

} // namespace cli
