/*
 * Records that a host builds by hand: members that own storage of a context's heap.
 *
 * ctx is the context that the record's storage comes from and that frees it, used by one thread at a time. An
 * unusable context, or a null member or list, changes nothing and gives STATUS_BAD_CONTEXT, not recorded. Other
 * failures are recorded, and leave the member or the list as it was:
 *   STATUS_NO_MEMORY    the heap or the system has no more storage
 *   STATUS_INVALID_UTF8 a NUL among the bytes of a text, which would end it there
 * Nothing else is asked of a text here; the encoder refuses what is not UTF-8.
 *
 * Presence bits are the caller's to set. A choice wants no function: release it, initialise it, which leaves its
 * selector and all of its union zero, and set the selector.
 */
#ifndef RTX_RECORD_H
#define RTX_RECORD_H

#include "rtxContext.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Makes a copy of length bytes, and a NUL behind them, the text of a member that has been initialised; cdata becomes
 * false. The text that was there is freed, and may be or hold the bytes that are copied. Null bytes unset the member.
 * Returns 0 or a status.
 */
RTX_API int rtxSetText(RuntimeContext *ctx, RtxXmlString *member, const char *bytes, size_t length);

/*
 * Appends an item of size bytes, all zero and aligned for any record; a record is still to be initialised. The list
 * owns it. Returns the item, or null.
 */
RTX_API void *rtxAppendItem(RuntimeContext *ctx, RtxList *list, size_t size);

/*
 * Appends a text, copied as by rtxSetText, to a list of RtxXmlString: texts, or the items of an RtxAnyList. Null bytes
 * append one that is not set. Returns 0 or a status.
 */
RTX_API int rtxAppendText(RuntimeContext *ctx, RtxList *list, const char *bytes, size_t length);

#ifdef __cplusplus
}
#endif

#endif
