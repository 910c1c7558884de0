// Text for people: one line, whatever the bytes.
#pragma once

#include "text.h"

namespace rt {

// True for control characters, the second set of them (U+0080 to U+009F) included. bytes: a UTF-8 sequence.
inline bool isControl(const char *bytes, size_t length) {
  const auto first = static_cast<unsigned char>(bytes[0]);
  if (length == 1) return first < 0x20 || first == 0x7F;
  return length == 2 && first == 0xC2 && static_cast<unsigned char>(bytes[1]) < 0xA0;
}

// Gives sink.put(bytes, length) a text in which control characters, bytes that are not UTF-8 and backslashes are
// escaped, and quotes if it is to stand in quotes.
template <class Sink> void putPrintable(Sink &sink, const char *text, size_t length, bool quoted) {
  const char *const end = text + length;
  const char *plain = text; // begin of what may go out as it is
  const auto flush = [&sink, &plain](const char *upTo) {
    if (upTo != plain) sink.put(plain, static_cast<size_t>(upTo - plain));
  };
  while (text != end) {
    const size_t sequence = utf8Sequence(text, static_cast<size_t>(end - text));
    const bool hidden = sequence == 0 || isControl(text, sequence);
    if (!hidden && *text != '\\' && !(quoted && *text == '"')) {
      text += sequence;
      continue;
    }
    flush(text);
    if (!hidden) {
      sink.put("\\", 1);
      plain = text++;
      continue;
    }
    const char *const next = text + (sequence == 0 ? 1 : sequence);
    for (; text != next; ++text) {
      const auto byte = static_cast<unsigned char>(*text);
      const char digits[] = "0123456789ABCDEF";
      const char hex[] = {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
      switch (byte) {
      case '\n': sink.put("\\n", 2); break;
      case '\t': sink.put("\\t", 2); break;
      case '\r': sink.put("\\r", 2); break;
      default: sink.put(hex, sizeof hex);
      }
    }
    plain = text;
  }
  flush(end);
}

} // namespace rt
