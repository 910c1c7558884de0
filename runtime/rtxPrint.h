/*
 * Diagnostic output: one line "name = value" a call, on the C library's stdout stream. Control characters are
 * escaped, so that one value is one line. Each returns 0, or a negative number if the stream refused the line.
 */
#ifndef RTX_PRINT_H
#define RTX_PRINT_H

#include "rtxContext.h"

#ifdef __cplusplus
extern "C" {
#endif

RTX_API int rtxPrintCharStr(const char *name, const char *text); /* "text" in quotes; null as <null> */
RTX_API int rtxPrintUnsigned(const char *name, uint32_t value);
RTX_API int rtxPrintBoolean(const char *name, bool value);
RTX_API int rtxPrintReal(const char *name, double value);
RTX_API int rtxPrintHexBinary(const char *name, uint32_t length, const uint8_t *bytes);
RTX_API int rtxPrintNVP(const char *name, const char *attributeName, const char *attributeValue);
RTX_API int rtxPrintNull(const char *name);

/* One line a declaration: name.xmlns or name.xmlns:prefix. */
RTX_API int rtXmlPrintNSAttrs(const char *name, const RtxNsDeclList *list);

#ifdef __cplusplus
}
#endif

#endif
