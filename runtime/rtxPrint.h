/*
 * Diagnostic output: one line "name = value" a call, on the C library's stdout stream or to a sink of the host's.
 * Control characters are escaped, so that one value is one line. Each returns 0, or a negative number if the line was
 * refused. A null name prints as nothing, null bytes as none, and a null list not at all. Threads may print at once.
 */
#ifndef RTX_PRINT_H
#define RTX_PRINT_H

#include "rtxContext.h"

#ifdef __cplusplus
extern "C" {
#endif

RTX_API int rtxPrintCharStr(const char *name, const char *text); /* "text" in quotes; null as <null> */
RTX_API int rtxPrintUnsigned(const char *name, uint32_t value);  /* decimal digits */
RTX_API int rtxPrintBoolean(const char *name, bool value);       /* true or false */
RTX_API int rtxPrintReal(const char *name, double value);        /* as few digits as tell the number */
RTX_API int rtxPrintHexBinary(const char *name, uint32_t length, const uint8_t *bytes); /* two capital digits a byte */

/* A foreign attribute: name = attributeName="attributeValue". A null value as <null>. */
RTX_API int rtxPrintNVP(const char *name, const char *attributeName, const char *attributeValue);

/* name = <null> */
RTX_API int rtxPrintNull(const char *name);

/* One line a declaration: name.xmlns or name.xmlns:prefix. */
RTX_API int rtXmlPrintNSAttrs(const char *name, const RtxNsDeclList *list);

/* ---- Elsewhere than to stdout ----------------------------------------------------------------------------- */

/* Where the lines of a thread go. */
typedef struct RtxPrintSink {
  /*
   * Takes one whole line with its line break, of length bytes and without NUL; it is gone when the call returns.
   * Returns 0, or anything else to refuse it, which ends nothing. Null refuses every line. While it runs, the thread
   * has no sink, and a sink that it sets is taken off when it returns. It must not leave by an exception or longjmp.
   */
  int (*put)(void *user, const char *line, size_t length);
  void *user;     /* passed to put */
  size_t refused; /* counted up: lines that put refused, and long ones that there was no storage for */
} RtxPrintSink;

/*
 * Makes sink take the lines that the calling thread prints from now on; null is stdout, where every thread begins.
 * The sink is the caller's, and stays where it is as long as it is set. Returns the sink of before, to be set again,
 * or null. Only what the functions above print goes there: not what others write to stdout by themselves, as the
 * codec does with the line of a choice's selector, "name.t = 1".
 */
RTX_API RtxPrintSink *rtxSetPrintSink(RtxPrintSink *sink);

#ifdef __cplusplus
}
#endif

#endif
