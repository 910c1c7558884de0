// UTF-8 texts and the texts of enumerations.
#include "rtxText.h"

#include "context.h"

using namespace tiny;

int rtxUTF8StrEqual(const char *a, const char *b) { return a && b ? strcmp(a, b) == 0 : a == b; }

char *rtxUTF8Strdup(RuntimeContext *ctx, const char *text) {
  if (!text) return nullptr;
  const size_t size = strlen(text) + 1;
  char *copy = static_cast<char *>(rtxMemHeapAlloc(ctx, size));
  if (copy) memcpy(copy, text, size);
  return copy;
}

size_t rtxUTF8LenBytes(const char *text) { return text ? strlen(text) : 0; }

int rtxValidateUTF8(RuntimeContext *, const char *text) { return !text || isUtf8(text) ? 0 : STATUS_INVALID_UTF8; }

int rtxLookupEnum(const char *text, size_t length, const RtxEnumRow *rows, uint32_t count) {
  const std::string_view wanted(text ? text : "", text ? length : 0);
  uint32_t first = 0;
  while (first < count) {
    const uint32_t middle = first + (count - first) / 2;
    const int order = wanted.compare({rows[middle].text, rows[middle].length});
    if (order == 0) return static_cast<int>(middle);
    if (order < 0) {
      count = middle;
    } else {
      first = middle + 1;
    }
  }
  return STATUS_ENUM_NOT_FOUND;
}

int rtXmlStrCmpAsc(const char *text, const char *literal) { return strcmp(text, literal); }
