#include "lexical.h"

namespace rt {

namespace {

constexpr unsigned noDigit = 16;

unsigned valueOf(char byte) {
  if (byte >= '0' && byte <= '9') return static_cast<unsigned>(byte - '0');
  if (byte >= 'A' && byte <= 'F') return static_cast<unsigned>(byte - 'A') + 10;
  if (byte >= 'a' && byte <= 'f') return static_cast<unsigned>(byte - 'a') + 10;
  return noDigit;
}

enum Phase : uint8_t {
  Before,
  Inside,
  Behind
};

} // namespace

bool parseHexPiece(const char *text, size_t length, RtXmlHexState &state, uint8_t *bytes, size_t &written) {
  written = 0;
  for (size_t i = 0; i < length; i++) {
    const unsigned digit = valueOf(text[i]);
    if (digit == noDigit) {
      if (!isXmlSpace(text[i])) return false;
      if (state.phase == Inside) state.phase = Behind;
    } else if (state.phase == Behind) {
      return false;
    } else if (state.pending == 0) {
      state.phase = Inside;
      state.pending = static_cast<uint8_t>(16 + digit);
    } else {
      bytes[written++] = static_cast<uint8_t>((state.pending - 16u) << 4 | digit);
      state.pending = 0;
    }
  }
  return true;
}

} // namespace rt
