/*
 * The runtime context: everything that one conversation with the codec keeps between calls.
 *
 * A context belongs to one thread at a time; different contexts may be used on different threads at once.
 * Callbacks that run while a reader parses (handlers, trace, allocator) must not reset or free the context; a reset is
 * then ignored. While a reader is at work, from its creation to its release, input and output cannot be set:
 * STATUS_BAD_CONTEXT.
 * Nothing in the runtime is shared between contexts.
 */
#ifndef RTX_CONTEXT_H
#define RTX_CONTEXT_H

#include "rtxStatus.h"
#include "rtxTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The version of the contract that these headers are. It changes with whatever one side must know of the other. */
#define RTX_CONTRACT_VERSION 1

/* Flags of a context. */
enum RtxContextFlag {
  NamespacesPreset = 0x400 /* the host has declared the namespaces; prefixed roots declare none */
};

/* Values of the state byte. */
enum RtxXmlState {
  XMLSTATE_INITIAL = 0,
  XMLSTATE_IN_ELEMENT = 2,    /* inside an element, nothing collected */
  XMLSTATE_IN_ATTRIBUTES = 3, /* attributes are being written into an open start tag */
  XMLSTATE_IN_TEXT = 4,       /* character data is being collected */
  XMLSTATE_DOC_END = 5        /* the element of a handler has ended */
};

/* A byte buffer that grows on a context's heap. All zero but the context is empty. */
typedef struct RtxMemBuf {
  RuntimeContext *context; /* whose heap it grows on */
  size_t start;            /* index of the first byte in use */
  size_t used;             /* index behind the last byte in use */
  size_t capacity;         /* bytes that data has room for */
  char *data;              /* null until something was appended */
} RtxMemBuf;

/* What handlers may touch of the reader: the buffer in which a child's character data is collected. */
typedef struct RtxReaderInfo {
  RtxMemBuf text; /* from start to used: what was collected so far */
} RtxReaderInfo;

/* The bytes that encoders write to and converters read from. */
typedef struct RtxTextBuffer {
  char *data;       /* null: neither input nor output */
  size_t byteIndex; /* where the next byte is written or read */
  size_t size;      /* bytes of data */
  bool dynamic;     /* grows on demand; data then belongs to the context */
} RtxTextBuffer;

/* Called with the context when the context is freed. */
typedef void (*RtxContextRelease)(RuntimeContext *ctx);

/*
 * The members below are what the codec relies on. A host may read them, set flags, and hang data of its own
 * on globalData if it uses neither registry of the codec. Everything else is behind internals.
 */
struct RuntimeContext {
  uintptr_t signature;  /* tells a context from other storage; set by rtxContextCreate */
  RtxTextBuffer buffer; /* the input, the output, or what is being converted */
  uint32_t flags;       /* of RtxContextFlag */
  uint8_t state;        /* of RtxXmlState */
  bool traced;          /* a trace was asked for: handlers then call rtSaxDiagStartFunc and rtSaxDiagEndFunc */
  /* RTX_CONTRACT_VERSION of the runtime; set by rtxContextCreate. The codec refuses a context with another than it was
     built for, with STATUS_BAD_CONTEXT. This member and those above stay where they are in every version. */
  uint16_t contract;
  RtxReaderInfo *reader;           /* never null in a context that rtxContextCreate made */
  void *globalData;                /* null in a new context */
  RtxContextRelease globalRelease; /* called with the context when that is freed; null: nothing to do */
  struct RtxInternals *internals;  /* the runtime's own */
};

/* What a host may choose when it creates a context. Fill it with rtxOptionsInit first, then change members. */
typedef struct RuntimeOptions {
  /* Storage. Both callbacks or neither; null takes malloc and free. Blocks must suit any type; null is no storage. */
  void *(*allocate)(void *user, size_t size);
  void (*release)(void *user, void *block); /* block is never null */
  void *allocatorUser;                      /* passed as user */

  size_t heapLimit;        /* bytes of records and scratch alive at once; default 32 MiB */
  size_t inputLimit;       /* bytes of one document; default 16 MiB */
  uint32_t depthLimit;     /* open elements at once; default and greatest 256 */
  uint32_t attributeLimit; /* attributes of one start tag, declarations included; default and greatest 128 */
  uint32_t nameLimit;      /* different names in one document; default 4096. Up to 1024 seen before need not count */
  size_t tagLimit;         /* bytes of one start tag; default 4 MiB, never below 2 KiB */
  size_t textLimit;        /* bytes of text directly inside one element; default 16 MiB */
  uint32_t errorLimit;     /* errors that one reader lets the codec record; default 100, 0 records none */
  uint32_t errorsKept;     /* records kept of one context beside the last one; default 100 */

  /* Called at the entry (enter true) and exit of every handler callback. Null: no trace. */
  void (*trace)(void *user, bool enter, const char *function, const char *element);
  void *traceUser; /* passed as user */
} RuntimeOptions;

/* Fills options with the defaults. Null is a no-op. */
RTX_API void rtxOptionsInit(RuntimeOptions *options);

/*
 * A new context, or null if there is no storage or options have one of the storage callbacks without the other. options
 * null takes the defaults; the options are copied. The caller frees it with rtxContextFree. May be called on several
 * threads at once.
 */
RTX_API RuntimeContext *rtxContextCreate(const RuntimeOptions *options);

/*
 * Makes a context ready for the next message: drops records, errors, input and output. Options, flags, the
 * host's own namespace declarations, globalData and the storage taken so far stay. Null is a no-op.
 * Everything that came from the context's heap is gone afterwards.
 */
RTX_API void rtxContextReset(RuntimeContext *ctx);

/*
 * Frees a context and all that it holds. globalRelease is called once, first, if it is set. Null is a no-op.
 */
RTX_API void rtxContextFree(RuntimeContext *ctx);

/* 0, or STATUS_BAD_CONTEXT if ctx is unusable: null, or storage that is no context of rtxContextCreate's. */
RTX_API int rtxCheckContext(RuntimeContext *ctx);

/*
 * Sets the document to be read. The bytes are copied and may go at once. Null bytes leave the context without
 * input. The input can be read more than once. Returns 0, STATUS_BAD_CONTEXT, STATUS_NO_MEMORY, or
 * STATUS_LIMIT_EXCEEDED for more bytes than inputLimit; the last two are recorded and leave no input.
 */
RTX_API int rtxSetInput(RuntimeContext *ctx, const char *bytes, size_t length);

/*
 * The same without a copy: text[length] must be NUL, and text must stay as it is until the call that reads it
 * has returned. Errors as rtxSetInput.
 */
RTX_API int rtxSetInputZ(RuntimeContext *ctx, const char *text, size_t length);

/*
 * Sends output to a buffer of the caller's, which must outlive its use. A document of N bytes needs N + 1.
 * Null or size 0 leaves no room at all. Returns 0 or STATUS_BAD_CONTEXT.
 */
RTX_API int rtxSetOutput(RuntimeContext *ctx, char *buffer, size_t size);

/*
 * Sends output to a buffer of the context's, which grows as needed, belongs to the context, and is used again by
 * the next call of this function. It is no part of the heap. Returns 0, STATUS_BAD_CONTEXT or STATUS_NO_MEMORY.
 */
RTX_API int rtxSetOutputDynamic(RuntimeContext *ctx);

/*
 * What was written since the output was set, NUL-terminated once an encoder has succeeded; *length (null
 * allowed) takes its bytes. Null, and length 0, when the context has no output or is unusable. Valid until the output
 * changes.
 */
RTX_API const char *rtxGetOutput(RuntimeContext *ctx, size_t *length);

/*
 * The most errors that each reader created from now on lets the codec record; 0 records none. An unusable context is a
 * no-op.
 */
RTX_API void rtxSetErrorLimit(RuntimeContext *ctx, uint32_t limit);

/* "major.minor.patch" of the runtime, a constant. Needs no context. */
RTX_API const char *rtxVersion(void);

#ifdef __cplusplus
}
#endif

#endif
