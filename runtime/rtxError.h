/*
 * Error records of a context. Every function here accepts a null or unusable context: it then records nothing, and
 * returns what it says of a context without errors.
 */
#ifndef RTX_ERROR_H
#define RTX_ERROR_H

#include "rtxContext.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- For the codec ---------------------------------------------------------------------------------------- */
/*
 * Starts a new record with the parameters added since the last record. Status 0 is a no-op. Returns status. path must
 * be constant.
 */
RTX_API int rtxErrSetNewData(RuntimeContext *ctx, int status, const char *path, int line);

/*
 * Adds a place to the trail of the newest record if that has the same status; otherwise starts a record without
 * parameters, since nobody has recorded this status yet. Status 0 is a no-op. Returns status.
 */
RTX_API int rtxErrSetData(RuntimeContext *ctx, int status, const char *path, int line);

/*
 * Add a parameter to the record about to be started. Texts are copied; null is an empty text. A text for which there is
 * no storage becomes empty; more than eight parameters are dropped.
 */
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

/* Which member of a parameter has its value. */
typedef enum RtxErrorParamKind {
  RTX_PARAM_TEXT,
  RTX_PARAM_INT,
  RTX_PARAM_UINT
} RtxErrorParamKind;

/* A parameter of an error, such as the name of an element. */
typedef struct RtxErrorParam {
  RtxErrorParamKind kind; /* what the value is */
  const char *text;       /* NUL-terminated; null unless kind is RTX_PARAM_TEXT. Cut at 1024 bytes. */
  size_t length;          /* of text, in bytes; the text may hold NUL bytes */
  int32_t intValue;       /* of kind RTX_PARAM_INT; else 0 */
  uint32_t uintValue;     /* of kind RTX_PARAM_UINT; else 0 */
} RtxErrorParam;

/* A function that the error passed through. */
typedef struct RtxErrorSite {
  const char *path; /* of the source, without suffix; a constant */
  int line;         /* the same in every build */
} RtxErrorSite;

/*
 * One error. Places are those of the input: of the element's "<", the attribute's name or the text's first byte. For
 * input that had to be transcoded they refer to its UTF-8 form.
 */
typedef struct RtxError {
  int status;                  /* of RtxStatus */
  uint32_t paramCount;         /* of params; rtxStatus.h tells which a status has */
  const RtxErrorParam *params; /* in order */
  uint32_t siteCount;          /* sites kept, 16 at most; the first is where the error was found */
  const RtxErrorSite *sites;   /* in the order in which they were passed */
  uint32_t siteTotal;          /* sites passed, kept or not */
  uint32_t line;               /* from 1; 0: the error has no place in an input */
  uint32_t column;             /* from 1, in bytes */
  size_t offset;               /* from 0, in bytes */
  bool transcoded;             /* the place is one in the UTF-8 form of the input */
  const char *elementPath;     /* names of the open elements as "/a/b"; empty outside an input */
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
