// Reading the eleven documents that are one value, and the validators that they do not have.
#include "debugInfo.h"

using namespace debugInfo;
using support::Context;

namespace {

// What a document makes of a text, by its root. White space is collapsed for "time" alone.
struct TextCase {
  const char *content;
  const char *text;
  const char *collapsed;
};

const TextCase textCases[] = {
    {"", "", ""},
    {"a", "a", "a"},
    {" a\n\t b ", " a\n\t b ", "a b"},
    {" \n ", " \n ", ""},
    {"a<![CDATA[<b>]]>&amp;<!-- no -->c&#100;<?pi no?>&lt;", "a<b>&cd<", "a<b>&cd<"},
    {"&#13;\r\n", "\r\n", ""},
    {"\xC3\xA9\xF0\x9F\x98\x80", "\xC3\xA9\xF0\x9F\x98\x80", "\xC3\xA9\xF0\x9F\x98\x80"},
};

std::vector<const Document *> textDocuments() {
  std::vector<const Document *> some;
  for (const Document *document : simpleDocuments())
    if (document->kind == Kind::text) some.push_back(document);
  return some;
}

TEST(DecodeValue, EverySpelling) {
  for (const Document *document : simpleDocuments()) {
    support::everySpelling(completeBody(*document), namespaceUri,
                           [&](RuntimeContext *ctx, const support::SpelledDocument &) {
                             const Reading reading = decodeInput(ctx, *document);
                             EXPECT_EQ(reading.status, 0);
                             EXPECT_EQ(reading.record, completeDump(*document));
                             EXPECT_EQ(reading.errors, "");
                           });
  }
}

TEST(DecodeValue, EveryPrefixFailsAndReleasesAll) {
  for (const Document *document : simpleDocuments())
    for (support::Spelling spelling : support::allSpellings)
      support::everyPrefix(support::spell(completeBody(*document), namespaceUri, spelling).text,
                           [&](RuntimeContext *ctx) { return decodeInput(ctx, *document).status; });
}

TEST(DecodeValue, TextIsKeptButForTheWhiteSpaceOfTime) {
  EXPECT_EQ(textDocuments().size(), 8u);
  for (const Document *document : textDocuments()) {
    for (const TextCase &c : textCases) {
      SCOPED_TRACE(document->root + " "s + c.content);
      Context ctx;
      support::HeapBalance balance(ctx);
      ASSERT_EQ(support::setInput(ctx, element(document->root, c.content)), 0);
      Held held(ctx, *document);
      EXPECT_EQ(document->decode(ctx, held), 0) << support::errors(ctx);
      held.owned = true;
      ASSERT_NE(held->text.value, nullptr) << "an empty text is no absent one";
      EXPECT_STREQ(held->text.value, document->root == "time"sv ? c.collapsed : c.text);
      EXPECT_FALSE(held->text.cdata);
    }
    EXPECT_EQ(decode(*document, "<"s + document->root + "/>").record, "");
  }
}

TEST(DecodeValue, LongTextArrivesWhole) {
  const std::string text(200000, 'x');
  for (const Document *document : textDocuments())
    EXPECT_EQ(decode(*document, element(document->root, text)).record, text) << document->root;
}

struct ValueCase {
  const char *root;
  std::string content;
  const char *value; // null: untouched
  const char *errors;
};

const ValueCase valueCases[] = {
    {"debug-id", "43aa55", "43AA55", ""},
    {"debug-id", " 43AA\n", "43AA", ""},
    {"debug-id", "4<!-- -->3<![CDATA[a]]>&#97;", "43AA", ""},
    {"debug-id", "", "", ""},
    {"debug-id", "  ", "", ""},
    {"debug-id", "43a", nullptr, "-101"},
    {"debug-id", "4", nullptr, "-101"},
    {"debug-id", "43 aa", nullptr, "-101"},
    {"debug-id", "4g", nullptr, "-101"},
    {"debug-id", "0x43", nullptr, "-101"},
    {"reason", "dialog_established", "0", ""},
    {"reason", "session_end", "1", ""},
    {"reason", "session<!-- -->_end", "1", ""},
    {"reason", "session-end", nullptr, "-4(session-end)"},
    {"reason", " session_end", nullptr, "-4( session_end)"},
    {"reason", "session_end\n", nullptr, "-4(session_end\n)"},
    {"reason", "Session_end", nullptr, "-4(Session_end)"},
    {"reason", "maximum", nullptr, "-4(maximum)"},
    {"reason", "", nullptr, "-4()"},
    {"depth", "maximum", "0", ""},
    {"depth", "minimum", "1", ""},
    {"depth", "<![CDATA[mini]]>mum", "1", ""},
    {"depth", "minimu", nullptr, "-4(minimu)"},
    {"depth", "minimumm", nullptr, "-4(minimumm)"},
    {"depth", " minimum", nullptr, "-4( minimum)"},
    {"depth", "1", nullptr, "-4(1)"},
    {"depth", "", nullptr, "-4()"},
};

TEST(DecodeValue, BytesAndCodesConvertOrNot) {
  for (const ValueCase &c : valueCases) {
    SCOPED_TRACE(c.root + " "s + c.content);
    const Reading reading = decode(c.root, element(c.root, c.content));
    EXPECT_EQ(reading.status, *c.errors == '\0' ? 0 : std::stoi(c.errors));
    EXPECT_EQ(reading.record, c.value == nullptr ? "untouched" : c.value);
    EXPECT_EQ(reading.errors, c.errors);
  }
}

TEST(DecodeValue, LongBytesArriveWhole) {
  std::string digits;
  for (size_t i = 0; i < 100000; ++i)
    digits += "0123456789ABCDEF"[(i * 7 + i / 16) % 16];
  EXPECT_EQ(decode("debug-id", element("debug-id", digits)).record, digits);
}

TEST(DecodeValue, EmptyBytesHaveNoAddress) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, "<debug-id/>"), 0);
  Held held(ctx, documentOf("debug-id"));
  EXPECT_EQ(QxXmlD_tns_debug_id(ctx, &held->bytes), 0);
  EXPECT_EQ(held->bytes.length, 0u);
  EXPECT_EQ(held->bytes.bytes, nullptr);
}

TEST(DecodeValue, ConversionThatFailsNamesItsSource) {
  for (const auto &[root, status] : {std::pair("debug-id", -101), std::pair("reason", -4), std::pair("depth", -4)}) {
    Context ctx;
    decode(ctx, documentOf(root), element(root, "no value"));
    ASSERT_EQ(support::statuses(ctx), std::vector<int>({status})) << root;
    const RtxError &error = *rtxErrAt(ctx, 0);
    ASSERT_EQ(error.siteCount, 1u);
    EXPECT_STREQ(error.sites[0].path, "xmlAddOns/addons/IMS/DebugEvent/QxXmlDebugEventDec");
    EXPECT_GT(error.sites[0].line, 0);
  }
}

TEST(DecodeValue, RootOfAnotherNameIsReportedAndRead) {
  for (const Document *document : simpleDocuments()) {
    const std::string root = document->root;
    const std::string body = spelled(completeBody(*document), "");
    const std::string content = body.substr(body.find('>') + 1, body.rfind("</") - body.find('>') - 1);
    for (const std::string &other : {"other"s, root + "s", root.substr(1), "debuginfo"s}) {
      for (const char *prefix : {"", "p:"}) {
        const std::string name = prefix + other;
        const Reading reading =
            decode(*document, "<" + name + " xmlns:p=\"" + namespaceUri + "\">" + content + "</" + name + ">");
        EXPECT_EQ(reading.status, STATUS_ROOT_MISMATCH);
        EXPECT_EQ(reading.errors, "-3(" + root + "," + other + ")");
        EXPECT_EQ(reading.record, completeDump(*document));
      }
    }
  }
}

TEST(DecodeValue, RootIsKnownByItsLocalNameAlone) {
  for (const Document *document : simpleDocuments()) {
    const std::string body = spelled(completeBody(*document), "x:");
    const Reading reading = decode(*document, std::string(body).insert(body.find('>'), " xmlns:x=\"urn:other\""));
    EXPECT_EQ(reading.errors, "");
    EXPECT_EQ(reading.record, completeDump(*document));
  }
}

TEST(DecodeValue, ElementsInsideAreRefusedAndTheTextAroundThemIsJoined) {
  for (const Document *document : textDocuments()) {
    const Reading reading = decode(*document, element(document->root, "con<b k='1'>zz<c/></b>firm<d/>ed"));
    EXPECT_EQ(reading.status, STATUS_UNEXPECTED_ELEMENT);
    EXPECT_EQ(reading.errors, "-41(b); -41(d)") << document->root;
    EXPECT_EQ(reading.record, "confirmed");
  }
  EXPECT_EQ(decode("debug-id", element("debug-id", "4<p:b>ff</p:b>3")).errors, "-41(p:b)");
  EXPECT_EQ(decode("debug-id", element("debug-id", "4<p:b>ff</p:b>3")).record, "43");
  EXPECT_EQ(decode("depth", element("depth", "mini<depth>max</depth>mum")).record, "1");
  EXPECT_EQ(decode("reason", element("reason", "<b/>none")).errors, "-41(b); -4(none)");
}

TEST(DecodeValue, AttributesAreReportedOneByOneAndTheTextIsRead) {
  for (const Document *document : simpleDocuments()) {
    const std::string root = document->root;
    const std::string body = spelled(completeBody(*document), "");
    const std::string content = body.substr(body.find('>') + 1, body.rfind("</") - body.find('>') - 1);
    const Reading reading = decode(
        *document, element(root,
                           "xmlns:p='u' k='1' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:nil='false' "
                           "p:l='2' id='3'",
                           content));
    EXPECT_EQ(reading.status, STATUS_UNKNOWN_ATTRIBUTE);
    EXPECT_EQ(reading.errors, "-33(" + root + ",k); -33(" + root + ",p:l); -33(" + root + ",id)");
    EXPECT_EQ(reading.record, completeDump(*document));
  }
}

TEST(DecodeValue, ParseThatFailsLeavesTheValueUntouched) {
  for (const Document *document : simpleDocuments()) {
    const std::string root = document->root;
    const std::string whole = spelled(completeBody(*document), "");
    for (const std::string &text :
         {""s, "x"s, whole.substr(0, whole.rfind("</")), whole.substr(0, whole.size() - 1), whole + "<more/>",
          whole + "text", "<" + root + ">\x01</" + root + ">", "<" + root + ">43&none;</" + root + ">"}) {
      const Reading reading = decode(*document, text);
      EXPECT_EQ(reading.status, STATUS_PARSE_FAILED) << text;
      EXPECT_EQ(reading.record, "untouched") << text;
    }
  }
}

TEST(DecodeValue, EarlierErrorIsReturnedThoughTheValueIsRead) {
  Context ctx;
  EXPECT_EQ(decode(ctx, documentOf("reason"), element("reason", "none")).status, STATUS_ENUM_NOT_FOUND);
  for (const Document *document : simpleDocuments()) {
    const Reading reading = decode(ctx, *document, spelled(completeBody(*document), ""));
    EXPECT_EQ(reading.status, STATUS_ENUM_NOT_FOUND);
    EXPECT_EQ(reading.record, completeDump(*document));
  }
  EXPECT_EQ(rtxErrCount(ctx), 1u);
}

TEST(DecodeValue, NoErrorOfTheHandlerBeyondTheLimitIsRecorded) {
  const std::string bad = "<other k='1' l='2'>a<b/>c<d/></other>";
  for (uint32_t limit = 0; limit <= 5; ++limit) {
    Context ctx;
    rtxSetErrorLimit(ctx, limit);
    const Reading reading = decode(ctx, documentOf("method"), bad);
    EXPECT_EQ(rtxErrCount(ctx), limit);
    EXPECT_EQ(reading.status, limit == 0 ? 0 : STATUS_ROOT_MISMATCH);
    EXPECT_EQ(reading.record, "ac");
  }
}

TEST(DecodeValue, CutOffTextDoesNotReachTheNextDocument) {
  Context ctx;
  for (const Document *document : simpleDocuments()) {
    EXPECT_EQ(decode(ctx, *document, "<"s + document->root + ">left over").status, STATUS_PARSE_FAILED);
    rtxErrClear(ctx);
    EXPECT_EQ(decode(ctx, *document, spelled(completeBody(*document), "")).record, completeDump(*document));
  }
}

// ---- Validators that there are not ------------------------------------------------------------------------------

TEST(ValidateValue, IsNotOfferedForAnyInput) {
  const std::vector<const Document *> documents = simpleDocuments();
  ASSERT_EQ(documents.size(), 11u);
  for (const Document *document : documents) {
    SCOPED_TRACE(document->root);
    const std::string body = spelled(completeBody(*document), "");
    for (const std::string &text : {body, "<other/>"s, "no XML"s, ""s}) {
      Context ctx;
      ASSERT_EQ(support::setInput(ctx, text), 0);
      const RtxHeapStats before = support::heapStats(ctx);
      const uint64_t calls = ctx.allocatorCalls();
      EXPECT_EQ(document->validate(ctx), STATUS_NOT_SUPPORTED) << text;
      EXPECT_EQ(rtxErrCount(ctx), 0u) << "nothing is recorded";
      EXPECT_EQ(support::heapStats(ctx).peakUsed, before.peakUsed);
      EXPECT_EQ(ctx.allocatorCalls(), calls) << "nothing is read";
    }
    Context ctx;
    EXPECT_EQ(document->validate(ctx), STATUS_NOT_SUPPORTED) << "without input";
    EXPECT_EQ(rtxErrCount(ctx), 0u);
    EXPECT_EQ(document->validate(nullptr), STATUS_NOT_SUPPORTED) << "without a context";
    rtxErrSetNewData(ctx, STATUS_CONSTRAINT_VIOLATION, "test", 1);
    EXPECT_EQ(document->validate(ctx), STATUS_NOT_SUPPORTED) << "with an earlier error";
    EXPECT_EQ(rtxErrCount(ctx), 1u);
  }
}

} // namespace
