// Initialising, releasing and printing the records of debug information, and the texts of its enumerations.
#include "capture.h"
#include "debugInfo.h"

#include <cstring>

using namespace debugInfo;
using support::captureStdout;
using support::Context;
using support::expectEmpty;
using support::HeapBalance;

namespace {

// ---- Initialising ---------------------------------------------------------------------------------------------

constexpr uint32_t pattern32 = 0xA5A5A5A5u;
constexpr uint16_t pattern16 = 0xA5A5u;

void expectInitial(const tns__start_trigger &record) {
  EXPECT_EQ(record.m, 0u);
  for (const RtxXmlString &text :
       {record.tns_from, record.tns_to, record.tns_icsi, record.tns_iari, record.tns_method, record.tns_time})
    expectEmpty(text);
  expectEmpty(record.tns_debug_id);
}

void expectInitial(const tns__stop_trigger &record) {
  EXPECT_EQ(record.m, 0u);
  expectEmpty(record.tns_time);
  expectEmpty(record.tns_time_period);
  EXPECT_EQ(record.tns_reason, pattern16) << "only its presence bit gives it a meaning";
}

void expectInitial(const tns__control &record) {
  EXPECT_EQ(record.m, 0u);
  expectEmpty(record.tns_interface);
  EXPECT_EQ(record.tns_depth, pattern16) << "only its presence bit gives it a meaning";
  expectEmpty(record.tns_debug_id);
}

TEST(InitRecord, MakesEverythingEmptyButNumbersAndCodes) {
  Context ctx;
  for (const Document *document : recordDocuments()) {
    SCOPED_TRACE(document->root);
    Value value;
    fillWithPattern(value);
    EXPECT_EQ(document->type->init(ctx, value), 0);
    const std::string_view root = document->root;
    if (root == "start-trigger") expectInitial(value.start_trigger);
    if (root == "stop-trigger") expectInitial(value.stop_trigger);
    if (root == "control") expectInitial(value.control);
    if (root == "session") {
      expectInitial(value.session.tns_start_trigger);
      expectInitial(value.session.tns_stop_trigger);
      expectInitial(value.session.tns_control);
      expectEmpty(value.session.tns_id);
    }
    if (root == "debugconfig") {
      expectEmpty(value.debugconfig.tns_session);
      expectEmpty(value.debugconfig.tns_aor);
    }
    if (root == "debuginfo") {
      expectEmpty(value.debuginfo.tns_debugconfig);
      expectEmpty(value.debuginfo.anyElems.items);
      EXPECT_EQ(value.debuginfo.tns_version, pattern32) << "the caller must set it before encoding";
      EXPECT_EQ(value.debuginfo.tns_state, pattern16) << "the caller must set it before encoding";
    }
    const auto *bytes = reinterpret_cast<const unsigned char *>(&value);
    for (size_t i = document->type->size; i < sizeof value; ++i)
      ASSERT_EQ(bytes[i], 0xA5) << "written behind the record";
  }
  EXPECT_EQ(support::heapStats(ctx).blocks, 0u);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TEST(InitRecord, RefusesAnUnusableContextAndLeavesTheRecord) {
  RuntimeContext none{};
  for (const Document *document : recordDocuments()) {
    for (RuntimeContext *ctx : {static_cast<RuntimeContext *>(nullptr), &none}) {
      Value value;
      fillWithPattern(value);
      const Value before = value;
      EXPECT_EQ(document->type->init(ctx, value), STATUS_BAD_CONTEXT) << document->root;
      EXPECT_EQ(std::memcmp(&value, &before, sizeof value), 0) << document->root;
    }
  }
}

// ---- Releasing --------------------------------------------------------------------------------------------------

TEST(ReleaseRecord, GivesBackAllThatTheRecordHolds) {
  for (const Document *document : recordDocuments()) {
    SCOPED_TRACE(document->root);
    Context ctx;
    HeapBalance balance(ctx);
    Held held(ctx, *document);
    held.complete();
    EXPECT_GT(support::heapStats(ctx).blocks, 0u);
  }
}

TEST(ReleaseRecord, TakesAFreshRecord) {
  for (const Document *document : recordDocuments()) {
    Context ctx;
    Held held(ctx, *document);
    held.init();
    document->type->release(ctx, held);
    EXPECT_EQ(support::heapStats(ctx).blocks, 0u) << document->root;
    EXPECT_EQ(rtxErrCount(ctx), 0u);
  }
}

// The heap block of a text or of bytes, and the presence bit under which it is released; 0: always.
struct Owned {
  const void *block;
  uint32_t bit;
};

std::vector<Owned> blocksOf(const tns__start_trigger &r) {
  return {{r.tns_from.value, 1},    {r.tns_to.value, 2},    {r.tns_icsi.value, 4},     {r.tns_iari.value, 8},
          {r.tns_method.value, 16}, {r.tns_time.value, 32}, {r.tns_debug_id.bytes, 64}};
}
std::vector<Owned> blocksOf(const tns__stop_trigger &r) {
  return {{r.tns_time.value, 1}, {r.tns_time_period.value, 2}};
}
std::vector<Owned> blocksOf(const tns__control &r) { return {{r.tns_interface.value, 0}, {r.tns_debug_id.bytes, 2}}; }

// Releases a complete record under every set of bits: what has its bit clear must still be there to be freed by hand.
template <typename T> void expectBitsDecide(int (*release)(RuntimeContext *, T *), uint32_t allBits) {
  for (uint32_t m = 0; m <= allBits; ++m) {
    SCOPED_TRACE("bits " + std::to_string(m));
    Context ctx;
    T record;
    std::memset(static_cast<void *>(&record), 0, sizeof record);
    Builder(ctx).complete(record);
    EXPECT_EQ(record.m, allBits);
    const std::vector<Owned> blocks = blocksOf(record);
    ASSERT_EQ(support::heapStats(ctx).blocks, blocks.size());
    record.m = m;
    const T before = record;
    release(ctx, &record);
    EXPECT_EQ(std::memcmp(&record, &before, sizeof record), 0) << "neither pointers nor bits are cleared";
    size_t kept = 0;
    for (const Owned &owned : blocks) {
      if (owned.bit == 0 || (m & owned.bit) != 0) continue;
      ++kept;
    }
    EXPECT_EQ(support::heapStats(ctx).blocks, kept);
    for (const Owned &owned : blocks)
      if (owned.bit != 0 && (m & owned.bit) == 0) rtxMemHeapFreePtr(ctx, owned.block);
    EXPECT_EQ(support::heapStats(ctx).blocks, 0u) << "another block was released in its place";
  }
}

TEST(ReleaseRecord, EachBitReleasesItsOwnMember) {
  expectBitsDecide(QxMemFree_tns__start_trigger, 127);
  expectBitsDecide(QxMemFree_tns__stop_trigger, 7);
  expectBitsDecide(QxMemFree_tns__control, 3);
}

TEST(ReleaseRecord, InterfaceGoesEvenWithoutABit) {
  Context ctx;
  tns__control record;
  ASSERT_EQ(QxInit_tns__control(ctx, &record), 0);
  record.tns_interface = Builder(ctx).text("Gm");
  QxMemFree_tns__control(ctx, &record);
  EXPECT_EQ(support::heapStats(ctx).blocks, 0u);
}

TEST(ReleaseRecord, ListsAreLeftEmptyAndTheRestAsItWas) {
  Context ctx;
  Held held(ctx, documentOf("debuginfo"));
  held.complete();
  QxMemFree_tns__debuginfo(ctx, &held->debuginfo);
  held.owned = false;
  expectEmpty(held->debuginfo.tns_debugconfig);
  expectEmpty(held->debuginfo.anyElems.items);
  EXPECT_EQ(held->debuginfo.tns_version, 3u);
  EXPECT_EQ(held->debuginfo.tns_state, 1u);
  EXPECT_EQ(support::heapStats(ctx).blocks, 0u);

  Held config(ctx, documentOf("debugconfig"));
  config.complete();
  const void *aor = config->debugconfig.tns_aor.value;
  QxMemFree_tns__debugconfig(ctx, &config->debugconfig);
  config.owned = false;
  expectEmpty(config->debugconfig.tns_session);
  EXPECT_EQ(static_cast<const void *>(config->debugconfig.tns_aor.value), aor);
  EXPECT_EQ(support::heapStats(ctx).blocks, 0u);
}

// ---- Printing ---------------------------------------------------------------------------------------------------

std::string printed(const Document &document, const char *name, const Value &value) {
  return captureStdout([&] { EXPECT_EQ(document.type->print(name, value), 0); });
}

// The lines of a complete record under a name.
std::string linesOfStart(const std::string &name) {
  return name + ".tns_from = \"sip:bob@example.com\"\n" + name + ".tns_to = \"sip:carol@example.com\"\n" + name +
         ".tns_icsi = \"urn:urn-7:3gpp-service.ims.icsi.mmtel\"\n" + name +
         ".tns_iari = \"urn:urn-7:3gpp-application.ims.iari.game\"\n" + name + ".tns_method = \"INVITE\"\n" + name +
         ".tns_time = \"2024-01-02T03:04:05Z\"\n" + name + ".tns_debug_id = 0A1BFF\n";
}
std::string linesOfStop(const std::string &name) {
  return name + ".tns_time = \"2024-01-03T00:00:00Z\"\n" + name + ".tns_time_period = \"PT5M\"\n" + name +
         ".tns_reason = \"session_end\"\n";
}
std::string linesOfControl(const std::string &name) {
  return name + ".tns_interface = \"Gm Mw\"\n" + name + ".tns_depth = \"minimum\"\n" + name +
         ".tns_debug_id = 43AA55\n";
}
std::string linesOfSession(const std::string &name, const std::string &id) {
  return linesOfStart(name + ".tns_start_trigger") + linesOfStop(name + ".tns_stop_trigger") +
         linesOfControl(name + ".tns_control") + name + ".tns_id = \"" + id + "\"\n";
}
std::string linesOfConfig(const std::string &name, const std::string &aor) {
  return linesOfSession(name + ".tns_session[0]", "4") + linesOfSession(name + ".tns_session[1]", "5") + name +
         ".tns_aor = \"" + aor + "\"\n";
}
std::string linesOfInfo(const std::string &name) {
  return linesOfConfig(name + ".tns_debugconfig[0]", "sip:alice@example.com") +
         linesOfConfig(name + ".tns_debugconfig[1]", "sip:dave@example.com") + name +
         "[0] = \"<x:f xmlns:x=\\\"urn:x\\\">t<x:g/></x:f>\"\n" + name + "[1] = \"<y xmlns=\\\"urn:y\\\"/>\"\n" + name +
         ".tns_version = 3\n" + name + ".tns_state = \"partial\"\n";
}

TEST(PrintRecord, ShowsEachMemberOnALineOfItsOwn) {
  const std::vector<std::pair<const char *, std::string>> expected = {
      {"start-trigger", linesOfStart("rec")},
      {"stop-trigger", linesOfStop("rec")},
      {"control", linesOfControl("rec")},
      {"session", linesOfSession("rec", "4")},
      {"debugconfig", linesOfConfig("rec", "sip:alice@example.com")},
      {"debuginfo", linesOfInfo("rec")}};
  Context ctx;
  for (const auto &[root, lines] : expected) {
    const Document &document = documentOf(root);
    Held held(ctx, document);
    held.complete();
    EXPECT_EQ(printed(document, "rec", held), lines) << root;
  }
}

TEST(PrintRecord, FreshRecordShowsOnlyItsRequiredMembers) {
  const std::vector<std::pair<const char *, const char *>> expected = {
      {"start-trigger", ""},
      {"stop-trigger", ""},
      {"control", "r.tns_interface = <null>\n"},
      {"session", "r.tns_control.tns_interface = <null>\nr.tns_id = <null>\n"},
      {"debugconfig", "r.tns_aor = <null>\n"}};
  Context ctx;
  for (const auto &[root, lines] : expected) {
    const Document &document = documentOf(root);
    Held held(ctx, document);
    held.init();
    EXPECT_EQ(printed(document, "r", held), lines) << root;
  }
  Held held(ctx, documentOf("debuginfo"));
  held.init();
  held->debuginfo.tns_version = 4294967295u;
  held->debuginfo.tns_state = 2;
  EXPECT_EQ(printed(documentOf("debuginfo"), "r", held), "r.tns_version = 4294967295\nr.tns_state = \"_UNKNOWN_\"\n");
}

// Prints a complete record under every set of bits, each bit with its line; always is what no bit decides.
template <typename T>
void expectBitsShow(int (*print)(const char *, const T *), const std::string &always,
                    const std::vector<std::string> &lines) {
  Context ctx;
  T record;
  std::memset(static_cast<void *>(&record), 0, sizeof record);
  Builder(ctx).complete(record);
  for (uint32_t m = 0; m < 1u << lines.size(); ++m) {
    std::string expected = always;
    for (size_t i = 0; i < lines.size(); ++i)
      if ((m >> i & 1) != 0) expected += lines[i];
    record.m = m;
    EXPECT_EQ(captureStdout([&] { EXPECT_EQ(print("r", &record), 0); }), expected) << m;
  }
}

TEST(PrintRecord, EachBitShowsItsOwnMember) {
  expectBitsShow(QxPrint_tns__start_trigger, "",
                 {"r.tns_from = \"sip:bob@example.com\"\n", "r.tns_to = \"sip:carol@example.com\"\n",
                  "r.tns_icsi = \"urn:urn-7:3gpp-service.ims.icsi.mmtel\"\n",
                  "r.tns_iari = \"urn:urn-7:3gpp-application.ims.iari.game\"\n", "r.tns_method = \"INVITE\"\n",
                  "r.tns_time = \"2024-01-02T03:04:05Z\"\n", "r.tns_debug_id = 0A1BFF\n"});
  expectBitsShow(QxPrint_tns__stop_trigger, "",
                 {"r.tns_time = \"2024-01-03T00:00:00Z\"\n", "r.tns_time_period = \"PT5M\"\n",
                  "r.tns_reason = \"session_end\"\n"});
  expectBitsShow(QxPrint_tns__control, "r.tns_interface = \"Gm Mw\"\n",
                 {"r.tns_depth = \"minimum\"\n", "r.tns_debug_id = 43AA55\n"});
}

TEST(PrintRecord, EmptyBytesAreALine) {
  tns__control record{};
  record.m = 2;
  EXPECT_EQ(captureStdout([&] { QxPrint_tns__control("r", &record); }),
            "r.tns_interface = <null>\nr.tns_debug_id = \n");
}

TEST(PrintRecord, CutsLongNames) {
  Context ctx;
  const Document &document = documentOf("debuginfo");
  Held held(ctx, document);
  held.complete();
  const std::string whole = printed(document, "", held);
  for (size_t length : {440u, 470u, 500u, 511u, 512u, 5000u}) {
    const std::string name(length, 'n');
    std::string expected;
    for (size_t at = 0; at < whole.size();) {
      const size_t end = whole.find('\n', at);
      const std::string line = whole.substr(at, end - at);
      const size_t equals = line.find(" = ");
      expected += (name + line.substr(0, equals)).substr(0, 511) + line.substr(equals) + "\n";
      at = end + 1;
    }
    EXPECT_EQ(printed(document, name.c_str(), held), expected) << length;
  }
}

TEST(PrintRecord, TakesAnyNameAsText) {
  tns__control record{};
  EXPECT_EQ(captureStdout([&] { QxPrint_tns__control("%s%n%d", &record); }), "%s%n%d.tns_interface = <null>\n");
}

// ---- Enumerations -------------------------------------------------------------------------------------------------

struct Enumeration {
  const char *name;
  const char *texts[2];
  const char *(*toString)(uint32_t);
  int (*toEnum)(RuntimeContext *, const char *, uint16_t *);
  int (*print)(const char *, uint32_t);
};

const Enumeration enumerations[] = {
    {"reason",
     {"dialog_established", "session_end"},
     Qxtns__reason_ToString,
     Qxtns__reason_ToEnum,
     QxPrint_tns__reason},
    {"depth", {"maximum", "minimum"}, Qxtns__depth_ToString, Qxtns__depth_ToEnum, QxPrint_tns__depth},
    {"state", {"full", "partial"}, Qxtns__state_ToString, Qxtns__state_ToEnum, QxDbPrint_tns__state}};

TEST(Enumerations, EveryCodeHasItsTextAndBack) {
  Context ctx;
  for (const Enumeration &e : enumerations) {
    SCOPED_TRACE(e.name);
    for (uint16_t code = 0; code < 2; ++code) {
      EXPECT_STREQ(e.toString(code), e.texts[code]);
      EXPECT_STREQ(e.toString(65536u + code), e.texts[code]) << "only the low 16 bits count";
      EXPECT_STREQ(e.toString(0xFFFF0000u + code), e.texts[code]);
      uint16_t found = 4711;
      EXPECT_EQ(e.toEnum(ctx, e.texts[code], &found), 0);
      EXPECT_EQ(found, code);
      EXPECT_EQ(e.toEnum(nullptr, e.texts[code], nullptr), 0) << "the context is not used, the result may be dropped";
    }
  }
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TEST(Enumerations, OtherCodesAreUnknown) {
  for (const Enumeration &e : enumerations)
    for (uint32_t code : {2u, 3u, 255u, 256u, 32768u, 65535u, 65538u, 131071u})
      EXPECT_STREQ(e.toString(code), "_UNKNOWN_") << e.name << " " << code;
}

TEST(Enumerations, TextsAreComparedExactly) {
  Context ctx;
  for (const Enumeration &e : enumerations) {
    SCOPED_TRACE(e.name);
    std::vector<std::string> wrong = {"", " ", "_UNKNOWN_", "0", "1", "dialog-established", "session-end", "zzz"};
    for (const std::string text : e.texts) {
      wrong.push_back(text.substr(0, text.size() - 1));
      wrong.push_back(text + "x");
      wrong.push_back(" " + text);
      wrong.push_back(text + " ");
      std::string upper = text;
      upper[0] = static_cast<char>(upper[0] - 'a' + 'A');
      wrong.push_back(upper);
    }
    for (const std::string &text : wrong) {
      uint16_t code = 4711;
      EXPECT_EQ(e.toEnum(ctx, text.c_str(), &code), STATUS_ENUM_NOT_FOUND) << text;
      EXPECT_EQ(code, 4711u) << text;
      EXPECT_EQ(e.toEnum(ctx, text.c_str(), nullptr), STATUS_ENUM_NOT_FOUND) << text;
    }
    uint16_t code = 4711;
    EXPECT_EQ(e.toEnum(ctx, nullptr, &code), STATUS_ENUM_NOT_FOUND);
    EXPECT_EQ(code, 4711u);
  }
  EXPECT_EQ(rtxErrCount(ctx), 0u) << "nothing of this is recorded";
}

TEST(Enumerations, ArePrintedAsTheirTexts) {
  for (const Enumeration &e : enumerations) {
    const auto line = [&](uint32_t code) { return captureStdout([&] { EXPECT_EQ(e.print("n", code), 0); }); };
    EXPECT_EQ(line(0), "n = \""s + e.texts[0] + "\"\n");
    EXPECT_EQ(line(1), "n = \""s + e.texts[1] + "\"\n");
    EXPECT_EQ(line(65537), "n = \""s + e.texts[1] + "\"\n");
    EXPECT_EQ(line(2), "n = \"_UNKNOWN_\"\n");
  }
}

} // namespace
