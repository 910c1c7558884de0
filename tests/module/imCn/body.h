// What the tests of the 3GPP IMS body share.
#pragma once

#include "ImCn/QxXmlImCn.h"
#include "context.h"
#include "documentReading.h"
#include "documents.h"
#include "errors.h"
#include "output.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace body {

using namespace std::string_literals;
using namespace std::string_view_literals;
using support::Reading;

// ---- Functions by type ----------------------------------------------------------------------------------------

template <typename T> struct Functions;

#define BODY_FUNCTIONS(T)                                                                                              \
  static constexpr const char *name = #T;                                                                              \
  static constexpr auto init = QxInit_##T;                                                                             \
  static constexpr auto release = QxMemFree_##T;                                                                       \
  static constexpr auto print = QxPrint_##T;                                                                           \
  static constexpr auto encode = QxXmlET_##T;                                                                          \
  static constexpr auto startElement = QxXmlET_##T##_StartElement;                                                     \
  static constexpr auto contents = QxXmlET_##T##_Contents;                                                             \
  static constexpr auto endElement = QxXmlET_##T##_EndElement;

#define BODY_HANDLERS(T)                                                                                               \
  struct Filling {                                                                                                     \
    using Handler = SaxTypeHandler;                                                                                    \
    static int init(RuntimeContext *ctx, Handler *handler, T *record, int32_t level) {                                 \
      return QxSAX_##T##_init(ctx, handler, record, level);                                                            \
    }                                                                                                                  \
    static constexpr auto start = QxSAX_##T##_startElement;                                                            \
    static constexpr auto characters = QxSAX_##T##_characters;                                                         \
    static constexpr auto end = QxSAX_##T##_endElement;                                                                \
  };                                                                                                                   \
  struct Checking {                                                                                                    \
    using Handler = VsaxTypeHandler;                                                                                   \
    static int init(RuntimeContext *ctx, Handler *handler, T *, int32_t level) {                                       \
      return QxVSAX_##T##_init(ctx, handler, level);                                                                   \
    }                                                                                                                  \
    static constexpr auto start = QxVSAX_##T##_startElement;                                                           \
    static constexpr auto characters = QxVSAX_##T##_characters;                                                        \
    static constexpr auto end = QxVSAX_##T##_endElement;                                                               \
  };

template <> struct Functions<tAlternativeService> {
  BODY_FUNCTIONS(tAlternativeService)
  BODY_HANDLERS(tAlternativeService)
};
template <> struct Functions<tIMS3GPP_1> { BODY_FUNCTIONS(tIMS3GPP_1) };
template <> struct Functions<tIMS3GPP> {
  BODY_FUNCTIONS(tIMS3GPP)
  BODY_HANDLERS(tIMS3GPP)
};
#undef BODY_FUNCTIONS
#undef BODY_HANDLERS

// Calls test<T>() for each record type.
template <typename Test> void forEachType(Test test) {
  const auto run = [&]<typename T>() {
    SCOPED_TRACE(Functions<T>::name);
    test.template operator()<T>();
  };
  run.template operator()<tAlternativeService>();
  run.template operator()<tIMS3GPP_1>();
  run.template operator()<tIMS3GPP>();
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

inline constexpr unsigned char pattern = 0xA5; // of storage that nobody wrote

RtxXmlString xmlString(RuntimeContext *ctx, std::string_view text, bool cdata = false);
void addForeign(RuntimeContext *ctx, RtxAnyList &list, const char *element); // null: an entry without text
void addAttribute(RuntimeContext *ctx, RtxAttrList &list, const char *name, const char *value);

// Choose an alternative of a record without one.
tAlternativeService &chooseAlternative(RuntimeContext *ctx, tIMS3GPP_1 &choice, const char *type, const char *reason);
void chooseInfo(RuntimeContext *ctx, tIMS3GPP_1 &choice, const char *text);

// Every member present, each with a value of its own.
void fillCompletely(RuntimeContext *ctx, tIMS3GPP &record);

// What QxXmlE_ims_3gpp writes for that, without the XML declaration.
extern const std::string completeDocument;

// An initialised record in storage that had a pattern in it, released at its end.
template <typename T> class Record {
public:
  explicit Record(RuntimeContext *context) : Record(context, true) {}
  // Storage with the pattern alone, for a decoder.
  static Record uninitialised(RuntimeContext *context) { return Record(context, false); }
  ~Record() {
    if (owned) Functions<T>::release(ctx, &value);
  }
  Record(const Record &) = delete;
  Record &operator=(const Record &) = delete;

  operator T *() { return &value; }
  T *operator->() { return &value; }
  T &operator*() { return value; }

  bool owned; // release it at the end

private:
  Record(RuntimeContext *context, bool initialise) : owned(initialise), ctx(context) {
    std::memset(static_cast<void *>(&value), pattern, sizeof value);
    if (initialise) {
      EXPECT_EQ(Functions<T>::init(ctx, &value), 0);
    }
  }

  RuntimeContext *ctx;
  T value;
};

// Whether nobody has written a version into storage with the pattern.
bool isUnset(const double &version);

// ---- Records as text ------------------------------------------------------------------------------------------

// "type=t reason=r <x/> @k=v": a null text as "-", then foreign elements as they are and foreign attributes.
std::string dump(const tAlternativeService &record);
// "none", "alternative(type=t reason=r)", "info=text", or "t=5".
std::string dump(const tIMS3GPP_1 &record);
// "info=text version=1 <x/> @k=v", a version that nobody wrote as "unset".
std::string dump(const tIMS3GPP &record);

std::vector<std::string> foreignTexts(const RtxAnyList &list);

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
