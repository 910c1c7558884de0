// What the tests of the composing indication share.
#pragma once

#include "IsComposing/QxXmlIsComposing.h"
#include "context.h"
#include "documentReading.h"
#include "documents.h"
#include "errors.h"
#include "lists.h"
#include "output.h"
#include "record.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

template <> struct support::Functions<tns__isComposing> {
  RECORD_FUNCTIONS(tns__isComposing)
  HANDLER_FUNCTIONS(tns__isComposing)
  static void release(RuntimeContext *ctx, tns__isComposing *record) { QxMemFree_tns__isComposing(ctx, record); }
};

namespace composing {

using namespace std::string_literals;
using namespace std::string_view_literals;
using support::foreignTexts;
using support::Functions;
using support::orDash;
using support::pattern;
using support::printed;
using support::Reading;
using support::xmlString;

inline constexpr const char *namespaceUri = "urn:ietf:params:xml:ns:im-iscomposing";

// A record whose members are set in one expression.
class Record : public support::Record<tns__isComposing> {
public:
  // With this state; null: without one.
  Record(RuntimeContext *context, const char *state);
  static Record uninitialised(RuntimeContext *context) { return Record(context); }

  Record &lastactive(const char *text);
  Record &contenttype(const char *text);
  Record &refresh(uint32_t value);
  Record &foreign(const char *element);

private:
  explicit Record(RuntimeContext *context) : support::Record<tns__isComposing>(context, false) {}
};

// Every member that is present: "state=active lastactive=... contenttype=... refresh=5 any=<x/> any=<y/>"; a null text
// as "-".
std::string dump(const tns__isComposing &record);

// Decodes, validates the context's input, and releases what it got.
Reading decodeInput(RuntimeContext *ctx);
Reading decode(RuntimeContext *ctx, const std::string &document);
Reading decode(const std::string &document);
int decodeStatus(RuntimeContext *ctx);
Reading validate(RuntimeContext *ctx, const std::string &document);
Reading validate(const std::string &document);

// A document with the module's namespace as the default one around content.
std::string document(std::string_view content);

// What QxXmlE_tns_isComposing writes, without the XML declaration.
std::string encodeRecord(RuntimeContext *ctx, const tns__isComposing *record);
} // namespace composing
