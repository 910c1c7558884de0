// What the tests of the composing indication share.
#pragma once

#include "IsComposing/QxXmlIsComposing.h"
#include "context.h"
#include "documentReading.h"
#include "documents.h"
#include "errors.h"
#include "output.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace composing {

using namespace std::string_literals;
using namespace std::string_view_literals;
using support::Reading;

inline constexpr const char *namespaceUri = "urn:ietf:params:xml:ns:im-iscomposing";

// A heap copy, as a decoder makes one.
RtxXmlString xmlString(RuntimeContext *ctx, const char *text, bool cdata = false);

// A record to be released by QxMemFree_tns__isComposing.
class Record {
public:
  // Storage with a pattern in it, so that a member that nobody wrote shows.
  explicit Record(RuntimeContext *context);
  // The same after QxInit_tns__isComposing, with its state set.
  Record(RuntimeContext *context, const char *state);
  ~Record();
  Record(const Record &) = delete;
  Record &operator=(const Record &) = delete;

  Record &lastactive(const char *text);
  Record &contenttype(const char *text);
  Record &refresh(uint32_t value);
  Record &foreign(const char *element);

  operator tns__isComposing *() { return &value; }
  tns__isComposing *operator->() { return &value; }
  const tns__isComposing &get() const { return value; }

  bool initialised = false; // release it at the end

private:
  RuntimeContext *ctx;
  tns__isComposing value;
};

// Every member that is present: "state=active lastactive=... contenttype=... refresh=5 any=<x/> any=<y/>"; a null text
// as "-".
std::string dump(const tns__isComposing &record);

std::vector<std::string> foreignTexts(const tns__isComposing &record);

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
