/*
 * The namespace registries of the IMS codec: one for the IMS modules, one for the debug-info module.
 *
 * A registry is a small block that hangs in the context's global data slot and holds a table of namespace URIs.
 * Encoders create it on first use; the context's release callback frees it. Both registries share the slot: the
 * one that came first owns the context, and the other one's functions then work on its block. A context is meant
 * to serve either the IMS modules or the debug-info module.
 *
 * The block and the table come from malloc, not from the context's heap. Nothing here records an error. A context
 * belongs to one thread at a time. ctx must not be null.
 */
#ifndef QXXMLIMS_H
#define QXXMLIMS_H

#include "rtxContext.h"

#if defined(__GNUC__)
#define QX_API __attribute__((visibility("default")))
#else
#define QX_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* A registry block. */
typedef struct QxRegistry {
  const char **uriTable; /* null until it is first asked for */
} QxRegistry;

/* Entries of a URI table. Those that a registry does not fill are null. */
enum {
  QX_URI_SLOTS = 5
};

/* The context's block, made first if it has none; null if there is no storage for it. */
QX_API QxRegistry *QxGet_IMS_Global(RuntimeContext *ctx);

/* Frees the context's block and table and empties the slot. The release callback stays. */
QX_API void QxFree_IMS_Global(RuntimeContext *ctx);

/* The context's URI table, made first if it has none; null if there is no storage for it. */
QX_API const char *const *QxGet_IMS_NSURI(RuntimeContext *ctx);

/* 0 if block and table are there or could be made, else STATUS_NO_MEMORY, not recorded. */
QX_API int QxInit_IMS_Global(RuntimeContext *ctx);

/* The same for the debug-info module, whose table has one entry. */
QX_API QxRegistry *QxGet_DebugEvent_Global(RuntimeContext *ctx);
QX_API void QxFree_DebugEvent_Global(RuntimeContext *ctx);
QX_API const char *const *QxGet_DebugEvent_NSURI(RuntimeContext *ctx);
QX_API int QxInit_DebugEvent_Global(RuntimeContext *ctx);

#ifdef __cplusplus
}
#endif

#endif
