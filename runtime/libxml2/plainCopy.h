// Copying of the texts that are most common, those that are ASCII and hold nothing special. Inline and without calls,
// so that the functions that use it need no frame.
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <string.h>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace rt {

// What may be true of all bytes of a word: that they are ASCII characters which XML allows, or printable ones that have
// no meaning in markup, which leaves out quotes, "&", "<" and ">".
#if defined(__SSE2__)
using WidestWord = __m128i;

inline __m128i inEachByte(char byte) { return _mm_set1_epi8(byte); }
inline __m128i repeated(__m128i word) { return word; }
inline __m128i repeated(uint64_t word) { return _mm_set1_epi64x(static_cast<long long>(word)); }
inline __m128i repeated(uint32_t word) { return _mm_set1_epi32(static_cast<int>(word)); }

inline __m128i both(uint64_t a, uint64_t b) {
  return _mm_set_epi64x(static_cast<long long>(b), static_cast<long long>(a));
}
inline uint64_t both(uint32_t a, uint32_t b) { return uint64_t{b} << 32 | a; }

// As signed numbers the bytes from 0x80 on are below the blank too.
inline __m128i bytesBelowBlank(__m128i word) { return _mm_cmplt_epi8(word, inEachByte(' ')); }

struct TextOfXml {
  template <class Word> static bool holds(Word word) {
    const __m128i bytes = repeated(word);
    const int below = _mm_movemask_epi8(bytesBelowBlank(bytes));
    if (below == 0) return true;
    const __m128i lineEnd =
        _mm_or_si128(_mm_cmpeq_epi8(bytes, inEachByte('\n')), _mm_cmpeq_epi8(bytes, inEachByte('\r')));
    return below == _mm_movemask_epi8(_mm_or_si128(lineEnd, _mm_cmpeq_epi8(bytes, inEachByte('\t'))));
  }
};

struct PlainInMarkup {
  template <class Word> static bool holds(Word word) {
    const __m128i bytes = repeated(word);
    const __m128i quoteOrAmpersand = _mm_cmpeq_epi8(_mm_or_si128(bytes, inEachByte(0x04)), inEachByte('&')); // 22, 26
    const __m128i angle = _mm_cmpeq_epi8(_mm_or_si128(bytes, inEachByte(0x02)), inEachByte('>'));            // 3C, 3E
    return _mm_movemask_epi8(_mm_or_si128(_mm_or_si128(bytesBelowBlank(bytes), quoteOrAmpersand), angle)) == 0;
  }
};
#else
using WidestWord = uintptr_t;

template <class Word> constexpr Word inEachByte(unsigned char byte) {
  return static_cast<Word>(~Word{0} / 0xFF * byte);
}

inline uint64_t both(uint32_t a, uint32_t b) { return uint64_t{b} << 32 | a; }

// A top bit is set where a byte is less than what is subtracted from it; above such a byte it may be set for nothing.
struct TextOfXml { // blanks other than the space are left to others
  template <class Word> static constexpr bool holds(Word word) {
    return (((word - inEachByte<Word>(0x20)) | word) & inEachByte<Word>(0x80)) == 0;
  }
};

struct PlainInMarkup {
  template <class Word> static constexpr bool holds(Word word) {
    const Word one = inEachByte<Word>(1);
    const Word quoteOrAmpersand = ((word | inEachByte<Word>(0x04)) ^ inEachByte<Word>('&')) - one; // 0x22, 0x26
    const Word angle = ((word | inEachByte<Word>(0x02)) ^ inEachByte<Word>('>')) - one;            // 0x3C, 0x3E
    const Word below = word - inEachByte<Word>(0x20);
    return ((below | quoteOrAmpersand | angle | word) & inEachByte<Word>(0x80)) == 0;
  }
};
#endif

template <class Word> inline Word wordAt(const char *text) {
  Word word;
  memcpy(&word, text, sizeof word);
  return word;
}

// Copies a text of one to two words, which may overlap.
template <class All, class Word> inline bool copyTwoWordsIf(char *to, const char *text, size_t length) {
  const Word first = wordAt<Word>(text);
  const Word last = wordAt<Word>(text + length - sizeof(Word));
  memcpy(to, &first, sizeof first);
  memcpy(to + length - sizeof last, &last, sizeof last);
  return All::holds(both(first, last));
}

// Copies a text, and says whether it is of that kind; if not, what has been copied does not count.
template <class All> inline bool copyIf(char *to, const char *text, size_t length) {
  if (length >= sizeof(WidestWord)) {
    const char *const last = text + length - sizeof(WidestWord);
    char *const lastTo = to + length - sizeof(WidestWord);
    for (; text < last; text += sizeof(WidestWord), to += sizeof(WidestWord)) {
      const WidestWord word = wordAt<WidestWord>(text);
      if (!All::holds(word)) return false;
      memcpy(to, &word, sizeof word);
    }
    const WidestWord word = wordAt<WidestWord>(last);
    memcpy(lastTo, &word, sizeof word);
    return All::holds(word);
  }
  if constexpr (sizeof(WidestWord) > sizeof(uint64_t)) {
    if (length >= sizeof(uint64_t)) return copyTwoWordsIf<All, uint64_t>(to, text, length);
  }
  if constexpr (sizeof(WidestWord) > sizeof(uint32_t)) {
    if (length >= sizeof(uint32_t)) return copyTwoWordsIf<All, uint32_t>(to, text, length);
  }
  if (length == 0) return true;
  const char first = text[0];
  const char middle = text[length / 2];
  const char last = text[length - 1];
  to[0] = first;
  to[length / 2] = middle;
  to[length - 1] = last;
  const char all[] = {first, middle, last, last};
  return All::holds(wordAt<uint32_t>(all));
}

} // namespace rt
