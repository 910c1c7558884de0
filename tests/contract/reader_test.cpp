// The reader: events, skipping, state, encodings and what it refuses.

#include "contract.h"

#include <cstring>

namespace contract {
namespace {

// ---- Events

struct Delivered {
  const char *what;
  std::string_view document;
  std::string_view events;
};

void PrintTo(const Delivered &row, std::ostream *out) { *out << testing::PrintToString(row.document); }

const Delivered delivered[] = {
    {"Empty", "<a/>", "<a></a>"},
    {"EmptyPair", "<a></a>", "<a></a>"},
    {"Text", "<a>text</a>", "<a>text</a>"},
    {"Nested", "<a><b><c/></b><b/></a>", "<a><b><c></c></b><b></b></a>"},
    {"Mixed", "<a>1<b>2</b>3<c/>4</a>", "<a>1<b>2</b>3<c></c>4</a>"},
    {"WhiteSpace", "<a>\n  <b/>\t</a>", "<a>\n  <b></b>\t</a>"},
    {"Cdata", "<a>1<![CDATA[<2>&amp;]]>3<![CDATA[]]></a>", "<a>1<2>&amp;3</a>"},
    {"PredefinedEntities", "<a>&lt;&gt;&amp;&quot;&apos;</a>", "<a><>&\"'</a>"},
    {"CharacterReferences", "<a>&#65;&#x42;&#x1F600;&#13;</a>", "<a>AB\xF0\x9F\x98\x80\r</a>"},
    {"LineEnds", "<a>1\r\n2\r3\n4</a>", "<a>1\n2\n3\n4</a>"},
    {"Comments", "<!-- x --><a>1<!-- y -->2</a><!-- z -->", "<a>12</a>"},
    {"Instructions", "<?x y?><a>1<?x y?>2</a><?x y?>", "<a>12</a>"},
    {"AroundTheRoot", " \n<a/>\n<!--x--> <?y?>\n", "<a></a>"},
    {"Declaration", "<?xml version=\"1.0\"?><a/>", "<a></a>"},
    {"Utf8Declaration", "<?xml version=\"1.0\" encoding=\"utf-8\" standalone='yes'?>\n<a>\xC3\xA9</a>",
     "<a>\xC3\xA9</a>"},
    {"Attributes", "<a z='1' b=\"2\" m='3'/>", "<a z=\"1\" b=\"2\" m=\"3\"></a>"},
    {"AttributesAndDeclarationsInOrder", "<p:a z='1' xmlns='u' b='2' xmlns:p='v' p:c='3'/>",
     "<p:a z=\"1\" xmlns=\"u\" b=\"2\" xmlns:p=\"v\" p:c=\"3\"></p:a>"},
    {"AttributeReferences", "<a k='&lt;&amp;&#38;&#x41;&quot;&apos;&gt;'/>", "<a k=\"<&&A\"'>\"></a>"},
    {"AttributeWhiteSpace", "<a k='1\t2\n3  4&#10;5&#9;6'/>", "<a k=\"1 2 3  4\n5\t6\"></a>"},
    {"EmptyAttribute", "<a k=''/>", "<a k=\"\"></a>"},
    {"Prefixes", "<p:a xmlns:p='u'><p:b/><q:c xmlns:q='v'/></p:a>",
     "<p:a xmlns:p=\"u\"><p:b></p:b><q:c xmlns:q=\"v\"></q:c></p:a>"},
    {"UndeclaredPrefixes", "<p:a q:b='1'><r:c/></p:a>", "<p:a q:b=\"1\"><r:c></r:c></p:a>"},
    {"EmptyDefaultNamespace", "<a xmlns='u'><b xmlns=''/></a>", "<a xmlns=\"u\"><b xmlns=\"\"></b></a>"},
    {"XmlAttributes", "<a xml:lang='en'/>", "<a xml:lang=\"en\"></a>"},
    {"ForeignLetters", "<\xC3\xA9 \xC3\xA8='1'>\xE2\x82\xAC</\xC3\xA9>",
     "<\xC3\xA9 \xC3\xA8=\"1\">\xE2\x82\xAC</\xC3\xA9>"},
    {"BracketsInText", "<a>]]&gt; ]] > ]</a>", "<a>]]> ]] > ]</a>"},
    {"Utf8WithByteOrderMark", "\xEF\xBB\xBF<a>\xC3\xA9</a>", "<a>\xC3\xA9</a>"},
    {"Utf8WithByteOrderMarkAndDeclaration", "\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?><a/>", "<a></a>"},
    {"Ascii", "<?xml version='1.0' encoding='US-ASCII'?><a>t</a>", "<a>t</a>"},
    {"LaterVersion", "<?xml version='1.1'?><a/>", "<a></a>"},
    {"UnknownSpaceRule", "<a xml:space='perhaps'> </a>", "<a xml:space=\"perhaps\"> </a>"},
    {"RelativeNamespace", "<a xmlns='not a uri' xmlns:p='rel'/>", "<a xmlns=\"not a uri\" xmlns:p=\"rel\"></a>"},
    {"Latin1WithBlanks", "<?xml version = \"1.0\"\n encoding = \"iso-8859-1\" ?><a>\xE9</a>", "<a>\xC3\xA9</a>"},
    {"Latin1", "<?xml version='1.0' encoding='ISO-8859-1'?><a k='\xE8'>\xE9</a>", "<a k=\"\xC3\xA8\">\xC3\xA9</a>"},
};

class Delivers : public testing::TestWithParam<Delivered> {};
INSTANTIATE_TEST_SUITE_P(Reader, Delivers, testing::ValuesIn(delivered),
                         [](const auto &row) { return row.param.what; });

TEST_P(Delivers, FromACopy) {
  Context ctx;
  Recorder recorder;
  EXPECT_EQ(read(ctx, GetParam().document, recorder), 0);
  EXPECT_EQ(recorder.log, GetParam().events);
  EXPECT_EQ(recorder.open, 0u);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TEST_P(Delivers, InPlaceWithoutChangingTheBytes) {
  Context ctx;
  const std::string text(GetParam().document);
  ExactBytes bytes(text + '\0');
  ASSERT_EQ(rtxSetInputZ(ctx, bytes.data(), text.size()), 0);
  Recorder recorder;
  EXPECT_EQ(readInput(ctx, recorder), 0);
  EXPECT_EQ(recorder.log, GetParam().events);
  EXPECT_EQ(std::string_view(bytes.data(), bytes.size() - 1), text);
}

TEST_P(Delivers, AgainOnTheSameContext) {
  Context ctx;
  for (int i = 0; i < 3; ++i) {
    Recorder broken;
    EXPECT_NE(read(ctx, "<x><y a='1'>", broken), 0);
    Recorder recorder;
    EXPECT_EQ(read(ctx, GetParam().document, recorder), 0);
    EXPECT_EQ(recorder.log, GetParam().events);
    rtxContextReset(ctx);
  }
}

TEST_P(Delivers, NothingOfAPrefixAsAWhole) {
  Context ctx;
  const std::string_view document = GetParam().document;
  const size_t root =
      document.rfind("</") != document.npos && document.find("/>", document.rfind("</")) == document.npos
          ? document.find('>', document.rfind("</"))
          : document.rfind("/>") + 1;
  for (size_t length = 0; length < document.size(); ++length) {
    if (length > root) continue; // what follows the root may be cut off between its parts
    Recorder recorder;
    EXPECT_NE(read(ctx, document.substr(0, length), recorder), 0) << length;
    // A start tag that is cut off may have been delivered with the attributes that were whole.
    std::string_view log = recorder.log;
    if (!GetParam().events.starts_with(log) && log.ends_with('>')) log.remove_suffix(1);
    EXPECT_TRUE(GetParam().events.starts_with(log)) << length << ": " << log;
    EXPECT_NE(rtxErrGetFirstError(ctx), 0) << length;
    rtxErrClear(ctx);
  }
}

TEST(ReaderEncoding, Utf16WithByteOrderMark) {
  for (const bool bigEndian : {false, true}) {
    for (const std::string_view declaration : {""sv, "<?xml version='1.0' encoding='UTF-16'?>"sv}) {
      Context ctx;
      Recorder recorder;
      std::string document = utf16(std::string(declaration) + "<a k='v'>t", bigEndian);
      document += bigEndian ? "\x20\xAC\xD8\x3D\xDE\x00"s : "\xAC\x20\x3D\xD8\x00\xDE"s; // euro sign, a surrogate pair
      document += utf16("</a>", bigEndian, false);
      EXPECT_EQ(read(ctx, document, recorder), 0) << bigEndian << declaration;
      EXPECT_EQ(recorder.log, "<a k=\"v\">t\xE2\x82\xAC\xF0\x9F\x98\x80</a>");
    }
  }
}

TEST(ReaderEncoding, EveryPrefixOfATranscodedDocumentIsRefused) {
  for (const std::string &document : {utf16("<a k='v'>text</a>", false), utf16("<a k='v'>text</a>", true),
                                      "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>"s}) {
    Context ctx;
    for (size_t length = 0; length < document.size(); ++length) {
      Recorder recorder;
      EXPECT_NE(read(ctx, document.substr(0, length), recorder), 0) << length;
      rtxErrClear(ctx);
    }
    Recorder recorder;
    EXPECT_EQ(read(ctx, document, recorder), 0);
  }
}

// ---- Documents that are none

struct Refused {
  const char *what;
  std::string document;
};

void PrintTo(const Refused &row, std::ostream *out) { *out << testing::PrintToString(row.document); }

const Refused refused[] = {
    {"Nothing", ""},
    {"WhiteSpaceOnly", " \n\t"},
    {"TextOnly", "text"},
    {"DeclarationOnly", "<?xml version='1.0'?>"},
    {"CommentOnly", "<!-- x -->"},
    {"MismatchedEnd", "<a><b></a></b>"},
    {"MissingEnd", "<a><b></b>"},
    {"SurplusEnd", "<a></a></a>"},
    {"TwoRoots", "<a/><b/>"},
    {"TextBehindTheRoot", "<a/>x"},
    {"TextBeforeTheRoot", "x<a/>"},
    {"NulBehindTheRoot", "<a/>\0"s},
    {"NulAndMoreBehindTheRoot", "<a/>\0<b/>"s},
    {"NulInText", "<a>x\0y</a>"s},
    {"NulInAttribute", "<a k='x\0y'/>"s},
    {"NulInName", "<a\0b/>"s},
    {"NulFirst", "\0<a/>"s},
    {"CdataBehindTheRoot", "<a/><![CDATA[x]]>"},
    {"UnfinishedCommentBehindTheRoot", "<a/><!-- x"},
    {"UnfinishedInstructionBehindTheRoot", "<a/><?x"},
    {"DoubleHyphenInComment", "<a><!-- x -- y --></a>"},
    {"DuplicateAttribute", "<a k='1' k='2'/>"},
    {"UnquotedAttribute", "<a k=1/>"},
    {"AttributeWithoutValue", "<a k/>"},
    {"MarkupInAttribute", "<a k='<'/>"},
    {"AttributesRunTogether", "<a k='1'l='2'/>"},
    {"BareAmpersand", "<a>x & y</a>"},
    {"UndefinedEntity", "<a>&nbsp;</a>"},
    {"UndefinedEntityInAttribute", "<a k='&nbsp;'/>"},
    {"UnfinishedReference", "<a>&lt</a>"},
    {"ReferenceToNothing", "<a>&#0;</a>"},
    {"ReferenceToControlCharacter", "<a>&#1;</a>"},
    {"ReferenceToSurrogate", "<a>&#xD800;</a>"},
    {"ReferenceBeyondUnicode", "<a>&#x110000;</a>"},
    {"CdataEndInText", "<a>]]></a>"},
    {"ControlCharacter", "<a>\x01</a>"},
    {"NonCharacter", "<a>\xEF\xBF\xBF</a>"},
    {"BadName", "<1a/>"},
    {"SpaceBeforeName", "< a/>"},
    {"DeclarationLate", " <?xml version='1.0'?><a/>"},
    {"ReservedInstruction", "<a><?xml version='1.0'?></a>"},
    {"DocumentType", "<!DOCTYPE a><a/>"},
    {"DocumentTypeWithSubset", "<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>"},
    {"DocumentTypeWithSystem", "<!DOCTYPE a SYSTEM 'file:///etc/hostname'><a/>"},
    {"DocumentTypeWithExternalEntity", "<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/hostname'>]><a>&e;</a>"},
    {"DocumentTypeLate", "<a/><!DOCTYPE a>"},
    {"TwoColons", "<a:b:c/>"},
    {"ColonAtEnd", "<a:/>"},
    {"ColonAtStart", "<:a/>"},
    {"ColonInAnInstruction", "<a><?p:q r?></a>"},
    {"ColonAlone", "<:/>"},
    {"TwoColonsInAttribute", "<a b:c:d='1'/>"},
    {"ColonAtEndOfAttribute", "<a b:='1'/>"},
    {"ColonAtStartOfAttribute", "<a :b='1'/>"},
    {"TwoColonsDeeper", "<a><b><c:d:e/></b></a>"},
    {"PrefixUndeclared", "<a xmlns:p=''/>"},
    {"PrefixUndeclaredDeeper", "<p:a xmlns:p='u'><b xmlns:p=''/></p:a>"},
    {"DeclarationOfNoPrefix", "<a xmlns:='u'/>"},
    {"UnknownEncoding", "<?xml version='1.0' encoding='no-such-charset'?><a/>"},
    {"Utf16LabelOnBytes", "<?xml version='1.0' encoding='UTF-16'?><a/>"},
    {"Utf8LabelOnUtf16", utf16("<?xml version='1.0' encoding='UTF-8'?><a/>", false)},
    {"Utf16LabelOnBytesWithUtf8Mark", "\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-16'?><a/>"},
    {"BadUtf8", "<a>\xE9</a>"},
    {"BadUtf8InAttribute", "<a k='\xC3'/>"},
    {"BadUtf8InName", "<a\xFF/>"},
    {"BadUtf8Declared", "<?xml version='1.0' encoding='UTF-8'?><a>\xE9</a>"},
    {"OverlongUtf8", "<a>\xC0\xBC</a>"},
    {"Utf8Surrogate", "<a>\xED\xA0\x80</a>"},
    {"CutUtf8", "<a>\xE2\x82</a>"},
    {"BadUtf8InComment", "<a><!-- \xFF --></a>"},
    {"Utf16OddByte", utf16("<a/>", false) + "x"},
    {"Utf16LoneSurrogate", utf16("<a>", false) + "\x3D\xD8"s + utf16("x</a>", false, false)},
    {"Utf16Reversed", "\xFE\xFF"s + utf16("<a/>", false, false)},
    {"Utf16NulBehindTheRoot", utf16("<a/>\0"sv, false)},
    {"AsciiLabelOnOtherBytes", "<?xml version='1.0' encoding='US-ASCII'?><a>\xE9</a>"},
    {"EmptyEncodingName", "<?xml version='1.0' encoding=''?><a/>"},
    {"BadEncodingName", "<?xml version='1.0' encoding='1x'?><a/>"},
    {"EncodingWithoutVersion", "<?xml encoding='UTF-8'?><a/>"},
    {"MarkOnly", "\xEF\xBB\xBF"},
};

class Refuses : public testing::TestWithParam<Refused> {};
INSTANTIATE_TEST_SUITE_P(Reader, Refuses, testing::ValuesIn(refused), [](const auto &row) { return row.param.what; });

TEST_P(Refuses, WithARecordAndWithoutAWordToTheStreams) {
  Context ctx;
  Recorder recorder;
  std::string noise;
  int status = 0;
  {
    Capture out(stdout);
    Capture err(stderr);
    status = read(ctx, GetParam().document, recorder);
    noise = err.finish() + out.finish();
  }
  EXPECT_EQ(status, STATUS_PARSE_FAILED);
  EXPECT_EQ(noise, "");
  ASSERT_EQ(statuses(ctx), "-104");
  const RtxError *error = rtxErrAt(ctx, 0);
  ASSERT_EQ(error->paramCount, 1u);
  EXPECT_EQ(error->params[0].kind, RTX_PARAM_TEXT);
  EXPECT_GT(error->params[0].length, 0u);
  EXPECT_GT(error->line, 0u);
  EXPECT_GT(error->column, 0u);
  EXPECT_STREQ(error->sites[0].path, "runtime/reader");
  Recorder after;
  EXPECT_EQ(read(ctx, "<a k='1'>b</a>", after), 0);
  EXPECT_EQ(after.log, "<a k=\"1\">b</a>");
}

TEST_P(Refuses, InPlaceAsWell) {
  Context ctx;
  Recorder recorder;
  const std::string &text = GetParam().document;
  ExactBytes bytes(text + '\0');
  ASSERT_EQ(rtxSetInputZ(ctx, bytes.data(), text.size()), 0);
  EXPECT_EQ(readInput(ctx, recorder), STATUS_PARSE_FAILED);
}

TEST(ReaderFatalError, IsFollowedByNoEvent) {
  const struct {
    std::string_view document;
    std::string_view most; // a longer log would hold something from behind the error
  } rows[] = {
      {"<r><a k='1' k='2'>text<b/></a><c/></r>", "<r>"},
      {"<r>1&undefined;2<b/>3</r>", "<r>1"},
      {"<r>1<a></b>2<c/></r>", "<r>1<a>"},
      {"<r>1<a:b:c>2</a:b:c><d/></r>", "<r>1"},
      {"<r>1<a :b='x'>2</a><d/></r>", "<r>1"},
      {"<r>1<a xmlns:p=''>2</a><d/></r>", "<r>1"},
      {"<!DOCTYPE r [<!ENTITY e 'x'>]><r>&e;<d/></r>", ""},
      {"<?xml version='1.0' encoding='no-such-charset'?><r/>", ""},
      {"<r>1<d/>]]>2<e/></r>", "<r>1<d></d>]]"},
      {"<r><d/>\x01<e/></r>", "<r><d></d>"},
  };
  for (const auto &row : rows) {
    Context ctx;
    Recorder recorder;
    EXPECT_EQ(read(ctx, row.document, recorder), STATUS_PARSE_FAILED);
    EXPECT_EQ(recorder.log, row.most.substr(0, recorder.log.size())) << row.document;
    EXPECT_EQ(rtxErrCount(ctx), 1u) << row.document;
  }
}

TEST(ReaderStatus, IsThatOfTheDocumentWhateverTheHandlersReturn) {
  Context ctx;
  Recorder recorder;
  recorder.onText = [](const char *, size_t) { return -16; };
  recorder.onEnd = [](const char *, const char *) { return -44; };
  EXPECT_EQ(read(ctx, "<a>1<b>2</b>3<c/></a>", recorder), 0);
  EXPECT_EQ(recorder.log, "<a>1<b>2</b>3<c></c></a>");
  Recorder refusing;
  refusing.onStart = [](const char *, const char *, const char *const *) { return -3; };
  EXPECT_EQ(read(ctx, "<a>1<b>2</b></a>", refusing), 0);
  EXPECT_EQ(refusing.log, "<a>");
  Recorder broken;
  broken.onStart = [](const char *, const char *, const char *const *) { return -3; };
  EXPECT_EQ(read(ctx, "<a>1<b>2</a>", broken), STATUS_PARSE_FAILED);
  EXPECT_EQ(broken.log, "<a>");
  EXPECT_EQ(statuses(ctx), "-104");
}

// ---- Attributes

TEST(ReaderAttributes, AreWritableCopies) {
  Context ctx;
  const char document[] = "<a k='value' l='other'><b m='x'/></a>";
  ASSERT_EQ(rtxSetInputZ(ctx, document, sizeof document - 1), 0);
  for (int i = 0; i < 2; ++i) {
    Recorder recorder;
    recorder.onStart = [](const char *, const char *, const char *const *attributes) {
      for (; attributes != nullptr && *attributes != nullptr; attributes += 2) {
        std::memset(const_cast<char *>(attributes[1]), '#', std::strlen(attributes[1]));
      }
      return 0;
    };
    EXPECT_EQ(readInput(ctx, recorder), 0);
    EXPECT_EQ(recorder.log, "<a k=\"value\" l=\"other\"><b m=\"x\"></b></a>");
  }
  EXPECT_STREQ(document, "<a k='value' l='other'><b m='x'/></a>");
}

TEST(ReaderAttributes, MayBeMany) {
  Context ctx;
  std::string document = "<a";
  std::string expected = "<a";
  for (int i = 0; i < 100; ++i) {
    document += " k" + std::to_string(i) + "='" + std::to_string(i) + "'";
    expected += " k" + std::to_string(i) + "=\"" + std::to_string(i) + "\"";
  }
  Recorder recorder;
  EXPECT_EQ(read(ctx, document + "/>", recorder), 0);
  EXPECT_EQ(recorder.log, expected + "></a>");
}

TEST(ReaderText, OfAnySizeArrivesWhole) {
  Context ctx;
  for (const size_t size : {255u, 256u, 299u, 300u, 301u, 1000u, 4095u, 4097u, 100000u, 3000000u}) {
    std::string text(size, 'x');
    for (size_t i = 0; i < size; i += 97)
      text[i] = '\n';
    Recorder recorder;
    EXPECT_EQ(read(ctx, "<a k='" + std::string(size, 'y') + "'>" + text + "</a>", recorder), 0);
    EXPECT_EQ(recorder.log, "<a k=\"" + std::string(size, 'y') + "\">" + text + "</a>") << size;
    rtxContextReset(ctx);
  }
}

// ---- Namespaces

TEST(ReaderNamespaces, AreBoundDuringTheElementOnly) {
  Context ctx;
  const char *const table[] = {"urn:a", "urn:b"};
  ASSERT_EQ(rtXmlNSSetURITable(ctx, table, 2), 0);
  std::string seen;
  Recorder recorder;
  const auto note = [&] {
    for (const char *prefix : {static_cast<const char *>(nullptr), "p"}) {
      seen += std::to_string(rtXmlNSGetIndex(ctx, prefix)) + " ";
    }
    seen += "| ";
  };
  recorder.onStart = [&](const char *, const char *, const char *const *) { return note(), 0; };
  recorder.onEnd = [&](const char *, const char *) { return note(), 0; };
  EXPECT_EQ(read(ctx, "<a xmlns='urn:a'><b xmlns:p='urn:b' xmlns=''/><c xmlns='urn:x'/></a>", recorder), 0);
  EXPECT_EQ(seen, "0 -1 | -1 1 | -1 1 | -2 -1 | -2 -1 | 0 -1 | ");
  seen.clear();
  note();
  EXPECT_EQ(seen, "-1 -1 | ");
}

TEST(ReaderNamespaces, OfTheHostAreThereAgainAfterwards) {
  Context ctx;
  const char *const table[] = {"urn:a", "urn:b"};
  ASSERT_EQ(rtXmlNSSetURITable(ctx, table, 2), 0);
  ASSERT_EQ(rtXmlNSAddPrefixLink(ctx, "host", "urn:b", nullptr, 0), 0);
  for (const char *document :
       {"<a xmlns:host='urn:a'/>", "<a xmlns:host='urn:a'>", "<a xmlns:host='urn:a'><b xmlns:q='u'>"}) {
    Recorder recorder;
    int inside = -9;
    recorder.onStart = [&](const char *, const char *, const char *const *) {
      return inside = rtXmlNSGetIndex(ctx, "host"), 0;
    };
    read(ctx, document, recorder);
    EXPECT_EQ(inside, 0) << document;
    EXPECT_EQ(rtXmlNSGetIndex(ctx, "host"), 1) << document;
  }
}

TEST(ReaderNamespaces, OfSkippedElementsGoAsWell) {
  Context ctx;
  const char *const table[] = {"urn:a"};
  ASSERT_EQ(rtXmlNSSetURITable(ctx, table, 1), 0);
  Recorder recorder;
  int seen = -9;
  recorder.onStart = [&](const char *local, const char *, const char *const *) {
    if (std::strcmp(local, "last") == 0) seen = rtXmlNSGetIndex(ctx, "p");
    return std::strcmp(local, "bad") == 0 ? -41 : 0;
  };
  EXPECT_EQ(read(ctx, "<a><bad xmlns:p='urn:a'><x xmlns:p='urn:a'/></bad><last/></a>", recorder), 0);
  EXPECT_EQ(seen, RTXML_NS_NONE);
}

TEST(ReaderNamespaces, ThatTheHandlersLeaveOpenAreClosed) {
  Context ctx;
  const char *const table[] = {"urn:a"};
  ASSERT_EQ(rtXmlNSSetURITable(ctx, table, 1), 0);
  Recorder recorder;
  std::string seen;
  recorder.onStart = [&](const char *local, const char *, const char *const *) {
    seen += local + std::to_string(rtXmlNSGetIndex(ctx, "p")) + " ";
    if (*local != 'b') return 0;
    EXPECT_EQ(rtXmlNSPush(ctx), 0);
    EXPECT_EQ(rtXmlNSAddPrefixLink(ctx, "p", "urn:a", nullptr, 0), 0);
    return 0;
  };
  EXPECT_EQ(read(ctx, "<a><b><c/></b><d/></a>", recorder), 0);
  EXPECT_EQ(seen, "a-1 b-1 c0 d-1 ");
  EXPECT_NE(read(ctx, "<a xmlns:p='urn:a'><b><c>", recorder), 0);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p"), RTXML_NS_NONE) << "a document that ended early left a binding";
}

TEST(ReaderNamespaces, OnlyRealDeclarationsBind) {
  Context ctx;
  Recorder recorder;
  recorder.onStart = [&](const char *, const char *, const char *const *) {
    EXPECT_EQ(rtXmlNSGetPrefix(ctx, "urn:a"), nullptr);
    return 0;
  };
  EXPECT_EQ(read(ctx, "<a xmlnsfoo='urn:a' xmln='urn:a' Xmlns='urn:a' x:xmlns='urn:a'/>", recorder), 0);
}

// ---- Skipping

TEST(ReaderSkip, FromAStartTagTakesTheElementWithItsEnd) {
  for (const int result : {0, -41}) {
    for (const bool armed : {true, false}) {
      if (!armed && result == 0) continue;
      Context ctx;
      Recorder recorder;
      recorder.onStart = [&](const char *local, const char *, const char *const *) {
        if (std::strcmp(local, "bad") != 0) return 0;
        ctx->state = XMLSTATE_IN_TEXT;
        EXPECT_EQ(rtxMemBufAppend(&ctx->reader->text, "kept", 4), 0);
        return armed ? rtSaxSetSkipLevelToCurrent(ctx, result) : result;
      };
      bool checked = false;
      recorder.onText = [&](const char *, size_t) {
        if (recorder.log.find("<bad>") == std::string::npos || checked) return 0;
        checked = true;
        EXPECT_EQ(ctx->state, XMLSTATE_IN_TEXT);
        const RtxMemBuf &text = ctx->reader->text;
        EXPECT_EQ(std::string_view(text.data + text.start, text.used - text.start), "kept");
        return 0;
      };
      EXPECT_EQ(read(ctx, "<r>1<bad>2<x/>3<bad>4</bad></bad>5<good>6</good></r>", recorder), 0);
      EXPECT_EQ(recorder.log, "<r>1<bad>5<good>6</good></r>");
      EXPECT_TRUE(checked);
    }
  }
}

TEST(ReaderSkip, FromTheRootsStartTagLeavesNothing) {
  Context ctx;
  Recorder recorder;
  recorder.onStart = [&](const char *, const char *, const char *const *) {
    return rtSaxSetSkipLevelToCurrent(ctx, 0);
  };
  EXPECT_EQ(read(ctx, "<r>1<a/>2</r>", recorder), 0);
  EXPECT_EQ(recorder.log, "<r>");
}

TEST(ReaderSkip, FromTextDeliversTheEndTagWithStateAndBufferCleared) {
  for (const int status : {0, -10}) {
    Context ctx;
    Recorder recorder;
    recorder.onText = [&](const char *bytes, size_t) {
      if (*bytes != 'X') return 0;
      ctx->state = XMLSTATE_IN_TEXT;
      EXPECT_EQ(rtxMemBufAppend(&ctx->reader->text, "partial", 7), 0);
      return rtSaxSetSkipLevelToCurrent(ctx, status);
    };
    int ends = 0;
    recorder.onEnd = [&](const char *local, const char *) {
      if (std::strcmp(local, "b") == 0) {
        ++ends;
        EXPECT_EQ(ctx->state, 0);
        EXPECT_EQ(ctx->reader->text.used, ctx->reader->text.start);
      }
      return 0;
    };
    EXPECT_EQ(read(ctx, "<r><b>X<x>2<b/></x>3<![CDATA[4]]></b><good>6</good></r>", recorder), 0);
    EXPECT_EQ(recorder.log, "<r><b>X</b><good>6</good></r>");
    EXPECT_EQ(ends, 1);
  }
}

TEST(ReaderSkip, FromTextAfterAChildSkipsTheElementThatHoldsTheText) {
  Context ctx;
  Recorder recorder;
  recorder.onText = [&](const char *bytes, size_t) { return *bytes == 'X' ? rtSaxSetSkipLevelToCurrent(ctx, -1) : 0; };
  EXPECT_EQ(read(ctx, "<r><b><c>1</c>X<d>2</d></b><e/></r>", recorder), 0);
  EXPECT_EQ(recorder.log, "<r><b><c>1</c>X</b><e></e></r>");
}

TEST(ReaderSkip, FromTextLeavesNothingOfTheSameText) {
  Context ctx;
  Recorder recorder;
  recorder.onText = [&](const char *, size_t) { return rtSaxSetSkipLevelToCurrent(ctx, -1); };
  EXPECT_EQ(read(ctx, "<r>a&lt;b<![CDATA[c]]>" + std::string(5000, 'x') + "</r>", recorder), 0);
  EXPECT_EQ(recorder.events, 3u) << "start, one piece of text, end";
}

TEST(ReaderSkip, FromAnEndTagDoesNothing) {
  Context ctx;
  Recorder recorder;
  recorder.onEnd = [&](const char *, const char *) {
    EXPECT_EQ(rtSaxSetSkipLevelToCurrent(ctx, -44), -44);
    return -44;
  };
  EXPECT_EQ(read(ctx, "<r><a>1</a><b/>2<c><d/></c></r>", recorder), 0);
  EXPECT_EQ(recorder.log, "<r><a>1</a><b></b>2<c><d></d></c></r>");
}

TEST(ReaderSkip, WorksAtEveryDepthAndAgain) {
  Context ctx;
  Recorder recorder;
  recorder.onStart = [&](const char *local, const char *, const char *const *) {
    return *local == 'x' ? rtSaxSetSkipLevelToCurrent(ctx, 0) : 0;
  };
  EXPECT_EQ(read(ctx, "<a><x/><b><x><x/></x><c><x>1</x>2</c><x/></b><x/></a>", recorder), 0);
  EXPECT_EQ(recorder.log, "<a><x><b><x><c><x>2</c><x></b><x></a>");
}

TEST(ReaderSkip, DoesNotHideABrokenDocument) {
  Context ctx;
  for (const char *document : {"<a><x><b></x></a>", "<a><x>&undefined;</x></a>", "<a><x><b:c:d/></x></a>", "<a><x>"}) {
    Recorder recorder;
    recorder.onStart = [&](const char *local, const char *, const char *const *) {
      return *local == 'x' ? rtSaxSetSkipLevelToCurrent(ctx, 0) : 0;
    };
    EXPECT_EQ(read(ctx, document, recorder), STATUS_PARSE_FAILED) << document;
    EXPECT_EQ(recorder.log, "<a><x>") << document;
  }
}

// ---- Life

TEST(ReaderLife, BeginsWithACleanState) {
  Context ctx;
  ASSERT_EQ(rtxSetInput(ctx, "<a/>", 4), 0);
  ctx->state = XMLSTATE_IN_TEXT;
  ASSERT_EQ(rtxMemBufAppend(&ctx->reader->text, "left over", 9), 0);
  Recorder recorder;
  RtSaxReader *reader = rtSaxCCreateXmlReader(ctx, &recorder.handler, recorder.handler.startElement,
                                              recorder.handler.endElement, recorder.handler.characters);
  ASSERT_NE(reader, nullptr);
  EXPECT_EQ(ctx->state, 0);
  ASSERT_NE(ctx->reader, nullptr);
  EXPECT_EQ(ctx->reader->text.used, ctx->reader->text.start);
  EXPECT_EQ(rtSaxCParse(reader), 0);
  rtSaxCReleaseReader(reader);
}

TEST(ReaderLife, LeavesTheStateByteToTheHandlers) {
  Context ctx;
  Recorder recorder;
  recorder.onStart = [&](const char *, const char *, const char *const *) {
    return ctx->state = XMLSTATE_IN_ELEMENT, 0;
  };
  recorder.onText = [&](const char *, size_t) {
    EXPECT_TRUE(ctx->state == XMLSTATE_IN_ELEMENT || ctx->state == XMLSTATE_DOC_END);
    ctx->state = XMLSTATE_IN_TEXT;
    return 0;
  };
  recorder.onEnd = [&](const char *, const char *) {
    EXPECT_NE(ctx->state, 0);
    return ctx->state = XMLSTATE_DOC_END, 0;
  };
  EXPECT_EQ(read(ctx, "<a><b>1</b><c/></a>", recorder), 0);
}

TEST(ReaderLife, EndsWithoutAParse) {
  Context ctx;
  ASSERT_EQ(rtxSetInput(ctx, "<a/>", 4), 0);
  for (int i = 0; i < 3; ++i) {
    Recorder recorder;
    RtSaxReader *reader = rtSaxCCreateXmlReader(ctx, &recorder.handler, recorder.handler.startElement,
                                                recorder.handler.endElement, recorder.handler.characters);
    ASSERT_NE(reader, nullptr);
    rtSaxCReleaseReader(reader);
    EXPECT_EQ(recorder.events, 0u);
  }
  rtSaxCReleaseReader(nullptr);
  Recorder recorder;
  EXPECT_EQ(readInput(ctx, recorder), 0);
}

TEST(ReaderLife, MayBeCutShortByTheEndOfTheContext) {
  Context ctx;
  ASSERT_EQ(rtxSetInput(ctx, "<a/>", 4), 0);
  Recorder recorder;
  ASSERT_NE(rtSaxCCreateXmlReader(ctx, &recorder.handler, recorder.handler.startElement, recorder.handler.endElement,
                                  recorder.handler.characters),
            nullptr);
}

TEST(ReaderLife, RestoresTheTextBuffer) {
  for (const std::string_view document : {"<a k='v'>text</a>"sv, "<a k='v'>text"sv}) {
    Context ctx;
    ASSERT_EQ(rtxSetInput(ctx, document.data(), document.size()), 0);
    const RtxTextBuffer before = ctx->buffer;
    Recorder recorder;
    recorder.onStart = [&](const char *, const char *, const char *const *attributes) {
      return rtxInitContextBuffer(ctx, attributes[1], 1);
    };
    recorder.onText = [&](const char *bytes, size_t length) {
      EXPECT_EQ(rtxMemBufAppend(&ctx->reader->text, bytes, length), 0);
      return rtxInitContextBuffer(ctx, ctx->reader->text.data, length);
    };
    readInput(ctx, recorder);
    EXPECT_EQ(ctx->buffer.data, before.data);
    EXPECT_EQ(ctx->buffer.size, before.size);
    EXPECT_EQ(ctx->buffer.byteIndex, before.byteIndex);
    EXPECT_EQ(ctx->buffer.dynamic, before.dynamic);
  }
}

TEST(ReaderLife, KeepsTheErrorsOfEarlierReaders) {
  Context ctx;
  Recorder recorder;
  EXPECT_EQ(read(ctx, "<a>", recorder), STATUS_PARSE_FAILED);
  EXPECT_EQ(read(ctx, "<a/>", recorder), 0);
  EXPECT_EQ(statuses(ctx), "-104");
}

TEST(ReaderLife, AsksTheSystemNoMoreOnceItIsWarm) {
  Context ctx;
  const std::string document =
      "<p:a xmlns:p='u' k='value'><b>" + std::string(3000, 'x') + "</b><c l='1' m='2'/>&lt;</p:a>";
  ASSERT_EQ(rtxSetInputZ(ctx, document.c_str(), document.size()), 0);
  const auto once = [&] {
    Recorder recorder;
    recorder.onText = [&](const char *bytes, size_t length) {
      return rtxMemBufAppend(&ctx->reader->text, bytes, length);
    };
    recorder.onEnd = [&](const char *, const char *) { return rtxMemBufReset(&ctx->reader->text), 0; };
    EXPECT_EQ(readInput(ctx, recorder), 0);
  };
  once();
  once();
  const uint64_t system = stats(ctx).systemCalls;
  const size_t calls = ctx.allocator.calls;
  const size_t used = stats(ctx).used;
  for (int i = 0; i < 20; ++i)
    once();
  EXPECT_EQ(stats(ctx).systemCalls, system);
  EXPECT_EQ(ctx.allocator.calls, calls);
  EXPECT_EQ(stats(ctx).used, used);
}

// ---- Limits

std::string nested(uint32_t depth) {
  std::string text;
  for (uint32_t i = 0; i < depth; ++i)
    text += "<e>";
  for (uint32_t i = 0; i < depth; ++i)
    text += "</e>";
  return text;
}

TEST(ReaderDepth, IsAcceptedToItsLimitAndNoFurther) {
  for (const uint32_t limit : {1u, 2u, 5u, 255u, 256u, 1000u}) {
    const uint32_t effective = limit < 256 ? limit : 256;
    RuntimeOptions options = defaultOptions();
    options.depthLimit = limit;
    Context ctx(options);
    Recorder recorder;
    EXPECT_EQ(read(ctx, nested(effective), recorder), 0) << limit;
    EXPECT_EQ(recorder.log, nested(effective));
    EXPECT_EQ(rtxErrCount(ctx), 0u);
    Recorder tooDeep;
    EXPECT_EQ(read(ctx, nested(effective + 1), tooDeep), STATUS_LIMIT_EXCEEDED) << limit;
    EXPECT_EQ(tooDeep.log, nested(effective).substr(0, effective * 3));
    ASSERT_EQ(statuses(ctx), "-107");
    const RtxError *error = rtxErrAt(ctx, 0);
    ASSERT_EQ(error->paramCount, 2u);
    EXPECT_EQ(params(ctx, 0).substr(params(ctx, 0).find('|')), "|" + std::to_string(effective));
    EXPECT_EQ(error->line, 1u);
    EXPECT_EQ(error->column, effective * 3 + 1);
    EXPECT_EQ(error->offset, effective * 3);
    Recorder after;
    EXPECT_EQ(read(ctx, "<a/>", after), 0);
  }
}

TEST(ReaderDepth, CountsEmptyAndSkippedElements) {
  RuntimeOptions options = defaultOptions();
  options.depthLimit = 3;
  Context ctx(options);
  for (const char *document : {"<a><b><c/></b></a>", "<a><b/><b/><b/><b><c/><c/></b></a>"}) {
    Recorder recorder;
    EXPECT_EQ(read(ctx, document, recorder), 0) << document;
  }
  Recorder skipping;
  skipping.onStart = [](const char *local, const char *, const char *const *) { return *local == 'b' ? -41 : 0; };
  EXPECT_EQ(read(ctx, "<a><b><c><d/></c></b></a>", skipping), STATUS_LIMIT_EXCEEDED);
}

} // namespace
} // namespace contract
