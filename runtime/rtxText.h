/*
 * UTF-8 text and enumeration texts. None of these records an error, and but for rtxUTF8Strdup none needs a context:
 * they may be called on several threads at once.
 */
#ifndef RTX_TEXT_H
#define RTX_TEXT_H

#include "rtxContext.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Non-zero if both texts are equal byte for byte; null equals null only. */
RTX_API int rtxUTF8StrEqual(const char *a, const char *b);

/*
 * A copy on the heap, which the caller frees with rtxMemHeapFreePtr or leaves to what it becomes a part of. Null if
 * text is null, the context is unusable or there is no storage.
 */
RTX_API char *rtxUTF8Strdup(RuntimeContext *ctx, const char *text);

/* Length in bytes; 0 for null. */
RTX_API size_t rtxUTF8LenBytes(const char *text);

/* 0 if text is null or well-formed UTF-8, else STATUS_INVALID_UTF8. ctx is not used. */
RTX_API int rtxValidateUTF8(RuntimeContext *ctx, const char *text);

/*
 * Row of a text of length bytes in an enumeration's table of count rows, or STATUS_ENUM_NOT_FOUND, also if text or rows
 * are null.
 */
RTX_API int rtxLookupEnum(const char *text, size_t length, const RtxEnumRow *rows, uint32_t count);

/* Zero if both texts are equal byte for byte, else their order: negative if text comes first. Null comes before all. */
RTX_API int rtXmlStrCmpAsc(const char *text, const char *literal);

#ifdef __cplusplus
}
#endif

#endif
