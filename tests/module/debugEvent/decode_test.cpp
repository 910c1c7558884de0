// Reading documents of records. What the validators make of the same input is beside it: they differ in few points.
#include "debugInfo.h"
#include "xmlJudge.h"

#include <algorithm>
#include <cstring>

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

// ---- Attributes -------------------------------------------------------------------------------------------------

struct AttributeCase {
  const char *root;
  const char *attributes;
  const char *value;  // of the record; null: not looked at
  const char *errors; // the status is that of the first
};

int firstStatus(const std::string &errors) { return errors.empty() ? 0 : std::stoi(errors); }

void expectAttributes(const AttributeCase &c) {
  SCOPED_TRACE(c.root + " "s + c.attributes);
  const std::string text = element(c.root, c.attributes, "");
  const Reading reading = decode(c.root, text);
  EXPECT_EQ(reading.status, firstStatus(c.errors));
  if (c.value != nullptr) {
    EXPECT_EQ(reading.record, c.value);
  }
  EXPECT_EQ(reading.errors, c.errors);
  const Reading checked = validate(c.root, text);
  EXPECT_EQ(checked.status, firstStatus(c.errors));
  EXPECT_EQ(checked.errors, c.errors);
}

constexpr const char *emptySession = "id=s start{} stop{} control{interface=-}";

TEST(DecodeAttributes, RequiredAttributesThatAreMissing) {
  const AttributeCase cases[] = {
      {"session", "", "id=- start{} stop{} control{interface=-}", "-103(tns__session,id)"},
      {"debugconfig", "", "aor=-", "-103(tns__debugconfig,aor)"},
      {"debuginfo", "", "version=? state=?", "-103(tns__debuginfo,version); -103(tns__debuginfo,state)"},
      {"debuginfo", "version='1'", "version=1 state=?", "-103(tns__debuginfo,state)"},
      {"debuginfo", "state='full'", "version=? state=0", "-103(tns__debuginfo,version)"},
      // One attribute is no other's.
      {"session", "aor='a'", nullptr, "-33(tns__session,aor); -103(tns__session,id)"},
      {"debugconfig", "id='s'", nullptr, "-33(tns__debugconfig,id); -103(tns__debugconfig,aor)"},
      // Names are compared exactly.
      {"session", "ID='s'", nullptr, "-33(tns__session,ID); -103(tns__session,id)"},
      {"session", "i='s'", nullptr, "-33(tns__session,i); -103(tns__session,id)"},
      {"session", "idx='s'", nullptr, "-33(tns__session,idx); -103(tns__session,id)"},
  };
  for (const AttributeCase &c : cases)
    expectAttributes(c);
}

TEST(DecodeAttributes, TextIsKeptAsItStands) {
  const AttributeCase cases[] = {
      {"session", "id=''", "id= start{} stop{} control{interface=-}", ""},
      {"session", "id=' 4  5 '", "id= 4  5  start{} stop{} control{interface=-}", ""},
      {"session", "id='&lt;&#65;\"'", "id=<A\" start{} stop{} control{interface=-}", ""},
      {"debugconfig", "aor='sip:\xC3\xA9@example.com'", "aor=sip:\xC3\xA9@example.com", ""},
  };
  for (const AttributeCase &c : cases)
    expectAttributes(c);
}

TEST(DecodeAttributes, VersionConvertsOrNot) {
  const AttributeCase good[] = {{"debuginfo", "version='0' state='full'", "version=0 state=0", ""},
                                {"debuginfo", "version=' 12\n' state='full'", "version=12 state=0", ""},
                                {"debuginfo", "version='007' state='full'", "version=7 state=0", ""},
                                {"debuginfo", "version='4294967295' state='full'", "version=4294967295 state=0", ""}};
  for (const AttributeCase &c : good)
    expectAttributes(c);
  for (const char *text : {"", " ", "abc", "-1", "1.0", "1e3", "0x10", "4294967296", "99999999999999999999", "1 2"}) {
    const std::string attributes = "version='"s + text + "' state='partial'";
    // The attribute was there: it is not missing. What comes behind is read.
    expectAttributes({"debuginfo", attributes.c_str(), "version=? state=1", "-101; -45(tns__debuginfo,version)"});
  }
}

TEST(DecodeAttributes, StateConvertsOrNot) {
  expectAttributes({"debuginfo", "state='full' version='1'", "version=1 state=0", ""});
  expectAttributes({"debuginfo", "state='partial' version='1'", "version=1 state=1", ""});
  for (const char *text : {"", "Full", "FULL", "ful", "fulll", " full", "full ", "1", "_UNKNOWN_"}) {
    const std::string attributes = "state='"s + text + "' version='5'";
    const std::string errors = "-4("s + text + "); -45(tns__debuginfo,state)";
    expectAttributes({"debuginfo", attributes.c_str(), "version=5 state=?", errors.c_str()});
  }
}

TEST(DecodeAttributes, SeveralErrorsInOneTagInTheOrderOfTheDocument) {
  expectAttributes({"debuginfo", "k='1' state='some' version='x' l='2'", "version=? state=?",
                    "-33(tns__debuginfo,k); -4(some); -45(tns__debuginfo,state); -101; -45(tns__debuginfo,version); "
                    "-33(tns__debuginfo,l)"});
}

TEST(DecodeAttributes, DeclarationsAndInstanceAttributesAreNoErrors) {
  for (const char *root : {"session", "debugconfig", "debuginfo"}) {
    const std::string own = root == "session"sv       ? "id='s'"
                            : root == "debugconfig"sv ? "aor='a'"
                                                      : "version='0' state='full'";
    const std::string attributes = own + " xmlns:p='u' xmlnsfoo='v' "
                                         "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
                                         "xsi:schemaLocation='a b' xsi:nonsense=''";
    const Reading reading = decode(root, element(root, attributes, ""));
    EXPECT_EQ(reading.errors, "") << root;
    EXPECT_EQ(validate(root, element(root, attributes, "")).errors, "") << root;
  }
}

TEST(DecodeAttributes, OthersAreUnknown) {
  const AttributeCase cases[] = {
      {"session", "k='1' id='s' l='2'", emptySession, "-33(tns__session,k); -33(tns__session,l)"},
      {"session", "xml:lang='en' id='s'", emptySession, "-33(tns__session,xml:lang)"},
      {"session", "xmlns:x='u' x:k='1' id='s'", emptySession, "-33(tns__session,x:k)"},
      {"debugconfig", "aor='a' k=''", "aor=a", "-33(tns__debugconfig,k)"},
      {"debuginfo", "version='0' k='1' state='full'", "version=0 state=0", "-33(tns__debuginfo,k)"},
      {"debuginfo", "version='0' xsi='1' state='full'", "version=0 state=0", "-33(tns__debuginfo,xsi)"},
  };
  for (const AttributeCase &c : cases)
    expectAttributes(c);
}

TEST(DecodeAttributes, TriggersAndControlIgnoreTheirs) {
  for (const char *root : {"start-trigger", "stop-trigger", "control"}) {
    const std::string text = element(root, "k='v' id='s' xml:lang='en'", "");
    EXPECT_EQ(decode(root, text).errors, "") << root;
    EXPECT_EQ(validate(root, text).errors, "") << root;
  }
  const std::string text = element("session", "id='s'", "<start-trigger k='v'/><stop-trigger k='v'/><control k='v'/>");
  EXPECT_EQ(decode("session", text).errors, "");
  EXPECT_EQ(validate("session", text).errors, "");
}

TEST(DecodeAttributes, OfSimpleChildrenAreReportedAndTheChildIsRead) {
  const std::string text = element(
      "session", "id='s'",
      "<start-trigger><from k='1' xmlns:p='u' p:l='2'>f</from><debug-id m='3'>0A</debug-id></start-trigger>"
      "<stop-trigger><reason xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:type='t' n='4'>session_end"
      "</reason></stop-trigger><control><interface o='5'>i</interface></control>");
  const std::string errors = "-33(from,k); -33(from,p:l); -33(debug-id,m); -33(reason,n); -33(interface,o)";
  const Reading reading = decode("session", text);
  EXPECT_EQ(reading.status, STATUS_UNKNOWN_ATTRIBUTE);
  EXPECT_EQ(reading.errors, errors);
  EXPECT_EQ(reading.record, "id=s start{from=f debug-id=0A} stop{reason=1} control{interface=i}");
  EXPECT_EQ(validate("session", text).errors, errors);
}

// Attributes belong to the module's namespace, but are often written bare. Both is read.
TEST(DecodeAttributes, QualifiedNamesAreReadToo) {
  const std::string uri = namespaceUri;
  struct Case {
    std::string text;
    const char *id;
    const char *errors;
  };
  const Case cases[] = {
      {"<p:session xmlns:p=\"" + uri + "\" p:id=\"s\"/>", "s", ""},
      {"<p:session xmlns:p=\"" + uri + "\" id=\"s\"/>", "s", ""},
      {"<session xmlns=\"" + uri + "\" xmlns:p=\"" + uri + "\" p:id=\"s\"/>", "s", ""},
      {"<session xmlns=\"" + uri + "\" id=\"s\"/>", "s", ""},
      // The declaration may come behind.
      {"<session p:id=\"s\" xmlns:p=\"" + uri + "\"/>", "s", ""},
      // Another prefix for the name than for the element.
      {"<a:session xmlns:a=\"" + uri + "\" xmlns:b=\"" + uri + "\" b:id=\"s\"/>", "s", ""},
      // A prefix of another namespace, or of none, says that it is another attribute.
      {"<session xmlns=\"" + uri + "\" xmlns:x=\"urn:x\" x:id=\"s\"/>", nullptr,
       "-33(tns__session,x:id); -103(tns__session,id)"},
      {"<session xmlns=\"" + uri + "\" u:id=\"s\"/>", nullptr, "-33(tns__session,u:id); -103(tns__session,id)"},
      {"<session xmlns=\"" + uri + "\" xml:id=\"s\"/>", nullptr, "-33(tns__session,xml:id); -103(tns__session,id)"},
      {"<session xmlns=\"" + uri + "\" xmlns:d=\"urn:ietf:params:xml:ns:dialog-info\" d:id=\"s\"/>", nullptr,
       "-33(tns__session,d:id); -103(tns__session,id)"},
      // Qualified, the names are the same as bare.
      {"<p:session xmlns:p=\"" + uri + "\" p:ID=\"s\"/>", nullptr, "-33(tns__session,p:ID); -103(tns__session,id)"},
      // A second spelling of an attribute that was there is unknown, and takes nothing away.
      {"<p:session xmlns:p=\"" + uri + "\" id=\"s\" p:id=\"t\"/>", "s", "-33(tns__session,p:id)"},
      {"<p:session xmlns:p=\"" + uri + "\" p:id=\"s\" id=\"t\"/>", "s", "-33(tns__session,id)"},
  };
  for (const Case &c : cases) {
    SCOPED_TRACE(c.text);
    const std::string id = c.id == nullptr ? "-" : c.id;
    const Reading reading = decode("session", c.text);
    EXPECT_EQ(reading.status, firstStatus(c.errors));
    EXPECT_EQ(reading.record, "id=" + id + " start{} stop{} control{interface=-}");
    EXPECT_EQ(reading.errors, c.errors);
    EXPECT_EQ(validate("session", c.text).errors, c.errors);
  }
}

TEST(DecodeAttributes, QualifiedNamesOfAllAttributes) {
  const std::string uri = namespaceUri;
  const std::string text = "<p:debuginfo xmlns:p=\"" + uri +
                           "\" p:state=\"partial\" p:version=\"9\"><p:debugconfig p:aor=\"a\"><p:session p:id=\"s\"/>"
                           "</p:debugconfig><debugconfig xmlns=\"" +
                           uri + "\" aor=\"b\"><q:session xmlns:q=\"" + uri +
                           "\" q:id=\"t\"/></debugconfig></p:debuginfo>";
  const Reading reading = decode("debuginfo", text);
  EXPECT_EQ(reading.errors, "");
  EXPECT_EQ(reading.record, "version=9 state=1 debugconfig{aor=a session{id=s start{} stop{} control{interface=-}}} "
                            "debugconfig{aor=b session{id=t start{} stop{} control{interface=-}}}");
  EXPECT_EQ(validate("debuginfo", text).errors, "");
}

TEST(DecodeAttributes, QualifiedNamesInErrorsAreAsTheyAreWritten) {
  const std::string text = "<p:debuginfo xmlns:p=\""s + namespaceUri + "\" p:version=\"x\" p:state=\"y\"/>";
  const std::string errors = "-101; -45(tns__debuginfo,p:version); -4(y); -45(tns__debuginfo,p:state)";
  EXPECT_EQ(decode("debuginfo", text).errors, errors);
  EXPECT_EQ(validate("debuginfo", text).errors, errors);
}

TEST(DecodeAttributes, OneAttributeUnderTwoPrefixesTakesNothingAway) {
  // Two attributes of one expanded name: refused by the reader, or read with the second one unknown.
  const Reading reading = decode("session", "<p:session xmlns:p=\""s + namespaceUri + "\" xmlns:q=\"" + namespaceUri +
                                                "\" p:id=\"s\" q:id=\"t\"/>");
  EXPECT_LT(reading.status, 0);
  EXPECT_EQ(reading.record.find("id=t"), std::string::npos) << reading.record;
}

// ---- Content of simple children ---------------------------------------------------------------------------------

struct TextChild {
  const char *root;
  const char *name;
  const char *before; // what must come before it
  bool collapsed;
};

const TextChild textChildren[] = {
    {"start-trigger", "from", "", false},   {"start-trigger", "to", "", false},
    {"start-trigger", "icsi", "", false},   {"start-trigger", "iari", "", false},
    {"start-trigger", "method", "", false}, {"start-trigger", "time", "", true},
    {"stop-trigger", "time", "", true},     {"stop-trigger", "time-period", "", false},
    {"control", "interface", "", false},
};

TEST(DecodeContent, TextIsKeptButForTheWhiteSpaceOfTimes) {
  struct Case {
    const char *content;
    const char *text;
    const char *collapsed;
  };
  const Case cases[] = {{"", "", ""},
                        {" a ", " a ", "a"},
                        {"\n a\t\n b \n", "\n a\t\n b \n", "a b"},
                        {"  ", "  ", ""},
                        {"a<![CDATA[<b>]]>&amp;<!-- no -->c&#100;<?pi no?>&lt;", "a<b>&cd<", "a<b>&cd<"},
                        {"&#13;\r\n", "\r\n", ""},
                        {"\xC3\xA9\xF0\x9F\x98\x80", "\xC3\xA9\xF0\x9F\x98\x80", "\xC3\xA9\xF0\x9F\x98\x80"}};
  for (const TextChild &child : textChildren) {
    for (const Case &c : cases) {
      SCOPED_TRACE(child.root + "/"s + child.name + " " + c.content);
      const std::string name = child.name;
      const std::string text = element(child.root, "<" + name + ">" + c.content + "</" + name + ">");
      const Reading reading = decode(child.root, text);
      EXPECT_EQ(reading.status, 0) << reading.errors;
      EXPECT_EQ(reading.record, name + "=" + (child.collapsed ? c.collapsed : c.text));
      EXPECT_EQ(validate(child.root, text).status, 0);
    }
    const Reading empty = decode(child.root, element(child.root, "<"s + child.name + "/>"));
    EXPECT_EQ(empty.record, child.name + "="s) << "an empty text, not an absent one";
  }
}

TEST(DecodeContent, TextIsReadWithoutCdataFlag) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, element("control", "<interface><![CDATA[i]]></interface>")), 0);
  Held held(ctx, documentOf("control"));
  EXPECT_EQ(QxXmlD_tns_control(ctx, &held->control), 0);
  held.owned = true;
  EXPECT_STREQ(held->control.tns_interface.value, "i");
  EXPECT_FALSE(held->control.tns_interface.cdata);
}

TEST(DecodeContent, LongTextArrivesWhole) {
  std::string text;
  for (int i = 0; i < 20000; ++i)
    text += "line " + std::to_string(i) + "\n";
  EXPECT_EQ(decode("control", element("control", "<interface>" + text + "</interface><depth>minimum</depth>")).record,
            "interface=" + text + " depth=1");
}

TEST(DecodeContent, ElementsInsideASimpleChildAreNotLookedAt) {
  const Reading reading =
      decode("control",
             element("control", "<interface>a<b k='1'>b<depth>c</depth></b>d</interface><depth>mini<b>m</b>um</depth>"
                                "<debug-id>4<b>3<c/></b>A<d/>A</debug-id>"));
  EXPECT_EQ(reading.errors, "");
  EXPECT_EQ(reading.record, "interface=abcd depth=1 debug-id=43AA");
}

TEST(DecodeContent, CodesConvertOrNot) {
  struct Case {
    const char *root;
    const char *before;
    const char *shownBefore;
    const char *name;
    const char *type;
    const char *texts[2];
  };
  const Case cases[] = {
      {"stop-trigger", "", "", "reason", "tns__stop_trigger", {"dialog_established", "session_end"}},
      {"control", "<interface>i</interface>", "interface=i", "depth", "tns__control", {"maximum", "minimum"}}};
  for (const Case &c : cases) {
    const auto text = [&](const std::string &content) {
      return element(c.root, c.before + "<"s + c.name + ">" + content + "</" + c.name + ">");
    };
    const auto shown = [&](const std::string &code) {
      const std::string before = c.shownBefore;
      return code.empty() ? before : before + (before.empty() ? "" : " ") + c.name + "=" + code;
    };
    for (int code = 0; code < 2; ++code) {
      const Reading reading = decode(c.root, text(c.texts[code]));
      EXPECT_EQ(reading.errors, "");
      EXPECT_EQ(reading.record, shown(std::to_string(code)));
      const std::string pieces = c.texts[code];
      EXPECT_EQ(decode(c.root, text(pieces.substr(0, 3) + "<!-- --><![CDATA[" + pieces.substr(3) + "]]>")).record,
                shown(std::to_string(code)));
    }
    for (const std::string &wrong :
         {""s, " "s, "zzz"s, "session-end"s, "Maximum"s, "0"s, " "s + c.texts[1], c.texts[1] + " "s}) {
      SCOPED_TRACE(text(wrong));
      const std::string errors = "-4(" + wrong + "); -44(" + wrong + "," + c.type + "," + c.name + ")";
      const Reading reading = decode(c.root, text(wrong));
      EXPECT_EQ(reading.status, STATUS_ENUM_NOT_FOUND);
      EXPECT_EQ(reading.record, shown(""));
      EXPECT_EQ(reading.errors, errors);
      EXPECT_EQ(validate(c.root, text(wrong)).errors, errors);
    }
  }
}

TEST(DecodeContent, CodeThatDoesNotConvertKeepsItsValue) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, element("control", "<interface/><depth>deep</depth>")), 0);
  Held held(ctx, documentOf("control"));
  EXPECT_EQ(QxXmlD_tns_control(ctx, &held->control), STATUS_ENUM_NOT_FOUND);
  held.owned = true;
  EXPECT_EQ(held->control.tns_depth, 0xA5A5u);
  EXPECT_EQ(held->control.m, 0u);
}

// ---- Hexadecimal content ------------------------------------------------------------------------------------------

struct HexCase {
  const char *content;
  const char *bytes;  // null: refused
  const char *errors; // of start-trigger
};

const HexCase hexCases[] = {
    {"43aa55", "43AA55", ""},
    {"43AA55", "43AA55", ""},
    {"0123456789abcdefABCDEF", "0123456789ABCDEFABCDEF", ""},
    {"00", "00", ""},
    {"", "", ""},
    {"  ", "", ""},
    {" \n43aa\t ", "43AA", ""},
    {"4<![CDATA[3a]]>&#97;<!-- -->5<?pi?>5", "43AA55", ""},
    {"<![CDATA[]]>43", "43", ""},
    {"43 aa", nullptr, "-101"},
    {"4 3", nullptr, "-101"},
    {"4g", nullptr, "-101"},
    {"xyz", nullptr, "-101"},
    {"0x43", nullptr, "-101"},
    {"43aa5-", nullptr, "-101"},
    {"\xEF\xBC\x94\xEF\xBC\x93", nullptr, "-101"},
    {"4", nullptr, "-44(4,tns__start_trigger,debug-id)"},
    {"43A", nullptr, "-44(43A,tns__start_trigger,debug-id)"},
    {"43AA5", nullptr, "-44(43AA5,tns__start_trigger,debug-id)"},
};

TEST(DecodeHex, ConvertsOrNot) {
  for (const HexCase &c : hexCases) {
    SCOPED_TRACE(c.content);
    const std::string child = "<debug-id>"s + c.content + "</debug-id>";
    const std::string start = element("start-trigger", "<method>m</method>" + child);
    const Reading reading = decode("start-trigger", start);
    EXPECT_EQ(reading.status, firstStatus(c.errors));
    EXPECT_EQ(reading.record, "method=m"s + (c.bytes == nullptr ? "" : " debug-id="s + c.bytes));
    EXPECT_EQ(reading.errors, c.errors);
    EXPECT_EQ(validate("start-trigger", start).errors, c.errors);

    const std::string control = element("control", "<interface>i</interface>" + child);
    std::string errors = c.errors;
    if (const size_t at = errors.find("start_trigger"); at != std::string::npos) errors.replace(at, 13, "control");
    const Reading inControl = decode("control", control);
    EXPECT_EQ(inControl.record, "interface=i"s + (c.bytes == nullptr ? "" : " debug-id="s + c.bytes));
    EXPECT_EQ(inControl.errors, errors);
    EXPECT_EQ(validate("control", control).errors, errors);
  }
}

TEST(DecodeHex, EmptyBytesArePresentWithoutAnAddress) {
  for (const char *child : {"<debug-id/>", "<debug-id></debug-id>"}) {
    Context ctx;
    ASSERT_EQ(support::setInput(ctx, element("start-trigger", child)), 0);
    Held held(ctx, documentOf("start-trigger"));
    EXPECT_EQ(QxXmlD_tns_start_trigger(ctx, &held->start_trigger), 0);
    held.owned = true;
    EXPECT_EQ(held->start_trigger.m, 64u);
    EXPECT_EQ(held->start_trigger.tns_debug_id.length, 0u);
    EXPECT_EQ(held->start_trigger.tns_debug_id.bytes, nullptr);
  }
}

// A comment cuts the text in two pieces: at every place, and at every two places.
TEST(DecodeHex, IsTheSameForEveryWayOfCutting) {
  const std::pair<std::string, const char *> cases[] = {{" 43aa55 ", "debug-id=43AA55"}, {"43aa5", ""}, {"43x", ""}};
  for (const auto &[digits, value] : cases) {
    Context whole;
    decode(whole, documentOf("start-trigger"), element("start-trigger", "<debug-id>" + digits + "</debug-id>"));
    const std::string errors = brief(whole);
    for (size_t first = 0; first <= digits.size(); ++first) {
      for (size_t second = first; second <= digits.size(); ++second) {
        std::string cut = digits;
        cut.insert(second, "<!---->").insert(first, "<!---->");
        const std::string text = element("start-trigger", "<debug-id>" + cut + "</debug-id>");
        const Reading reading = decode("start-trigger", text);
        EXPECT_EQ(reading.record, value) << text;
        EXPECT_EQ(reading.errors, errors) << text;
        EXPECT_EQ(validate("start-trigger", text).errors, errors) << text;
      }
    }
  }
}

TEST(DecodeHex, LongTextArrivesWhole) {
  std::string digits;
  for (size_t i = 0; i < 100000; ++i)
    digits += "0123456789ABCDEF"[(i * 7 + i / 16) % 16];
  EXPECT_EQ(decode("start-trigger", element("start-trigger", "<debug-id>" + digits + "</debug-id>")).record,
            "debug-id=" + digits);
  EXPECT_EQ(validate("start-trigger", element("start-trigger", "<debug-id>" + digits + "</debug-id>")).status, 0);
}

TEST(DecodeHex, HalfAPairDoesNotReachTheNextElement) {
  const Reading reading = decode(
      "debugconfig",
      element("debugconfig", "aor='a'",
              "<session id='1'><start-trigger><debug-id>0A1</debug-id></start-trigger><stop-trigger/><control>"
              "<interface>i</interface><debug-id>B2</debug-id></control></session>"
              "<session id='2'><start-trigger><debug-id>C3x</debug-id></start-trigger><stop-trigger><time>t</time>"
              "</stop-trigger><control><interface>j</interface><debug-id>D4</debug-id></control></session>"));
  EXPECT_EQ(reading.record, "aor=a session{id=1 start{} stop{} control{interface=i debug-id=B2}} "
                            "session{id=2 start{} stop{time=t} control{interface=j debug-id=D4}}");
  EXPECT_EQ(reading.errors, "-44(0A1,tns__start_trigger,debug-id); -101");
}

TEST(DecodeHex, WhatIsLeftOutHasNoBit) {
  for (const char *content : {"4x", "4"}) {
    Context ctx;
    ASSERT_EQ(support::setInput(ctx, element("start-trigger", "<debug-id>"s + content + "</debug-id>")), 0);
    Held held(ctx, documentOf("start-trigger"));
    EXPECT_LT(QxXmlD_tns_start_trigger(ctx, &held->start_trigger), 0);
    held.owned = true;
    EXPECT_EQ(held->start_trigger.m, 0u);
    EXPECT_EQ(held->start_trigger.tns_debug_id.length, 0u);
    EXPECT_EQ(held->start_trigger.tns_debug_id.bytes, nullptr);
  }
}

// ---- Roots and failures -------------------------------------------------------------------------------------------

TEST(Decode, RootOfAnotherNameIsReportedAndRead) {
  for (const Document *document : recordDocuments()) {
    const std::string root = document->root;
    for (const std::string &other : {"other"s, "debug"s, root + "x", root.substr(0, root.size() - 1)}) {
      for (const char *prefix : {"", "p:"}) {
        std::string text = spelled(completeBody(*document), "p:");
        const std::string declared = " xmlns:p=\""s + namespaceUri + "\"";
        text.replace(0, ("<p:" + root).size(), "<" + (prefix + other) + declared);
        text.replace(text.rfind("p:" + root), ("p:" + root).size(), prefix + other);
        const Reading reading = decode(*document, text);
        EXPECT_EQ(reading.status, STATUS_ROOT_MISMATCH);
        EXPECT_EQ(reading.errors, "-3(" + root + "," + other + ")") << text;
        EXPECT_EQ(reading.record, completeDump(*document));
        EXPECT_EQ(validate(*document, text).errors, "-3(" + root + "," + other + ")");
      }
    }
  }
}

TEST(Decode, RootIsKnownByItsLocalNameAlone) {
  const std::string text =
      "<control xmlns=\"urn:other\" xmlns:t=\""s + namespaceUri + "\"><t:interface>i</t:interface></control>";
  EXPECT_EQ(decode("control", text).errors, "");
  EXPECT_EQ(decode("control", text).record, "interface=i");
}

TEST(Decode, ErrorsNameTheElementAsItIsSpelled) {
  everySpelling(
      "<q:session id='s'><q:stop-trigger/><q:start-trigger><q:debug-id>4</q:debug-id><q:to/></q:start-trigger>"
      "<q:stop-trigger><q:reason>r</q:reason></q:stop-trigger></q:session>",
      namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &document) {
        const Reading reading = decodeInput(ctx, documentOf("session"));
        EXPECT_EQ(reading.status, STATUS_UNEXPECTED_ELEMENT);
        EXPECT_EQ(reading.errors, "-41(" + document.qualified("stop-trigger") + "); -44(4,tns__start_trigger," +
                                      document.qualified("debug-id") + "); -41(" + document.qualified("to") +
                                      "); -4(r); -44(r,tns__stop_trigger," + document.qualified("reason") + ")");
        EXPECT_EQ(reading.record, "id=s start{} stop{} control{interface=-}");
      });
}

TEST(Decode, EachErrorNamesItsSource) {
  const std::string bad =
      "<other xmlns=\""s + namespaceUri +
      "\" state='x' k='1'><bogus/><debugconfig aor='a'><session id='s'><start-trigger><from k='1'/>"
      "<debug-id>x</debug-id></start-trigger><stop-trigger><reason>r</reason></stop-trigger><control>"
      "<interface/><debug-id>4</debug-id></control></session></debugconfig></other>";
  const std::vector<int> statuses = {-3, -4, -45, -33, -103, -41, -33, -101, -4, -44, -44};
  for (bool validator : {false, true}) {
    Context ctx;
    const Document &document = documentOf("debuginfo");
    validator ? validate(ctx, document, bad) : decode(ctx, document, bad);
    EXPECT_EQ(support::statuses(ctx), statuses);
    for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i) {
      SCOPED_TRACE(support::errorText(*error));
      ASSERT_GT(error->siteCount, 0u);
      bool named = false;
      for (uint32_t site = 0; site < error->siteCount; ++site) {
        EXPECT_GT(error->sites[site].line, 0);
        const std::string_view path = error->sites[site].path;
        if (path == "runtime/reader") continue;
        named = true;
        EXPECT_EQ(path, validator ? "xmlAddOns/addons/IMS/DebugEvent/QxXmlDebugEventVldt"
                                  : "xmlAddOns/addons/IMS/DebugEvent/QxXmlDebugEventSAX");
      }
      EXPECT_TRUE(named);
    }
  }
}

TEST(Decode, ErrorsKnowTheirPlace) {
  const std::string text = "<debuginfo xmlns=\""s + namespaceUri +
                           "\"\n version='x' state='full' k='1'>\n <debugconfig>\n  <session id='s'>\n"
                           "   <start-trigger><debug-id>43A</debug-id></start-trigger>\n   <bogus/>\n"
                           "   <stop-trigger><reason>r</reason></stop-trigger>\n"
                           "   <control><interface o='1'/><debug-id>\n43 4</debug-id></control>\n"
                           "  </session>\n </debugconfig>\n</debuginfo>";
  for (bool validator : {false, true}) {
    Context ctx;
    validator ? validate(ctx, documentOf("debuginfo"), text) : decode(ctx, documentOf("debuginfo"), text);
    const auto at = [&](const char *where, const char *position) {
      return position + "+"s + std::to_string(text.find(where));
    };
    const std::string config = "/debuginfo/debugconfig";
    const std::string session = config + "/session";
    const std::vector<std::string> places = {
        at("version=", "2:2") + " /debuginfo",
        at("version=", "2:2") + " /debuginfo",
        at("k='1'", "2:27") + " /debuginfo",
        at("<debugconfig", "3:2") + " " + config,
        at("43A</debug-id></start", "5:29") + " " + session + "/start-trigger/debug-id",
        at("<bogus", "6:4") + " " + session + "/bogus",
        at("r</reason", "7:26") + " " + session + "/stop-trigger/reason",
        at("r</reason", "7:26") + " " + session + "/stop-trigger/reason",
        at("o='1'", "8:24") + " " + session + "/control/interface",
        at("\n43 4", "8:41") + " " + session + "/control/debug-id",
    };
    ASSERT_EQ(support::statuses(ctx), std::vector<int>({-101, -45, -33, -103, -44, -41, -4, -44, -33, -101}));
    for (uint32_t i = 0; i < places.size(); ++i)
      EXPECT_EQ(support::placeText(*rtxErrAt(ctx, i)), places[i]) << support::errorText(*rtxErrAt(ctx, i));
  }
}

TEST(Decode, PlaceOfASingleDigitIsThatOfTheText) {
  const std::string text = "<start-trigger><debug-id>4</debug-id></start-trigger>";
  Context ctx;
  EXPECT_EQ(decode(ctx, documentOf("start-trigger"), text).errors, "-44(4,tns__start_trigger,debug-id)");
  EXPECT_EQ(support::placeText(*rtxErrAt(ctx, 0)), "1:26+25 /start-trigger/debug-id");
}

TEST(Decode, WithoutInputTheRecordIsNotTouched) {
  for (const Document &document : allDocuments()) {
    SCOPED_TRACE(document.root);
    Context ctx;
    EXPECT_EQ(decodeInput(ctx, document).record, "untouched");
    ASSERT_EQ(rtxErrCount(ctx), 1u);
    const RtxError &error = *rtxErrAt(ctx, 0);
    EXPECT_EQ(error.status, STATUS_READER_FAILED);
    EXPECT_STREQ(error.sites[0].path, "xmlAddOns/addons/IMS/DebugEvent/QxXmlDebugEventDec");

    rtxErrClear(ctx);
    ASSERT_EQ(support::setInput(ctx, element(document.root, "")), 0);
    ASSERT_EQ(rtxSetInput(ctx, nullptr, 0), 0) << "takes the input away";
    const Reading reading = decodeInput(ctx, document);
    EXPECT_EQ(reading.status, STATUS_READER_FAILED);
    EXPECT_EQ(reading.record, "untouched");
    if (document.kind != Kind::record) continue;
    rtxErrClear(ctx);
    EXPECT_EQ(document.validate(ctx), STATUS_READER_FAILED);
    EXPECT_STREQ(rtxErrAt(ctx, 0)->sites[0].path, "xmlAddOns/addons/IMS/DebugEvent/QxXmlDebugEventVldt");
  }
}

TEST(Decode, UnusableContextIsRefusedBeforeTheRecordIsTouched) {
  RuntimeContext none{};
  for (const Document &document : allDocuments()) {
    const Reading reading = decodeInput(&none, document);
    EXPECT_EQ(reading.status, STATUS_READER_FAILED) << document.root;
    EXPECT_EQ(reading.record, "untouched") << document.root;
    if (document.kind == Kind::record) {
      EXPECT_EQ(document.validate(&none), STATUS_READER_FAILED) << document.root;
    }
  }
}

TEST(Decode, InputThatIsNotWellFormedIsAParseFailure) {
  for (const Document *document : recordDocuments()) {
    const std::string root = document->root;
    for (const std::string &text :
         {""s, " "s, "x"s, "<" + root + ">", "<" + root + "></wrong>", element(root, "") + "<more/>",
          element(root, "&undefined;"), element(root, "k='1' k='2'", ""), element(root, "\x01"), element(root, "\xFF"),
          "\n<?xml version=\"1.0\"?>" + element(root, ""), "<" + root + " a='1'b='2'/>"}) {
      const Reading reading = decode(*document, text);
      EXPECT_EQ(reading.status, STATUS_PARSE_FAILED) << text;
      EXPECT_NE(reading.errors.find("-104"), std::string::npos) << reading.errors;
      EXPECT_EQ(validate(*document, text).status, STATUS_PARSE_FAILED) << text;
    }
  }
}

TEST(Decode, RecordIsInitialisedBeforeAParseThatFails) {
  for (const Document *document : recordDocuments()) {
    Context ctx;
    ASSERT_EQ(support::setInput(ctx, "no XML"), 0);
    Held held(ctx, *document);
    Held fresh(ctx, *document);
    fresh.init();
    EXPECT_EQ(document->decode(ctx, held), STATUS_PARSE_FAILED);
    held.owned = true;
    EXPECT_EQ(std::memcmp(&held.value, &fresh.value, sizeof held.value), 0) << document->root;
  }
}

TEST(Decode, KeepsWhatWasReadBeforeAFailure) {
  const std::string whole = spelled(completeBody(documentOf("debuginfo")), "");
  const std::string cut = whole.substr(0, whole.find("<icsi>", whole.find("sip:dave")) + 8);
  const Reading reading = decode("debuginfo", cut);
  EXPECT_EQ(reading.status, STATUS_PARSE_FAILED);
  const std::string complete = completeDump(documentOf("debuginfo"));
  EXPECT_EQ(reading.record,
            complete.substr(0, complete.find(" icsi=", complete.find("sip:dave"))) + "} stop{} control{interface=-}}}");
}

TEST(Decode, StatusOfTheParseComesBeforeThatOfAHandler) {
  Context ctx;
  const Reading reading = decode(ctx, documentOf("control"), "<control><bogus/>");
  EXPECT_EQ(reading.status, STATUS_PARSE_FAILED);
  EXPECT_EQ(rtxErrGetFirstError(ctx), STATUS_UNEXPECTED_ELEMENT);
  EXPECT_EQ(rtxErrGetLastError(ctx), STATUS_PARSE_FAILED);
}

TEST(Decode, EarlierErrorIsReturnedThoughTheRecordIsFilled) {
  Context ctx;
  EXPECT_EQ(decode(ctx, documentOf("control"), element("control", "<bogus/>")).status, STATUS_UNEXPECTED_ELEMENT);
  for (const Document *document : recordDocuments()) {
    const Reading second = decode(ctx, *document, spelled(completeBody(*document), ""));
    EXPECT_EQ(second.status, STATUS_UNEXPECTED_ELEMENT);
    EXPECT_EQ(second.record, completeDump(*document));
    EXPECT_EQ(validate(ctx, *document, spelled(completeBody(*document), "")).status, STATUS_UNEXPECTED_ELEMENT);
  }
  EXPECT_EQ(rtxErrCount(ctx), 1u);
}

TEST(Decode, DocumentCutOffLeavesNothingForTheNext) {
  Context ctx;
  for (const char *cut :
       {"<debugconfig aor='a'><session id='s'><start-trigger><from>ab", "<debugconfig aor='a'><session id='s'>",
        "<debugconfig aor='a'><session id='s'><start-trigger><debug-id>4", "<x:f xmlns:x=\"u\"><x:g>te",
        "<debugconfig xmlns='v' aor='a'><session xmlns:p='v' id='s'><start-trigger/><stop-trigger><time> "}) {
    EXPECT_EQ(decode(ctx, documentOf("debuginfo"),
                     "<debuginfo xmlns=\"urn:other\" xmlns:p=\"urn:p\" version='1' state='full'>"s + cut)
                  .status,
              STATUS_PARSE_FAILED);
    rtxErrClear(ctx);
    // Without a declaration of its own, a binding left over would show.
    const Reading next =
        decode(ctx, documentOf("debuginfo"),
               "<debuginfo version='1' state='full'><p:debugconfig aor='b'><session id='s'><start-trigger><debug-id>0A"
               "</debug-id></start-trigger></session></p:debugconfig></debuginfo>");
    EXPECT_EQ(next.status, 0) << next.errors;
    EXPECT_EQ(next.record, "version=1 state=0 debugconfig{aor=b session{id=s start{debug-id=0A} stop{} "
                           "control{interface=-}}}");
  }
}

TEST(Decode, NoErrorBeyondTheLimitIsRecorded) {
  const std::string bad =
      element("debuginfo", "version='0' state='full' k='1'",
              "<bogus/><debugconfig aor='a'><session id='s' l='1'><start-trigger><bogus/><debug-id>4</debug-id>"
              "</start-trigger><start-trigger/><stop-trigger><from/></stop-trigger></session></debugconfig>");
  const std::string value = "version=0 state=0 debugconfig{aor=a session{id=s start{} stop{} control{interface=-}}}";
  Context all;
  const Reading reading = decode(all, documentOf("debuginfo"), bad);
  EXPECT_EQ(reading.record, value);
  EXPECT_EQ(reading.errors,
            "-33(tns__debuginfo,k); -41(bogus); -33(tns__session,l); -41(bogus); -44(4,tns__start_trigger,debug-id); "
            "-41(start-trigger); -41(from)");
  for (uint32_t limit = 0; limit <= 8; ++limit) {
    Context ctx;
    rtxSetErrorLimit(ctx, limit);
    const Reading limited = decode(ctx, documentOf("debuginfo"), bad);
    EXPECT_EQ(rtxErrCount(ctx), std::min(limit, 7u)) << limited.errors;
    EXPECT_EQ(limited.status, limit == 0 ? 0 : STATUS_UNKNOWN_ATTRIBUTE) << "limit " << limit;
    EXPECT_EQ(limited.record, value);
  }
}

TEST(Decode, StatusesOfConversionsAreRecordedOutsideTheCount) {
  // What the attribute or the element is about counts; that its text is no value of an enumeration does not.
  const std::string text =
      element("debuginfo", "version='x' state='y'",
              "<debugconfig aor='a'><session id='s'><start-trigger/><stop-trigger><reason>r</reason></stop-trigger>"
              "<control><interface/><depth>d</depth><debug-id>4x</debug-id></control></session></debugconfig>");
  for (bool validator : {false, true}) {
    Context ctx;
    rtxSetErrorLimit(ctx, 0);
    const Reading reading =
        validator ? validate(ctx, documentOf("debuginfo"), text) : decode(ctx, documentOf("debuginfo"), text);
    EXPECT_EQ(reading.status, STATUS_INVALID_LEXICAL_FORM);
    EXPECT_EQ(reading.errors, "-101; -4(y); -4(r); -4(d)");
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
  const auto fragments = items<RtxXmlString>(held->debuginfo.anyElems.items);
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
