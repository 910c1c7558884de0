// Initialising, releasing, printing and appending to the records of dialog state, and their enumerations.
#include "capture.h"
#include "contextCheck.h"
#include "dialogs.h"
#include "lists.h"

#include <type_traits>

using namespace dialogs;
using support::captureStdout;
using support::Context;
using support::expectEmpty;
using support::FailingCheck;

namespace {

// ---- The members of each record -------------------------------------------------------------------------------

struct Presence {
  uint32_t &bits;
};

// Calls visit for each member, those of embedded records included.
template <typename Visit> void members(tns__state &r, const Visit &visit) {
  visit(Presence{r.m});
  visit(r.value);
  visit(r.tns_event);
  visit(r.tns_code);
  visit(r.nsDecls.items);
}
template <typename Visit> void members(tns__dialog_replaces &r, const Visit &visit) {
  visit(r.tns_call_id);
  visit(r.tns_local_tag);
  visit(r.tns_remote_tag);
}
template <typename Visit> void members(tns_nameaddr &r, const Visit &visit) {
  visit(Presence{r.m});
  visit(r.value);
  visit(r.tns_display_name);
  visit(r.nsDecls.items);
}
template <typename Visit> void members(tns__dialog_route_set &r, const Visit &visit) { visit(r.tns_hop); }
template <typename Visit> void members(tns_participant_target_param &r, const Visit &visit) {
  visit(r.tns_pname);
  visit(r.tns_pval);
}
template <typename Visit> void members(tns_participant_target &r, const Visit &visit) {
  visit(r.tns_param);
  visit(r.tns_uri);
}
template <typename Visit> void members(tns_sessd &r, const Visit &visit) {
  visit(r.value);
  visit(r.tns_type);
  visit(r.nsDecls.items);
}
template <typename Visit> void members(tns_participant &r, const Visit &visit) {
  visit(Presence{r.m});
  members(r.tns_identity, visit);
  members(r.tns_target, visit);
  members(r.tns_session_description, visit);
  visit(r.tns_cseq);
  visit(r.anyElems.items);
}
template <typename Visit> void members(tns__dialog &r, const Visit &visit) {
  visit(Presence{r.m});
  members(r.tns_state, visit);
  visit(r.tns_duration);
  members(r.tns_replaces, visit);
  members(r.tns_referred_by, visit);
  members(r.tns_route_set, visit);
  members(r.tns_local, visit);
  members(r.tns_remote, visit);
  visit(r.anyElems.items);
  visit(r.tns_id);
  visit(r.tns_call_id);
  visit(r.tns_local_tag);
  visit(r.tns_remote_tag);
  visit(r.tns_direction);
}
template <typename Visit> void members(tns__dialog_info &r, const Visit &visit) {
  visit(r.tns_dialog);
  visit(r.anyElems.items);
  visit(r.tns_version);
  visit(r.tns_state);
  visit(r.tns_entity);
}

// ---- Init -----------------------------------------------------------------------------------------------------

struct ExpectInitialised {
  void operator()(Presence m) const { EXPECT_EQ(m.bits, 0u); }
  void operator()(const RtxXmlString &text) const { expectEmpty(text); }
  void operator()(const RtxList &list) const { expectEmpty(list); }
  void operator()(uint16_t scalar) const { EXPECT_EQ(scalar, 0xA5A5u) << "only a presence bit gives it a meaning"; }
  void operator()(uint32_t scalar) const { EXPECT_EQ(scalar, 0xA5A5A5A5u) << "only a presence bit gives it a meaning"; }
};

TEST(InitRecord, MakesEverythingEmptyButNumbersAndCodes) {
  forEachType([]<typename T>() {
    Context ctx;
    T record = patterned<T>();
    EXPECT_EQ(Functions<T>::init(ctx, &record), 0);
    members(record, ExpectInitialised());
    EXPECT_EQ(support::heapStats(ctx).blocks, 0u);
    EXPECT_EQ(support::errors(ctx), "");
  });
}

TEST(InitRecord, RefusesAnUnusableContextAndLeavesTheRecord) {
  Context sound;
  RuntimeContext zeroed{};
  RuntimeContext copied = *sound.operator->();
  forEachType([&]<typename T>() {
    for (RuntimeContext *ctx : {static_cast<RuntimeContext *>(nullptr), &zeroed, &copied}) {
      T record = patterned<T>();
      const std::string before = bytesOf(record);
      EXPECT_EQ(Functions<T>::init(ctx, &record), STATUS_BAD_CONTEXT);
      EXPECT_TRUE(bytesOf(record) == before);
    }
  });
  EXPECT_EQ(support::errors(sound), "");
}

template <typename T> constexpr int lineOfInit = 0;
template <> constexpr int lineOfInit<tns__state> = 88;
template <> constexpr int lineOfInit<tns__dialog_replaces> = 106;
template <> constexpr int lineOfInit<tns_nameaddr> = 120;
template <> constexpr int lineOfInit<tns__dialog_route_set> = 144;
template <> constexpr int lineOfInit<tns_participant_target_param> = 173;
template <> constexpr int lineOfInit<tns_participant_target> = 186;
template <> constexpr int lineOfInit<tns_sessd> = 210;
template <> constexpr int lineOfInit<tns_participant> = 231;
template <> constexpr int lineOfInit<tns__dialog> = 289;
template <> constexpr int lineOfInit<tns__dialog_info> = 351;

TEST(InitRecord, RecordsWhereTheCheckOfTheContextFailed) {
  forEachType([]<typename T>() {
    Context ctx;
    const FailingCheck failing(-777);
    T record = patterned<T>();
    const std::string before = bytesOf(record);
    EXPECT_EQ(Functions<T>::init(ctx, &record), -777);
    EXPECT_TRUE(bytesOf(record) == before);
    ASSERT_EQ(rtxErrCount(ctx), 1u);
    const RtxError *error = rtxErrAt(ctx, 0);
    EXPECT_EQ(error->status, -777);
    EXPECT_EQ(error->paramCount, 0u);
    ASSERT_EQ(error->siteCount, 1u);
    EXPECT_STREQ(error->sites[0].path, "xmlAddOns/addons/IMS/DialogInfo/QxXmlDialogInfo");
    EXPECT_EQ(error->sites[0].line, lineOfInit<T>);
  });
}

// ---- MemFree --------------------------------------------------------------------------------------------------

template <typename T> void release(RuntimeContext *ctx, Record<T> &record) {
  Functions<T>::memFree(ctx, record);
  record.owned = false;
}

template <typename T> using Fill = void (*)(Builder &build, T &record);

// A member, the bit under which it is released (0: always), and the blocks of it that stay all the same.
template <typename T> struct Member {
  const char *name;
  uint32_t bit;
  size_t staying;
  Fill<T> fill;
};

// Every member that may hold storage. Blocks of two params that stay: two texts each.
constexpr Member<tns__state> stateMembers[] = {
    {"value", 0, 0, [](Builder &b, auto &r) { r.value = b.text("a"); }},
    {"nsDecls", 0, 0,
     [](Builder &b, auto &r) {
       b.declare(r.nsDecls, "x", "urn:x");
       b.declare(r.nsDecls, nullptr, "urn:y");
     }},
};
constexpr Member<tns_nameaddr> nameaddrMembers[] = {
    {"value", 0, 0, [](Builder &b, auto &r) { r.value = b.text("a"); }},
    {"tns_display_name", 1, 0, [](Builder &b, auto &r) { r.tns_display_name = b.text("a"); }},
    {"nsDecls", 0, 0, [](Builder &b, auto &r) { b.declare(r.nsDecls, "x", "urn:x"); }},
};
constexpr Member<tns__dialog_route_set> routeSetMembers[] = {
    {"tns_hop", 0, 0, [](Builder &b, auto &r) { b.complete(r); }},
};
constexpr Member<tns_participant_target> targetMembers[] = {
    {"tns_param", 0, 4,
     [](Builder &b, auto &r) {
       b.param(r, "a", "b");
       b.param(r, "c", "d");
     }},
    {"tns_uri", 0, 0, [](Builder &b, auto &r) { r.tns_uri = b.text("a"); }},
};
constexpr Member<tns_sessd> sessdMembers[] = {
    {"value", 0, 0, [](Builder &b, auto &r) { r.value = b.text("a"); }},
    {"tns_type", 0, 0, [](Builder &b, auto &r) { r.tns_type = b.text("a"); }},
    {"nsDecls", 0, 0, [](Builder &b, auto &r) { b.declare(r.nsDecls, "x", "urn:x"); }},
};
constexpr Member<tns_participant> participantMembers[] = {
    {"tns_identity", 1, 0, [](Builder &b, auto &r) { b.complete(r.tns_identity); }},
    {"tns_target", 2, 4, [](Builder &b, auto &r) { b.complete(r.tns_target); }},
    {"tns_session_description", 4, 0, [](Builder &b, auto &r) { b.complete(r.tns_session_description); }},
    {"anyElems", 0, 0,
     [](Builder &b, auto &r) {
       b.foreign(r.anyElems, "<x/>");
       b.foreign(r.anyElems, "<y/>");
     }},
};
constexpr Member<tns__dialog> dialogMembers[] = {
    {"tns_state", 0, 0, [](Builder &b, auto &r) { b.complete(r.tns_state); }},
    {"tns_replaces", 2, 3, [](Builder &b, auto &r) { b.complete(r.tns_replaces); }},
    {"tns_referred_by", 4, 0, [](Builder &b, auto &r) { b.complete(r.tns_referred_by); }},
    {"tns_route_set", 8, 0, [](Builder &b, auto &r) { b.complete(r.tns_route_set); }},
    {"tns_local", 16, 4, [](Builder &b, auto &r) { b.complete(r.tns_local); }},
    {"tns_remote", 32, 4, [](Builder &b, auto &r) { b.complete(r.tns_remote); }},
    {"anyElems", 0, 0,
     [](Builder &b, auto &r) {
       b.foreign(r.anyElems, "<x/>");
       b.foreign(r.anyElems, "<y/>");
     }},
    {"tns_id", 0, 0, [](Builder &b, auto &r) { r.tns_id = b.text("a"); }},
    {"tns_call_id", 64, 0, [](Builder &b, auto &r) { r.tns_call_id = b.text("a"); }},
    {"tns_local_tag", 128, 0, [](Builder &b, auto &r) { r.tns_local_tag = b.text("a"); }},
    {"tns_remote_tag", 256, 0, [](Builder &b, auto &r) { r.tns_remote_tag = b.text("a"); }},
};
constexpr Member<tns__dialog_info> infoMembers[] = {
    {"tns_dialog", 0, 3 + 4 + 4,
     [](Builder &b, auto &r) {
       if (tns__dialog *dialog = b.dialog(r)) b.complete(*dialog);
       b.dialog(r);
     }},
    {"anyElems", 0, 0,
     [](Builder &b, auto &r) {
       b.foreign(r.anyElems, "<x/>");
       b.foreign(r.anyElems, "<y/>");
     }},
    {"tns_entity", 0, 0, [](Builder &b, auto &r) { r.tns_entity = b.text("a"); }},
};

constexpr uint32_t dialogBits = 1023;

template <typename T, size_t count> void expectReleased(const Member<T> (&table)[count], uint32_t bits) {
  SCOPED_TRACE(Functions<T>::name);
  for (const Member<T> &member : table) {
    SCOPED_TRACE(member.name);
    struct Case {
      uint32_t m;
      bool released;
    };
    // With its own bit alone, and with all bits but its own.
    for (const Case &c : {Case{member.bit, true}, Case{bits & ~member.bit, member.bit == 0}}) {
      Context ctx;
      Record<T> record(ctx);
      Builder build(ctx);
      member.fill(build, *record);
      const size_t whole = support::heapStats(ctx).blocks;
      ASSERT_GT(whole, 0u);
      setPresence(*record, c.m);
      release(ctx, record);
      EXPECT_EQ(support::heapStats(ctx).blocks, c.released ? member.staying : whole) << "with bits " << c.m;
    }
  }
}

TEST(ReleaseRecord, GivesBackEachMemberUnderItsBit) {
  expectReleased(stateMembers, 3);
  expectReleased(nameaddrMembers, 1);
  expectReleased(routeSetMembers, 0);
  expectReleased(targetMembers, 0);
  expectReleased(sessdMembers, 0);
  expectReleased(participantMembers, 15);
  expectReleased(dialogMembers, dialogBits);
  expectReleased(infoMembers, 0);
}

TEST(ReleaseRecord, TextsOfReplacesAndParamsStay) {
  Context ctx;
  Record<tns__dialog> dialog(ctx);
  Builder build(ctx);
  build.complete(dialog->tns_replaces);
  dialog->m = tns__dialog_has_replaces;
  release(ctx, dialog);
  EXPECT_STREQ(dialog->tns_replaces.tns_call_id.value, "rep-call");
  EXPECT_STREQ(dialog->tns_replaces.tns_local_tag.value, "rep-local");
  EXPECT_STREQ(dialog->tns_replaces.tns_remote_tag.value, "rep-remote");
  Functions<tns__dialog_replaces>::release(ctx, &dialog->tns_replaces);

  Record<tns_participant_target> target(ctx);
  build.param(*target, "name", "value");
  const auto param = *static_cast<tns_participant_target_param *>(target->tns_param.head->data);
  release(ctx, target);
  EXPECT_EQ(support::heapStats(ctx).blocks, 2u);
  EXPECT_STREQ(param.tns_pname.value, "name");
  EXPECT_STREQ(param.tns_pval.value, "value");
}

extern "C" {
// The library has no such functions.
[[gnu::weak]] int QxMemFree_tns__dialog_replaces(RuntimeContext *ctx, tns__dialog_replaces *record);
[[gnu::weak]] int QxMemFree_tns_participant_target_param(RuntimeContext *ctx, tns_participant_target_param *record);
}

TEST(ReleaseRecord, ReplacesAndParamsHaveNoReleaseFunction) {
  EXPECT_TRUE(QxMemFree_tns__dialog_replaces == nullptr);
  EXPECT_TRUE(QxMemFree_tns_participant_target_param == nullptr);
}

// The bits, the scalars and the addresses of texts of a record. After its release the lists have to be empty.
struct Snapshot {
  std::vector<uintptr_t> &values;
  bool released;

  void operator()(Presence m) const { values.push_back(m.bits); }
  void operator()(const RtxXmlString &text) const { values.push_back(reinterpret_cast<uintptr_t>(text.value)); }
  void operator()(uint16_t scalar) const { values.push_back(scalar); }
  void operator()(uint32_t scalar) const { values.push_back(scalar); }
  void operator()(const RtxList &list) const {
    if (released) expectEmpty(list);
  }
};

template <typename T> void expectNothingCleared() {
  SCOPED_TRACE(Functions<T>::name);
  Context ctx;
  CompleteRecord<T> record(ctx);
  std::vector<uintptr_t> before;
  std::vector<uintptr_t> after;
  members(*record, Snapshot{before, false});
  release(ctx, record);
  members(*record, Snapshot{after, true});
  EXPECT_EQ(before, after);
}

TEST(ReleaseRecord, ClearsNeitherTextsNorBits) {
  expectNothingCleared<tns__state>();
  expectNothingCleared<tns_nameaddr>();
  expectNothingCleared<tns__dialog_route_set>();
  expectNothingCleared<tns_participant_target>();
  expectNothingCleared<tns_sessd>();
  expectNothingCleared<tns_participant>();
  expectNothingCleared<tns__dialog>();
  expectNothingCleared<tns__dialog_info>();
}

TEST(ReleaseRecord, TakesAFreshRecordAndEntriesWithoutText) {
  Context ctx;
  {
    Record<tns__dialog_info> fresh(ctx);
    release(ctx, fresh);
  }
  Record<tns__dialog> dialog(ctx);
  Builder build(ctx);
  build.hop(dialog->tns_route_set, "");
  build.foreign(dialog->anyElems, "");
  for (const RtxList *list : {&dialog->tns_route_set.tns_hop, &dialog->anyElems.items}) {
    auto *entry = static_cast<RtxXmlString *>(list->head->data);
    rtxMemHeapFreePtr(ctx, entry->value);
    entry->value = nullptr;
  }
  dialog->m = dialogBits;
  release(ctx, dialog);
  EXPECT_EQ(support::heapStats(ctx).blocks, 0u);
}

TEST(ReleaseRecord, NeitherChecksTheContextNorRecords) {
  Context ctx;
  CompleteRecord<tns__state> record(ctx);
  const FailingCheck failing(-777);
  release(ctx, record);
  EXPECT_EQ(support::heapStats(ctx).blocks, 0u);
  EXPECT_EQ(support::errors(ctx), "");
}

// ---- Append ---------------------------------------------------------------------------------------------------

RtxXmlString *hopOnHeap(RuntimeContext *ctx) {
  auto *hop = static_cast<RtxXmlString *>(rtxMemHeapAlloc(ctx, sizeof(RtxXmlString)));
  *hop = {false, nullptr};
  return hop;
}

TEST(AppendHop, ReturnsTheCountAndKeepsTheOrder) {
  Context ctx;
  Record<tns__dialog_route_set> record(ctx);
  std::vector<void *> appended;
  for (uint32_t count = 1; count <= 4; ++count) {
    appended.push_back(hopOnHeap(ctx));
    EXPECT_EQ(Qxtns__dialog_route_set_Append(ctx, record, static_cast<RtxXmlString *>(appended.back())), count);
  }
  std::vector<void *> held;
  for (const RtxListNode *node = record->tns_hop.head; node != nullptr; node = node->next)
    held.push_back(node->data);
  EXPECT_EQ(held, appended);
}

TEST(AppendHop, WithoutStorageTheCountStays) {
  Context ctx([](RuntimeOptions &options) { options.heapLimit = 200; });
  Record<tns__dialog_route_set> record(ctx);
  ASSERT_EQ(Qxtns__dialog_route_set_Append(ctx, record, hopOnHeap(ctx)), 1u);
  RtxXmlString *second = hopOnHeap(ctx);
  while (rtxMemHeapAlloc(ctx, 1) != nullptr) {
  }
  EXPECT_EQ(Qxtns__dialog_route_set_Append(ctx, record, second), 1u);
  EXPECT_EQ(record->tns_hop.tail, record->tns_hop.head);
  EXPECT_EQ(support::errors(ctx), "");
}

// ---- Enumerations ---------------------------------------------------------------------------------------------

struct Enumeration {
  const char *name;
  std::vector<const char *> texts; // by code
  const char *(*toString)(uint32_t value);
  int (*toEnum)(RuntimeContext *ctx, const char *text, uint16_t *value);
  int (*print)(const char *name, uint32_t value);
};

const Enumeration enumerations[] = {
    {"dialog_info_state",
     {"full", "partial"},
     Qxtns__dialog_info_state_ToString,
     Qxtns__dialog_info_state_ToEnum,
     QxPrint_tns__dialog_info_state},
    {"state_event",
     {"cancelled", "rejected", "replaced", "local-bye", "remote-bye", "error", "timeout"},
     Qxtns__state_event_ToString,
     Qxtns__state_event_ToEnum,
     QxPrint_tns__state_event},
    {"dialog_direction",
     {"initiator", "recipient"},
     Qxtns__dialog_direction_ToString,
     Qxtns__dialog_direction_ToEnum,
     QxPrint_tns__dialog_direction},
};

// The text of a code, of which the low 16 bits count.
std::string textOf(const Enumeration &e, uint32_t value) {
  const uint32_t code = value % 65536;
  return code < e.texts.size() ? e.texts[code] : "_UNKNOWN_";
}

TEST(Enumerations, CodesHaveTheirTexts) {
  for (const Enumeration &e : enumerations) {
    SCOPED_TRACE(e.name);
    for (uint32_t value = 0; value < 3 * 65536 + 10; ++value)
      ASSERT_EQ(e.toString(value), textOf(e, value)) << value;
    for (uint32_t value : {0x7FFF0000u, 0xFFFF0001u, 0xFFFFFFFFu})
      EXPECT_EQ(e.toString(value), textOf(e, value)) << value;
  }
}

TEST(Enumerations, NameTheirCodes) {
  EXPECT_STREQ(Qxtns__dialog_info_state_ToString(tns__dialog_info_state_partial), "partial");
  EXPECT_STREQ(Qxtns__state_event_ToString(tns__state_event_cancelled), "cancelled");
  EXPECT_STREQ(Qxtns__state_event_ToString(tns__state_event_rejected), "rejected");
  EXPECT_STREQ(Qxtns__state_event_ToString(tns__state_event_replaced), "replaced");
  EXPECT_STREQ(Qxtns__state_event_ToString(tns__state_event_local_bye), "local-bye");
  EXPECT_STREQ(Qxtns__state_event_ToString(tns__state_event_remote_bye), "remote-bye");
  EXPECT_STREQ(Qxtns__state_event_ToString(tns__state_event_error), "error");
  EXPECT_STREQ(Qxtns__state_event_ToString(tns__state_event_timeout), "timeout");
  EXPECT_STREQ(Qxtns__dialog_direction_ToString(tns__dialog_direction_recipient), "recipient");
}

TEST(Enumerations, TextsGiveTheirCodes) {
  RuntimeContext unusable{};
  for (const Enumeration &e : enumerations) {
    for (uint16_t code = 0; code < e.texts.size(); ++code) {
      for (RuntimeContext *ctx : {static_cast<RuntimeContext *>(nullptr), &unusable}) {
        uint16_t value = 0xA5A5;
        EXPECT_EQ(e.toEnum(ctx, e.texts[code], &value), 0) << e.texts[code];
        EXPECT_EQ(value, code) << e.texts[code];
        EXPECT_EQ(e.toEnum(ctx, e.texts[code], nullptr), 0) << e.texts[code];
      }
    }
  }
}

// Texts that are almost those of a code.
std::vector<std::string> nearMisses(const std::string &text) {
  std::string upper = text;
  for (char &c : upper)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  std::string capital = text;
  capital[0] = upper[0];
  std::string lastCapital = text;
  lastCapital.back() = upper.back();
  return {upper,      capital,           lastCapital, text + "s", text + " ",
          " " + text, text.substr(0, 3), text + text, "x" + text, text.substr(0, text.size() - 1)};
}

TEST(Enumerations, OtherTextsAreNotFoundAndLeaveTheCode) {
  Context ctx;
  for (const Enumeration &e : enumerations) {
    std::vector<std::string> others = {"", "_UNKNOWN_", "0", "\xC3\xA9"};
    for (const char *text : e.texts)
      for (const std::string &miss : nearMisses(text))
        others.push_back(miss);
    for (const std::string &other : others) {
      uint16_t value = 0xA5A5;
      EXPECT_EQ(e.toEnum(ctx, other.c_str(), &value), STATUS_ENUM_NOT_FOUND) << e.name << " " << other;
      EXPECT_EQ(e.toEnum(nullptr, other.c_str(), nullptr), STATUS_ENUM_NOT_FOUND) << e.name << " " << other;
      EXPECT_EQ(value, 0xA5A5);
    }
    uint16_t value = 0xA5A5;
    EXPECT_EQ(e.toEnum(ctx, nullptr, &value), STATUS_ENUM_NOT_FOUND);
    EXPECT_EQ(value, 0xA5A5);
  }
  EXPECT_EQ(support::errors(ctx), "");
}

TEST(Enumerations, PrintTheirTexts) {
  for (const Enumeration &e : enumerations) {
    for (uint32_t value : {0u, 1u, 2u, 6u, 7u, 65535u, 65536u, 65536u + 3}) {
      const std::string line = captureStdout([&] { EXPECT_EQ(e.print("some.name", value), 0); });
      EXPECT_EQ(line, "some.name = \"" + textOf(e, value) + "\"\n");
    }
  }
}

// ---- Print ----------------------------------------------------------------------------------------------------

// The lines of parts under another name; "~" stands for the name.
std::string under(const Parts &parts, const std::string &name, uint32_t m = ~0u) {
  return replaced(present(parts, m), "~", name);
}

// The lines of complete records.
const Parts stateLines = {
    {0, "~ = \"confirmed\"\n~.xmlns:x = \"urn:x\"\n"}, {1, "~.tns_event = \"local-bye\"\n"}, {2, "~.tns_code = 200\n"}};
const Parts replacesLines = {{0, "~ = <null>\n"
                                 "~.tns_call_id = \"rep-call\"\n"
                                 "~.tns_local_tag = \"rep-local\"\n"
                                 "~.tns_remote_tag = \"rep-remote\"\n"}};
const Parts nameaddrLines = {{0, "~ = \"sip:ann\"\n~.xmlns:y = \"urn:y\"\n"}, {1, "~.tns_display_name = \"Ann\"\n"}};
const Parts routeSetLines = {{0, "~.tns_hop[0] = \"sip:hop1\"\n~.tns_hop[1] = \"sip:hop2\"\n"}};
const Parts paramLines = {{0, "~ = <null>\n~.tns_pname = \"rendering\"\n~.tns_pval = \"no\"\n"}};
const Parts targetLines = {{0, "~.tns_param[0] = <null>\n"
                               "~.tns_param[0].tns_pname = \"audio\"\n"
                               "~.tns_param[0].tns_pval = \"yes\"\n"
                               "~.tns_param[1] = <null>\n"
                               "~.tns_param[1].tns_pname = \"rendering\"\n"
                               "~.tns_param[1].tns_pval = \"no\"\n"
                               "~.tns_uri = \"sip:target\"\n"}};
const Parts sessdLines = {{0, "~ = \"v=0\"\n~.xmlns:z = \"urn:z\"\n~.tns_type = \"application/sdp\"\n"}};
const Parts participantLines = {{1, under(nameaddrLines, "~.tns_identity")},
                                {2, under(targetLines, "~.tns_target")},
                                {4, under(sessdLines, "~.tns_session_description")},
                                {8, "~.tns_cseq = 17\n"},
                                {0, "~[0] = \"<f/>\"\n~[1] = \"<g>1</g>\"\n"}};
const Parts dialogLines = {{0, under(stateLines, "~.tns_state")},
                           {1, "~.tns_duration = 90\n"},
                           {2, under(replacesLines, "~.tns_replaces")},
                           {4, under(nameaddrLines, "~.tns_referred_by")},
                           {8, under(routeSetLines, "~.tns_route_set")},
                           {16, under(participantLines, "~.tns_local")},
                           {32, under(participantLines, "~.tns_remote")},
                           {0, "~[0] = \"<h/>\"\n~[1] = \"<i/>\"\n~.tns_id = \"d1\"\n"},
                           {64, "~.tns_call_id = \"call\"\n"},
                           {128, "~.tns_local_tag = \"local\"\n"},
                           {256, "~.tns_remote_tag = \"remote\"\n"},
                           {512, "~.tns_direction = \"recipient\"\n"}};
const Parts infoLines = {{0, under(dialogLines, "~.tns_dialog[0]") + "~.tns_dialog[1].tns_state = <null>\n" +
                                 "~.tns_dialog[1].tns_id = \"d2\"\n" +
                                 "~[0] = \"<j/>\"\n~[1] = \"<k/>\"\n"
                                 "~.tns_version = 5\n"
                                 "~.tns_state = \"partial\"\n"
                                 "~.tns_entity = \"sip:entity\"\n"}};

// With every combination of presence bits.
template <typename T> void expectPrinted(const Parts &lines) {
  SCOPED_TRACE(Functions<T>::name);
  Context ctx;
  CompleteRecord<T> record(ctx);
  const uint32_t all = allBits(lines);
  for (uint32_t m = 0; m <= all; ++m) {
    setPresence(*record, m);
    ASSERT_EQ(printed<T>("r.x", record), under(lines, "r.x", m)) << "with bits " << m;
  }
  setPresence(*record, ~all);
  EXPECT_EQ(printed<T>("r", record), under(lines, "r", 0)) << "bits without a meaning";
  setPresence(*record, all);
}

TEST(PrintRecord, ShowsEachMemberUnderItsBitInOrder) {
  expectPrinted<tns__state>(stateLines);
  expectPrinted<tns__dialog_replaces>(replacesLines);
  expectPrinted<tns_nameaddr>(nameaddrLines);
  expectPrinted<tns__dialog_route_set>(routeSetLines);
  expectPrinted<tns_participant_target_param>(paramLines);
  expectPrinted<tns_participant_target>(targetLines);
  expectPrinted<tns_sessd>(sessdLines);
  expectPrinted<tns_participant>(participantLines);
  expectPrinted<tns__dialog>(dialogLines);
  expectPrinted<tns__dialog_info>(infoLines);
}

TEST(PrintRecord, FreshRecordsShowOnlyWhatIsRequired) {
  Context ctx;
  const auto fresh = [&]<typename T>(std::type_identity<T>) {
    Record<T> record(ctx);
    if constexpr (std::is_same_v<T, tns__dialog_info>) {
      record->tns_version = 0;
      record->tns_state = 0;
    }
    return printed<T>("r", record);
  };
  EXPECT_EQ(fresh(std::type_identity<tns__state>()), "r = <null>\n");
  EXPECT_EQ(fresh(std::type_identity<tns__dialog_replaces>()),
            "r = <null>\nr.tns_call_id = <null>\nr.tns_local_tag = <null>\nr.tns_remote_tag = <null>\n");
  EXPECT_EQ(fresh(std::type_identity<tns_nameaddr>()), "r = <null>\n");
  EXPECT_EQ(fresh(std::type_identity<tns__dialog_route_set>()), "") << "an empty route set shows nothing";
  EXPECT_EQ(fresh(std::type_identity<tns_participant_target_param>()),
            "r = <null>\nr.tns_pname = <null>\nr.tns_pval = <null>\n");
  EXPECT_EQ(fresh(std::type_identity<tns_participant_target>()), "r.tns_uri = <null>\n");
  EXPECT_EQ(fresh(std::type_identity<tns_sessd>()), "r = <null>\nr.tns_type = <null>\n");
  EXPECT_EQ(fresh(std::type_identity<tns_participant>()), "");
  EXPECT_EQ(fresh(std::type_identity<tns__dialog>()), "r.tns_state = <null>\nr.tns_id = <null>\n");
  EXPECT_EQ(fresh(std::type_identity<tns__dialog_info>()),
            "r.tns_version = 0\nr.tns_state = \"full\"\nr.tns_entity = <null>\n");
}

TEST(PrintRecord, CodesWithoutATextAreUnknown) {
  Context ctx;
  Record<tns__dialog> dialog(ctx);
  dialog->m = tns__dialog_has_direction;
  dialog->tns_direction = 2;
  dialog->tns_state.m = tns__state_has_event | tns__state_has_code;
  dialog->tns_state.tns_event = 7;
  dialog->tns_state.tns_code = 65535;
  EXPECT_EQ(printed<tns__dialog>("d", dialog), "d.tns_state = <null>\n"
                                               "d.tns_state.tns_event = \"_UNKNOWN_\"\n"
                                               "d.tns_state.tns_code = 65535\n"
                                               "d.tns_id = <null>\n"
                                               "d.tns_direction = \"_UNKNOWN_\"\n");
}

TEST(PrintRecord, CutsTheNamesThatItMakes) {
  Context ctx;
  Record<tns__dialog_info> record(ctx);
  Builder build(ctx);
  tns__dialog *dialog = build.dialog(*record);
  ASSERT_NE(dialog, nullptr);
  dialog->m = tns__dialog_has_local;
  dialog->tns_local.m = tns_participant_has_identity | tns_participant_has_target;
  dialog->tns_local.tns_identity.m = tns_nameaddr_has_display_name;
  build.param(dialog->tns_local.tns_target, "p", "v");
  build.foreign(dialog->tns_local.anyElems, "<x/>");
  record->tns_version = 1;
  record->tns_state = 0;

  for (size_t length : {400u, 450u, 465u, 480u, 495u, 496u, 500u, 505u, 510u, 511u, 512u, 5000u}) {
    const std::string name(length, 'n');
    const auto cut = [](const std::string &whole) { return whole.substr(0, 511); };
    const std::string first = cut(name + ".tns_dialog[0]");
    const std::string local = cut(first + ".tns_local");
    const std::string identity = cut(local + ".tns_identity");
    const std::string target = cut(local + ".tns_target");
    const std::string param = cut(target + ".tns_param[0]");
    EXPECT_EQ(printed<tns__dialog_info>(name.c_str(), record),
              cut(first + ".tns_state") + " = <null>\n" + //
                  identity + " = <null>\n" +              //
                  cut(identity + ".tns_display_name") + " = <null>\n" + param + " = <null>\n" +
                  cut(param + ".tns_pname") + " = \"p\"\n" + cut(param + ".tns_pval") + " = \"v\"\n" +
                  cut(target + ".tns_uri") + " = <null>\n" + cut(local + "[0]") + " = \"<x/>\"\n" +
                  cut(first + ".tns_id") + " = <null>\n" + cut(name + ".tns_version") + " = 1\n" +
                  cut(name + ".tns_state") + " = \"full\"\n" + cut(name + ".tns_entity") + " = <null>\n")
        << length;
  }
}

TEST(PrintRecord, NameOfTheRecordItselfIsNotCut) {
  Context ctx;
  CompleteRecord<tns__state> record(ctx);
  const std::string name(600, 'n');
  EXPECT_TRUE(printed<tns__state>(name.c_str(), record).starts_with(name + " = \"confirmed\"\n"));
}

TEST(PrintRecord, TakesAnyNameAsText) {
  Context ctx;
  Record<tns_participant_target> record(ctx);
  EXPECT_EQ(printed<tns_participant_target>("%s%n%d", record), "%s%n%d.tns_uri = <null>\n");
  EXPECT_EQ(printed<tns_participant_target>("", record), ".tns_uri = <null>\n");
}

TEST(PrintRecord, ManyItemsAreNumberedThrough) {
  Context ctx;
  Record<tns__dialog_route_set> record(ctx);
  Builder build(ctx);
  std::string expected;
  for (int i = 0; i < 120; ++i) {
    build.hop(*record, std::to_string(i));
    expected += "r.tns_hop[" + std::to_string(i) + "] = \"" + std::to_string(i) + "\"\n";
  }
  EXPECT_EQ(printed<tns__dialog_route_set>("r", record), expected);
}

} // namespace
