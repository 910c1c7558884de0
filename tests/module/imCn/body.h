// What the tests of the 3GPP IMS body share.
#pragma once

#include "ImCn/QxXmlImCn.h"
#include "context.h"
#include "documentReading.h"
#include "documents.h"
#include "errors.h"
#include "lists.h"
#include "output.h"
#include "record.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#define BODY_FUNCTIONS(T)                                                                                              \
  RECORD_FUNCTIONS(T)                                                                                                  \
  static void release(RuntimeContext *ctx, T *record) { QxMemFree_##T(ctx, record); }

template <> struct support::Functions<tAlternativeService> {
  BODY_FUNCTIONS(tAlternativeService)
  HANDLER_FUNCTIONS(tAlternativeService)
};
template <> struct support::Functions<tIMS3GPP_1> { BODY_FUNCTIONS(tIMS3GPP_1) };
template <> struct support::Functions<tIMS3GPP> {
  BODY_FUNCTIONS(tIMS3GPP)
  HANDLER_FUNCTIONS(tIMS3GPP)
};
#undef BODY_FUNCTIONS

namespace body {

using namespace std::string_literals;
using namespace std::string_view_literals;
using support::addAttribute;
using support::addForeign;
using support::foreignTexts;
using support::Functions;
using support::pattern;
using support::Reading;
using support::Record;
using support::xmlString;

// ---- Functions by type ----------------------------------------------------------------------------------------

// Calls test<T>() for each record type.
template <typename Test> void forEachType(const Test &test) {
  support::forEachType<tAlternativeService, tIMS3GPP_1, tIMS3GPP>(test);
}

// The two documents that are a text.
struct TextDocument {
  const char *root;
  int (*encode)(RuntimeContext *ctx, const RtxXmlString *text);
  int (*startElement)(RuntimeContext *ctx, const RtxXmlString *text);
  int (*contents)(RuntimeContext *ctx, const RtxXmlString *text);
  int (*endElement)(RuntimeContext *ctx, const RtxXmlString *text);
  int (*decode)(RuntimeContext *ctx, RtxXmlString *text);
  int (*validate)(RuntimeContext *ctx);
};
extern const TextDocument textDocuments[2];

// ---- Records by hand ------------------------------------------------------------------------------------------

// Choose an alternative of a record without one.
tAlternativeService &chooseAlternative(RuntimeContext *ctx, tIMS3GPP_1 &choice, const char *type, const char *reason);
void chooseInfo(RuntimeContext *ctx, tIMS3GPP_1 &choice, const char *text);

// Every member present, each with a value of its own.
void fillCompletely(RuntimeContext *ctx, tIMS3GPP &record);

// What QxXmlE_ims_3gpp writes for that, without the XML declaration.
extern const std::string completeDocument;

// Whether nobody has written a version into storage with the pattern.
bool isUnset(const double &version);

// ---- Records as text ------------------------------------------------------------------------------------------

// "type=t reason=r <x/> @k=v": a null text as "-", then foreign elements as they are and foreign attributes.
std::string dump(const tAlternativeService &record);
// "none", "alternative(type=t reason=r)", "info=text", or "t=5".
std::string dump(const tIMS3GPP_1 &record);
// "info=text version=1 <x/> @k=v", a version that nobody wrote as "unset".
std::string dump(const tIMS3GPP &record);

// ---- Reading and writing --------------------------------------------------------------------------------------

// As support::errors, with the ending of the source alone for a place: "-41(bogus)@runtime/reader<SAX".
std::string errorsOf(RuntimeContext *ctx);

// Decodes, validates the context's input, and releases what it got.
Reading decodeInput(RuntimeContext *ctx);
Reading decode(RuntimeContext *ctx, const std::string &document);
Reading decode(const std::string &document);
int decodeStatus(RuntimeContext *ctx);
Reading validate(RuntimeContext *ctx, const std::string &document);
Reading validate(const std::string &document);

// The same for a document that is a text; "untouched" if nothing was stored.
Reading decodeTextInput(RuntimeContext *ctx, const TextDocument &document);
Reading decodeText(RuntimeContext *ctx, const TextDocument &document, const std::string &text);

// A document of version 1 around content, and one with an alternative service around it.
std::string document(std::string_view content);
std::string alternative(std::string_view content);

std::string encodeRecord(RuntimeContext *ctx, const tIMS3GPP *record);
} // namespace body
