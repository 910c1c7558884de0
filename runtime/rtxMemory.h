/*
 * The heap, the collection buffer and the text buffer of a context. Nothing here records an error. What frees, and what
 * returns a pointer, takes an unusable context for one without storage: it does nothing, or returns null.
 */
#ifndef RTX_MEMORY_H
#define RTX_MEMORY_H

#include "rtxContext.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Heap: storage that goes with the context ------------------------------------------------------------- */

/*
 * Storage for size bytes, aligned for any member of a record (8), not cleared; null if the system or the
 * context's limit gives no more. Size 0 gives a block that can be freed.
 */
RTX_API void *rtxMemHeapAlloc(RuntimeContext *ctx, size_t size);

/* Frees one block of this context's heap, once. Null is a no-op. */
RTX_API void rtxMemHeapFreePtr(RuntimeContext *ctx, const void *block);

/* What a context's heap holds and has held, in bytes unless named otherwise. */
typedef struct RtxHeapStats {
  size_t blocks;        /* blocks alive */
  size_t used;          /* asked for by the blocks alive */
  size_t peakUsed;      /* greatest used since the context was created or reset */
  size_t reserved;      /* taken from the system and kept */
  uint64_t systemCalls; /* calls of the system allocator since the context was created */
} RtxHeapStats;

/* Takes the statistics. An unusable context gives zeros; stats null is a no-op. */
RTX_API void rtxHeapStats(RuntimeContext *ctx, RtxHeapStats *stats);

/* ---- Memory buffer ---------------------------------------------------------------------------------------- */

/* Appends bytes. 0, or STATUS_NO_MEMORY with the buffer unchanged. A null buffer takes nothing and succeeds. */
RTX_API int rtxMemBufAppend(RtxMemBuf *buffer, const char *bytes, size_t length);

/* Empties the buffer; the bytes stay readable until the next append. Null is a no-op. */
RTX_API void rtxMemBufReset(RtxMemBuf *buffer);

/* ---- Text buffer ------------------------------------------------------------------------------------------ */

/*
 * Makes room for count more bytes behind byteIndex. Returns 0, STATUS_BUFFER_OVERFLOW when there is no output or a
 * fixed buffer has no room, STATUS_NO_MEMORY when a growing one cannot grow, STATUS_BAD_CONTEXT. May move the data:
 * read data and byteIndex again.
 */
RTX_API int rtxCheckBuffer(RuntimeContext *ctx, size_t count);

/* Points the text buffer at bytes that outlive its use, for a conversion. 0, or STATUS_BAD_CONTEXT. */
RTX_API int rtxInitContextBuffer(RuntimeContext *ctx, const char *bytes, size_t length);

/* ---- Lists ------------------------------------------------------------------------------------------------ */

/*
 * Appends a node that refers to data, which the caller goes on to own until the node is there. Returns the node, or
 * null with the list unchanged if there is no storage or list is null. A host that takes a node out of its list again
 * frees data and node with rtxMemHeapFreePtr.
 */
RTX_API RtxListNode *rtxDListAppend(RuntimeContext *ctx, RtxList *list, void *data);

/*
 * Frees every node and the heap block that it refers to, and leaves the list empty. What the blocks refer to stays:
 * release functions free that first. Null is a no-op.
 */
RTX_API void rtxDListFreeAll(RuntimeContext *ctx, RtxList *list);

#ifdef __cplusplus
}
#endif

#endif
