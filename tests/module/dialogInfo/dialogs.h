// What the tests of the records of dialog state, and of writing them, share.
#pragma once

#include "DialogInfo/QxXmlDialogInfo.h"
#include "context.h"
#include "errors.h"
#include "output.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace dialogs {

using namespace std::string_literals;
using namespace std::string_view_literals;

inline constexpr const char *namespaceUri = "urn:ietf:params:xml:ns:dialog-info";

// ---- Functions by type ----------------------------------------------------------------------------------------

// Those that every record type has.
template <typename T> struct Functions;

#define DIALOGS_FUNCTIONS(T)                                                                                           \
  template <> struct Functions<T> {                                                                                    \
    static constexpr const char *name = #T;                                                                            \
    static constexpr auto init = QxInit_##T;                                                                           \
    static constexpr auto print = QxPrint_##T;                                                                         \
    static constexpr auto encode = QxXmlET_##T;                                                                        \
    static constexpr auto startElement = QxXmlET_##T##_StartElement;                                                   \
    static constexpr auto contents = QxXmlET_##T##_Contents;                                                           \
    static constexpr auto endElement = QxXmlET_##T##_EndElement;                                                       \
  };
DIALOGS_FUNCTIONS(tns__state)
DIALOGS_FUNCTIONS(tns__dialog_replaces)
DIALOGS_FUNCTIONS(tns_nameaddr)
DIALOGS_FUNCTIONS(tns__dialog_route_set)
DIALOGS_FUNCTIONS(tns_participant_target_param)
DIALOGS_FUNCTIONS(tns_participant_target)
DIALOGS_FUNCTIONS(tns_sessd)
DIALOGS_FUNCTIONS(tns_participant)
DIALOGS_FUNCTIONS(tns__dialog)
DIALOGS_FUNCTIONS(tns__dialog_info)
#undef DIALOGS_FUNCTIONS

// Calls test<T>() for each record type.
template <typename Test> void forEachType(Test test) {
  const auto run = [&]<typename T>() {
    SCOPED_TRACE(Functions<T>::name);
    test.template operator()<T>();
  };
  run.template operator()<tns__state>();
  run.template operator()<tns__dialog_replaces>();
  run.template operator()<tns_nameaddr>();
  run.template operator()<tns__dialog_route_set>();
  run.template operator()<tns_participant_target_param>();
  run.template operator()<tns_participant_target>();
  run.template operator()<tns_sessd>();
  run.template operator()<tns_participant>();
  run.template operator()<tns__dialog>();
  run.template operator()<tns__dialog_info>();
}

// The document whose root is of a type.
template <typename T> struct Document;

#define DIALOGS_DOCUMENT(T, function, rootName)                                                                        \
  template <> struct Document<T> {                                                                                     \
    static constexpr const char *root = rootName;                                                                      \
    static constexpr auto encode = QxXmlE_##function;                                                                  \
    static constexpr auto startElement = QxXmlE_##function##_StartElement;                                             \
    static constexpr auto contents = QxXmlE_##function##_Contents;                                                     \
    static constexpr auto endElement = QxXmlE_##function##_EndElement;                                                 \
    static constexpr auto decode = QxXmlD_##function;                                                                  \
  };
DIALOGS_DOCUMENT(tns__dialog_info, tns_dialog_info, "dialog-info")
DIALOGS_DOCUMENT(tns__dialog, tns_dialog, "dialog")
DIALOGS_DOCUMENT(tns__state, tns_state, "state")
#undef DIALOGS_DOCUMENT

template <typename Test> void forEachDocument(Test test) {
  const auto run = [&]<typename T>() {
    SCOPED_TRACE(Document<T>::root);
    test.template operator()<T>();
  };
  run.template operator()<tns__dialog_info>();
  run.template operator()<tns__dialog>();
  run.template operator()<tns__state>();
}

// ---- Records by hand ------------------------------------------------------------------------------------------

// Gives back all that a record holds, also what no function of the library does.
void releaseWhole(RuntimeContext *ctx, tns__state &record);
void releaseWhole(RuntimeContext *ctx, tns__dialog_replaces &record);
void releaseWhole(RuntimeContext *ctx, tns_nameaddr &record);
void releaseWhole(RuntimeContext *ctx, tns__dialog_route_set &record);
void releaseWhole(RuntimeContext *ctx, tns_participant_target_param &record);
void releaseWhole(RuntimeContext *ctx, tns_participant_target &record);
void releaseWhole(RuntimeContext *ctx, tns_sessd &record);
void releaseWhole(RuntimeContext *ctx, tns_participant &record);
void releaseWhole(RuntimeContext *ctx, tns__dialog &record);
void releaseWhole(RuntimeContext *ctx, tns__dialog_info &record);

// An initialised record in storage that had a pattern in it, released as a whole at its end.
template <typename T> class Record {
public:
  explicit Record(RuntimeContext *context) : ctx(context) {
    std::memset(static_cast<void *>(&value), 0xA5, sizeof value);
    EXPECT_EQ(Functions<T>::init(ctx, &value), 0);
  }
  ~Record() {
    if (!released) releaseWhole(ctx, value);
  }
  Record(const Record &) = delete;
  Record &operator=(const Record &) = delete;

  operator T *() { return &value; }
  T *operator->() { return &value; }
  T &operator*() { return value; }

  bool released = false; // by the test

private:
  RuntimeContext *ctx;
  T value;
};

// Puts members into records, as copies on the context's heap.
class Builder {
public:
  explicit Builder(RuntimeContext *context) : ctx(context) {}

  RtxXmlString text(std::string_view text, bool cdata = false);
  void foreign(RtxAnyList &list, std::string_view element);
  void declare(RtxNsDeclList &list, const char *prefix, const char *uri);
  void hop(tns__dialog_route_set &record, std::string_view uri, bool cdata = false);
  void param(tns_participant_target &record, std::string_view name, std::string_view value);
  tns__dialog *dialog(tns__dialog_info &record); // an initialised one; null if there is no storage

  // Every member present, each with a value of its own.
  void complete(tns__state &record);
  void complete(tns__dialog_replaces &record);
  void complete(tns_nameaddr &record);
  void complete(tns__dialog_route_set &record);
  void complete(tns_participant_target_param &record);
  void complete(tns_participant_target &record);
  void complete(tns_sessd &record);
  void complete(tns_participant &record);
  void complete(tns__dialog &record);
  void complete(tns__dialog_info &record); // of two dialogs, the second with nothing but an id

  bool failed() const { return outOfMemory; } // something is missing

private:
  template <typename T> T *item(RtxList &list, const T &value); // null if there is no storage

  RuntimeContext *ctx;
  bool outOfMemory = false;
};

template <typename T> struct CompleteRecord : Record<T> {
  explicit CompleteRecord(RuntimeContext *context) : Record<T>(context) { Builder(context).complete(**this); }
};

// ---- Expectations ---------------------------------------------------------------------------------------------

// What stands for a member where it is printed or written. Bit 0: always.
struct Part {
  uint32_t bit;
  std::string text;
};
using Parts = std::vector<Part>;

// The parts of a record with these presence bits.
std::string present(const Parts &parts, uint32_t m);
uint32_t allBits(const Parts &parts);
std::string replaced(std::string text, std::string_view what, std::string_view with);

// What the record's print function writes.
template <typename T> std::string printed(const char *name, const T *record);

// What the document function writes, without the XML declaration.
template <typename T> std::string encodedDocument(RuntimeContext *ctx, const T *record);

std::string capturedPrint(int (*print)(const char *, const void *), const char *name, const void *record);

template <typename T> std::string printed(const char *name, const T *record) {
  return capturedPrint([](const char *n, const void *r) { return Functions<T>::print(n, static_cast<const T *>(r)); },
                       name, record);
}

template <typename T> std::string encodedDocument(RuntimeContext *ctx, const T *record) {
  return support::withoutDeclaration(
      support::encoded(ctx, [=](RuntimeContext *c) { return Document<T>::encode(c, record); }));
}

} // namespace dialogs
