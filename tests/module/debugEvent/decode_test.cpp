// Reading documents of records. What the validators make of the same input is beside it: they differ in few points.
#include "debugInfo.h"
#include "xmlJudge.h"

using namespace debugInfo;
using support::Context;
using support::everySpelling;
using support::SpelledDocument;

namespace {

// ---- Whole documents --------------------------------------------------------------------------------------------

TEST(Decode, EverySpelling) {
  for (const Document *document : recordDocuments()) {
    SCOPED_TRACE(document->root);
    everySpelling(completeBody(*document), namespaceUri, [&](RuntimeContext *ctx, const SpelledDocument &) {
      const Reading reading = decodeInput(ctx, *document);
      EXPECT_EQ(reading.status, 0);
      EXPECT_EQ(reading.record, completeDump(*document));
      EXPECT_EQ(reading.errors, "");
      EXPECT_EQ(document->validate(ctx), 0);
      EXPECT_EQ(support::errors(ctx), "");
    });
  }
}

TEST(Decode, EveryPrefixFailsAndReleasesAll) {
  for (const Document *document : recordDocuments()) {
    const auto read = [&](RuntimeContext *ctx) { return decodeInput(ctx, *document).status; };
    for (support::Spelling spelling : support::allSpellings)
      support::everyPrefix(support::spell(completeBody(*document), namespaceUri, spelling).text, read);
  }
  const std::string bad =
      element("debuginfo", "version='x' state='y' k='z'",
              "<bogus/><debugconfig><session id='4'><start-trigger><from k='1'>a<!--c--><![CDATA[d]]>&#65;</from>"
              "<debug-id>4x</debug-id></start-trigger><stop-trigger><reason>r</reason></stop-trigger><control><depth/"
              "></control>"
              "</session></debugconfig><x:f xmlns:x='u'>t</x:f>");
  support::everyPrefix(bad, [](RuntimeContext *ctx) { return decodeInput(ctx, documentOf("debuginfo")).status; });
}

TEST(Decode, AllOfWhatStandsBetweenElementsIsNoOnes) {
  const Reading reading =
      decode("session",
             element("session", "id='s'",
                     "one<start-trigger>two<from>f</from>&amp;</start-trigger> <!-- --><stop-trigger><![CDATA[three]]>"
                     "</stop-trigger>\n<control>\t<interface>i</interface>four</control>five"));
  EXPECT_EQ(reading.status, 0) << reading.errors;
  EXPECT_EQ(reading.record, "id=s start{from=f} stop{} control{interface=i}");
}

TEST(Decode, NothingButAttributesIsRequired) {
  const std::pair<const char *, const char *> cases[] = {
      {"start-trigger", ""}, {"stop-trigger", ""}, {"control", "interface=-"}};
  for (const auto &[root, value] : cases) {
    for (const std::string &text : {element(root, ""), "<"s + root + "/>", element(root, " \n ")}) {
      const Reading reading = decode(root, text);
      EXPECT_EQ(reading.status, 0) << reading.errors;
      EXPECT_EQ(reading.record, value);
      EXPECT_EQ(validate(root, text).status, 0);
    }
  }
}

TEST(Decode, ChildrenThatAreMissingAreNoError) {
  struct Case {
    const char *root;
    std::string text;
    const char *value;
  };
  const Case cases[] = {
      {"session", element("session", "id='s'", "<start-trigger/><stop-trigger/>"),
       "id=s start{} stop{} control{interface=-}"},
      {"session", element("session", "id='s'", ""), "id=s start{} stop{} control{interface=-}"},
      {"session", element("session", "id='s'", "<start-trigger/><stop-trigger/><control/>"),
       "id=s start{} stop{} control{interface=-}"},
      {"debugconfig", element("debugconfig", "aor='a'", ""), "aor=a"},
      {"debuginfo", element("debuginfo", "version='0' state='full'", ""), "version=0 state=0"},
  };
  for (const Case &c : cases) {
    const Reading reading = decode(c.root, c.text);
    EXPECT_EQ(reading.status, 0) << reading.errors;
    EXPECT_EQ(reading.record, c.value);
    EXPECT_EQ(validate(c.root, c.text).status, 0);
  }
}

// ---- The order of children --------------------------------------------------------------------------------------

struct Child {
  const char *name;
  const char *xml;
  const char *present; // as dump shows it
  const char *absent;  // as dump shows its place when it is not there
};

struct Grammar {
  const char *root;
  const char *attributes;
  const char *attributesShown;
  std::vector<Child> children;
  // The rule in words: whether the child of that index may follow the last one that was taken, -1 being none.
  bool (*allowed)(int last, int index);
  size_t longest; // sequence to try
};

const Grammar grammars[] = {
    {"start-trigger",
     "",
     "",
     {{"from", "<from>f</from>", "from=f", ""},
      {"to", "<to>t</to>", "to=t", ""},
      {"icsi", "<icsi>s</icsi>", "icsi=s", ""},
      {"iari", "<iari>a</iari>", "iari=a", ""},
      {"method", "<method>m</method>", "method=m", ""},
      {"time", "<time>2024-01-02T03:04:05Z</time>", "time=2024-01-02T03:04:05Z", ""},
      {"debug-id", "<debug-id>0A</debug-id>", "debug-id=0A", ""}},
     [](int last, int index) { return index > last; },
     4},
    {"stop-trigger",
     "",
     "",
     {{"time", "<time>2024-01-02T03:04:05Z</time>", "time=2024-01-02T03:04:05Z", ""},
      {"time-period", "<time-period>PT1S</time-period>", "time-period=PT1S", ""},
      {"reason", "<reason>session_end</reason>", "reason=1", ""}},
     [](int last, int index) { return index > last; },
     5},
    {"control",
     "",
     "",
     {{"interface", "<interface>i</interface>", "interface=i", "interface=-"},
      {"depth", "<depth>minimum</depth>", "depth=1", ""},
      {"debug-id", "<debug-id>0A</debug-id>", "debug-id=0A", ""}},
     [](int last, int index) { return last < 0 ? index == 0 : index > last; },
     5},
    {"session",
     "id='s'",
     "id=s",
     {{"start-trigger", "<start-trigger><to>t</to></start-trigger>", "start{to=t}", "start{}"},
      {"stop-trigger", "<stop-trigger><reason>session_end</reason></stop-trigger>", "stop{reason=1}", "stop{}"},
      {"control", "<control><interface>i</interface></control>", "control{interface=i}", "control{interface=-}"}},
     [](int last, int index) { return index == last + 1; },
     5},
    {"debugconfig",
     "aor='a'",
     "aor=a",
     {{"session", "<session id='s'/>", "session{id=s start{} stop{} control{interface=-}}", ""}},
     [](int, int) { return true; },
     4},
    {"debuginfo",
     "version='7' state='full'",
     "version=7 state=0",
     {{"debugconfig", "<debugconfig aor='a'/>", "debugconfig{aor=a}", ""},
      {"x:f", "<x:f xmlns:x=\"u\"/>", "any=<x:f xmlns:x=\"u\"/>", ""}},
     [](int last, int index) { return index >= last; },
     5},
};

// Reads one sequence of children, given by the digits of number, and compares it with what the rule makes of it.
void expectSequence(RuntimeContext *ctx, const Grammar &grammar, size_t number, size_t length) {
  const size_t kinds = grammar.children.size();
  std::string content;
  std::string refused;
  std::vector<size_t> taken(kinds);
  int last = -1;
  for (size_t i = 0; i < length; ++i, number /= kinds) {
    const size_t index = number % kinds;
    content += grammar.children[index].xml;
    if (grammar.allowed(last, static_cast<int>(index))) {
      last = static_cast<int>(index);
      ++taken[index];
    } else {
      refused += (refused.empty() ? "" : "; ") + "-41("s + grammar.children[index].name + ")";
    }
  }
  std::string value = grammar.attributesShown;
  for (size_t index = 0; index < kinds; ++index) {
    const Child &child = grammar.children[index];
    const std::string shown = taken[index] == 0 ? child.absent : child.present;
    for (size_t copies = shown.empty() ? 0 : std::max<size_t>(taken[index], 1); copies != 0; --copies)
      value += (value.empty() ? "" : " ") + shown;
  }
  const std::string text = element(grammar.root, grammar.attributes, content);
  const int status = refused.empty() ? 0 : STATUS_UNEXPECTED_ELEMENT;
  rtxErrClear(ctx);
  const Reading reading = decode(ctx, documentOf(grammar.root), text);
  EXPECT_EQ(reading.status, status) << text;
  EXPECT_EQ(reading.record, value) << text;
  EXPECT_EQ(reading.errors, refused) << text;
  rtxErrClear(ctx);
  const Reading checked = validate(ctx, documentOf(grammar.root), text);
  EXPECT_EQ(checked.status, status) << text;
  EXPECT_EQ(checked.errors, refused) << text;
}

TEST(Decode, ChildrenComeInTheirOrder) {
  Context ctx;
  for (const Grammar &grammar : grammars) {
    for (size_t length = 0, all = 1; length <= grammar.longest; ++length, all *= grammar.children.size()) {
      for (size_t number = 0; number < all; ++number) {
        expectSequence(ctx, grammar, number, length);
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

TEST(Decode, AllChildrenInTheirOrderAreTaken) {
  for (const Grammar &grammar : grammars) {
    std::string content;
    std::string value = grammar.attributesShown;
    for (const Child &child : grammar.children) {
      content += child.xml;
      value += (value.empty() ? "" : " ") + std::string(child.present);
    }
    const Reading reading = decode(grammar.root, element(grammar.root, grammar.attributes, content));
    EXPECT_EQ(reading.errors, "");
    EXPECT_EQ(reading.record, value);
  }
}

TEST(Decode, DepthWithoutAnInterfaceIsOutOfOrder) {
  const std::string text = element("control", "<depth>maximum</depth><debug-id>43aa55</debug-id>");
  const Reading reading = decode("control", text);
  EXPECT_EQ(reading.status, STATUS_UNEXPECTED_ELEMENT);
  EXPECT_EQ(reading.record, "interface=-");
  EXPECT_EQ(reading.errors, "-41(depth); -41(debug-id)");
  EXPECT_EQ(validate("control", text).errors, "-41(depth); -41(debug-id)");
}

TEST(Decode, NamespacesDecideWhatIsForeign) {
  struct Case {
    const char *root;
    const char *attributes;
    const char *content;
    const char *value;
    const char *errors;
  };
  const Case cases[] = {
      // Names of ours in another namespace are another vocabulary's, wherever that may stand.
      {"debuginfo", "version='0' state='full'", "<x:debugconfig xmlns:x=\"u\" aor=\"a\"/>",
       "version=0 state=0 any=<x:debugconfig xmlns:x=\"u\" aor=\"a\"/>", ""},
      {"debuginfo", "version='0' state='full'", "<debugconfig xmlns=\"u\"/>",
       "version=0 state=0 any=<debugconfig xmlns=\"u\"/>", ""},
      // Other namespaces of the library are as foreign as any.
      {"debuginfo", "version='0' state='full'", "<d:dialog xmlns:d=\"urn:ietf:params:xml:ns:dialog-info\"/>",
       "version=0 state=0 any=<d:dialog xmlns:d=\"urn:ietf:params:xml:ns:dialog-info\"/>", ""},
      // Names without a namespace are ours if we know them, else foreign.
      {"debuginfo", "version='0' state='full'", "<debugconfig xmlns=\"\" aor=\"a\"/><bogus xmlns=\"\"/>",
       "version=0 state=0 debugconfig{aor=a} any=<bogus xmlns=\"\"/>", ""},
      // An unknown name in our namespace is refused, not foreign.
      {"debuginfo", "version='0' state='full'", "<session id='s'/><bogus/>", "version=0 state=0",
       "-41(session); -41(bogus)"},
      // Where no foreign element may stand, the name alone is tried.
      {"control", "", "<x:interface xmlns:x=\"u\">i</x:interface><x:f xmlns:x=\"u\"/>", "interface=i", "-41(x:f)"},
      {"session", "id='s'", "<start-trigger xmlns=\"u\"><from>f</from></start-trigger>",
       "id=s start{from=f} stop{} control{interface=-}", ""},
      // An undeclared prefix is no namespace.
      {"control", "", "<u:interface>i</u:interface>", "interface=i", ""},
  };
  for (const Case &c : cases) {
    SCOPED_TRACE(c.content);
    const std::string text = element(c.root, c.attributes, c.content);
    const Reading reading = decode(c.root, text);
    EXPECT_EQ(reading.status, *c.errors == '\0' ? 0 : STATUS_UNEXPECTED_ELEMENT);
    EXPECT_EQ(reading.record, c.value);
    EXPECT_EQ(reading.errors, c.errors);
  }
}

// ---- Foreign elements -------------------------------------------------------------------------------------------

TEST(DecodeForeign, ElementsMeanTheSameOnTheirOwn) {
  const std::string text = "<p:debuginfo xmlns:p=\""s + namespaceUri +
                           "\" xmlns:x=\"urn:x\" xmlns=\"urn:default\" version=\"1\" state=\"full\">"
                           "<x:f k='\"'>t &amp; <g><!--c--><p:session x:l=\"&#10;\">&lt;</p:session></g></x:f>"
                           "<g/><x:h xmlns:x=\"urn:inner\"><x:i/></x:h></p:debuginfo>";
  const auto whole = support::parseNamespacedXml(text);
  ASSERT_TRUE(whole);
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, text), 0);
  Held held(ctx, documentOf("debuginfo"));
  EXPECT_EQ(QxXmlD_tns_debuginfo(ctx, &held->debuginfo), 0) << support::errors(ctx);
  held.owned = true;
  const auto fragments = itemsOf<RtxXmlString>(held->debuginfo.anyElems.items);
  ASSERT_EQ(fragments.size(), 3u);
  for (size_t i = 0; i < fragments.size(); ++i) {
    const auto fragment = support::parseNamespacedXml(fragments[i]->value);
    ASSERT_TRUE(fragment) << fragments[i]->value;
    EXPECT_EQ(fragment->infoset(), whole->children[i].infoset());
  }
  // Written back, they mean the same still.
  const auto again = support::parseNamespacedXml(encode(ctx, documentOf("debuginfo"), held));
  ASSERT_TRUE(again);
  ASSERT_EQ(again->children.size(), 3u);
  for (size_t i = 0; i < 3; ++i)
    EXPECT_EQ(again->children[i].infoset(), whole->children[i].infoset());
}

TEST(DecodeForeign, FragmentsAreWrittenBackUnchanged) {
  const std::string elements = "<x:f xmlns:x=\"u\" k=\"1\">t<x:g>&lt;&amp;</x:g>u</x:f><y xmlns=\"v\"/>";
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, element("debuginfo", "version='0' state='full'", elements)), 0);
  Held held(ctx, documentOf("debuginfo"));
  ASSERT_EQ(QxXmlD_tns_debuginfo(ctx, &held->debuginfo), 0) << support::errors(ctx);
  held.owned = true;
  EXPECT_NE(encode(ctx, documentOf("debuginfo"), held).find("\"full\">" + elements + "</tns:debuginfo>"),
            std::string::npos);
}

TEST(DecodeForeign, AttributesAreKept) {
  const Reading reading =
      decode("debuginfo", element("debuginfo", "version='0' state='full'", "<x:f xmlns:x=\"u\" k=\"1\" x:l=\"2\"/>"));
  EXPECT_EQ(reading.errors, "");
  EXPECT_EQ(reading.record, "version=0 state=0 any=<x:f xmlns:x=\"u\" k=\"1\" x:l=\"2\"/>");
}

// ---- As it is found in the field ------------------------------------------------------------------------------------

TEST(Decode, BodiesWithoutAnInterfaceAreReadButForTheControl) {
  const std::string text = "<di:debuginfo xmlns:di=\""s + namespaceUri +
                           "\" version=\"2\" state=\"full\">\n <di:debugconfig aor=\"sip:erin@example.org\">\n"
                           "  <di:session id=\"17\">\n   <di:start-trigger>\n"
                           "    <di:time>2024-03-01 00:00:00.0</di:time>\n   </di:start-trigger>\n"
                           "   <di:stop-trigger>\n   </di:stop-trigger>\n   <di:control>\n"
                           "    <di:depth>maximum</di:depth>\n    <di:debug-id>beef01</di:debug-id>\n"
                           "   </di:control>\n  </di:session>\n </di:debugconfig>\n</di:debuginfo>\n";
  const Reading reading = decode("debuginfo", text);
  EXPECT_EQ(reading.status, STATUS_UNEXPECTED_ELEMENT);
  EXPECT_EQ(reading.errors, "-41(di:depth); -41(di:debug-id)");
  EXPECT_EQ(reading.record, "version=2 state=0 debugconfig{aor=sip:erin@example.org session{id=17 "
                            "start{time=2024-03-01 00:00:00.0} stop{} control{interface=-}}}");
  EXPECT_EQ(validate("debuginfo", text).errors, "-41(di:depth); -41(di:debug-id)");
}

} // namespace
