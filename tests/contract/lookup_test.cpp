// The lookups of handlers: elements by content state, attributes, the error counter, the trace.

#include "contract.h"

#include <cstring>
#include <set>

namespace contract {
namespace {

constexpr uint8_t XX = RTSAX_NOT_ALLOWED;
constexpr uint8_t FF = RTSAX_FINAL;

// a?, b+, any*, z? in namespace 1, where z is the last thing allowed.
constexpr RtSaxElementInfo elements[] = {
    {"a", 1, 0, 1}, {"b", 1, 1, RTSAX_UNBOUNDED}, {"", 1, 0, RTSAX_UNBOUNDED}, {"z", 1, 0, 1}};
constexpr uint8_t states[] = {
    // 0   1   2   3
    1,  XX, XX, XX, // a
    2,  2,  2,  XX, // b
    XX, XX, 3,  3,  // any
    XX, XX, FF, FF, // z
};

uint16_t find(uint8_t &state, const char *local, int index) {
  return rtSaxGetElemID8(&state, 0, local, index, elements, states, 4, 4);
}

TEST(ElementLookup, FollowsTheStateTable) {
  uint8_t state = 0;
  EXPECT_EQ(find(state, "a", 1), 0);
  EXPECT_EQ(state, 1);
  EXPECT_EQ(find(state, "a", 1), RTSAX_NO_ELEMENT);
  EXPECT_EQ(state, 1);
  for (int i = 0; i < 5; ++i) { // as often as the table says, whatever the occurrence columns say
    EXPECT_EQ(find(state, "b", 1), 1);
    EXPECT_EQ(state, 2);
  }
  EXPECT_EQ(find(state, "a", 1), RTSAX_NO_ELEMENT);
  EXPECT_EQ(find(state, "foreign", RTXML_NS_FOREIGN), 2);
  EXPECT_EQ(state, 3);
  EXPECT_EQ(find(state, "b", 1), RTSAX_NO_ELEMENT);
  EXPECT_EQ(find(state, "z", 1), 3);
  EXPECT_EQ(find(state, "z", 1), RTSAX_NO_ELEMENT);
  EXPECT_EQ(find(state, "foreign", RTXML_NS_FOREIGN), RTSAX_NO_ELEMENT);
}

TEST(ElementLookup, ComparesTheNamespace) {
  const struct {
    const char *what;
    const char *local;
    int index;
    uint8_t state;
    uint16_t id;
  } rows[] = {
      {"own namespace", "b", 1, 0, 1},
      {"no namespace", "b", RTXML_NS_NONE, 0, 1},
      {"known but other namespace, wildcard not allowed", "b", 0, 0, RTSAX_NO_ELEMENT},
      {"unknown namespace, wildcard not allowed", "b", RTXML_NS_FOREIGN, 0, RTSAX_NO_ELEMENT},
      {"known but other namespace", "b", 0, 2, 2},
      {"unknown namespace", "b", RTXML_NS_FOREIGN, 2, 2},
      {"unknown name in the own namespace", "other", 1, 2, RTSAX_NO_ELEMENT},
      {"unknown name in no namespace", "other", RTXML_NS_NONE, 2, 2},
      {"unknown name elsewhere", "other", RTXML_NS_FOREIGN, 2, 2},
      {"schema name that is not allowed here", "a", 1, 2, RTSAX_NO_ELEMENT},
      {"schema name that is not allowed here, no namespace", "a", RTXML_NS_NONE, 2, RTSAX_NO_ELEMENT},
      {"name that begins alike", "bb", 1, 0, RTSAX_NO_ELEMENT},
      {"name of other case", "B", 1, 0, RTSAX_NO_ELEMENT},
      {"empty name", "", 1, 2, RTSAX_NO_ELEMENT},
  };
  for (const auto &row : rows) {
    uint8_t state = row.state;
    EXPECT_EQ(find(state, row.local, row.index), row.id) << row.what;
    if (row.id == RTSAX_NO_ELEMENT) {
      EXPECT_EQ(state, row.state) << row.what;
    }
  }
}

TEST(ElementLookup, WildcardWithoutNamespaceTakesAnything) {
  const RtSaxElementInfo open[] = {{"a", -1, 0, 1}, {"", -1, 0, RTSAX_UNBOUNDED}};
  const uint8_t cells[] = {1, XX, 1, 1};
  for (const int index : {int{RTXML_NS_NONE}, int{RTXML_NS_FOREIGN}, 0, 4}) {
    uint8_t state = 0;
    EXPECT_EQ(rtSaxGetElemID8(&state, 0, "x", index, open, cells, 2, 2), 1) << index;
    EXPECT_EQ(state, 1);
  }
  uint8_t state = 1;
  EXPECT_EQ(rtSaxGetElemID8(&state, 0, "a", RTXML_NS_NONE, open, cells, 2, 2), RTSAX_NO_ELEMENT);
}

TEST(ElementLookup, NeverReadsPastTheTable) {
  const auto cells = std::make_unique<uint8_t[]>(2);
  cells[0] = FF;
  cells[1] = FF;
  const auto rows = std::make_unique<RtSaxElementInfo[]>(1);
  rows[0] = {"a", 1, 0, 1};
  Context ctx;
  for (int start = 0; start < 256; ++start) {
    auto state = static_cast<uint8_t>(start);
    const uint16_t expected = start < 2 ? 0 : RTSAX_NO_ELEMENT;
    EXPECT_EQ(rtSaxGetElemID8(&state, 0, "a", 1, rows.get(), cells.get(), 1, 2), expected) << start;
    EXPECT_EQ(state >= 2, true);
    state = static_cast<uint8_t>(start);
    EXPECT_EQ(rtSaxLookupElemID8(ctx, &state, 0, "a", "a", -1, rows.get(), cells.get(), 1, 2), expected) << start;
  }
  uint8_t state = 0;
  EXPECT_EQ(rtSaxGetElemID8(&state, 0, "a", 1, nullptr, nullptr, 0, 0), RTSAX_NO_ELEMENT);
}

TEST(ElementLookup, DoesNotDependOnTheElementBefore) {
  for (const int16_t current : {int16_t{-1}, int16_t{0}, int16_t{3}, int16_t{32767}}) {
    uint8_t state = 0;
    EXPECT_EQ(rtSaxGetElemID8(&state, current, "b", 1, elements, states, 4, 4), 1);
  }
}

TEST(SecondLookup, GoesByLocalNameWithoutTheWildcard) {
  Context ctx;
  uint8_t state = 0;
  EXPECT_EQ(rtSaxLookupElemID8(ctx, &state, 0, "a", "x:a", -1, elements, states, 4, 4), 0);
  EXPECT_EQ(state, 1);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
  state = 2;
  EXPECT_EQ(rtSaxLookupElemID8(ctx, &state, 0, "other", "x:other", -1, elements, states, 4, 4), RTSAX_NO_ELEMENT);
  EXPECT_EQ(state, 2);
  EXPECT_EQ(rtSaxLookupElemID8(ctx, &state, 0, "a", "x:a", -1, elements, states, 4, 4), RTSAX_NO_ELEMENT);
}

TEST(SecondLookup, RecordsAndSkipsWhatItRefuses) {
  Context ctx;
  Recorder recorder;
  recorder.onStart = [&](const char *local, const char *qualified, const char *const *) {
    uint8_t state = 0;
    if (std::strcmp(local, "bad") == 0) {
      EXPECT_EQ(rtSaxLookupElemID8(ctx, &state, 0, local, qualified, -1, elements, states, 4, 4), RTSAX_NO_ELEMENT);
    }
    return 0; // the skip is armed whatever the result
  };
  EXPECT_EQ(read(ctx, "<r><x:bad>t<c/></x:bad><good/></r>", recorder), 0);
  EXPECT_EQ(recorder.log, "<r><x:bad><good></good></r>");
  ASSERT_EQ(statuses(ctx), "-41");
  EXPECT_EQ(params(ctx, 0), "x:bad");
  EXPECT_EQ(rtxErrGetLastError(ctx), STATUS_UNEXPECTED_ELEMENT);
  EXPECT_STREQ(rtxErrAt(ctx, 0)->sites[0].path, "runtime/reader");
}

TEST(SecondLookup, SkipsEvenWhenTheCounterRefuses) {
  Context ctx;
  rtxSetErrorLimit(ctx, 0);
  Recorder recorder;
  recorder.onStart = [&](const char *local, const char *qualified, const char *const *) {
    uint8_t state = 0;
    if (std::strcmp(local, "bad") == 0) {
      rtSaxLookupElemID8(ctx, &state, 0, local, qualified, -1, elements, states, 4, 4);
    }
    return 0;
  };
  EXPECT_EQ(read(ctx, "<r><bad>t<c/></bad><good/></r>", recorder), 0);
  EXPECT_EQ(recorder.log, "<r><bad><good></good></r>");
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

// ---- Attributes

TEST(AttributeLookup, GivesIndexAndBit) {
  std::vector<std::string> texts;
  for (int i = 0; i < 32; ++i)
    texts.push_back("attr" + std::to_string(i));
  std::vector<const char *> names;
  for (const std::string &text : texts)
    names.push_back(text.c_str());
  for (uint32_t count = 0; count <= 32; ++count) {
    uint32_t seen = 0;
    uint32_t expected = 0;
    for (uint32_t i = 0; i < 32; ++i) {
      const int index = rtSaxGetAttributeID(texts[i].c_str(), count, names.data(), &seen);
      if (i < count) expected |= uint32_t{1} << i;
      EXPECT_EQ(index, i < count ? static_cast<int>(i) : -1);
      EXPECT_EQ(seen, expected);
    }
  }
  uint32_t seen = 0x80000000u;
  for (const char *name : {"", "attr", "attr00", "Attr0", "x:attr0", "attr1 "}) {
    EXPECT_EQ(rtSaxGetAttributeID(name, 32, names.data(), &seen), -1) << name;
  }
  EXPECT_EQ(seen, 0x80000000u);
}

TEST(RequiredAttributes, ThatAreMissingAreRecordedOneByOne) {
  Context ctx;
  const char *const names[] = {"id", "version", "state", "entity"};
  EXPECT_EQ(insideElement(ctx, "<r/>", "r",
                          [&](const char *const *) {
                            const uint32_t all = 0xF;
                            EXPECT_EQ(rtSaxTestAttributesPresent(ctx, &all, 0xF, names, 4, "T"), 0);
                            const uint32_t none = 0;
                            EXPECT_EQ(rtSaxTestAttributesPresent(ctx, &none, 0, names, 4, "T"), 0);
                            EXPECT_EQ(rtxErrCount(ctx), 0u);
                            const uint32_t some = 2;
                            EXPECT_EQ(rtSaxTestAttributesPresent(ctx, &some, 0xB, names, 4, "T"),
                                      STATUS_MISSING_ATTRIBUTE);
                            EXPECT_EQ(some, 2u);
                            return 0;
                          }),
            0);
  ASSERT_EQ(statuses(ctx), "-103 -103");
  EXPECT_EQ(params(ctx, 0), "T|id");
  EXPECT_EQ(params(ctx, 1), "T|entity");
  EXPECT_STREQ(rtxErrAt(ctx, 0)->sites[0].path, "runtime/reader");
}

TEST(UnexpectedAttributes, AreRecordedOneByOne) {
  Context ctx;
  const char *document =
      "<r xmlns='u' xmlns:p='v' xmlns:i='http://www.w3.org/2001/XMLSchema-instance' xsi:type='t' i:nil='true' "
      "a='1' p:b='2'/>";
  EXPECT_EQ(insideElement(ctx, document, "r",
                          [&](const char *const *attributes) {
                            EXPECT_EQ(rtSaxReportUnexpAttrs(ctx, attributes, "name"), STATUS_UNKNOWN_ATTRIBUTE);
                            EXPECT_EQ(rtSaxReportUnexpAttrs(ctx, attributes, ""), STATUS_UNKNOWN_ATTRIBUTE);
                            return 0;
                          }),
            0);
  ASSERT_EQ(statuses(ctx), "-33 -33 -33 -33");
  EXPECT_EQ(params(ctx, 0), "name|a");
  EXPECT_EQ(params(ctx, 1), "name|p:b");
  EXPECT_EQ(params(ctx, 2), "|a");
  EXPECT_EQ(params(ctx, 3), "|p:b");
  EXPECT_STREQ(rtxErrAt(ctx, 0)->sites[0].path, "runtime/reader");
}

TEST(UnexpectedAttributes, AreNoneInAnEmptyArray) {
  Context ctx;
  const char *const none[] = {nullptr};
  const char *const ignored[] = {"xmlns", "u", "xmlns:p", "v", "xsi:type", "t", nullptr};
  EXPECT_EQ(rtSaxReportUnexpAttrs(ctx, nullptr, "e"), 0);
  EXPECT_EQ(rtSaxReportUnexpAttrs(ctx, none, "e"), 0);
  EXPECT_EQ(rtSaxReportUnexpAttrs(ctx, ignored, "e"), 0);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TEST(RuntimeRecords, HaveDistinctStableLines) {
  std::vector<int> before;
  for (int round = 0; round < 2; ++round) {
    Context ctx;
    const char *const names[] = {"id"};
    insideElement(ctx, "<r a='1'/>", "r", [&](const char *const *attributes) {
      uint8_t state = 0;
      const uint32_t seen = 0;
      rtSaxLookupElemID8(ctx, &state, 0, "bad", "bad", -1, elements, states, 4, 4);
      rtSaxTestAttributesPresent(ctx, &seen, 1, names, 1, "T");
      rtSaxReportUnexpAttrs(ctx, attributes, "r");
      return 0;
    });
    Recorder recorder;
    read(ctx, "<r>", recorder);
    ASSERT_EQ(statuses(ctx), "-41 -103 -33 -104");
    std::vector<int> lines;
    for (uint32_t i = 0; i < 4; ++i) {
      EXPECT_STREQ(rtxErrAt(ctx, i)->sites[0].path, "runtime/reader");
      lines.push_back(rtxErrAt(ctx, i)->sites[0].line);
    }
    EXPECT_EQ(std::set<int>(lines.begin(), lines.end()).size(), 4u);
    if (round == 1) {
      EXPECT_EQ(lines, before);
    }
    before = lines;
  }
}

// ---- The counter

TEST(ErrorCounter, AllowsAsManyAsItsLimitInEachReader) {
  for (const uint32_t limit : {0u, 1u, 3u, 100u}) {
    RuntimeOptions options = defaultOptions();
    options.errorLimit = limit;
    Context ctx(options);
    for (int round = 0; round < 3; ++round) {
      uint32_t allowed = 0;
      EXPECT_EQ(insideElement(ctx, "<r/>", "r",
                              [&](const char *const *) {
                                for (int i = 0; i < 200; ++i)
                                  allowed += rtSaxIncErrors(ctx) != 0 ? 1 : 0;
                                EXPECT_EQ(rtSaxIncErrors(ctx), 0);
                                return 0;
                              }),
                0);
      EXPECT_EQ(allowed, limit) << round;
    }
    EXPECT_EQ(rtxErrCount(ctx), 0u);
  }
}

TEST(ErrorCounter, TakesALimitForTheReadersToCome) {
  Context ctx;
  rtxSetErrorLimit(ctx, 2);
  const auto countAllowed = [&](const std::function<void()> &first) {
    uint32_t allowed = 0;
    insideElement(ctx, "<r/>", "r", [&](const char *const *) {
      first();
      for (int i = 0; i < 200; ++i)
        allowed += rtSaxIncErrors(ctx) != 0 ? 1 : 0;
      return 0;
    });
    return allowed;
  };
  EXPECT_EQ(countAllowed([] {}), 2u);
  EXPECT_EQ(countAllowed([&] { rtxSetErrorLimit(ctx, 5); }), 2u);
  EXPECT_EQ(countAllowed([] {}), 5u);
}

TEST(ErrorCounter, GovernsTheRuntimesOwnRecords) {
  Context ctx;
  rtxSetErrorLimit(ctx, 3);
  const char *const names[] = {"id", "version"};
  EXPECT_EQ(
      insideElement(ctx, "<r a='1' b='2' c='3'/>", "r",
                    [&](const char *const *attributes) {
                      const uint32_t seen = 0;
                      EXPECT_EQ(rtSaxTestAttributesPresent(ctx, &seen, 3, names, 2, "T"), STATUS_MISSING_ATTRIBUTE);
                      EXPECT_EQ(rtSaxReportUnexpAttrs(ctx, attributes, "r"), STATUS_UNKNOWN_ATTRIBUTE);
                      EXPECT_EQ(rtSaxTestAttributesPresent(ctx, &seen, 3, names, 2, "T"), STATUS_MISSING_ATTRIBUTE);
                      rtxErrSetNewData(ctx, -16, "s", 1);
                      return 0;
                    }),
      0);
  EXPECT_EQ(statuses(ctx), "-103 -103 -33 -16");
  EXPECT_EQ(params(ctx, 3), "") << "a refused error left its parameters";
}

TEST(ErrorCounter, DoesNotGovernTheReadersOwnRecord) {
  Context ctx;
  rtxSetErrorLimit(ctx, 0);
  Recorder recorder;
  EXPECT_EQ(read(ctx, "<r>", recorder), STATUS_PARSE_FAILED);
  EXPECT_EQ(statuses(ctx), "-104");
}

TEST(WithoutReader, HelpersStayHarmless) {
  Context ctx;
  rtSaxIncErrors(ctx);
  EXPECT_EQ(rtSaxSetSkipLevelToCurrent(ctx, 0), 0);
  EXPECT_EQ(rtSaxSetSkipLevelToCurrent(ctx, -16), -16);
  Recorder recorder;
  EXPECT_EQ(read(ctx, "<r><a/></r>", recorder), 0);
  EXPECT_EQ(recorder.log, "<r><a></a></r>") << "a skip from before the reader";
  EXPECT_EQ(rtSaxSetSkipLevelToCurrent(ctx, -41), -41);
  Recorder again;
  EXPECT_EQ(readInput(ctx, again), 0);
  EXPECT_EQ(again.log, "<r><a></a></r>");
}

// ---- The trace

TEST(Trace, SeesEntryAndExit) {
  std::string seen;
  RuntimeOptions options = defaultOptions();
  options.traceUser = &seen;
  options.trace = [](void *user, bool enter, const char *function, const char *element) {
    static_cast<std::string *>(user)
        ->append(enter ? "+" : "-")
        .append(function)
        .append(":")
        .append(element)
        .append(" ");
  };
  Context ctx(options);
  SaxTypeHandler fills{};
  fills.context = ctx;
  VsaxTypeHandler checks{};
  checks.context = ctx;
  rtSaxDiagStartFunc(&fills, "one", "a");
  rtSaxDiagStartFunc(&checks, "two", "b");
  rtSaxDiagEndFunc(&checks, "two", "b");
  rtSaxDiagEndFunc(&fills, "one", "a");
  EXPECT_EQ(seen, "+one:a +two:b -two:b -one:a ");
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TEST(Trace, IsOffByDefault) {
  Context ctx;
  SaxTypeHandler handler{};
  handler.context = ctx;
  Capture out(stdout);
  Capture err(stderr);
  rtSaxDiagStartFunc(&handler, "one", "a");
  rtSaxDiagEndFunc(&handler, "one", "a");
  EXPECT_EQ(err.finish() + out.finish(), "");
}

} // namespace
} // namespace contract
