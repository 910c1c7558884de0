// Initialising, releasing and printing push-to-talk settings, and the texts of the answer mode.
#include "capture.h"
#include "contextCheck.h"
#include "settings.h"

using namespace settings;
using support::captureStdout;
using support::Context;
using support::FailingCheck;
using support::printed;
using support::untouched;

namespace {

// ---- The members of each record -------------------------------------------------------------------------------

// Calls visit for each member, those of embedded records included.
template <typename Visit> void members(isbSettingType_incoming_session_barring &r, const Visit &visit) {
  visit(r.active);
}
template <typename Visit> void members(ipabSettingType_incoming_personal_alert_barring &r, const Visit &visit) {
  visit(r.active);
}
template <typename Visit> void members(sssSettingType_simultaneous_sessions_support &r, const Visit &visit) {
  visit(r.active);
}
template <typename Visit> void members(amSettingType &r, const Visit &visit) {
  visit(r.answer_mode);
  visit(r.anyElems.items);
  visit(r._anyAttr.items);
}
template <typename Visit, typename Setting>
requires requires(Setting &s) { valueOf(s); }
void members(Setting &r, const Visit &visit) {
  visit(valueOf(r));
  visit(r.anyElems.items);
  visit(r._anyAttr.items);
}
template <typename Visit> void members(entityType &r, const Visit &visit) {
  visit(r.m);
  forEachSetting(r, [&](auto &setting) { members(setting, visit); });
  visit(r.anyElems.items);
  visit(r.id);
  visit(r._anyAttr.items);
}
template <typename Visit> void members(poc_settingsType &r, const Visit &visit) {
  visit(r.entity);
  visit(r.anyElems.items);
  visit(r._anyAttr.items);
}

struct ExpectFresh {
  void operator()(const uint32_t &m) const { EXPECT_EQ(m, 0u); }
  void operator()(const uint16_t &mode) const { EXPECT_EQ(mode, 0xA5A5) << "has no default"; }
  void operator()(const bool &active) const {
    unsigned char byte = 0;
    std::memcpy(&byte, &active, 1);
    EXPECT_EQ(byte, pattern) << "has no default";
  }
  void operator()(const RtxXmlString &text) const {
    EXPECT_FALSE(text.cdata);
    EXPECT_EQ(text.value, nullptr);
  }
  void operator()(const RtxList &list) const {
    EXPECT_EQ(list.count, 0u);
    EXPECT_EQ(list.head, nullptr);
    EXPECT_EQ(list.tail, nullptr);
  }
};

// ---- Initialising ---------------------------------------------------------------------------------------------

TEST(InitRecord, MakesEverythingEmptyButTheValues) {
  forEachType([]<typename T>() {
    Context ctx;
    Record<T> record(ctx);
    members(*record, ExpectFresh{});
  });
}

TEST(InitRecord, PreparesTheSettingsOfAnEntityThoughTheyAreAbsent) {
  Context ctx;
  Record<entityType> record(ctx);
  forEachSetting(*record, [&](auto &setting) { members(setting, ExpectFresh{}); });
  // So a bit that is set, a second init and a release do no harm.
  record->m = 15;
  EXPECT_EQ(QxInit_isbSettingType(ctx, &record->isb_settings), 0);
  EXPECT_EQ(QxInit_amSettingType(ctx, &record->am_settings), 0);
  QxMemFree_entityType(ctx, record);
  EXPECT_EQ(QxInit_entityType(ctx, record), 0);
  EXPECT_EQ(record->m, 0u);
  EXPECT_EQ(support::heapStats(ctx).blocks, 0u);
}

TEST(InitRecord, RefusesAnUnusableContextAndLeavesTheRecord) {
  forEachType([]<typename T>() {
    RuntimeContext none{};
    for (RuntimeContext *ctx : {static_cast<RuntimeContext *>(nullptr), &none}) {
      auto record = support::patterned<T>();
      EXPECT_EQ(Functions<T>::init(ctx, &record), STATUS_BAD_CONTEXT);
      EXPECT_TRUE(untouched(record));
    }
  });
}

TEST(InitRecord, FailureIsRecordedWithTheModulesBaseFile) {
  std::vector<int> lines;
  forEachType([&]<typename T>() {
    Context ctx;
    auto record = support::patterned<T>();
    {
      FailingCheck failing(-777);
      EXPECT_EQ(Functions<T>::init(ctx, &record), -777);
    }
    EXPECT_TRUE(untouched(record));
    ASSERT_EQ(rtxErrCount(ctx), 1u);
    const RtxError &error = *rtxErrAt(ctx, 0);
    EXPECT_EQ(error.status, -777);
    ASSERT_EQ(error.siteCount, 1u);
    EXPECT_STREQ(error.sites[0].path, "xmlAddOns/addons/IMS/PocSettings/QxXmlPocSettings");
    for (int line : lines)
      EXPECT_NE(error.sites[0].line, line) << "each type has a place of its own";
    lines.push_back(error.sites[0].line);
  });
  EXPECT_EQ(lines.size(), 9u);
}

// ---- Releasing ------------------------------------------------------------------------------------------------

TEST(ReleaseRecord, GivesBackAllThatTheRecordHolds) {
  Context ctx;
  support::HeapBalance balance(ctx);
  Record<poc_settingsType> record(ctx);
  fillCompletely(ctx, *record);
  EXPECT_GT(support::heapStats(ctx).blocks, 100u);
}

TEST(ReleaseRecord, GivesBackAllOfEachSetting) {
  const auto check = []<typename Setting>(Setting &) {
    SCOPED_TRACE(Functions<Setting>::name);
    Context ctx;
    support::HeapBalance balance(ctx);
    Record<Setting> record(ctx);
    addForeign(ctx, record->anyElems, "<x/>");
    addForeign(ctx, record->anyElems, nullptr);
    addAttribute(ctx, record->_anyAttr, "k", "v");
    addAttribute(ctx, record->_anyAttr, "l", nullptr);
  };
  entityType types;
  forEachSetting(types, check);
}

TEST(ReleaseRecord, TakesAFreshRecord) {
  forEachType([]<typename T>() {
    Context ctx;
    Record<T> record(ctx);
    EXPECT_EQ(support::heapStats(ctx).blocks, 0u);
  });
}

// An entity whose settings hold one foreign element each: a text, an item and a node, three blocks.
void fillSettings(RuntimeContext *ctx, entityType &entity) {
  forEachSetting(entity, [&](auto &setting) { addForeign(ctx, setting.anyElems, "<x/>"); });
}

TEST(ReleaseRecord, EachBitOfAnEntityReleasesItsOwnSetting) {
  for (uint32_t m = 0; m < 16; ++m) {
    SCOPED_TRACE(m);
    Context ctx;
    Record<entityType> record(ctx);
    fillSettings(ctx, *record);
    addForeign(ctx, record->anyElems, "<x/>");
    addAttribute(ctx, record->_anyAttr, "k", "v");
    record->id = xmlString(ctx, "a");
    record->m = m;
    record.owned = false;
    QxMemFree_entityType(ctx, record);
    uint32_t bit = 1;
    size_t blocksLeft = 0;
    forEachSetting(*record, [&](auto &setting) {
      const bool released = (m & bit) != 0;
      EXPECT_EQ(setting.anyElems.items.count, released ? 0u : 1u) << "bit " << bit;
      blocksLeft += released ? 0 : 3;
      bit *= 2;
    });
    EXPECT_EQ(support::heapStats(ctx).blocks, blocksLeft) << "id, elements and attributes of the entity always go";
  }
}

TEST(ReleaseRecord, ClearsNeitherTextsNorBits) {
  Context ctx;
  Record<entityType> record(ctx);
  record->id = xmlString(ctx, "a");
  const auto address = reinterpret_cast<uintptr_t>(record->id.value);
  record->m = 15;
  forEachSetting(*record, [](auto &setting) { valueOf(setting) = 1; });
  fillSettings(ctx, *record);
  record.owned = false;
  QxMemFree_entityType(ctx, record);
  EXPECT_EQ(record->m, 15u);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(record->id.value), address);
  forEachSetting(*record, [](auto &setting) {
    EXPECT_EQ(valueOf(setting), 1);
    members(setting, [](auto &member) {
      if constexpr (std::is_same_v<decltype(member), RtxList &>) ExpectFresh{}(member);
    });
  });
}

// ---- Printing -------------------------------------------------------------------------------------------------

TEST(PrintRecord, NestedRecordsBeginWithALineOfTheirOwn) {
  for (bool active : {false, true}) {
    const std::string lines = "n = <null>\nn.active = "s + (active ? "true\n" : "false\n");
    EXPECT_EQ(printed("n", isbSettingType_incoming_session_barring{active}), lines);
    EXPECT_EQ(printed("n", ipabSettingType_incoming_personal_alert_barring{active}), lines);
    EXPECT_EQ(printed("n", sssSettingType_simultaneous_sessions_support{active}), lines);
  }
}

template <typename Setting> void expectSettingPrinted(const std::string &valueLines) {
  SCOPED_TRACE(Functions<Setting>::name);
  Context ctx;
  Record<Setting> record(ctx);
  valueOf(*record) = 1;
  EXPECT_EQ(printed("n", *record), valueLines);
  addForeign(ctx, record->anyElems, "<x/>");
  addForeign(ctx, record->anyElems, nullptr);
  addAttribute(ctx, record->_anyAttr, "k", "v");
  addAttribute(ctx, record->_anyAttr, "p:l", "<&>");
  EXPECT_EQ(printed("n", *record), valueLines + "n[0] = \"<x/>\"\n"
                                                "n[1] = <null>\n"
                                                "n._anyAttr[0] = k=\"v\"\n"
                                                "n._anyAttr[1] = p:l=\"<&>\"\n");
}

TEST(PrintRecord, SettingsShowTheirValueThenWhatIsForeign) {
  expectSettingPrinted<isbSettingType>("n.incoming_session_barring = <null>\n"
                                       "n.incoming_session_barring.active = true\n");
  expectSettingPrinted<amSettingType>("n.answer_mode = \"manual\"\n");
  expectSettingPrinted<ipabSettingType>("n.incoming_personal_alert_barring = <null>\n"
                                        "n.incoming_personal_alert_barring.active = true\n");
  expectSettingPrinted<sssSettingType>("n.simultaneous_sessions_support = <null>\n"
                                       "n.simultaneous_sessions_support.active = true\n");
}

TEST(PrintRecord, EachBitOfAnEntityShowsItsOwnSetting) {
  const char *const lines[] = {
      "e.isb_settings.incoming_session_barring = <null>\ne.isb_settings.incoming_session_barring.active = true\n",
      "e.am_settings.answer_mode = \"manual\"\n",
      "e.ipab_settings.incoming_personal_alert_barring = <null>\n"
      "e.ipab_settings.incoming_personal_alert_barring.active = true\n",
      "e.sss_settings.simultaneous_sessions_support = <null>\n"
      "e.sss_settings.simultaneous_sessions_support.active = true\n"};
  Context ctx;
  Record<entityType> record(ctx);
  forEachSetting(*record, [](auto &setting) { valueOf(setting) = 1; });
  record->id = xmlString(ctx, "a");
  addForeign(ctx, record->anyElems, "<x/>");
  addAttribute(ctx, record->_anyAttr, "k", "v");
  for (uint32_t m = 0; m < 16; ++m) {
    std::string expected;
    for (uint32_t i = 0; i < 4; ++i)
      if ((m >> i & 1) != 0) expected += lines[i];
    record->m = m;
    EXPECT_EQ(printed("e", *record), expected + "e[0] = \"<x/>\"\ne.id = \"a\"\ne._anyAttr[0] = k=\"v\"\n");
  }
}

TEST(PrintRecord, EntityShowsItsIdEvenIfThatIsEmpty) {
  Context ctx;
  Record<entityType> record(ctx);
  EXPECT_EQ(printed("e", *record), "e.id = <null>\n");
  record->id = xmlString(ctx, "");
  EXPECT_EQ(printed("e", *record), "e.id = \"\"\n");
}

TEST(PrintRecord, RootShowsEntitiesThenWhatIsForeign) {
  Context ctx;
  Record<poc_settingsType> record(ctx);
  EXPECT_EQ(printed("r", *record), "");
  addForeign(ctx, addEntity(ctx, *record, "a")->anyElems, "<x/>");
  entityType &second = *addEntity(ctx, *record, "b");
  second.m = entityType_has_am_settings;
  second.am_settings.answer_mode = 0;
  addForeign(ctx, second.am_settings.anyElems, "<m/>");
  addAttribute(ctx, second.am_settings._anyAttr, "k", "v");
  addForeign(ctx, record->anyElems, "<y/>");
  addAttribute(ctx, record->_anyAttr, "k", "v");
  EXPECT_EQ(printed("r", *record), "r.entity[0][0] = \"<x/>\"\n"
                                   "r.entity[0].id = \"a\"\n"
                                   "r.entity[1].am_settings.answer_mode = \"automatic\"\n"
                                   "r.entity[1].am_settings[0] = \"<m/>\"\n"
                                   "r.entity[1].am_settings._anyAttr[0] = k=\"v\"\n"
                                   "r.entity[1].id = \"b\"\n"
                                   "r[0] = \"<y/>\"\n"
                                   "r._anyAttr[0] = k=\"v\"\n");
}

TEST(PrintRecord, CutsLongNames) {
  Context ctx;
  Record<poc_settingsType> record(ctx);
  entityType &entity = *addEntity(ctx, *record, "a");
  entity.m = entityType_has_isb_settings;
  entity.isb_settings.incoming_session_barring.active = true;
  addForeign(ctx, entity.isb_settings.anyElems, "<x/>");
  addAttribute(ctx, entity.isb_settings._anyAttr, "k", "v");
  for (size_t length = 450; length <= 520; ++length) {
    const std::string name(length, 'n');
    const auto cut = [&](const char *suffix) { return (name + suffix).substr(0, 511); };
    EXPECT_EQ(printed(name.c_str(), *record), cut(".entity[0].isb_settings.incoming_session_barring") + " = <null>\n" +
                                                  cut(".entity[0].isb_settings.incoming_session_barring.active") +
                                                  " = true\n" + cut(".entity[0].isb_settings[0]") + " = \"<x/>\"\n" +
                                                  cut(".entity[0].isb_settings._anyAttr[0]") + " = k=\"v\"\n" +
                                                  cut(".entity[0].id") + " = \"a\"\n");
  }
}

TEST(PrintRecord, TakesAnyNameAsText) {
  EXPECT_EQ(printed("%s%n%d", isbSettingType_incoming_session_barring{true}),
            "%s%n%d = <null>\n%s%n%d.active = true\n");
}

// ---- The answer mode ------------------------------------------------------------------------------------------

TEST(AnswerMode, EveryCodeHasAText) {
  EXPECT_STREQ(QxamSettingType_answer_mode_ToString(0), "automatic");
  EXPECT_STREQ(QxamSettingType_answer_mode_ToString(1), "manual");
  for (uint32_t code : {2u, 3u, 255u, 256u, 65535u, 65536u + 2})
    EXPECT_STREQ(QxamSettingType_answer_mode_ToString(code), "_UNKNOWN_") << code;
  EXPECT_STREQ(QxamSettingType_answer_mode_ToString(65536), "automatic") << "the low 16 bits count";
  EXPECT_STREQ(QxamSettingType_answer_mode_ToString(0xFFFF0001), "manual");
}

TEST(AnswerMode, EveryTextHasACode) {
  Context ctx;
  for (uint16_t code : {amSettingType_answer_mode_automatic, amSettingType_answer_mode_manual}) {
    uint16_t found = 0xA5A5;
    const char *text = QxamSettingType_answer_mode_ToString(code);
    EXPECT_EQ(QxamSettingType_answer_mode_ToEnum(ctx, text, &found), 0);
    EXPECT_EQ(found, code);
    EXPECT_EQ(QxamSettingType_answer_mode_ToEnum(ctx, text, nullptr), 0) << "only whether there is one";
    EXPECT_EQ(QxamSettingType_answer_mode_ToEnum(nullptr, text, &found), 0) << "the context is not used";
  }
}

TEST(AnswerMode, OtherTextsHaveNone) {
  Context ctx;
  for (const char *text : {"", "Manual", "MANUAL", "manua", "manualx", " manual", "manual ", "automati", "automatic ",
                           "auto", "_UNKNOWN_", "0", "1", static_cast<const char *>(nullptr)}) {
    uint16_t code = 0xA5A5;
    EXPECT_EQ(QxamSettingType_answer_mode_ToEnum(ctx, text, &code), STATUS_ENUM_NOT_FOUND);
    EXPECT_EQ(code, 0xA5A5) << "untouched";
    EXPECT_EQ(QxamSettingType_answer_mode_ToEnum(ctx, text, nullptr), STATUS_ENUM_NOT_FOUND);
  }
  EXPECT_EQ(rtxErrCount(ctx), 0u) << "nothing is recorded";
}

TEST(AnswerMode, PrintsItsText) {
  const auto print = [](uint32_t code) {
    return captureStdout([&] { EXPECT_EQ(QxPrint_amSettingType_answer_mode("n", code), 0); });
  };
  EXPECT_EQ(print(0), "n = \"automatic\"\n");
  EXPECT_EQ(print(1), "n = \"manual\"\n");
  EXPECT_EQ(print(2), "n = \"_UNKNOWN_\"\n");
  EXPECT_EQ(print(65536 + 1), "n = \"manual\"\n");
  Context ctx;
  Record<amSettingType> record(ctx);
  EXPECT_EQ(printed("n", *record), "n.answer_mode = \"_UNKNOWN_\"\n") << "a code that nobody wrote";
}

} // namespace
