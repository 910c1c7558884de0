/*
 * The namespace bindings of a context, and the lists of declarations and foreign attributes of records. What returns a
 * status gives STATUS_BAD_CONTEXT for an unusable context.
 */
#ifndef RT_XML_NAMESPACE_H
#define RT_XML_NAMESPACE_H

#include "rtxContext.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Open and close a scope; closing drops the bindings made since. A surplus close does nothing.
 * Push returns 0 or STATUS_NO_MEMORY; pop returns 0.
 */
RTX_API int rtXmlNSPush(RuntimeContext *ctx);
RTX_API int rtXmlNSPop(RuntimeContext *ctx);

/*
 * Binds a prefix (null: the default namespace) to a URI in the current scope. Texts are copied. The last two
 * arguments are reserved: null and 0. Returns 0 or STATUS_NO_MEMORY.
 */
RTX_API int rtXmlNSAddPrefixLink(RuntimeContext *ctx, const char *prefix, const char *uri, void *reserved1,
                                 int reserved2);

enum {
  RTXML_NS_NONE = -1,
  RTXML_NS_FOREIGN = -2
};

/*
 * Index in the installed URI table of the URI that prefix (null: the default namespace) is bound to.
 * RTXML_NS_NONE: no namespace, that is no binding, an empty URI, or no table installed.
 * RTXML_NS_FOREIGN: a URI outside the table.
 */
RTX_API int rtXmlNSGetIndex(RuntimeContext *ctx, const char *prefix);

/*
 * The prefix bound to uri, the newest first: "" for the default namespace, null if uri is null or not bound.
 * Valid until the binding goes.
 */
RTX_API const char *rtXmlNSGetPrefix(RuntimeContext *ctx, const char *uri);

/*
 * Installs the URI table. The count pointers are copied, the texts must be constant. table null or entries null
 * are no namespaces. Returns 0 or STATUS_NO_MEMORY.
 */
RTX_API int rtXmlNSSetURITable(RuntimeContext *ctx, const char *const *table, uint32_t count);

/*
 * Declares prefix (null: default) for uri. list null: on the context, to be written by rtXmlEncNSAttrs; else in
 * that list of a record, where a prefix that is there already is not added again. Either way the prefix is bound
 * on the context. Without override a prefix that the host has declared keeps its URI.
 * Between rtXmlEncStartDocument and the end of that document both are the document's own and go with it (a list
 * keeps its entry); outside a document they are the host's and stay, over rtxContextReset too.
 * Texts are copied. Returns 0 or STATUS_NO_MEMORY.
 */
RTX_API int rtXmlNSSetNamespace(RuntimeContext *ctx, RtxNsDeclList *list, const char *prefix, const char *uri,
                                bool override);

/*
 * Forms the name of a qualified attribute in buffer: "prefix:localName" when the newest binding of the
 * namespace's URI that is not the default one has a prefix, else "localName". Returns 0, or
 * STATUS_BUFFER_OVERFLOW when it does not fit with its NUL.
 */
RTX_API int rtXmlNSGetAttrQName(RuntimeContext *ctx, char *buffer, size_t bufferSize, const RtxNamespace *ns,
                                const char *localName, size_t nameLength);

/* Free a list, its items and their texts, and leave it empty. */
RTX_API void rtXmlNSFreeAttrList(RuntimeContext *ctx, RtxNsDeclList *list);
RTX_API void rtXmlMemFreeAnyAttrs(RuntimeContext *ctx, RtxAttrList *list);

#ifdef __cplusplus
}
#endif

#endif
