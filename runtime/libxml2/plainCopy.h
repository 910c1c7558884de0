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
// no meaning in markup, which leaves out quotes, "&", "<" and ">", or those and line feeds.
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

// As signed numbers the bytes from 0x80 on are below the blank, like the control characters.
inline __m128i printableBytes(__m128i bytes) { return _mm_cmpgt_epi8(bytes, inEachByte(' ' - 1)); }
inline __m128i markupBytes(__m128i bytes) {
  const __m128i quoteOrAmpersand = _mm_cmpeq_epi8(_mm_or_si128(bytes, inEachByte(0x04)), inEachByte('&')); // 22, 26
  const __m128i angle = _mm_cmpeq_epi8(_mm_or_si128(bytes, inEachByte(0x02)), inEachByte('>'));            // 3C, 3E
  return _mm_or_si128(quoteOrAmpersand, angle);
}
inline bool isEveryByte(__m128i bytes) { return _mm_movemask_epi8(bytes) == 0xFFFF; }

struct TextOfXml {
  template <class Word> static bool holds(Word word) {
    const __m128i bytes = repeated(word);
    const __m128i printable = printableBytes(bytes);
    if (isEveryByte(printable)) return true;
    const __m128i lineEnd =
        _mm_or_si128(_mm_cmpeq_epi8(bytes, inEachByte('\n')), _mm_cmpeq_epi8(bytes, inEachByte('\r')));
    return isEveryByte(_mm_or_si128(_mm_or_si128(printable, lineEnd), _mm_cmpeq_epi8(bytes, inEachByte('\t'))));
  }
};

struct PlainInMarkup {
  template <class Word> static bool holds(Word word) {
    const __m128i bytes = repeated(word);
    return isEveryByte(_mm_andnot_si128(markupBytes(bytes), printableBytes(bytes)));
  }
};

struct PlainInContent {
  template <class Word> static bool holds(Word word) {
    const __m128i bytes = repeated(word);
    const __m128i lineFeed = _mm_cmpeq_epi8(bytes, inEachByte('\n'));
    return isEveryByte(_mm_andnot_si128(markupBytes(bytes), _mm_or_si128(printableBytes(bytes), lineFeed)));
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

template <class Word> constexpr Word markupBytes(Word word) {
  const Word one = inEachByte<Word>(1);
  const Word quoteOrAmpersand = ((word | inEachByte<Word>(0x04)) ^ inEachByte<Word>('&')) - one; // 0x22, 0x26
  const Word angle = ((word | inEachByte<Word>(0x02)) ^ inEachByte<Word>('>')) - one;            // 0x3C, 0x3E
  return quoteOrAmpersand | angle;
}

struct PlainInMarkup {
  template <class Word> static constexpr bool holds(Word word) {
    const Word below = word - inEachByte<Word>(0x20);
    return ((below | markupBytes(word) | word) & inEachByte<Word>(0x80)) == 0;
  }
};

struct PlainInContent {
  template <class Word> static constexpr bool holds(Word word) {
    const Word below = word - inEachByte<Word>(0x20);
    const Word fromLineFeed = word ^ inEachByte<Word>('\n');
    const Word other = (fromLineFeed & inEachByte<Word>(0x7F)) + inEachByte<Word>(0x7F); // carries nowhere
    return (((below & other) | markupBytes(word) | word) & inEachByte<Word>(0x80)) == 0;
  }
};
#endif

// For texts that are known to be plain.
struct AnyBytes {
  template <class Word> static constexpr bool holds(Word) { return true; }
};

template <class Word> inline Word wordAt(const char *text) {
  Word word;
  memcpy(&word, text, sizeof word);
  return word;
}

// Names longer than this are for others to copy.
inline constexpr size_t longName = 32;

// Copies a name up to its NUL, without its length being known. Returns where it ends, or null if it is a long one; what
// was copied then does not count.
inline char *copyName(char *to, const char *name) {
  for (const char *const end = to + longName; to < end; to += 4, name += 4) {
    if ((to[0] = name[0]) == '\0') return to;
    if ((to[1] = name[1]) == '\0') return to + 1;
    if ((to[2] = name[2]) == '\0') return to + 2;
    if ((to[3] = name[3]) == '\0') return to + 3;
  }
  return nullptr;
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
