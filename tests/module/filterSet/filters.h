// What the tests of notification filters share: records built by hand, records as text, and reading in one call.
#pragma once

#include "FilterSet/QxXmlFilterSet.h"
#include "context.h"
#include "documentReading.h"
#include "documents.h"
#include "errors.h"
#include "lists.h"
#include "output.h"
#include "types.h"
#include "xmlJudge.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace filters {

using namespace std::string_literals;
using namespace std::string_view_literals;
using support::addAttribute;
using support::addForeign;
using support::addText;
using support::pattern;
using support::printed;
using support::Reading;
using support::Record;
using support::xmlString;

inline constexpr const char *namespaceUri = "urn:ietf:params:xml:ns:simple-filter";

// ---- Building ------------------------------------------------------------------------------------------------------

// A block of the context's heap with a pattern in it, so that a member that nobody wrote shows.
template <class T> T *newBlock(RuntimeContext *ctx) {
  void *block = rtxMemHeapAlloc(ctx, sizeof(T));
  std::memset(block, pattern, sizeof(T));
  return static_cast<T *>(block);
}

// A new, initialised item at the end of a list.
template <class T> T &append(RuntimeContext *ctx, RtxList &list) {
  T *item = newBlock<T>(ctx);
  EXPECT_EQ(Functions<T>::init(ctx, item), 0);
  rtxDListAppend(ctx, &list, item);
  return *item;
}

void declare(RuntimeContext *ctx, RtxNsDeclList &list, const char *prefix, const char *uri);

// Sets every member that a type has, and every presence bit.
void fill(RuntimeContext *ctx, NSBinding &record);
void fill(RuntimeContext *ctx, NSBindings &record);
void fill(RuntimeContext *ctx, InclType &record);
void fill(RuntimeContext *ctx, ExclType &record);
void fill(RuntimeContext *ctx, WhatType &record);
void fill(RuntimeContext *ctx, ChangedType &record);
void fill(RuntimeContext *ctx, TriggerType &record);
void fill(RuntimeContext *ctx, FilterType &record);
void fill(RuntimeContext *ctx, FilterSetType &record);

// The document of the filled FilterSetType: names of the module's own elements are written "q:name".
inline constexpr std::string_view fullBody =
    "<q:filter-set package=\"presence\" k=\"v\">"
    "<q:ns-bindings><q:ns-binding prefix=\"p\" urn=\"urn:p\"/><q:ns-binding prefix=\"q\" urn=\"urn:q\"/>"
    "</q:ns-bindings>"
    "<q:filter id=\"a\" uri=\"sip:a@example.com\" domain=\"example.com\" remove=\"true\" enabled=\"false\" k=\"v\">"
    "<q:what><q:include xmlns:v=\"urn:v\" type=\"namespace\" v:k=\"1\" l=\"2\">urn:p</q:include>"
    "<q:include>/p:a</q:include>"
    "<q:exclude xmlns:v=\"urn:v\" type=\"xpath\" v:k=\"1\" l=\"2\">/p:a/p:b</q:exclude>"
    "<x:f xmlns:x=\"urn:x\"/></q:what>"
    "<q:trigger>"
    "<q:changed xmlns:v=\"urn:v\" from=\"CLOSED\" to=\"OPEN\" by=\"2.5\" v:k=\"1\" l=\"2\">/p:a/p:c</q:changed>"
    "<q:added>/p:d</q:added><q:added>/p:e</q:added><q:removed>/p:f</q:removed>"
    "<x:g xmlns:x=\"urn:x\">t</x:g></q:trigger>"
    "<x:h xmlns:x=\"urn:x\"/></q:filter>"
    "<q:filter id=\"b\"/></q:filter-set>";

// A record with every member.
template <class T> struct CompleteRecord : Record<T> {
  explicit CompleteRecord(RuntimeContext *context) : Record<T>(context) { fill(context, **this); }
};

// ---- Showing -------------------------------------------------------------------------------------------------------

// A record on one line: attributes and foreign attributes (these with "@") in round brackets, then text in square or
// children in curly ones: "filter(id=a uri=sip:x @k=v){what{include(type=xpath)[/a]} trigger{added[/b]}}". Only what is
// present shows; a null text as "-".
std::string dump(const NSBindings &record);
std::string dump(const WhatType &record);
std::string dump(const TriggerType &record);
std::string dump(const FilterType &record);
std::string dump(const FilterSetType &record); // without the name of the element

// The errors of the context, with the sources as "Enc", "Dec", "SAX" and "Vldt" and without their lines, of which no
// one but the source is promised: "-33(NSBinding,k)@SAX".
std::string errorList(RuntimeContext *ctx);

// An element's meaning where white space between children has none.
std::string meaning(const support::XmlElement &element);

// ---- Reading and writing
// ---------------------------------------------------------------------------------------------

// Decodes, validates the context's input, and releases what it got.
Reading decodeInput(RuntimeContext *ctx);
int decodeStatus(RuntimeContext *ctx);
Reading decode(RuntimeContext *ctx, const std::string &document);
Reading decode(const std::string &document);
Reading validate(RuntimeContext *ctx, const std::string &document);
Reading validate(const std::string &document);

// A document with the module's namespace as the default one around content; attributes begin with a blank.
std::string document(std::string_view content, std::string_view attributes = "");

// What QxXmlE_filter_set writes, without the XML declaration.
std::string encodeRecord(RuntimeContext *ctx, const FilterSetType *record);

// What the encoder of a type writes under name.
template <class T>
std::string encodeType(RuntimeContext *ctx, const T *record, const char *name, const RtxNamespace *ns = nullptr) {
  return support::encoded(ctx, [&](RuntimeContext *c) { return Functions<T>::encode(c, record, name, ns); });
}

} // namespace filters
