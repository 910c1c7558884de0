#include "escape.h"

#include "text.h"

#include <charconv>
#include <initializer_list>
#include <stdint.h>
#include <string.h>

namespace rt {

namespace {

template <class Word> constexpr Word inEveryByte(unsigned char byte) {
  return static_cast<Word>(~Word{0} / 0xFF * byte);
}

// The first bits of the bytes of a word that are special: a control character, a quote, "&", "<" or ">", or if ascii is
// asked for one from 0x80 on. Works on all bytes at once: a top bit is set where a byte is less than what is subtracted
// from it, and above such a byte also for nothing, because it borrowed.
template <class Word> constexpr Word specialBytes(Word word, bool ascii) {
  const Word one = inEveryByte<Word>(1);
  const Word control = word - inEveryByte<Word>(0x20);
  const Word quoteOrAmpersand = ((word | inEveryByte<Word>(0x04)) ^ inEveryByte<Word>('&')) - one; // 0x22, 0x26
  const Word angle = ((word | inEveryByte<Word>(0x02)) ^ inEveryByte<Word>('>')) - one;            // 0x3C, 0x3E
  return (((control | quoteOrAmpersand | angle) & ~word) | (ascii ? word : 0)) & inEveryByte<Word>(0x80);
}

// Zero only if no byte of the word is special or anywhere near. Most words have none, and this takes less than to know.
template <class Word> constexpr Word bytesNearSpecial(Word word) {
  const Word bracketLike = (word ^ inEveryByte<Word>('<')) - inEveryByte<Word>(4); // "<", "=", ">", "?"
  const Word below = word - inEveryByte<Word>('\'');                               // control, blank, up to "&"
  return (bracketLike | below | word) & inEveryByte<Word>(0x80);
}

constexpr bool isPlain(unsigned char byte, Escape escape) {
  if (byte >= 0x80) return escape == Escape::AttributeBytes;
  if (byte == '\t' || byte == '\n') return escape == Escape::Text;
  return byte >= 0x20 && byte != '"' && byte != '&' && byte != '<' && byte != '>';
}

struct PlainBytes {
  uint8_t bits[256] = {}; // one for each way of escaping

  constexpr PlainBytes() {
    for (unsigned i = 0; i < 256; i++) {
      for (const Escape escape : {Escape::Text, Escape::Attribute, Escape::AttributeBytes}) {
        if (isPlain(static_cast<unsigned char>(i), escape)) bits[i] |= static_cast<uint8_t>(1U << int(escape));
      }
    }
  }
  constexpr bool has(char byte, Escape escape) const {
    return (bits[static_cast<unsigned char>(byte)] >> int(escape) & 1) != 0;
  }
};

constexpr PlainBytes plainBytes;

// Copies plain bytes from a position on. Returns the position that it has reached.
[[gnu::noinline]] size_t copyCarefully(char *to, const char *text, size_t i, size_t length, Escape escape) {
  uintptr_t word;
  size_t end; // of what is looked at byte by byte
  do {
    for (; length - i >= sizeof word; i += sizeof word) {
      memcpy(&word, text + i, sizeof word);
      if (specialBytes(word, escape != Escape::AttributeBytes) != 0) break;
      memcpy(to + i, &word, sizeof word);
    }
    end = length - i < sizeof word ? length : i + sizeof word;
    for (; i < end; i++) {
      if (!plainBytes.has(text[i], escape)) return i;
      to[i] = text[i];
    }
  } while (i < length);
  return i;
}

// Copies a text that is not shorter than a word as words, the last of which may overlap the one before.
template <class Word> size_t copyWords(char *to, const char *text, size_t length, Escape escape) {
  const size_t last = length - sizeof(Word);
  size_t i = 0;
  for (Word word; i < last; i += sizeof word) {
    memcpy(&word, text + i, sizeof word);
    if (bytesNearSpecial(word) != 0) return copyCarefully(to, text, i, length, escape);
    memcpy(to + i, &word, sizeof word);
  }
  Word word;
  memcpy(&word, text + last, sizeof word);
  if (bytesNearSpecial(word) != 0) return copyCarefully(to, text, last, length, escape);
  memcpy(to + last, &word, sizeof word);
  return length;
}

} // namespace

size_t copyPlain(char *to, const char *text, size_t length, Escape escape) {
  if (length >= sizeof(uintptr_t)) return copyWords<uintptr_t>(to, text, length, escape);
  if (length >= sizeof(uint32_t)) return copyWords<uint32_t>(to, text, length, escape);
  return copyCarefully(to, text, 0, length, escape);
}

size_t multiByteCharacter(const char *text, size_t length) {
  const size_t taken = utf8Sequence(text, length);
  const bool noCharacter = taken == 3 && (memcmp(text, "\xEF\xBF\xBE", 3) == 0 || memcmp(text, "\xEF\xBF\xBF", 3) == 0);
  return noCharacter ? 0 : taken; // U+FFFE and U+FFFF
}

Escaped escapeFirst(const char *text, size_t length, Escape escape) {
  const bool attribute = escape != Escape::Text;
  const unsigned char byte = static_cast<unsigned char>(*text);
  switch (byte) {
  case '&': return {"&amp;", 5, 1};
  case '<': return {"&lt;", 4, 1};
  case '>': return {"&gt;", 4, 1};
  case '\r': return {"&#13;", 5, 1};
  case '"':
    if (attribute) return {"&quot;", 6, 1};
    break;
  case '\n':
    if (attribute) return {"&#10;", 5, 1};
    break;
  case '\t':
    if (attribute) return {"&#9;", 4, 1};
    break;
  default:
    if (byte < 0x20) return {text, 0, 0};
    if (byte >= 0x80 && escape != Escape::AttributeBytes) {
      const size_t taken = multiByteCharacter(text, length);
      return {text, taken, taken};
    }
  }
  return {text, 1, 1};
}

namespace {

// Bytes of the character at the beginning of a text; 0 if XML cannot carry it or it is not UTF-8.
size_t xmlCharacter(const char *text, size_t length) {
  const unsigned char byte = static_cast<unsigned char>(*text);
  if (byte >= 0x80) return multiByteCharacter(text, length);
  return byte >= 0x20 || byte == '\t' || byte == '\n' || byte == '\r' ? 1 : 0;
}

// Copies one word if all its bytes are ASCII and no control characters.
template <class Word> bool copyAsciiWord(char *to, const char *text) {
  Word word;
  memcpy(&word, text, sizeof word);
  if ((((word - inEveryByte<Word>(0x20)) | word) & inEveryByte<Word>(0x80)) != 0) return false;
  memcpy(to, &word, sizeof word);
  return true;
}

} // namespace

// By characters and the words between them.
bool copyXmlText(char *to, const char *text, size_t length) {
  const char *const end = text + length;
  while (text != end) {
    const size_t left = static_cast<size_t>(end - text);
    if (left >= sizeof(uintptr_t) && copyAsciiWord<uintptr_t>(to, text)) {
      text += sizeof(uintptr_t);
      to += sizeof(uintptr_t);
      continue;
    }
    // Up to the next word, so that a control character is not met again in each word that it is in.
    const char *const enough = left < sizeof(uintptr_t) ? end : text + sizeof(uintptr_t);
    while (text < enough) {
      size_t taken = xmlCharacter(text, static_cast<size_t>(end - text));
      if (taken == 0) return false;
      for (; taken != 0; taken--)
        *to++ = *text++;
    }
  }
  return true;
}

bool isXmlText(const char *text, size_t length) {
  char piece[sizeof(uintptr_t)];
  for (size_t i = 0; i < length;) {
    if (length - i >= sizeof piece && copyAsciiWord<uintptr_t>(piece, text + i)) {
      i += sizeof piece;
      continue;
    }
    const size_t taken = xmlCharacter(text + i, length - i);
    if (taken == 0) return false;
    i += taken;
  }
  return true;
}

size_t writeDecimal(double value, char (&digits)[decimalDigits]) {
  if (value == 0) { // the negative zero too
    digits[0] = '0';
    return 1;
  }
  // "[-]d[.ddd]e+-dd", at most 17 digits, exponent from -324 to 308
  char scientific[32];
  const std::to_chars_result result =
      std::to_chars(scientific, scientific + sizeof scientific, value, std::chars_format::scientific);
  const char *exponentMark =
      static_cast<const char *>(memchr(scientific, 'e', static_cast<size_t>(result.ptr - scientific)));
  if (result.ec != std::errc() || exponentMark == nullptr) return 0; // "nan" and "inf" hold no "e"
  char significant[24];
  int count = 0;
  const bool negative = scientific[0] == '-';
  for (const char *p = scientific + (negative ? 1 : 0); p < exponentMark; p++) {
    if (*p != '.') significant[count++] = *p;
  }
  int exponent = 0;
  std::from_chars(exponentMark + (exponentMark[1] == '+' ? 2 : 1), result.ptr, exponent);

  char *out = digits;
  if (negative) *out++ = '-';
  const int pointAt = exponent + 1; // digits before the point
  if (pointAt <= 0) {
    *out++ = '0';
    *out++ = '.';
    for (int i = pointAt; i < 0; i++)
      *out++ = '0';
  }
  for (int i = 0; i < count; i++) {
    if (i == pointAt && i != 0) *out++ = '.';
    *out++ = significant[i];
  }
  for (int i = count; i < pointAt; i++)
    *out++ = '0';
  return static_cast<size_t>(out - digits);
}

} // namespace rt
