/* Error records of a context. */
#ifndef RTX_ERROR_H
#define RTX_ERROR_H

#include "rtxContext.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- For the codec ---------------------------------------------------------------------------------------- */
/* All accept a null or unusable context: they then record nothing and only return what they say. */

/* Starts a new record with the parameters added since the last record. Returns status. path must be constant. */
RTX_API int rtxErrSetNewData(RuntimeContext *ctx, int status, const char *path, int line);

/*
 * Adds a place to the trail of the newest record if that has the same status; otherwise starts a record without
 * parameters, since nobody has recorded this status yet. Status 0 is a no-op. Returns status.
 */
RTX_API int rtxErrSetData(RuntimeContext *ctx, int status, const char *path, int line);

/* Add a parameter to the record about to be started. Texts are copied; null is an empty text. */
RTX_API void rtxErrAddStrParm(RuntimeContext *ctx, const char *text);
RTX_API void rtxErrAddIntParm(RuntimeContext *ctx, int32_t value);
RTX_API void rtxErrAddUIntParm(RuntimeContext *ctx, uint32_t value);

/* Adds the whole text buffer, from its start to its size, as a text parameter. */
RTX_API void rtxErrAddCtxtBufParm(RuntimeContext *ctx);

/* Status of the first record since the context was created, reset or cleared; 0 if there is none. */
RTX_API int rtxErrGetFirstError(RuntimeContext *ctx);

/* Status of the newest record, 0 if there is none. */
RTX_API int rtxErrGetLastError(RuntimeContext *ctx);

/* ---- For hosts -------------------------------------------------------------------------------------------- */

typedef enum RtxErrorParamKind {
  RTX_PARAM_TEXT,
  RTX_PARAM_INT,
  RTX_PARAM_UINT
} RtxErrorParamKind;

typedef struct RtxErrorParam {
  RtxErrorParamKind kind;
  const char *text; /* NUL-terminated; null unless kind is RTX_PARAM_TEXT. Cut at 1024 bytes. */
  size_t length;    /* of text, in bytes; the text may hold NUL bytes */
  int32_t intValue;
  uint32_t uintValue;
} RtxErrorParam;

/* A function that the error passed through: source path (without suffix) and line. */
typedef struct RtxErrorSite {
  const char *path;
  int line;
} RtxErrorSite;

/*
 * One error. Places are those of the input: line and column count from 1 (columns in bytes), the offset from 0, of the
 * element's "<", the attribute's name or the text's first byte. For input that had to be transcoded they refer
 * to its UTF-8 form and transcoded is true. line 0: the error has no place in an input.
 */
typedef struct RtxError {
  int status;
  uint32_t paramCount;
  const RtxErrorParam *params;
  uint32_t siteCount; /* sites kept, 16 at most; the first is where the error was found */
  const RtxErrorSite *sites;
  uint32_t siteTotal; /* sites passed, kept or not */
  uint32_t line;
  uint32_t column;
  size_t offset;
  bool transcoded;
  const char *elementPath; /* names of the open elements as "/a/b"; empty outside an input */
} RtxError;

/* Number of errors recorded, kept or not. */
RTX_API uint32_t rtxErrCount(RuntimeContext *ctx);

/*
 * The index-th record kept, oldest first, or null past the last one. The context keeps the first ones up to the
 * option errorsKept, and always the newest. Valid until the next call that records, clears, resets or frees.
 */
RTX_API const RtxError *rtxErrAt(RuntimeContext *ctx, uint32_t index);

/*
 * Writes the index-th record as one line of text for people, without line break, cut at size - 1 bytes and
 * NUL-terminated when size is not 0. Control characters in parameters are escaped. Returns the length of the whole line
 * as snprintf does, 0 if there is no such record.
 */
RTX_API size_t rtxErrFormat(RuntimeContext *ctx, uint32_t index, char *buffer, size_t size);

/*
 * Writes the message of the index-th record alone, such as "unexpected element <bogus>", without its place and
 * status number. Cut, ended and counted as by rtxErrFormat.
 */
RTX_API size_t rtxErrMessage(RuntimeContext *ctx, uint32_t index, char *buffer, size_t size);

/* Forgets all records and pending parameters. */
RTX_API void rtxErrClear(RuntimeContext *ctx);

#ifdef __cplusplus
}
#endif

#endif
