// The engines that interpret the tables: one for each family of functions. The exported functions of a module only
// name the table; see Functions.h.
#pragma once

#include "Schema.h"

namespace ims {

// ---- Records --------------------------------------------------------------------------------------------------

// Checks the context and clears a record: absent, texts null, lists empty, scalars as they were unless the schema
// gives them a value.
int initRecord(RuntimeContext *ctx, const TypeSchema &type, void *record);

// The same for a context that is known to be one.
void clearRecord(const TypeSchema &type, void *record);

// Gives back what a record holds. Members that no release function may touch stay until the heap goes.
int freeRecord(RuntimeContext *ctx, const TypeSchema &type, void *record);

// Gives back all that a record holds which its caller will never see, those members included.
void discardRecord(RuntimeContext *ctx, const TypeSchema &type, void *record);

// Prints a record, one line a value.
int printRecord(const char *name, const TypeSchema &type, const void *record);

// Appends an item; the list's count afterwards.
uint32_t appendItem(RuntimeContext *ctx, RtxList *list, void *item);

// ---- Enumerations ---------------------------------------------------------------------------------------------

// The text of a code, taken modulo 65536.
const char *enumText(const EnumSchema &type, uint32_t code);

// The code of a text of length bytes; text may be null, which is no value, and code may be null.
int enumCode(const EnumSchema &type, const char *text, size_t length, uint16_t *code);

// The code of a NUL-terminated text; null is no value.
int enumCodeOfText(const EnumSchema &type, const char *text, uint16_t *code);

int printEnum(const char *name, const EnumSchema &type, uint32_t code);

// ---- Encoding -------------------------------------------------------------------------------------------------

int encodeType(RuntimeContext *ctx, const TypeSchema &type, const void *record, const char *element,
               const RtxNamespace *ns);
int encodeTypeStart(RuntimeContext *ctx, const TypeSchema &type, const void *record, const char *element,
                    const RtxNamespace *ns);
int encodeTypeAttributes(RuntimeContext *ctx, const TypeSchema &type, const void *record, const RtxNamespace *ns);
// Children are written under the prefix that the context binds to the module's namespace.
int encodeTypeContents(RuntimeContext *ctx, const TypeSchema &type, const void *record);
int encodeTypeEnd(RuntimeContext *ctx, const TypeSchema &type, const char *element, const RtxNamespace *ns);

int encodeEnum(RuntimeContext *ctx, const EnumSchema &type, uint32_t code, const char *element, const RtxNamespace *ns);
int encodeEnumStart(RuntimeContext *ctx, const EnumSchema &type, const char *element, const RtxNamespace *ns);
int encodeEnumContents(RuntimeContext *ctx, const EnumSchema &type, uint32_t code);
int encodeEnumEnd(RuntimeContext *ctx, const EnumSchema &type, const char *element, const RtxNamespace *ns);

// ---- Decoding and validating ----------------------------------------------------------------------------------

int initHandler(RuntimeContext *ctx, const TypeSchema &type, SaxTypeHandler *handler, void *record, int32_t level);
int initHandler(RuntimeContext *ctx, const TypeSchema &type, VsaxTypeHandler *handler, int32_t level);

// The events of one handler and of the chain of delegates below it.
template <class Handler>
int walkStart(Handler *handler, const char *localName, const char *qualifiedName, const char *const *attributes);
template <class Handler> int walkCharacters(Handler *handler, const char *bytes, size_t length);
template <class Handler> int walkEnd(Handler *handler, const char *localName, const char *qualifiedName);

// Ends the handlers below this one that a document cut off has left open, with what they had not handed over.
template <class Handler> void releaseDelegates(Handler *handler);

// ---- Documents ------------------------------------------------------------------------------------------------

// value is the address of the record, of an RtxXmlString or RtxHexBinary, or of the uint16_t code.
int encodeDocument(RuntimeContext *ctx, const DocumentSchema &document, const void *value);
int encodeDocumentStart(RuntimeContext *ctx, const DocumentSchema &document, const void *value);
int encodeDocumentContents(RuntimeContext *ctx, const DocumentSchema &document, const void *value);
int encodeDocumentEnd(RuntimeContext *ctx, const DocumentSchema &document);

int decodeDocument(RuntimeContext *ctx, const DocumentSchema &document, void *value);

// STATUS_NOT_SUPPORTED for a document of simple type, which nothing looks at.
int validateDocument(RuntimeContext *ctx, const DocumentSchema &document);

} // namespace ims
