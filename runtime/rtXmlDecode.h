/*
 * Conversions from text. All but those that say otherwise read the context's text buffer from its start to its
 * size (bytes that need no NUL behind them), record no error, and leave their result untouched when they fail.
 * Each returns 0, STATUS_INVALID_LEXICAL_FORM (XML Schema's lexical space decides), STATUS_INVALID_UTF8 or
 * STATUS_NO_MEMORY, or STATUS_BAD_CONTEXT for an unusable context. White space at both ends is skipped by all but
 * rtXmlDecXmlStr. Arguments must not be null unless said so.
 */
#ifndef RT_XML_DECODE_H
#define RT_XML_DECODE_H

#include "rtxContext.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A date and time of XML Schema. */
typedef struct RtxDateTime {
  int32_t year;         /* negative: before the common era */
  uint8_t month;        /* 1 to 12 */
  uint8_t day;          /* 1 to 31 */
  uint8_t hour;         /* 0 to 24 */
  uint8_t minute;       /* 0 to 59 */
  uint8_t second;       /* 0 to 59 */
  bool hasZone;         /* false: no time zone was given */
  int16_t zoneMinutes;  /* east of UTC */
  uint32_t nanoseconds; /* further digits are dropped */
} RtxDateTime;

/* Stores a heap copy of the text with cdata false. The text that was there is not freed. */
RTX_API int rtXmlDecXmlStr(RuntimeContext *ctx, RtxXmlString *text);

/* Convert a text of their datatype; numbers beyond the type of value are none of its texts. */
RTX_API int rtXmlDecUInt(RuntimeContext *ctx, uint32_t *value);
RTX_API int rtXmlDecUInt16(RuntimeContext *ctx, uint16_t *value);
RTX_API int rtXmlDecBool(RuntimeContext *ctx, bool *value);      /* true, false, 1, 0 */
RTX_API int rtXmlDecDecimal(RuntimeContext *ctx, double *value); /* no exponent, no special values */
RTX_API int rtXmlDecDateTime(RuntimeContext *ctx, RtxDateTime *value);
RTX_API int rtXmlDecTime(RuntimeContext *ctx, RtxDateTime *value); /* year, month and day become 0 */

/*
 * Converts one piece of hexadecimal text and appends the bytes to out, the same for every way of cutting the
 * text. Does not read the text buffer. On failure out keeps what the piece gave before the bad digit.
 */
RTX_API int rtXmlDecHexBinary(RuntimeContext *ctx, const char *digits, size_t length, RtXmlHexState *state,
                              RtxMemBuf *out);

/*
 * Converts a whole hexadecimal text into bytes on the heap, which the caller frees; those that were there are not
 * freed. Empty gives length 0 and null bytes.
 */
RTX_API int rtXmlDecDynHexStr(RuntimeContext *ctx, RtxHexBinary *value);

enum {
  RTXML_WS_COLLAPSE = 0
};

/* Applies a white space rule to the text buffer in place; RTXML_WS_COLLAPSE is the only mode. */
RTX_API int rtXmlTreatWhitespaces(RuntimeContext *ctx, int mode);

/*
 * Splits a qualified name. *localName (null allowed) points into it; *prefix (null allowed) is null without a
 * colon, else a NUL-terminated copy that is valid until the next call with this context.
 */
RTX_API int rtXmlDecQName(RuntimeContext *ctx, const char *qualifiedName, const char **localName, const char **prefix);

/*
 * Takes an attribute whose name begins with "xmlns": binds it in the current scope, and adds a copy to list
 * when that is not null. The last two arguments are reserved: null and 0.
 */
RTX_API int rtXmlDecNSAttr(RuntimeContext *ctx, const char *name, const char *value, RtxNsDeclList *list,
                           void *reserved1, int reserved2);

/*
 * 0 when the attribute is of the schema-instance namespace (prefix "xsi", or a prefix bound to it) and so taken;
 * non-zero, nothing recorded, when it is not.
 */
RTX_API int rtXmlDecXSIAttr(RuntimeContext *ctx, const char *name, const char *value);

#ifdef __cplusplus
}
#endif

#endif
