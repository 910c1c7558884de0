#include "escape.h"

#include "text.h"

#include <charconv>
#include <stdint.h>
#include <string.h>

namespace rt {

namespace {

template <class Word> constexpr Word inEveryByte(unsigned char byte) {
  return static_cast<Word>(~Word{0} / 0xFF * byte);
}

// Not zero if a byte of the word is special: a control character, a quote, "&", "<" or ">", and if ascii is asked for
// one from 0x80 on. Works on all bytes at once: a top bit is set where a byte is less than what is subtracted from it,
// and above such a byte also for nothing, because it borrowed.
template <class Word> constexpr Word specialBytes(Word word, bool ascii) {
  const Word tops = inEveryByte<Word>(0x80);
  const Word one = inEveryByte<Word>(1);
  const Word high = ascii ? word : 0;
  const Word bracketLike = (word ^ inEveryByte<Word>('<')) - inEveryByte<Word>(4); // "<", "=", ">", "?"
  const Word below = word - inEveryByte<Word>('\'');                               // control, blank, up to "&"
  if ((((bracketLike | below) & ~word) | high) & tops) [[unlikely]] {
    const Word control = word - inEveryByte<Word>(0x20);
    const Word quoteOrAmpersand = ((word | inEveryByte<Word>(0x04)) ^ inEveryByte<Word>('&')) - one; // 0x22, 0x26
    const Word angle = ((word | inEveryByte<Word>(0x02)) ^ inEveryByte<Word>('>')) - one;            // 0x3C, 0x3E
    return (((control | quoteOrAmpersand | angle) & ~word) | high) & tops;
  }
  return 0; // the common case
}

// Copies one word if all of its bytes are plain.
template <class Word> bool copyPlainWord(char *to, const char *text, bool ascii) {
  Word word;
  memcpy(&word, text, sizeof word);
  if (specialBytes(word, ascii) != 0) return false;
  memcpy(to, &word, sizeof word);
  return true;
}

// Copies words, the last of which may overlap the one before. Returns how many bytes of the text are certainly done.
template <class Word> size_t copyPlainWords(char *to, const char *text, size_t length, bool ascii) {
  size_t i = 0;
  for (; i + sizeof(Word) <= length; i += sizeof(Word)) {
    if (!copyPlainWord<Word>(to + i, text + i, ascii)) return i;
  }
  const size_t last = length - sizeof(Word);
  return i == length || copyPlainWord<Word>(to + last, text + last, ascii) ? length : i;
}

constexpr bool isPlain(unsigned char byte, bool ascii) {
  return byte >= 0x20 && byte != '"' && byte != '&' && byte != '<' && byte != '>' && (byte < 0x80 || !ascii);
}

struct PlainBytes {
  bool ascii[256];
  bool any[256];

  constexpr PlainBytes() : ascii(), any() {
    for (unsigned i = 0; i < 256; i++) {
      ascii[i] = isPlain(static_cast<unsigned char>(i), true);
      any[i] = isPlain(static_cast<unsigned char>(i), false);
    }
  }
};

constexpr PlainBytes plainBytes;

constexpr bool isNameStart(unsigned char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_' || byte >= 0x80;
}

constexpr bool isNameByte(unsigned char byte) {
  return isNameStart(byte) || (byte >= '0' && byte <= '9') || byte == '-' || byte == '.';
}

} // namespace

size_t copyPlain(char *to, const char *text, size_t length, Escape escape) {
  const bool ascii = escape != Escape::AttributeBytes;
  size_t i = 0;
  if (length >= sizeof(uintptr_t)) {
    i = copyPlainWords<uintptr_t>(to, text, length, ascii);
  } else if (length >= sizeof(uint32_t)) {
    i = copyPlainWords<uint32_t>(to, text, length, ascii);
  }
  const bool *plain = ascii ? plainBytes.ascii : plainBytes.any;
  for (; i < length && plain[static_cast<unsigned char>(text[i])]; i++)
    to[i] = text[i];
  return i;
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

// Any text, by characters and the words between them.
[[gnu::noinline]] bool copyMixedText(char *to, const char *text, size_t length) {
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

// Copies a text that is not shorter than a word as words, the last of which may overlap the one before.
template <class Word> bool copyWords(char *to, const char *text, size_t length) {
  const char *const end = text + length;
  const char *const last = end - sizeof(Word);
  for (; text < last; text += sizeof(Word), to += sizeof(Word)) {
    if (!copyAsciiWord<Word>(to, text)) [[unlikely]]
      return copyMixedText(to, text, static_cast<size_t>(end - text));
  }
  if (copyAsciiWord<Word>(to - (text - last), last)) [[likely]]
    return true;
  return copyMixedText(to, text, static_cast<size_t>(end - text));
}

} // namespace

bool copyXmlText(char *to, const char *text, size_t length) {
  if (length >= sizeof(uintptr_t)) return copyWords<uintptr_t>(to, text, length);
  if (length >= sizeof(uint32_t)) return copyWords<uint32_t>(to, text, length);
  return copyMixedText(to, text, length);
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

bool isNcName(const char *name, size_t length) {
  if (length == 0 || !isNameStart(static_cast<unsigned char>(name[0]))) return false;
  for (size_t i = 1; i < length; i++) {
    if (!isNameByte(static_cast<unsigned char>(name[i]))) return false;
  }
  return true;
}

bool isQualifiedName(const char *name, size_t length) {
  const char *colon = length == 0 ? nullptr : static_cast<const char *>(memchr(name, ':', length));
  if (colon == nullptr) return isNcName(name, length);
  const size_t prefixLength = static_cast<size_t>(colon - name);
  return isNcName(name, prefixLength) && isNcName(colon + 1, length - prefixLength - 1);
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
