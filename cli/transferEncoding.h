// Bodies as they were before they were encoded for transfer.
#pragma once

#include "place.h"
#include "textLines.h"

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace cli {

enum class TransferEncoding {
  none,
  base64,
  quotedPrintable
};

// The encoding of this name in small letters; nothing if it is not known.
std::optional<TransferEncoding> transferEncodingNamed(std::string_view name);

// A body that breaks the rules of its encoding.
struct EncodingError : std::runtime_error {
  EncodingError(const char *what, std::size_t at) : std::runtime_error(what), offset(at) {}
  std::size_t offset; // in the text
};

struct DecodedBody {
  std::string bytes;
  PlaceMap places; // in the text
};

// The body that stands in all that is left of the lines of a text.
DecodedBody decodeBody(std::string_view text, TextLines lines, TransferEncoding encoding);

} // namespace cli
