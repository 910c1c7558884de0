// The header fields of a message or a part that tell what its body is.
#pragma once

#include "textLines.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace cli {

struct HeaderFields {
  std::string type;             // Content-Type, or its compact form
  std::string encoding;         // Content-Encoding, or its compact form
  std::string transferEncoding; // Content-Transfer-Encoding
  std::optional<std::size_t> length;
  bool ended = false; // by an empty line
  bool wire = false;  // with CRLF, as messages travel
};

// Reads fields up to and with the empty line behind them. Of a field that comes twice the first one counts; lines that
// are no field are passed over.
HeaderFields readHeaderFields(TextLines &lines);

// Whether a line begins like a header field.
bool looksLikeField(std::string_view line);

// A content type without its parameters but the one that multiparts have.
struct MediaType {
  std::string name; // "type/subtype" in small letters
  std::string boundary;
};

MediaType parseMediaType(std::string_view value);

// A text in small ASCII letters, without white space around it.
std::string folded(std::string_view text);

} // namespace cli
