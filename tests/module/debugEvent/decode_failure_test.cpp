// Roots of other names, documents that cannot be read, and what is recorded of errors.
#include "debugInfo.h"

#include <cstring>

using namespace debugInfo;
using support::Context;
using support::everySpelling;
using support::SpelledDocument;

namespace {

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

} // namespace
