/*
 * Encoder primitives. All write into the context's text buffer, escape what has to be escaped and record no
 * error. Each returns 0, STATUS_BUFFER_OVERFLOW (no room in a fixed buffer), STATUS_NO_MEMORY (a growing buffer
 * cannot grow), STATUS_INVALID_UTF8 (a character that XML cannot carry, or a text that is not UTF-8) or
 * STATUS_WRITE_FAILED (no output; an attribute or an end of a tag where no start tag is open, or an attribute that it
 * has already; an element inside an attribute's value; a document that ends inside a start tag). An unusable context
 * gives STATUS_BAD_CONTEXT. A primitive that fails leaves the output and the open tag as they were.
 *
 * A start tag that was left open is closed by the next primitive that writes content or an end tag. While the
 * context's state is XMLSTATE_IN_ATTRIBUTES nothing closes it, and text is escaped as in an attribute's value.
 *
 * elementName null writes the content alone. A namespace (null allowed) gives the prefix that is written, or the URI
 * whose prefix on the context is.
 */
#ifndef RT_XML_ENCODE_H
#define RT_XML_ENCODE_H

#include "rtxContext.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Begin a document with an XML declaration, and end it. Declarations made in between are the document's own. */
RTX_API int rtXmlEncStartDocument(RuntimeContext *ctx);
RTX_API int rtXmlEncEndDocument(RuntimeContext *ctx);

/* Opens an element; declarations (null allowed) go into the tag; terminate closes the tag. */
RTX_API int rtXmlEncStartElement(RuntimeContext *ctx, const char *localName, const RtxNamespace *ns,
                                 const RtxNsDeclList *declarations, bool terminate);

/*
 * Writes declarations into the open start tag: those of the list, or the context's own for null. A prefix that the tag
 * declares already is left out, and so is one that would move the tag's own name into another namespace.
 */
RTX_API int rtXmlEncNSAttrs(RuntimeContext *ctx, const RtxNsDeclList *declarations);

/*
 * Closes the open start tag. If it is a document's root whose own prefix is declared on the context but not in
 * the tag, that declaration is added first.
 */
RTX_API int rtXmlEncTermStartElement(RuntimeContext *ctx);

/* Writes the end tag; "<a" that is still open becomes "<a/>". */
RTX_API int rtXmlEncEndElement(RuntimeContext *ctx, const char *localName, const RtxNamespace *ns);

/* Elements of simple content. A null text writes an empty element. */
RTX_API int rtXmlEncString(RuntimeContext *ctx, const RtxXmlString *text, const char *elementName,
                           const RtxNamespace *ns);
RTX_API int rtXmlEncUTF8Str(RuntimeContext *ctx, const char *text, const char *elementName, const RtxNamespace *ns);
RTX_API int rtXmlEncUInt(RuntimeContext *ctx, uint32_t value, const char *elementName, const RtxNamespace *ns);
RTX_API int rtXmlEncHexBinary(RuntimeContext *ctx, uint32_t length, const uint8_t *bytes, const char *elementName,
                              const RtxNamespace *ns);

/* Copies a stored fragment of XML text as it stands; null text writes nothing. */
RTX_API int rtXmlEncAny(RuntimeContext *ctx, const RtxXmlString *fragment, const char *elementName,
                        const RtxNamespace *ns);

/* Attributes of the open start tag. Name and value lengths are in bytes; a null value writes an empty one. */
RTX_API int rtXmlEncUTF8Attr2(RuntimeContext *ctx, const char *name, size_t nameLength, const char *value,
                              size_t valueLength);
RTX_API int rtXmlEncBoolAttr(RuntimeContext *ctx, bool value, const char *name, size_t nameLength);
RTX_API int rtXmlEncUIntAttr(RuntimeContext *ctx, uint32_t value, const char *name, size_t nameLength);
RTX_API int rtXmlEncDecimalAttr(RuntimeContext *ctx, double value, const char *name, size_t nameLength);
RTX_API int rtXmlEncAnyAttr(RuntimeContext *ctx, const RtxAttrList *attributes);

#ifdef __cplusplus
}
#endif

#endif
