#include "text.h"

#include "internals.h"
#include "rtxText.h"
#include "usable.h"

#include <string.h>

namespace rt {

size_t utf8Sequence(const char *text, size_t length) {
  const auto byte = [text](size_t i) { return static_cast<unsigned char>(text[i]); };
  const auto continues = [byte](size_t i) { return (byte(i) & 0xC0) == 0x80; };
  const unsigned lead = byte(0);
  if (lead < 0x80) return 1;
  if (lead < 0xC2) return 0; // a continuation, or an overlong form
  if (lead < 0xE0) return length >= 2 && continues(1) ? 2 : 0;
  if (lead < 0xF0) {
    if (length < 3 || !continues(1) || !continues(2)) return 0;
    if (lead == 0xE0 && byte(1) < 0xA0) return 0; // overlong
    if (lead == 0xED && byte(1) > 0x9F) return 0; // a surrogate
    return 3;
  }
  if (lead > 0xF4 || length < 4 || !continues(1) || !continues(2) || !continues(3)) return 0;
  if (lead == 0xF0 && byte(1) < 0x90) return 0; // overlong
  if (lead == 0xF4 && byte(1) > 0x8F) return 0; // beyond U+10FFFF
  return 4;
}

namespace {

constexpr size_t highBits = ~size_t{0} / 0xFF * 0x80;

// Reads words, the last of which may overlap the one before. What is shorter is left to others.
bool isLongAscii(const char *text, size_t length) {
  size_t word;
  if (length < sizeof word) return false;
  const char *const last = text + length - sizeof word;
  size_t all;
  memcpy(&all, last, sizeof all);
  for (; text < last; text += sizeof word) {
    memcpy(&word, text, sizeof word);
    all |= word;
  }
  return (all & highBits) == 0;
}

} // namespace

bool validUtf8(const char *text, size_t length) {
  if (isLongAscii(text, length)) return true;
  const char *const end = text + length;
  while (text != end) {
    size_t word;
    while (static_cast<size_t>(end - text) >= sizeof word) {
      memcpy(&word, text, sizeof word);
      if ((word & highBits) != 0) break;
      text += sizeof word;
    }
    while (text != end && static_cast<signed char>(*text) >= 0)
      ++text;
    if (text == end) break;
    const size_t taken = utf8Sequence(text, static_cast<size_t>(end - text));
    if (taken == 0) return false;
    text += taken;
  }
  return true;
}

} // namespace rt

int rtxUTF8StrEqual(const char *a, const char *b) {
  if (a == nullptr || b == nullptr) return a == b;
  return strcmp(a, b) == 0;
}

char *rtxUTF8Strdup(RuntimeContext *ctx, const char *text) {
  if (text == nullptr || !rt::usable(ctx)) return nullptr;
  const size_t size = strlen(text) + 1;
  auto *copy = static_cast<char *>(ctx->internals->heap.allocate(size));
  if (copy != nullptr) memcpy(copy, text, size);
  return copy;
}

size_t rtxUTF8LenBytes(const char *text) { return text != nullptr ? strlen(text) : 0; }

int rtxValidateUTF8(RuntimeContext *, const char *text) {
  return text == nullptr || rt::validUtf8(text, strlen(text)) ? 0 : STATUS_INVALID_UTF8;
}

int rtxLookupEnum(const char *text, size_t length, const RtxEnumRow *rows, uint32_t count) {
  if (text == nullptr || rows == nullptr) return STATUS_ENUM_NOT_FOUND;
  uint32_t low = 0;
  uint32_t high = count;
  while (low < high) {
    const uint32_t middle = low + (high - low) / 2;
    const RtxEnumRow &row = rows[middle];
    const size_t common = length < row.length ? length : row.length;
    int order = memcmp(text, row.text, common);
    if (order == 0) {
      if (length == row.length) return static_cast<int>(middle);
      order = length < row.length ? -1 : 1;
    }
    if (order < 0)
      high = middle;
    else
      low = middle + 1;
  }
  return STATUS_ENUM_NOT_FOUND;
}

int rtXmlStrCmpAsc(const char *text, const char *literal) {
  if (text == nullptr || literal == nullptr) return (text != nullptr) - (literal != nullptr);
  return strcmp(text, literal);
}
