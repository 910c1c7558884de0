// What the tests of the records of rule sets, and of writing them, share.
#pragma once

#include "RuleSet/QxXmlRuleSet.h"
#include "context.h"
#include "errors.h"
#include "output.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace rules {

using namespace std::string_literals;
using namespace std::string_view_literals;

inline constexpr const char *namespaceUri = "urn:ietf:params:xml:ns:common-policy";

// ---- Functions by type ----------------------------------------------------------------------------------------

// Those that every record type has.
template <typename T> struct Functions;

#define RULES_FUNCTIONS(T)                                                                                             \
  template <> struct Functions<T> {                                                                                    \
    static constexpr const char *name = #T;                                                                            \
    static constexpr auto init = QxInit_##T;                                                                           \
    static constexpr auto print = QxPrint_##T;                                                                         \
    static constexpr auto encode = QxXmlET_##T;                                                                        \
    static constexpr auto startElement = QxXmlET_##T##_StartElement;                                                   \
    static constexpr auto contents = QxXmlET_##T##_Contents;                                                           \
    static constexpr auto endElement = QxXmlET_##T##_EndElement;                                                       \
  };
RULES_FUNCTIONS(cp_oneType)
RULES_FUNCTIONS(cp_exceptType)
RULES_FUNCTIONS(cp_manyType_1)
RULES_FUNCTIONS(cp_manyType)
RULES_FUNCTIONS(cp_identityType_1)
RULES_FUNCTIONS(cp_identityType)
RULES_FUNCTIONS(cp_sphereType)
RULES_FUNCTIONS(cp_validityType)
RULES_FUNCTIONS(cp_conditionsType_1)
RULES_FUNCTIONS(cp_conditionsType)
RULES_FUNCTIONS(cp_extensibleType)
RULES_FUNCTIONS(cp_ruleType)
RULES_FUNCTIONS(cp__ruleset)
#undef RULES_FUNCTIONS

// Records with a selector, which have no element of their own.
template <typename T> inline constexpr bool isChoice = requires(T record) { record.t; };

// Calls test<T>() for each record type.
template <typename Test> void forEachType(Test test) {
  const auto run = [&]<typename T>() {
    SCOPED_TRACE(Functions<T>::name);
    test.template operator()<T>();
  };
  run.template operator()<cp_oneType>();
  run.template operator()<cp_exceptType>();
  run.template operator()<cp_manyType_1>();
  run.template operator()<cp_manyType>();
  run.template operator()<cp_identityType_1>();
  run.template operator()<cp_identityType>();
  run.template operator()<cp_sphereType>();
  run.template operator()<cp_validityType>();
  run.template operator()<cp_conditionsType_1>();
  run.template operator()<cp_conditionsType>();
  run.template operator()<cp_extensibleType>();
  run.template operator()<cp_ruleType>();
  run.template operator()<cp__ruleset>();
}

// ---- Records by hand ------------------------------------------------------------------------------------------

// Gives back all that a record holds, also what no function of the library does.
void releaseWhole(RuntimeContext *ctx, cp_oneType &record);
void releaseWhole(RuntimeContext *ctx, cp_exceptType &record);
void releaseWhole(RuntimeContext *ctx, cp_manyType_1 &record);
void releaseWhole(RuntimeContext *ctx, cp_manyType &record);
void releaseWhole(RuntimeContext *ctx, cp_identityType_1 &record);
void releaseWhole(RuntimeContext *ctx, cp_identityType &record);
void releaseWhole(RuntimeContext *ctx, cp_sphereType &record);
void releaseWhole(RuntimeContext *ctx, cp_validityType &record);
void releaseWhole(RuntimeContext *ctx, cp_conditionsType_1 &record);
void releaseWhole(RuntimeContext *ctx, cp_conditionsType &record);
void releaseWhole(RuntimeContext *ctx, cp_extensibleType &record);
void releaseWhole(RuntimeContext *ctx, cp_ruleType &record);
void releaseWhole(RuntimeContext *ctx, cp__ruleset &record);

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
  void foreign(RtxList &list, std::string_view element);

  // Initialised items at the end of a list, the selector of choices set; null if there is no storage.
  cp_manyType_1 *item(cp_manyType &record, uint16_t t);
  cp_identityType_1 *item(cp_identityType &record, uint16_t t);
  cp_conditionsType_1 *item(cp_conditionsType &record, uint16_t t);
  cp_ruleType *rule(cp__ruleset &record, std::string_view id);

  // Items with members.
  void one(cp_identityType &record, std::string_view id);
  void sphere(cp_conditionsType &record, std::string_view value);
  void validity(cp_conditionsType &record, std::string_view from, std::string_view until);
  void foreign(cp_manyType &record, std::string_view element);
  void foreign(cp_identityType &record, std::string_view element);
  void foreign(cp_conditionsType &record, const std::vector<std::string> &elements);

  // Every member present, each with a value of its own; of choices the first alternative, of lists of choices all.
  void complete(cp_oneType &record);
  void complete(cp_exceptType &record);
  void complete(cp_manyType_1 &record);
  void complete(cp_manyType &record);
  void complete(cp_identityType_1 &record);
  void complete(cp_identityType &record);
  void complete(cp_sphereType &record);
  void complete(cp_validityType &record);
  void complete(cp_conditionsType_1 &record);
  void complete(cp_conditionsType &record);
  void complete(cp_extensibleType &record);
  void complete(cp_ruleType &record);
  void complete(cp__ruleset &record); // of two rules, the second with nothing but an id

  bool failed() const { return outOfMemory; } // something is missing

private:
  template <typename T> T *appended(RtxList &list); // an initialised item; null if there is no storage

  RuntimeContext *ctx;
  bool outOfMemory = false;
};

template <typename T> struct CompleteRecord : Record<T> {
  explicit CompleteRecord(RuntimeContext *context) : Record<T>(context) { Builder(context).complete(**this); }
};

template <typename T, typename Use> void forEachItem(const RtxList &list, Use use) {
  for (const RtxListNode *node = list.head; node != nullptr; node = node->next)
    use(*static_cast<T *>(node->data));
}

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

template <typename T> void setPresence(T &record, uint32_t m) {
  if constexpr (requires { record.m; }) record.m = m;
}

// What the record's print function writes.
template <typename T> std::string printed(const char *name, const T *record);

// What the document function writes, without the XML declaration.
std::string encodedDocument(RuntimeContext *ctx, const cp__ruleset *record);

std::string capturedPrint(int (*print)(const char *, const void *), const char *name, const void *record);

template <typename T> std::string printed(const char *name, const T *record) {
  return capturedPrint([](const char *n, const void *r) { return Functions<T>::print(n, static_cast<const T *>(r)); },
                       name, record);
}

} // namespace rules
