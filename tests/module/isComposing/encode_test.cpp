// Writing a composing indication.
#include "composing.h"
#include "xmlJudge.h"

using namespace composing;
using support::Context;

namespace {

const std::string open = "<tns:isComposing xmlns:tns=\""s + namespaceUri + "\">";
const std::string close = "</tns:isComposing>";

int encodeDocument(RuntimeContext *ctx, const tns__isComposing *record) { return QxXmlE_tns_isComposing(ctx, record); }

TEST(Encode, RequiredChildAlone) {
  Context ctx;
  Record record(ctx, "active");
  EXPECT_EQ(encodeRecord(ctx, record), open + "<tns:state>active</tns:state>" + close);
}

TEST(Encode, AllMembersInOrder) {
  Context ctx;
  Record record(ctx, "active");
  record.lastactive("2024-01-02T03:04:05Z").contenttype("text/plain").refresh(4294967295u);
  record.foreign("<x:f xmlns:x=\"u\">1 &lt; 2</x:f>").foreign("<!--as it stands--><y/>");
  EXPECT_EQ(encodeRecord(ctx, record), open +
                                           "<tns:state>active</tns:state>"
                                           "<tns:lastactive>2024-01-02T03:04:05Z</tns:lastactive>"
                                           "<tns:contenttype>text/plain</tns:contenttype>"
                                           "<tns:refresh>4294967295</tns:refresh>"
                                           "<x:f xmlns:x=\"u\">1 &lt; 2</x:f><!--as it stands--><y/>" +
                                           close);
}

TEST(Encode, BeginsWithTheXmlDeclaration) {
  Context ctx;
  Record record(ctx, "active");
  const std::string whole = support::encoded(ctx, [&](RuntimeContext *c) { return encodeDocument(c, record); });
  EXPECT_TRUE(whole.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n")) << whole;
}

TEST(Encode, EachBitWritesItsOwnChild) {
  Context ctx;
  Record record(ctx, "s");
  record.lastactive("l").contenttype("c").refresh(5);
  const char *const children[] = {"<tns:lastactive>l</tns:lastactive>", "<tns:contenttype>c</tns:contenttype>",
                                  "<tns:refresh>5</tns:refresh>"};
  for (uint32_t m = 0; m < 8; ++m) {
    std::string expected = open + "<tns:state>s</tns:state>";
    for (uint32_t i = 0; i < 3; ++i)
      if ((m >> i & 1) != 0) expected += children[i];
    record->m = m;
    EXPECT_EQ(encodeRecord(ctx, record), expected + close);
  }
  record->m = 7;
}

TEST(Encode, BitsWithoutAMeaningChangeNothing) {
  Context ctx;
  Record record(ctx, "s");
  record->m = ~7u;
  EXPECT_EQ(encodeRecord(ctx, record), open + "<tns:state>s</tns:state>" + close);
}

TEST(Encode, AbsentTextsBecomeEmptyElements) {
  Context ctx;
  Record record(ctx, nullptr);
  record->m = 3;
  const auto root = support::parseNamespacedXml(encodeRecord(ctx, record));
  ASSERT_TRUE(root);
  ASSERT_EQ(root->children.size(), 3u);
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(root->children[i].name, std::vector<std::string>({"state", "lastactive", "contenttype"})[i]);
    EXPECT_EQ(root->children[i].sequence, "");
  }
}

TEST(Encode, ForeignEntryWithoutTextWritesNothing) {
  Context ctx;
  Record record(ctx, "s");
  record.foreign(nullptr).foreign("<x/>");
  EXPECT_EQ(encodeRecord(ctx, record), open + "<tns:state>s</tns:state><x/>" + close);
}

TEST(Encode, EscapesMarkupAndHonoursCdata) {
  Context ctx;
  Record record(ctx, "a<b&c>d");
  record.contenttype("a<b&c");
  record->tns_contenttype.cdata = true;
  const std::string text = encodeRecord(ctx, record);
  EXPECT_NE(text.find("<tns:contenttype><![CDATA[a<b&c]]></tns:contenttype>"), std::string::npos) << text;
  const auto root = support::parseNamespacedXml(text);
  ASSERT_TRUE(root) << text;
  EXPECT_EQ(root->children[0].text, "a<b&c>d");
  EXPECT_EQ(root->children[1].text, "a<b&c");
}

TEST(Encode, TextThatXmlCannotCarryIsRefused) {
  struct Case {
    const char *text;
    bool utf8; // what is not UTF-8 is found before the tag is written, a forbidden character by whoever writes it
  };
  constexpr Case cases[] = {{"bad\xFF", false},          {"\xC3", false}, {"\xED\xA0\x80", false},
                            {"\xF4\x90\x80\x80", false}, {"\x01", true},  {"\xEF\xBF\xBE", true}};
  struct Member {
    const char *name;
    int lineOfCheck;
    int lineOfText;
  };
  constexpr Member members[] = {{"state", 83, 86}, {"lastactive", 91, 95}, {"contenttype", 101, 105}};
  for (const Case &c : cases) {
    for (size_t bad = 0; bad < 3; ++bad) {
      const Member &member = members[bad];
      SCOPED_TRACE(member.name + " = "s + testing::PrintToString(c.text));
      Context ctx;
      Record record(ctx, bad == 0 ? c.text : "good");
      record.lastactive(bad == 1 ? c.text : "good").contenttype(bad == 2 ? c.text : "good");
      ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
      EXPECT_EQ(encodeDocument(ctx, record), STATUS_INVALID_UTF8);
      const int line = c.utf8 ? member.lineOfText : member.lineOfCheck;
      EXPECT_EQ(support::errors(ctx), "-102@QxXmlIsComposingEnc:" + std::to_string(line) + "<QxXmlIsComposingEnc:171");
      const std::string written = support::outputText(ctx);
      if (!c.utf8) {
        EXPECT_EQ(written.find(member.name), std::string::npos) << written;
      }
      for (size_t before = 0; before < bad; ++before)
        EXPECT_NE(written.find(members[before].name), std::string::npos) << "what was written stays: " << written;
    }
  }
}

TEST(Encode, TextUnderAClearBitIsNotLookedAt) {
  Context ctx;
  Record record(ctx, "s");
  record.lastactive("\xFF").contenttype("\xFF").refresh(0);
  record->m = 0;
  EXPECT_EQ(encodeRecord(ctx, record), open + "<tns:state>s</tns:state>" + close);
  record->m = 3;
}

TEST(Encode, RefreshOfZeroIsRefusedBeforeItsTag) {
  Context ctx;
  Record record(ctx, "s");
  record.contenttype("c").refresh(0);
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(encodeDocument(ctx, record), STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(support::errors(ctx),
            "-16(tns__isComposing.tns_refresh,0u)@QxXmlIsComposingEnc:113<QxXmlIsComposingEnc:171");
  const std::string written = support::outputText(ctx);
  EXPECT_EQ(written.find("refresh"), std::string::npos) << written;
  EXPECT_NE(written.find("<tns:contenttype>c</tns:contenttype>"), std::string::npos) << written;
}

TEST(Encode, FailureLeavesTheContextForTheNextDocument) {
  Context ctx;
  Record bad(ctx, "\xFF");
  Record good(ctx, "idle");
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(encodeDocument(ctx, bad), STATUS_INVALID_UTF8);
  rtxErrClear(ctx);
  EXPECT_EQ(encodeRecord(ctx, good), open + "<tns:state>idle</tns:state>" + close);
}

TEST(Encode, WithoutOutputItFailsWithARecord) {
  Context ctx;
  Record record(ctx, "s");
  EXPECT_EQ(encodeDocument(ctx, record), STATUS_WRITE_FAILED);
  EXPECT_EQ(support::errors(ctx), "-106@QxXmlIsComposingEnc:165");
}

TEST(Encode, EveryOutputSize) {
  support::everyOutputSize([](RuntimeContext *ctx) {
    Record record(ctx, "active");
    record.lastactive("2024-01-02T03:04:05Z").contenttype("a<b").refresh(90).foreign("<x:f xmlns:x=\"u\"/>");
    record->tns_lastactive.cdata = true;
    return QxXmlE_tns_isComposing(ctx, record);
  });
  support::everyOutputSize([](RuntimeContext *ctx) {
    const RtxNamespace ns = {"p", "urn:p"};
    Record record(ctx, "active");
    return QxXmlET_tns__isComposing(ctx, record, "typing", &ns);
  });
}

TEST(Encode, PresetNamespacesAreTheHosts) {
  struct Case {
    const char *what;
    const char *prefix; // declared by the host for uri; null is the default namespace
    const char *uri;
    bool preset;
    std::string expected;
  };
  const std::string ours = namespaceUri;
  const Case cases[] = {
      {"preset without a declaration", "", nullptr, true,
       "<isComposing><state>s</state><refresh>5</refresh></isComposing>"},
      {"preset prefix", "h", namespaceUri, true,
       "<h:isComposing xmlns:h=\"" + ours + "\"><h:state>s</h:state><h:refresh>5</h:refresh></h:isComposing>"},
      {"preset default namespace", nullptr, namespaceUri, true,
       "<isComposing xmlns=\"" + ours + "\"><state>s</state><refresh>5</refresh></isComposing>"},
      {"tns is the host's, for another namespace", "tns", "urn:other", false,
       "<isComposing xmlns:tns=\"urn:other\"><state>s</state><refresh>5</refresh></isComposing>"},
      {"tns is the host's, for this namespace", "tns", namespaceUri, false,
       "<tns:isComposing xmlns:tns=\"" + ours +
           "\"><tns:state>s</tns:state><tns:refresh>5</tns:refresh></tns:isComposing>"},
  };
  for (const Case &c : cases) {
    SCOPED_TRACE(c.what);
    Context ctx;
    if (c.preset) ctx->flags |= NamespacesPreset;
    if (c.uri != nullptr) {
      ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, c.prefix, c.uri, false), 0);
    }
    Record record(ctx, "s");
    record.refresh(5);
    for (int round = 1; round <= 3; ++round) {
      const std::string text = encodeRecord(ctx, record);
      EXPECT_EQ(text, c.expected) << "round " << round;
      EXPECT_TRUE(support::parseNamespacedXml(text));
    }
    EXPECT_EQ((ctx->flags & NamespacesPreset) != 0, c.preset);
  }
}

TEST(Encode, HostDeclarationsBesideOursAreWritten) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "x", "urn:vendor", false), 0);
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, nullptr, namespaceUri, false), 0);
  Record record(ctx, "s");
  record.foreign("<x:f/>");
  const auto root = support::parseNamespacedXml(encodeRecord(ctx, record));
  ASSERT_TRUE(root);
  EXPECT_EQ(root->infoset(), "{"s + namespaceUri + "}isComposing[]({" + namespaceUri + "}state[](s){urn:vendor}f[]())");
}

TEST(Encode, OneDocumentAfterAnotherOnOneContext) {
  Context ctx;
  for (int round = 0; round < 4; ++round) {
    Record record(ctx, round % 2 == 0 ? "active" : "idle");
    if (round % 2 != 0) record.refresh(7);
    EXPECT_EQ(encodeRecord(ctx, record),
              open +
                  (round % 2 == 0 ? "<tns:state>active</tns:state>"
                                  : "<tns:state>idle</tns:state><tns:refresh>7</tns:refresh>") +
                  close);
    EXPECT_EQ(decode(ctx, document("<state>between</state>")).record, "state=between");
    EXPECT_EQ(validate(ctx, document("<state>between</state>")).status, 0);
  }
}

TEST(Encode, StepsOfTheDocumentGiveTheDocument) {
  Context ctx;
  Record record(ctx, "active");
  record.refresh(3);
  const std::string whole = support::encoded(ctx, [&](RuntimeContext *c) { return encodeDocument(c, record); });
  std::vector<std::string> parts;
  const std::string stepwise = support::encoded(ctx, [&](RuntimeContext *c) {
    EXPECT_EQ(rtXmlNSSetURITable(c, QxGet_IMS_NSURI(c), 5), 0);
    EXPECT_EQ(rtXmlEncStartDocument(c), 0);
    const auto step = [&](int (*function)(RuntimeContext *, const tns__isComposing *)) {
      EXPECT_EQ(function(c, record), 0);
      size_t length = 0;
      const char *text = rtxGetOutput(c, &length);
      EXPECT_EQ(text[length], '\0') << "always a terminated text";
      parts.push_back(text);
    };
    step(QxXmlE_tns_isComposing_StartElement);
    step(QxXmlE_tns_isComposing_Contents);
    step(QxXmlE_tns_isComposing_EndElement);
    return rtXmlEncEndDocument(c);
  });
  EXPECT_EQ(stepwise, whole);
  ASSERT_EQ(parts.size(), 3u);
  EXPECT_EQ(support::withoutDeclaration(parts[0]), open);
  EXPECT_EQ(support::withoutDeclaration(parts[1]), open + "<tns:state>active</tns:state><tns:refresh>3</tns:refresh>");
  EXPECT_EQ(support::withoutDeclaration(parts[2]), support::withoutDeclaration(whole));
}

TEST(EncodeType, TakesTheCallersNameAndNamespace) {
  const RtxNamespace callers = {"p", "urn:p"};
  const RtxNamespace defaultOne = {"", "urn:p"};
  struct Case {
    const char *name;
    const RtxNamespace *ns;
    const char *childPrefix; // bound by the host for this module's namespace; null: not bound
    const char *expected;
  };
  const Case cases[] = {
      {"typing", &callers, nullptr, "<p:typing><state>s</state><refresh>5</refresh></p:typing>"},
      {"typing", &defaultOne, nullptr, "<typing><state>s</state><refresh>5</refresh></typing>"},
      {"typing", nullptr, nullptr, "<typing><state>s</state><refresh>5</refresh></typing>"},
      {"typing", &callers, "c", "<p:typing><c:state>s</c:state><c:refresh>5</c:refresh></p:typing>"},
      {nullptr, nullptr, "c", "<c:state>s</c:state><c:refresh>5</c:refresh>"},
  };
  for (const Case &c : cases) {
    Context ctx;
    if (c.childPrefix != nullptr) {
      ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, c.childPrefix, namespaceUri, false), 0);
    }
    Record record(ctx, "s");
    record.refresh(5);
    EXPECT_EQ(
        support::encoded(ctx, [&](RuntimeContext *x) { return QxXmlET_tns__isComposing(x, record, c.name, c.ns); }),
        c.expected);
    if (c.name == nullptr) continue;
    EXPECT_EQ(support::encoded(ctx,
                               [&](RuntimeContext *x) {
                                 EXPECT_EQ(QxXmlET_tns__isComposing_StartElement(x, record, c.name, c.ns), 0);
                                 EXPECT_EQ(QxXmlET_tns__isComposing_Contents(x, record, c.ns), 0);
                                 return QxXmlET_tns__isComposing_EndElement(x, c.name, c.ns);
                               }),
              c.expected);
  }
}

TEST(EncodeType, ContentsUseTheModulesPrefixWhateverTheCallerPasses) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "c", namespaceUri, false), 0);
  const RtxNamespace callers = {"p", "urn:p"};
  Record record(ctx, "s");
  EXPECT_EQ(
      support::encoded(ctx, [&](RuntimeContext *x) { return QxXmlET_tns__isComposing_Contents(x, record, &callers); }),
      "<c:state>s</c:state>");
}

TEST(EncodeType, FailuresCarryTheirTrail) {
  Context ctx;
  Record record(ctx, "\xFF");
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(QxXmlET_tns__isComposing(ctx, record, "typing", nullptr), STATUS_INVALID_UTF8);
  EXPECT_EQ(support::errors(ctx), "-102@QxXmlIsComposingEnc:83<QxXmlIsComposingEnc:46");
}

TEST(Encode, AllocatesNothingOnTheHeap) {
  Context ctx;
  Record record(ctx, "active");
  record.contenttype("text/plain").refresh(9).foreign("<x/>");
  encodeRecord(ctx, record);
  support::HeapBalance balance(ctx);
  const size_t used = support::heapStats(ctx).used;
  encodeRecord(ctx, record);
  EXPECT_EQ(support::heapStats(ctx).used, used);
}

} // namespace
