// Reading the attributes of records, and what the validators make of the same input.
#include "debugInfo.h"

using namespace debugInfo;
using support::Context;
using support::firstStatus;

namespace {

struct AttributeCase {
  const char *root;
  const char *attributes;
  const char *value;  // of the record; null: not looked at
  const char *errors; // the status is that of the first
};

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

} // namespace
