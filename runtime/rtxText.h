/* UTF-8 text and enumeration texts. None of these records an error. */
#ifndef RTX_TEXT_H
#define RTX_TEXT_H

#include "rtxContext.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Non-zero if both texts are equal byte for byte; null equals null only. */
RTX_API int rtxUTF8StrEqual(const char *a, const char *b);

/* A copy on the heap, or null if text is null or there is no storage. */
RTX_API char *rtxUTF8Strdup(RuntimeContext *ctx, const char *text);

/* Length in bytes; 0 for null. */
RTX_API size_t rtxUTF8LenBytes(const char *text);

/* 0 if text is null or well-formed UTF-8, else STATUS_INVALID_UTF8. */
RTX_API int rtxValidateUTF8(RuntimeContext *ctx, const char *text);

/* Row of a text of length bytes in an enumeration's table, or STATUS_ENUM_NOT_FOUND. */
RTX_API int rtxLookupEnum(const char *text, size_t length, const RtxEnumRow *rows, uint32_t count);

/* Zero if both texts are equal, else their order. */
RTX_API int rtXmlStrCmpAsc(const char *text, const char *literal);

#ifdef __cplusplus
}
#endif

#endif
