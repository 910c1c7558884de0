// Copying text that needs no escaping, for the common cases of the encoder. Inline and without calls, so that the
// functions that use it need no frame.
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <string.h>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace rt {

// Whether all bytes of a word are ASCII characters without a meaning in markup: no control characters, quotes, "&",
// "<" or ">".
#if defined(__SSE2__)
using WidestWord = __m128i;

inline bool isPlainWord(__m128i word) {
  const auto each = [](char byte) { return _mm_set1_epi8(byte); };
  const __m128i below = _mm_cmplt_epi8(word, each(' ')); // as signed bytes: from 0x80 on too
  const __m128i quoteOrAmpersand = _mm_cmpeq_epi8(_mm_or_si128(word, each('\x04')), each('&')); // 0x22, 0x26
  const __m128i angle = _mm_cmpeq_epi8(_mm_or_si128(word, each('\x02')), each('>'));            // 0x3C, 0x3E
  return _mm_movemask_epi8(_mm_or_si128(_mm_or_si128(below, quoteOrAmpersand), angle)) == 0;
}
inline bool isPlainWord(uint64_t word) { return isPlainWord(_mm_set1_epi64x(static_cast<long long>(word))); }
inline bool isPlainWord(uint32_t word) { return isPlainWord(_mm_set1_epi32(static_cast<int>(word))); }
#else
using WidestWord = uintptr_t;

template <class Word> constexpr bool isPlainWord(Word word) {
  const auto each = [](unsigned char byte) { return static_cast<Word>(~Word{0} / 0xFF * byte); };
  // A top bit is set where a byte is less than what is subtracted from it; above such a byte it may be set for nothing.
  const Word below = word - each(0x20);
  const Word quoteOrAmpersand = ((word | each(0x04)) ^ each('&')) - each(1); // 0x22, 0x26
  const Word angle = ((word | each(0x02)) ^ each('>')) - each(1);            // 0x3C, 0x3E
  return ((below | quoteOrAmpersand | angle | word) & each(0x80)) == 0;
}
#endif

template <class Word> inline Word wordAt(const char *text) {
  Word word;
  memcpy(&word, text, sizeof word);
  return word;
}

// Copies a text of one to two words, which may overlap.
template <class Word> inline bool copyTwoPlainWords(char *to, const char *text, size_t length) {
  const Word first = wordAt<Word>(text);
  const Word last = wordAt<Word>(text + length - sizeof(Word));
  memcpy(to, &first, sizeof first);
  memcpy(to + length - sizeof last, &last, sizeof last);
  return isPlainWord(first) && isPlainWord(last);
}

// Copies a text, and says whether all of it is plain; if not, what has been copied does not count.
inline bool copyIfPlain(char *to, const char *text, size_t length) {
  if (length >= sizeof(WidestWord)) {
    const char *const last = text + length - sizeof(WidestWord);
    char *const lastTo = to + length - sizeof(WidestWord);
    for (; text < last; text += sizeof(WidestWord), to += sizeof(WidestWord)) {
      const WidestWord word = wordAt<WidestWord>(text);
      if (!isPlainWord(word)) return false;
      memcpy(to, &word, sizeof word);
    }
    const WidestWord word = wordAt<WidestWord>(last);
    memcpy(lastTo, &word, sizeof word);
    return isPlainWord(word);
  }
  if (sizeof(WidestWord) > sizeof(uint64_t) && length >= sizeof(uint64_t))
    return copyTwoPlainWords<uint64_t>(to, text, length);
  if (sizeof(WidestWord) > sizeof(uint32_t) && length >= sizeof(uint32_t))
    return copyTwoPlainWords<uint32_t>(to, text, length);
  if (length == 0) return true;
  const char first = text[0];
  const char middle = text[length / 2];
  const char last = text[length - 1];
  to[0] = first;
  to[length / 2] = middle;
  to[length - 1] = last;
  const char all[] = {first, middle, last, last};
  return isPlainWord(wordAt<uint32_t>(all));
}

} // namespace rt
