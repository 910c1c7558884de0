// Writing debug information: all seventeen documents, and the types by themselves.
#include "debugInfo.h"
#include "xmlJudge.h"

#include <set>

using namespace debugInfo;
using support::Context;

namespace {

const std::string declaration = " xmlns:tns=\""s + namespaceUri + "\"";
const std::string defaultDeclaration = " xmlns=\""s + namespaceUri + "\"";

// A body of a record with "q:" names as an encoder writes it: prefixed, its attributes too, declared on the root.
std::string prefixed(std::string_view body) {
  std::string text = spelled(body, "tns:");
  for (const char *attribute : {"id", "aor", "version", "state"}) {
    const std::string bare = " "s + attribute + "=\"";
    for (size_t at = 0; (at = text.find(bare, at)) != std::string::npos; at += bare.size())
      text.insert(at + 1, "tns:");
  }
  const size_t nameEnd = text.find_first_of(" >/");
  return text.insert(nameEnd, declaration);
}

// The same with the namespace as the default one.
std::string bare(std::string_view body) {
  std::string text = spelled(body, "");
  return text.insert(text.find_first_of(" >/"), defaultDeclaration);
}

// The trail of a record: that of a path is shown by its last part, and no two places of it may agree.
std::string trail(const RtxError &error) {
  std::string all;
  std::set<std::string> places;
  for (uint32_t i = 0; i < error.siteCount; ++i) {
    const std::string_view path = error.sites[i].path;
    all += (i == 0 ? "" : " ") + std::string(path.substr(path.rfind('/') + 1));
    EXPECT_GT(error.sites[i].line, 0);
    EXPECT_TRUE(places.insert(std::string(path) + ":" + std::to_string(error.sites[i].line)).second)
        << "the same place twice: " << support::errorText(error);
  }
  return all;
}

std::string repeated(const std::string &text, size_t times) {
  std::string all;
  for (size_t i = 0; i < times; ++i)
    all += (i == 0 ? "" : " ") + text;
  return all;
}

// ---- Documents ------------------------------------------------------------------------------------------------

TEST(Encode, EveryDocumentWithEveryMember) {
  for (const Document &document : allDocuments()) {
    SCOPED_TRACE(document.root);
    Context ctx;
    Held held(ctx, document);
    held.complete();
    const std::string body = completeBody(document);
    const std::string text = encode(ctx, document, held);
    EXPECT_EQ(support::parseNamespacedXml(text)->infoset(),
              support::parseNamespacedXml(document.kind == Kind::record ? prefixed(body) : bare(body))->infoset())
        << text;
    EXPECT_NE(ctx->state, XMLSTATE_IN_ATTRIBUTES);
    EXPECT_EQ(rtxErrCount(ctx), 0u);
  }
}

TEST(Encode, BeginsWithTheXmlDeclaration) {
  for (const Document &document : allDocuments()) {
    Context ctx;
    Held held(ctx, document);
    held.complete();
    const std::string whole = support::encoded(ctx, [&](RuntimeContext *c) { return document.encode(c, held); });
    EXPECT_TRUE(whole.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n")) << whole;
  }
}

TEST(Encode, RecordsDeclareAPrefixAndValuesADefaultNamespace) {
  for (const Document &document : allDocuments()) {
    Context ctx;
    Held held(ctx, document);
    held.complete();
    const std::string root = document.root;
    const std::string text = encode(ctx, document, held);
    const std::string start =
        document.kind == Kind::record ? "<tns:" + root + declaration : "<" + root + defaultDeclaration + ">";
    EXPECT_TRUE(text.starts_with(start)) << text;
  }
}

TEST(Encode, AttributesAreQualifiedAndInOrder) {
  Context ctx;
  const Document &document = documentOf("debuginfo");
  Held held(ctx, document);
  held.init();
  held->debuginfo.tns_version = 3;
  held->debuginfo.tns_state = 1;
  const std::string text = encode(ctx, document, held);
  EXPECT_TRUE(text.starts_with("<tns:debuginfo" + declaration + " tns:version=\"3\" tns:state=\"partial\"")) << text;
  EXPECT_EQ(decode(document, text).record, "version=3 state=1");
}

TEST(Encode, EachBitWritesItsOwnChild) {
  struct Case {
    const char *root;
    std::vector<const char *> always;
    std::vector<const char *> children; // by bit
  };
  const Case cases[] = {{"start-trigger", {}, {"from", "to", "icsi", "iari", "method", "time", "debug-id"}},
                        {"stop-trigger", {}, {"time", "time-period", "reason"}},
                        {"control", {"interface"}, {"depth", "debug-id"}}};
  for (const Case &c : cases) {
    Context ctx;
    const Document &document = documentOf(c.root);
    Held held(ctx, document);
    held.complete();
    uint32_t &m = held->start_trigger.m; // the first member of each
    ASSERT_EQ(static_cast<void *>(&m), static_cast<void *>(&held->stop_trigger.m));
    ASSERT_EQ(static_cast<void *>(&m), static_cast<void *>(&held->control.m));
    const uint32_t all = m;
    for (m = 0; m <= all; ++m) {
      std::vector<std::string> expected(c.always.begin(), c.always.end());
      for (size_t i = 0; i < c.children.size(); ++i)
        if ((m >> i & 1) != 0) expected.push_back(c.children[i]);
      const auto root = support::parseNamespacedXml(encode(ctx, document, held));
      ASSERT_TRUE(root);
      std::vector<std::string> names;
      for (const support::XmlElement &child : root->children)
        names.push_back(child.name);
      EXPECT_EQ(names, expected) << c.root << " " << m;
    }
    m = ~all;
    EXPECT_EQ(support::parseNamespacedXml(encode(ctx, document, held))->children.size(), c.always.size())
        << "bits without a meaning change nothing";
    m = all;
  }
}

TEST(Encode, StartTriggerOfBytesAloneHoldsOnlyThem) {
  Context ctx;
  const Document &document = documentOf("start-trigger");
  Held held(ctx, document);
  held.init();
  held->start_trigger.m = 64;
  held->start_trigger.tns_debug_id = Builder(ctx).bytes("43AA55");
  EXPECT_EQ(encode(ctx, document, held),
            "<tns:start-trigger" + declaration + "><tns:debug-id>43AA55</tns:debug-id></tns:start-trigger>");
}

TEST(Encode, WhatIsRequiredIsWrittenThoughItIsAbsent) {
  const std::pair<const char *, std::string> cases[] = {
      {"control", "{U}control[]({U}interface[]())"},
      {"session", "{U}session[{U}id=\"\"]({U}start-trigger[](){U}stop-trigger[](){U}control[]({U}interface[]()))"},
      {"debugconfig", "{U}debugconfig[{U}aor=\"\"]()"}};
  for (const auto &[root, expected] : cases) {
    Context ctx;
    const Document &document = documentOf(root);
    Held held(ctx, document);
    held.init();
    std::string infoset = expected;
    for (size_t at = 0; (at = infoset.find("{U}", at)) != std::string::npos;)
      infoset.replace(at, 3, "{"s + namespaceUri + "}");
    EXPECT_EQ(support::parseNamespacedXml(encode(ctx, document, held))->infoset(), infoset);
  }
}

TEST(Encode, AbsentTextsAndBytesBecomeEmptyElements) {
  Context ctx;
  const Document &document = documentOf("start-trigger");
  Held held(ctx, document);
  held.init();
  held->start_trigger.m = 127;
  const auto root = support::parseNamespacedXml(encode(ctx, document, held));
  ASSERT_TRUE(root);
  ASSERT_EQ(root->children.size(), 7u);
  for (const support::XmlElement &child : root->children)
    EXPECT_EQ(child.sequence, "") << child.name;
  held->start_trigger.m = 0;

  for (const Document *simple : simpleDocuments()) {
    if (simple->kind == Kind::code) continue;
    Value value{};
    EXPECT_EQ(support::parseNamespacedXml(encode(ctx, *simple, value))->infoset(),
              "{"s + namespaceUri + "}" + simple->root + "[]()");
  }
}

TEST(Encode, ForeignElementsAreCopiedAsTheyStand) {
  Context ctx;
  const Document &document = documentOf("debuginfo");
  Held held(ctx, document);
  held.init();
  held->debuginfo.tns_version = 0;
  held->debuginfo.tns_state = 0;
  Builder builder(ctx);
  builder.foreign(held->debuginfo, "<x:f xmlns:x='u' >1 &lt; 2</x:f >");
  builder.foreign(held->debuginfo, std::string_view());
  builder.foreign(held->debuginfo, "<!--as it stands--><y/>");
  EXPECT_EQ(encode(ctx, document, held),
            "<tns:debuginfo" + declaration + " tns:version=\"0\" tns:state=\"full\">" +
                "<x:f xmlns:x='u' >1 &lt; 2</x:f ><!--as it stands--><y/></tns:debuginfo>");
}

TEST(Encode, CodesWithoutATextAreWrittenAsUnknown) {
  Context ctx;
  for (const char *root : {"reason", "depth"}) {
    const Document &document = documentOf(root);
    const auto text = [&](uint16_t code) {
      Value value{};
      value.code = code;
      return support::parseNamespacedXml(encode(ctx, document, value))->text;
    };
    EXPECT_EQ(text(0), root == "reason"sv ? "dialog_established" : "maximum");
    EXPECT_EQ(text(1), root == "reason"sv ? "session_end" : "minimum");
    EXPECT_EQ(text(2), "_UNKNOWN_");
    EXPECT_EQ(text(65535), "_UNKNOWN_");
  }
  EXPECT_NE(
      support::withoutDeclaration(support::encoded(ctx, [](RuntimeContext *c) { return QxXmlE_tns_reason(c, 65537); }))
          .find(">session_end<"),
      std::string::npos)
      << "only the low 16 bits count";

  Held stop(ctx, documentOf("stop-trigger"));
  stop.complete();
  stop->stop_trigger.tns_reason = 4711;
  EXPECT_NE(encode(ctx, documentOf("stop-trigger"), stop).find("<tns:reason>_UNKNOWN_</tns:reason>"),
            std::string::npos);
  Held control(ctx, documentOf("control"));
  control.complete();
  control->control.tns_depth = 2;
  EXPECT_NE(encode(ctx, documentOf("control"), control).find("<tns:depth>_UNKNOWN_</tns:depth>"), std::string::npos);
  Held info(ctx, documentOf("debuginfo"));
  info.complete();
  info->debuginfo.tns_state = 2;
  EXPECT_NE(encode(ctx, documentOf("debuginfo"), info).find(" tns:state=\"_UNKNOWN_\""), std::string::npos);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TEST(Encode, NumbersInFull) {
  Context ctx;
  Held held(ctx, documentOf("debuginfo"));
  held.init();
  held->debuginfo.tns_state = 0;
  for (uint32_t version : {0u, 1u, 2147483648u, 4294967295u}) {
    held->debuginfo.tns_version = version;
    EXPECT_NE(encode(ctx, documentOf("debuginfo"), held).find(" tns:version=\"" + std::to_string(version) + "\""),
              std::string::npos);
  }
}

TEST(Encode, EscapesMarkupAndHonoursCdata) {
  Context ctx;
  Builder builder(ctx);
  Held control(ctx, documentOf("control"));
  control.init();
  control->control.tns_interface = builder.text("a<b&c]]>d", true);
  const std::string text = encode(ctx, documentOf("control"), control);
  EXPECT_NE(text.find("<![CDATA[a<b&c]]"), std::string::npos) << text;
  EXPECT_EQ(support::parseNamespacedXml(text)->children[0].text, "a<b&c]]>d");

  Held session(ctx, documentOf("session"));
  session.init();
  session->session.tns_id = builder.text("a<b&\"c'\n\td\r", true);
  const auto root = support::parseNamespacedXml(encode(ctx, documentOf("session"), session));
  ASSERT_TRUE(root);
  ASSERT_EQ(root->attributes.size(), 1u);
  EXPECT_EQ(root->attributes[0].second, "a<b&\"c'\n\td\r") << "a flag of texts has no meaning for an attribute";

  for (const Document *document : simpleDocuments()) {
    if (document->kind != Kind::text) continue;
    Value value{};
    value.text = {false, "a<b&c]]>d"};
    EXPECT_EQ(support::parseNamespacedXml(encode(ctx, *document, value))->text, "a<b&c]]>d");
    value.text.cdata = true;
    const std::string cdata = encode(ctx, *document, value);
    EXPECT_NE(cdata.find("><![CDATA[a<b"), std::string::npos) << cdata;
    EXPECT_EQ(support::parseNamespacedXml(cdata)->text, "a<b&c]]>d");
  }
}

// ---- What is refused --------------------------------------------------------------------------------------------

struct BadText {
  const char *text;
  bool utf8; // what is not UTF-8 is found before the tag is written, a forbidden character by whoever writes it
};
constexpr BadText badTexts[] = {{"bad\xFF", false},          {"\xC3", false},     {"\xED\xA0\x80", false},
                                {"\xF4\x90\x80\x80", false}, {"\xC0\xAF", false}, {"\x01", true},
                                {"good\xEF\xBF\xBE", true}};

// The text members of a session, by the names of their elements.
struct TextMember {
  const char *trigger;
  const char *element;
  RtxXmlString &(*of)(tns__session &session);
  uint32_t &(*bits)(tns__session &session);
  uint32_t bit;
};

#define START(MEMBER, ELEMENT, BIT)                                                                                    \
  {                                                                                                                    \
    "start-trigger", ELEMENT, [](tns__session &s) -> RtxXmlString & { return s.tns_start_trigger.MEMBER; },            \
        [](tns__session &s) -> uint32_t & { return s.tns_start_trigger.m; }, BIT                                       \
  }
#define STOP(MEMBER, ELEMENT, BIT)                                                                                     \
  {                                                                                                                    \
    "stop-trigger", ELEMENT, [](tns__session &s) -> RtxXmlString & { return s.tns_stop_trigger.MEMBER; },              \
        [](tns__session &s) -> uint32_t & { return s.tns_stop_trigger.m; }, BIT                                        \
  }
const TextMember textMembers[] = {
    START(tns_from, "from", 1),
    START(tns_to, "to", 2),
    START(tns_icsi, "icsi", 4),
    START(tns_iari, "iari", 8),
    START(tns_method, "method", 16),
    START(tns_time, "time", 32),
    STOP(tns_time, "time", 1),
    STOP(tns_time_period, "time-period", 2),
    {"control", "interface", [](tns__session &s) -> RtxXmlString & { return s.tns_control.tns_interface; },
     [](tns__session &s) -> uint32_t & { return s.tns_control.m; }, 0},
};
#undef START
#undef STOP

TEST(Encode, TextThatXmlCannotCarryIsRefusedBeforeItsTag) {
  const Document &document = documentOf("session");
  for (const BadText &bad : badTexts) {
    for (const TextMember &member : textMembers) {
      SCOPED_TRACE(member.trigger + "/"s + member.element + " = " + testing::PrintToString(bad.text));
      Context ctx;
      Held held(ctx, document);
      held.init();
      member.bits(held->session) |= member.bit;
      member.of(held->session) = Builder(ctx).text(bad.text);
      ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
      EXPECT_EQ(document.encode(ctx, held), STATUS_INVALID_UTF8);
      EXPECT_EQ(brief(ctx), "-102");
      // The text, the trigger's contents, the trigger, the session's contents.
      EXPECT_EQ(trail(*rtxErrAt(ctx, 0)), repeated("QxXmlDebugEventEnc", 4));
      const std::string written = support::outputText(ctx);
      EXPECT_NE(written.find("<tns:"s + member.trigger), std::string::npos) << "what was written stays: " << written;
      if (!bad.utf8) {
        EXPECT_EQ(written.find("<tns:"s + member.element + ">"), std::string::npos) << written;
        EXPECT_EQ(written.find(bad.text), std::string::npos) << written;
      }
    }
  }
}

TEST(Encode, TextUnderAClearBitIsNotLookedAt) {
  const Document &document = documentOf("session");
  Context ctx;
  Held held(ctx, document);
  held.init();
  std::vector<const char *> texts;
  for (const TextMember &member : textMembers) {
    if (member.bit == 0) continue;
    member.of(held->session) = Builder(ctx).text("\xFF");
    texts.push_back(member.of(held->session).value);
  }
  encode(ctx, document, held);
  for (const char *text : texts)
    rtxMemHeapFreePtr(ctx, text);
}

TEST(Encode, TextOfASimpleRootIsWithheldBehindItsStartTag) {
  for (const Document *document : simpleDocuments()) {
    if (document->kind != Kind::text) continue;
    for (const BadText &bad : badTexts) {
      SCOPED_TRACE(document->root);
      Context ctx;
      Value value{};
      value.text.value = bad.text;
      ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
      EXPECT_EQ(document->encode(ctx, value), STATUS_INVALID_UTF8);
      EXPECT_EQ(brief(ctx), "-102");
      EXPECT_EQ(trail(*rtxErrAt(ctx, 0)), repeated("QxXmlDebugEventEnc", 2));
      if (!bad.utf8) {
        EXPECT_EQ(support::outputText(ctx).find(bad.text), std::string::npos);
      }
    }
  }
}

TEST(Encode, AFailureDeepInsideCarriesItsTrail) {
  const Document &document = documentOf("debuginfo");
  Context ctx;
  Held held(ctx, document);
  held.complete();
  auto *config = static_cast<tns__debugconfig *>(held->debuginfo.tns_debugconfig.tail->data);
  auto *session = static_cast<tns__session *>(config->tns_session.tail->data);
  rtxMemHeapFreePtr(ctx, session->tns_start_trigger.tns_method.value);
  session->tns_start_trigger.tns_method = Builder(ctx).text("\xFF");
  std::string first;
  for (int round = 0; round < 2; ++round) {
    rtxErrClear(ctx);
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
    EXPECT_EQ(document.encode(ctx, held), STATUS_INVALID_UTF8);
    ASSERT_EQ(rtxErrCount(ctx), 1u);
    const RtxError &error = *rtxErrAt(ctx, 0);
    // Contents and the type itself of start-trigger, session and debugconfig, contents of debuginfo, the document.
    EXPECT_EQ(trail(error), repeated("QxXmlDebugEventEnc", 8)) << support::errorText(error);
    if (round == 0) first = support::errorText(error);
    EXPECT_EQ(support::errorText(error), first) << "places are stable";
  }
  const std::string written = support::outputText(ctx);
  EXPECT_TRUE(written.ends_with("</tns:iari>")) << "what was written before stays: " << written;
}

TEST(Encode, AnAttributeOfTheRootThatFailsCostsNoDocument) {
  for (const char *root : {"session", "debugconfig"}) {
    SCOPED_TRACE(root);
    const Document &document = documentOf(root);
    Context ctx;
    Held held(ctx, document);
    held.init();
    RtxXmlString &attribute = root == "session"sv ? held->session.tns_id : held->debugconfig.tns_aor;
    attribute = Builder(ctx).text("\x01");
    const std::string text = encode(ctx, document, held);
    EXPECT_TRUE(support::parseNamespacedXml(text)) << text;
    EXPECT_EQ(brief(ctx), "-102") << "recorded, but not returned";
    EXPECT_NE(ctx->state, XMLSTATE_IN_ATTRIBUTES);
    rtxMemHeapFreePtr(ctx, attribute.value);
    attribute = Builder(ctx).text("good");
    rtxErrClear(ctx);
    EXPECT_NE(encode(ctx, document, held).find("\"good\""), std::string::npos) << "the next document is in order";
  }
}

TEST(Encode, AnAttributeOfAChildThatFailsEndsTheDocument) {
  const Document &document = documentOf("debuginfo");
  for (bool ofSession : {false, true}) {
    Context ctx;
    Held held(ctx, document);
    held.complete();
    auto *config = static_cast<tns__debugconfig *>(held->debuginfo.tns_debugconfig.head->data);
    auto *session = static_cast<tns__session *>(config->tns_session.head->data);
    RtxXmlString &attribute = ofSession ? session->tns_id : config->tns_aor;
    rtxMemHeapFreePtr(ctx, attribute.value);
    attribute = Builder(ctx).text("\x01");
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
    EXPECT_EQ(document.encode(ctx, held), STATUS_INVALID_UTF8);
    EXPECT_EQ(brief(ctx), "-102");
    // The attribute, the type, and for a session the two of its parent; contents of debuginfo, the document.
    EXPECT_EQ(trail(*rtxErrAt(ctx, 0)), repeated("QxXmlDebugEventEnc", ofSession ? 6 : 4));
    EXPECT_NE(ctx->state, XMLSTATE_IN_ATTRIBUTES) << "no longer that of attributes";
  }
}

TEST(Encode, AttributeTextIsNotValidated) {
  Context ctx;
  Held held(ctx, documentOf("session"));
  held.init();
  held->session.tns_id = Builder(ctx).text("\xC3");
  EXPECT_NE(encode(ctx, documentOf("session"), held).find("tns:id=\"\xC3\""), std::string::npos);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TEST(Encode, FailureLeavesTheContextForTheNextDocument) {
  Context ctx;
  Value bad{};
  bad.text.value = "\xFF";
  for (const Document &document : allDocuments()) {
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
    EXPECT_EQ(documentOf("method").encode(ctx, bad), STATUS_INVALID_UTF8);
    rtxErrClear(ctx);
    Context fresh;
    Held held(ctx, document);
    Held other(fresh, document);
    held.complete();
    other.complete();
    EXPECT_EQ(encode(ctx, document, held), encode(fresh, document, other));
  }
}

TEST(Encode, WithoutOutputItFailsWithARecord) {
  for (const Document &document : allDocuments()) {
    Context ctx;
    Held held(ctx, document);
    held.complete();
    EXPECT_EQ(document.encode(ctx, held), STATUS_WRITE_FAILED) << document.root;
    EXPECT_EQ(brief(ctx), "-106") << document.root;
  }
}

TEST(Encode, EveryOutputSize) {
  for (const Document &document : allDocuments()) {
    SCOPED_TRACE(document.root);
    support::everyOutputSize([&](RuntimeContext *ctx) {
      Held held(ctx, document);
      held.complete();
      return document.encode(ctx, held);
    });
  }
}

TEST(Encode, NoRoomInsideAttributesIsRecorded) {
  // The text up to each byte of the attributes, which are written in parts.
  const Document &document = documentOf("debuginfo");
  const std::string whole = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<tns:debuginfo" + declaration +
                            " tns:version=\"3\" tns:state=\"partial\"";
  for (size_t size = whole.size() - 40; size <= whole.size(); ++size) {
    SCOPED_TRACE(size);
    Context ctx;
    Held held(ctx, document);
    held.complete();
    std::string buffer(size, '\x5A');
    ASSERT_EQ(rtxSetOutput(ctx, buffer.data(), size), 0);
    EXPECT_EQ(document.encode(ctx, held), STATUS_BUFFER_OVERFLOW);
    EXPECT_EQ(rtxErrGetFirstError(ctx), STATUS_BUFFER_OVERFLOW);
    EXPECT_TRUE(whole.starts_with(support::outputText(ctx))) << support::outputText(ctx);
    EXPECT_NE(ctx->state, XMLSTATE_IN_ATTRIBUTES) << "no longer that of attributes";
  }
}

// ---- Namespaces of the host -------------------------------------------------------------------------------------

TEST(Encode, PresetNamespacesAreTheHosts) {
  const Document &document = documentOf("session");
  const auto session = [](const std::string &prefix, const std::string &declared, const std::string &id) {
    const std::string &p = prefix;
    return "<" + p + "session" + declared + " " + id + "=\"s\"><" + p + "start-trigger><" + p + "from>f</" + p +
           "from></" + p + "start-trigger><" + p + "stop-trigger></" + p + "stop-trigger><" + p + "control><" + p +
           "interface>i</" + p + "interface></" + p + "control></" + p + "session>";
  };
  struct Case {
    const char *what;
    const char *prefix; // declared by the host for the module's namespace; null is the default one, "-" none at all
    const char *uri;
    bool preset;
    std::string expected;
  };
  const Case cases[] = {
      {"nothing preset", "-", nullptr, false, session("tns:", declaration, "tns:id")},
      {"preset without a declaration", "-", nullptr, true, session("", "", "id")},
      {"preset prefix", "h", namespaceUri, true, session("h:", " xmlns:h=\""s + namespaceUri + "\"", "h:id")},
      {"preset default namespace", nullptr, namespaceUri, true, session("", defaultDeclaration, "id")},
      {"tns is the host's, for another namespace", "tns", "urn:other", false,
       session("", " xmlns:tns=\"urn:other\"", "id")},
      {"tns is the host's, for this namespace", "tns", namespaceUri, false, session("tns:", declaration, "tns:id")},
  };
  for (const Case &c : cases) {
    SCOPED_TRACE(c.what);
    Context ctx;
    if (c.preset) ctx->flags |= NamespacesPreset;
    if (c.uri != nullptr) {
      ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, c.prefix, c.uri, false), 0);
    }
    Held held(ctx, document);
    held.init();
    Builder builder(ctx);
    held->session.tns_id = builder.text("s");
    held->session.tns_start_trigger.m = 1;
    held->session.tns_start_trigger.tns_from = builder.text("f");
    held->session.tns_control.tns_interface = builder.text("i");
    for (int round = 1; round <= 3; ++round) {
      const std::string text = encode(ctx, document, held);
      const auto tree = support::parseNamespacedXml(text);
      ASSERT_TRUE(tree) << text;
      EXPECT_EQ(tree->infoset(), support::parseNamespacedXml(c.expected)->infoset()) << "round " << round;
      EXPECT_TRUE(text.starts_with(c.expected.substr(0, c.expected.find('>')))) << text;
    }
    EXPECT_EQ((ctx->flags & NamespacesPreset) != 0, c.preset);
  }
}

TEST(Encode, BareAttributesUnderAPresetDefaultNamespace) {
  for (const Document *document : recordDocuments()) {
    Context ctx;
    ctx->flags |= NamespacesPreset;
    ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, nullptr, namespaceUri, false), 0);
    Held held(ctx, *document);
    held.complete();
    const std::string text = encode(ctx, *document, held);
    EXPECT_EQ(support::parseNamespacedXml(text)->infoset(),
              support::parseNamespacedXml(bare(completeBody(*document)))->infoset());
    EXPECT_EQ(decode(*document, text).record, completeDump(*document));
  }
}

TEST(Encode, ValuesDeclareTheDefaultNamespaceWhateverIsPreset) {
  for (const Document *document : simpleDocuments()) {
    for (bool preset : {false, true}) {
      Context ctx;
      if (preset) ctx->flags |= NamespacesPreset;
      Held held(ctx, *document);
      held.complete();
      for (int round = 0; round < 2; ++round)
        EXPECT_TRUE(encode(ctx, *document, held).starts_with("<"s + document->root + defaultDeclaration + ">"));
    }
  }
}

TEST(Encode, DefaultNamespaceOfTheHostBesideOurPrefix) {
  for (const Document *document : recordDocuments()) {
    Context ctx;
    ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, nullptr, namespaceUri, false), 0);
    Held held(ctx, *document);
    held.complete();
    const std::string text = encode(ctx, *document, held);
    ASSERT_TRUE(support::parseNamespacedXml(text)) << text;
    EXPECT_EQ(decode(*document, text).record, completeDump(*document));
  }
}

TEST(Encode, OneDocumentAfterAnotherOnOneContext) {
  Context ctx;
  for (const Document &first : allDocuments()) {
    for (const Document &second : allDocuments()) {
      for (const Document *document : {&first, &second}) {
        Context fresh;
        Held held(ctx, *document);
        Held other(fresh, *document);
        held.complete();
        other.complete();
        EXPECT_EQ(encode(ctx, *document, held), encode(fresh, *document, other))
            << second.root << " after " << first.root;
      }
    }
  }
  EXPECT_EQ(decode(ctx, documentOf("control"), element("control", "<interface>i</interface>")).record, "interface=i");
}

TEST(Encode, AllocatesNothingOnTheHeap) {
  for (const Document &document : allDocuments()) {
    Context ctx;
    Held held(ctx, document);
    held.complete();
    encode(ctx, document, held);
    const RtxHeapStats before = support::heapStats(ctx);
    encode(ctx, document, held);
    EXPECT_EQ(support::heapStats(ctx).blocks, before.blocks) << document.root;
    EXPECT_EQ(support::heapStats(ctx).used, before.used) << document.root;
  }
}

// ---- Steps ------------------------------------------------------------------------------------------------------

TEST(Encode, StepsOfTheDocumentGiveTheDocument) {
  for (const Document &document : allDocuments()) {
    SCOPED_TRACE(document.root);
    Context ctx;
    Held held(ctx, document);
    held.complete();
    const std::string whole = encode(ctx, document, held);
    std::vector<std::string> parts;
    const std::string stepwise = support::withoutDeclaration(support::encoded(ctx, [&](RuntimeContext *c) {
      EXPECT_EQ(rtXmlNSSetURITable(c, QxGet_DebugEvent_NSURI(c), 1), 0);
      EXPECT_EQ(rtXmlEncStartDocument(c), 0);
      for (const auto step : {document.start, document.contents, document.end}) {
        EXPECT_EQ(step(c, held), 0);
        size_t length = 0;
        const char *text = rtxGetOutput(c, &length);
        EXPECT_EQ(text[length], '\0') << "always a terminated text";
        parts.push_back(support::withoutDeclaration(std::string(text, length)));
      }
      return rtXmlEncEndDocument(c);
    }));
    EXPECT_EQ(stepwise, whole);
    ASSERT_EQ(parts.size(), 3u);
    EXPECT_EQ(parts[0], whole.substr(0, whole.find('>') + 1)) << "the start tag, closed";
    EXPECT_EQ(parts[1], whole.substr(0, whole.rfind("</")));
    EXPECT_EQ(parts[2], whole);
  }
}

TEST(EncodeType, TakesTheCallersNameAndNamespace) {
  const RtxNamespace callers = {"p", "urn:p"};
  const RtxNamespace defaultOne = {"", "urn:p"};
  for (const Document *document : recordDocuments()) {
    SCOPED_TRACE(document->root);
    const RecordType &type = *document->type;
    for (const RtxNamespace *ns : {&callers, &defaultOne, static_cast<const RtxNamespace *>(nullptr)}) {
      for (const char *childPrefix : {static_cast<const char *>(nullptr), "c"}) {
        Context ctx;
        if (childPrefix != nullptr) {
          ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, childPrefix, namespaceUri, false), 0);
        }
        Held held(ctx, *document);
        held.complete();
        const std::string text =
            support::encoded(ctx, [&](RuntimeContext *c) { return type.encode(c, held, "thing", ns); });
        const std::string own = ns == &callers ? "p:thing" : "thing";
        EXPECT_TRUE(text.starts_with("<" + own)) << text;
        EXPECT_TRUE(text.ends_with("</" + own + ">")) << text;
        // Of the children, and of their attributes, the module's own prefix.
        const std::string body = spelled(completeBody(*document), childPrefix == nullptr ? "" : "c:");
        std::string inner = body.substr(body.find('>') + 1, body.rfind("</") - body.find('>') - 1);
        if (childPrefix != nullptr) {
          for (const char *attribute : {" id=", " aor="})
            for (size_t at = 0; (at = inner.find(attribute, at)) != std::string::npos; at += 4)
              inner.insert(at + 1, "c:");
        }
        EXPECT_EQ(text.substr(text.find('>') + 1, text.rfind("</") - text.find('>') - 1), inner);

        EXPECT_EQ(support::encoded(ctx,
                                   [&](RuntimeContext *c) {
                                     EXPECT_EQ(type.start(c, held, "thing", ns), 0);
                                     EXPECT_EQ(type.contents(c, held, ns), 0);
                                     return type.end(c, "thing", ns);
                                   }),
                  text)
            << "in three steps";
      }
    }
  }
}

TEST(EncodeType, OwnAttributesAreQualifiedByTheCallersNamespace) {
  const std::pair<const char *, std::string> cases[] = {{"session", " h:id=\"4\""},
                                                        {"debugconfig", " h:aor=\"sip:alice@example.com\""},
                                                        {"debuginfo", " h:version=\"3\" h:state=\"partial\""}};
  const RtxNamespace ours = {"h", namespaceUri};
  for (const auto &[root, attributes] : cases) {
    SCOPED_TRACE(root);
    const Document &document = documentOf(root);
    Context ctx;
    ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "h", namespaceUri, false), 0);
    Held held(ctx, document);
    held.complete();
    const std::string text =
        support::encoded(ctx, [&](RuntimeContext *c) { return document.type->encode(c, held, "thing", &ours); });
    EXPECT_EQ(text.substr(0, text.find('>')), "<h:thing" + attributes);

    // A start tag that the caller has opened: the same attributes, by either step.
    const auto intoOpenTag = [&](const support::Encode &step) {
      EXPECT_EQ(rtxSetOutputDynamic(ctx), 0);
      EXPECT_EQ(rtXmlEncStartElement(ctx, "other", nullptr, nullptr, false), 0);
      EXPECT_EQ(step(ctx), 0);
      EXPECT_EQ(ctx->state, XMLSTATE_IN_ELEMENT);
      EXPECT_EQ(rtXmlEncTermStartElement(ctx), 0);
      return support::outputText(ctx);
    };
    EXPECT_EQ(intoOpenTag([&](RuntimeContext *c) { return document.type->attributes(c, held, &ours); }),
              "<other" + attributes + ">");
    EXPECT_EQ(intoOpenTag([&](RuntimeContext *c) { return document.type->start(c, held, nullptr, &ours); }),
              "<other" + attributes + ">");
  }
}

TEST(EncodeType, WithoutANameThereAreNoTags) {
  for (const char *root : {"start-trigger", "stop-trigger", "control"}) {
    const Document &document = documentOf(root);
    Context ctx;
    Held held(ctx, document);
    held.complete();
    const std::string body = spelled(completeBody(document), "");
    EXPECT_EQ(
        support::encoded(ctx, [&](RuntimeContext *c) { return document.type->encode(c, held, nullptr, nullptr); }),
        body.substr(body.find('>') + 1, body.rfind("</") - body.find('>') - 1));
  }
}

TEST(EncodeType, EveryOutputSize) {
  const RtxNamespace ns = {"p", "urn:p"};
  for (const Document *document : recordDocuments()) {
    SCOPED_TRACE(document->root);
    support::everyOutputSize([&](RuntimeContext *ctx) {
      Held held(ctx, *document);
      held.complete();
      return document->type->encode(ctx, held, "thing", &ns);
    });
  }
}

struct EnumEncoder {
  const char *texts[2];
  int (*encode)(RuntimeContext *, uint32_t, const char *, const RtxNamespace *);
  int (*start)(RuntimeContext *, uint32_t, const char *, const RtxNamespace *);
  int (*contents)(RuntimeContext *, uint32_t, const RtxNamespace *);
  int (*end)(RuntimeContext *, const char *, const RtxNamespace *);
};

const EnumEncoder enumEncoders[] = {
    {{"dialog_established", "session_end"},
     QxXmlET_tns__reason,
     QxXmlET_tns__reason_StartElement,
     QxXmlET_tns__reason_Contents,
     QxXmlET_tns__reason_EndElement},
    {{"maximum", "minimum"},
     QxXmlET_tns__depth,
     QxXmlET_tns__depth_StartElement,
     QxXmlET_tns__depth_Contents,
     QxXmlET_tns__depth_EndElement},
    {{"full", "partial"},
     QxXmlDbET_tns__state,
     QxXmlDbET_tns__state_StartElement,
     QxXmlDbET_tns__state_Contents,
     QxXmlDbET_tns__state_EndElement},
};

TEST(EncodeEnumeration, AsAnElementOrAsTextAlone) {
  const RtxNamespace ns = {"p", "urn:p"};
  for (const EnumEncoder &e : enumEncoders) {
    Context ctx;
    const std::pair<uint32_t, std::string> codes[] = {
        {0, e.texts[0]}, {1, e.texts[1]}, {65536, e.texts[0]}, {2, "_UNKNOWN_"}, {65535, "_UNKNOWN_"}};
    for (const auto &[code, text] : codes) {
      const auto written = [&, value = code](const char *element, const RtxNamespace *of) {
        return support::encoded(ctx, [&](RuntimeContext *c) { return e.encode(c, value, element, of); });
      };
      EXPECT_EQ(written("e", &ns), "<p:e>" + text + "</p:e>");
      EXPECT_EQ(written("e", nullptr), "<e>" + text + "</e>");
      EXPECT_EQ(written(nullptr, nullptr), text) << "neither start nor end writes anything";
      std::vector<std::string> steps;
      support::encoded(ctx, [&, value = code](RuntimeContext *c) {
        EXPECT_EQ(e.start(c, value, "e", &ns), 0);
        steps.push_back(support::outputText(c));
        EXPECT_EQ(e.contents(c, value, &ns), 0);
        steps.push_back(support::outputText(c));
        const int status = e.end(c, "e", &ns);
        steps.push_back(support::outputText(c));
        return status;
      });
      EXPECT_EQ(steps, std::vector<std::string>({"<p:e>", "<p:e>" + text, "<p:e>" + text + "</p:e>"}));
    }
    EXPECT_EQ(rtxErrCount(ctx), 0u);
    support::everyOutputSize([&](RuntimeContext *c) { return e.encode(c, 1, "e", &ns); });
    support::everyOutputSize([&](RuntimeContext *c) { return e.encode(c, 1, nullptr, nullptr); });
  }
}

TEST(EncodeEnumeration, InsideAnAttributeClosesNothing) {
  Context ctx;
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, nullptr, false), 0);
  ctx->state = XMLSTATE_IN_ATTRIBUTES;
  EXPECT_EQ(QxXmlDbET_tns__state(ctx, 1, nullptr, nullptr), 0);
  ctx->state = XMLSTATE_IN_ELEMENT;
  EXPECT_EQ(rtXmlEncTermStartElement(ctx), 0);
  EXPECT_EQ(support::outputText(ctx), "<epartial>");
}

} // namespace
