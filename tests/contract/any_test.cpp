// Foreign elements captured as XML text.

#include "wildcard.h"

#include <cstring>

namespace contract {
namespace {

constexpr const char *uriTable[] = {"urn:module"};

// Captures the one child of the root.
std::string capture(std::string_view document, bool withTable = false) {
  Context ctx;
  if (withTable) {
    EXPECT_EQ(rtXmlNSSetURITable(ctx, uriTable, 1), 0);
  }
  WildcardHost host(ctx);
  EXPECT_EQ(read(ctx, document, host), 0) << document;
  EXPECT_EQ(host.entries.size(), 1u) << document;
  EXPECT_FALSE(host.stateTouched) << document;
  EXPECT_FALSE(host.entryTouched) << document;
  EXPECT_EQ(host.callbackStatus, 0) << document;
  EXPECT_EQ(rtxErrCount(ctx), 0u) << document;
  for (const auto &entry : host.entries)
    EXPECT_FALSE(entry->cdata);
  return host.captured();
}

TEST(Capture, OfAFragmentThatDeclaresWhatItUsesIsUnchanged) {
  for (const std::string_view fragment : {
           "<x:foo xmlns:x=\"urn:x\"/>"sv,
           "<x:foo xmlns:x=\"urn:x\" k=\"1\">t<x:bar/>u<x:bar x:l=\"2\">v</x:bar></x:foo>"sv,
           "<foo xmlns=\"urn:d\"><bar><baz/></bar></foo>"sv,
           "<foo xmlns=\"urn:d\" xmlns:y=\"urn:y\" z=\"1\" y:a=\"2\" b=\"3\"/>"sv,
           "<foo xmlns=\"\"><bar/></foo>"sv,
           "<x:foo xmlns:x=\"urn:x\"><y:b xmlns:y=\"urn:y\"><x:c/><y:d/></y:b></x:foo>"sv,
           "<x:foo xmlns:x=\"urn:x\"><x:b xmlns:x=\"urn:z\"/><x:c/></x:foo>"sv,
           "<x:foo xmlns:x=\"urn:x\" xml:lang=\"en\">  \n  </x:foo>"sv,
       }) {
    for (const std::string &root : {"<r>"s, "<r xmlns='urn:other' xmlns:x='urn:outer-x' xmlns:y='urn:outer-y'>"s}) {
      for (const bool table : {false, true}) {
        EXPECT_EQ(capture(root + std::string(fragment) + "</r>", table), fragment);
      }
    }
  }
}

TEST(Capture, DeclaresPrefixesThatAreBoundOutside) {
  const struct {
    std::string_view document;
    std::string_view meaning;
    std::string_view absent; // a text that has no business in the capture
  } rows[] = {
      {"<r xmlns:x='urn:x'><x:foo/></r>", "{urn:x}foo[]()", "\n"},
      {"<r xmlns:x='urn:x' xmlns:unused='urn:unused'><x:foo><x:bar/></x:foo></r>", "{urn:x}foo[]({urn:x}bar[]())",
       "unused"},
      {"<r xmlns:x='urn:x' xmlns:y='urn:y'><x:foo><b xmlns=''><y:c/></b></x:foo></r>",
       "{urn:x}foo[](b[]({urn:y}c[]()))", "\n"},
      {"<r xmlns:x='urn:x' xmlns:y='urn:y'><x:foo y:k='1' l='2'/></r>", "{urn:x}foo[l=\"2\" {urn:y}k=\"1\" ]()", "\n"},
      {"<r xmlns:x='urn:x' xmlns:y='urn:y'><x:foo><x:b><x:c y:k='1'/></x:b></x:foo></r>",
       "{urn:x}foo[]({urn:x}b[]({urn:x}c[{urn:y}k=\"1\" ]()))", "\n"},
      {"<r xmlns='urn:d'><foo><bar/></foo></r>", "{urn:d}foo[]({urn:d}bar[]())", "\n"},
      {"<r xmlns='urn:d' xmlns:x='urn:x'><x:foo><bar/></x:foo></r>", "{urn:x}foo[]({urn:d}bar[]())", "\n"},
      {"<r xmlns='urn:d' xmlns:x='urn:x'><x:foo k='1'><x:bar/></x:foo></r>", "{urn:x}foo[k=\"1\" ]({urn:x}bar[]())",
       "urn:d"},
      {"<r xmlns='urn:d'><foo xmlns=''><bar/></foo></r>", "foo[](bar[]())", "urn:d"},
      {"<r xmlns:x='urn:outer'><x:foo xmlns:x='urn:inner'><x:bar/></x:foo></r>", "{urn:inner}foo[]({urn:inner}bar[]())",
       "urn:outer"},
      {"<r xmlns:x='urn:a?b&amp;c'><x:foo/></r>", "{urn:a?b&c}foo[]()", "\n"},
      {"<r xmlns:x='urn:x'><m xmlns:z='urn:z'><x:foo/></m></r>", "m[]({urn:x}foo[]())", "\n"},
  };
  for (const auto &row : rows) {
    for (const bool table : {false, true}) {
      const std::string text = capture(row.document, table);
      EXPECT_EQ(infoset(text), row.meaning) << row.document << "\n" << text;
      EXPECT_EQ(text.find(row.absent), text.npos) << text;
    }
  }
}

TEST(Capture, KeepsEachScopeOfAPrefixApart) {
  const std::string text =
      capture("<r xmlns:x='urn:x' xmlns:y='urn:y'><x:foo><y:a/><y:b xmlns:y='urn:y2'><y:c/></y:b><y:d/></x:foo></r>");
  EXPECT_EQ(infoset(text), "{urn:x}foo[]({urn:y}a[](){urn:y2}b[]({urn:y2}c[]()){urn:y}d[]())") << text;
  const std::string insideFirst = capture(
      "<r xmlns='urn:d' xmlns:x='urn:x' xmlns:y='urn:y'><x:foo><y:b xmlns:y='urn:y2'><c xmlns='urn:d2'/></y:b><y:d/>"
      "<e/></x:foo></r>");
  EXPECT_EQ(infoset(insideFirst), "{urn:x}foo[]({urn:y2}b[]({urn:d2}c[]()){urn:y}d[](){urn:d}e[]())") << insideFirst;
}

TEST(Capture, MeansTheSameInAModulesDefaultNamespace) {
  // The text is written back below an element that may declare a default namespace.
  const auto embedded = [](const std::string &fragment) {
    return infoset("<host xmlns=\"urn:module\">" + fragment + "</host>");
  };
  EXPECT_EQ(embedded(capture("<m:r xmlns:m='urn:module'><foo><bar/></foo></m:r>", true)),
            "{urn:module}host[](foo[](bar[]()))");
  EXPECT_EQ(embedded(capture("<r xmlns='urn:module'><foo xmlns=''><bar/></foo></r>", true)),
            "{urn:module}host[](foo[](bar[]()))");
  EXPECT_EQ(embedded(capture("<m:r xmlns:m='urn:module' xmlns:x='urn:x'><x:foo><bar/></x:foo></m:r>", true)),
            "{urn:module}host[]({urn:x}foo[](bar[]()))");
  EXPECT_EQ(embedded(capture("<r xmlns='urn:module' xmlns:x='urn:x'><x:foo><bar/></x:foo></r>", true)),
            "{urn:module}host[]({urn:x}foo[]({urn:module}bar[]()))");
}

TEST(Capture, OfAnUnprefixedNameWithoutNamespacesIsPlain) {
  EXPECT_EQ(capture("<r><foo k='1'><bar/></foo></r>"), "<foo k=\"1\"><bar/></foo>");
}

TEST(Capture, LeavesUndeclaredPrefixesAlone) {
  EXPECT_EQ(capture("<r><x:foo y:k='1'><z:b/></x:foo></r>"), "<x:foo y:k=\"1\"><z:b/></x:foo>");
}

TEST(Capture, SpellsElementsAndAttributesInOneWay) {
  EXPECT_EQ(capture("<r><a   z = '1'\n b='2' ></a></r>"), "<a z=\"1\" b=\"2\"/>");
  EXPECT_EQ(capture("<r><a><b></b ><c/></a></r>"), "<a><b/><c/></a>");
  EXPECT_EQ(capture("<r><a><!-- gone --><?gone?>t</a></r>"), "<a>t</a>");
  EXPECT_EQ(capture("<r><a>1<![CDATA[2<3]]>4</a></r>").find("CDATA"), std::string::npos);
}

TEST(Capture, EscapesWhatTheReaderResolved) {
  for (const std::string_view content :
       {"&lt;&amp;&gt;&quot;&apos;"sv, "a]]&gt;b"sv, "<![CDATA[<x>&amp;]]>"sv, "<![CDATA[]]]]><![CDATA[>]]>"sv,
        "a&#13;b\nc\td"sv, "&#x1F600;\xC3\xA9"sv, "  spaces  "sv, "\r\n"sv, "]]"sv, "]]<b/>&gt;"sv}) {
    const std::string fragment = "<a>" + std::string(content) + "</a>";
    EXPECT_EQ(infoset(capture("<r>" + fragment + "</r>")), infoset(fragment)) << content;
  }
  for (const std::string_view value :
       {"&lt;&amp;&gt;&quot;&apos;"sv, "a&#10;b&#13;c&#9;d"sv, "\xC3\xA9"sv, "  x  "sv, "]]>"sv}) {
    const std::string fragment = "<a k='" + std::string(value) + "'/>";
    EXPECT_EQ(infoset(capture("<r>" + fragment + "</r>")), infoset(fragment)) << value;
  }
}

TEST(Capture, OfACaptureIsTheSameText) {
  const std::string once = capture(
      "<r xmlns='urn:d' xmlns:x='urn:x' xmlns:y='urn:y'><x:a y:k='&lt;&#10;'>1&amp;<b>]]&gt;</b><y:c/></x:a></r>");
  for (const std::string &root : {"<r>"s, "<r xmlns='urn:other' xmlns:x='urn:other-x'>"s}) {
    EXPECT_EQ(capture(root + once + "</r>"), once);
    EXPECT_EQ(capture(root + once + "</r>", true), once);
  }
}

TEST(Capture, OfLargeAndDeepElements) {
  std::string deep;
  for (int i = 0; i < 200; ++i)
    deep += "<e k=\"1\">";
  deep += "x";
  for (int i = 0; i < 200; ++i)
    deep += "</e>";
  EXPECT_EQ(capture("<r>" + deep + "</r>"), deep);
  std::string wide = "<w>";
  for (int i = 0; i < 20000; ++i)
    wide += "<i>" + std::to_string(i) + "</i>";
  wide += "</w>";
  EXPECT_EQ(capture("<r>" + wide + "</r>"), wide);
  const std::string text = "<t>" + std::string(1000000, 'x') + "</t>";
  EXPECT_EQ(capture("<r>" + text + "</r>"), text);
}

TEST(Capture, TakesOneElementAfterTheOther) {
  Context ctx;
  WildcardHost host(ctx);
  EXPECT_EQ(read(ctx, "<r>skipped<a>1</a> <b k='2'/>\n<c><d/></c></r>", host), 0);
  EXPECT_EQ(host.captured(), "<a>1</a>\n<b k=\"2\"/>\n<c><d/></c>");
  EXPECT_FALSE(host.stateTouched);
}

TEST(Capture, GivesBackAllButTheText) {
  Context ctx;
  size_t blocks = 0;
  for (int i = 0; i < 3; ++i) {
    {
      WildcardHost host(ctx);
      EXPECT_EQ(read(ctx, "<r xmlns:x='urn:x'><x:a>1</x:a><x:b/></r>", host), 0);
      if (i == 0) blocks = stats(ctx).blocks;
      EXPECT_EQ(stats(ctx).blocks, blocks);
    }
    EXPECT_EQ(stats(ctx).blocks + 2, blocks);
  }
}

TEST(Capture, BySetStartCallbackOrByNameIsTheSame) {
  Context ctx;
  alignas(8) unsigned char block[RTSAX_DELEGATE_SIZE];
  RtxXmlString entry = {false, nullptr};
  ASSERT_EQ(SAXAnyInit(ctx, block, &entry, 0), 0);
  auto *handler = reinterpret_cast<RtSaxHandler *>(block);
  ASSERT_NE(handler->startElement, nullptr);
  ASSERT_NE(handler->endElement, nullptr);
  ASSERT_NE(handler->characters, nullptr);
  const char *const attributes[] = {"k", "v", nullptr};
  EXPECT_EQ(SAXAnyStartElement(block, "a", "a", attributes), 0);
  EXPECT_EQ(handler->startElement(block, "b", "b", nullptr), 0);
  EXPECT_EQ(handler->characters(block, "t", 1), 0);
  EXPECT_EQ(handler->endElement(block, "b", "b"), 0);
  EXPECT_EQ(entry.value, nullptr);
  EXPECT_EQ(handler->endElement(block, "a", "a"), 0);
  ASSERT_NE(entry.value, nullptr);
  EXPECT_STREQ(entry.value, "<a k=\"v\"><b>t</b></a>");
  if (handler->release != nullptr) handler->release(ctx, handler);
  rtxMemHeapFreePtr(ctx, handler->delegateStorage);
  rtxMemHeapFreePtr(ctx, entry.value);
}

TEST(Capture, CutOffLeavesItsEntryAndItsStorageToTheOwner) {
  constexpr std::string_view document = "<r xmlns:x='urn:x'><x:a k='1'>text<x:b><c>more</c></x:b></x:a></r>";
  for (size_t length = 0; length < document.size(); ++length) {
    Context ctx;
    {
      WildcardHost host(ctx);
      EXPECT_EQ(read(ctx, document.substr(0, length), host), STATUS_PARSE_FAILED) << length;
      EXPECT_FALSE(host.entryTouched) << length;
      const bool whole = length >= document.find("</r>");
      EXPECT_EQ(host.entries.size() == 1 && host.captured() != "(none)", whole) << length;
    }
    // Whatever stays is the runtime's own and does not grow.
    const size_t blocks = stats(ctx).blocks;
    {
      WildcardHost host(ctx);
      EXPECT_EQ(read(ctx, document.substr(0, length), host), STATUS_PARSE_FAILED) << length;
    }
    EXPECT_EQ(stats(ctx).blocks, blocks) << length;
  }
}

TEST(Capture, OfTextInPiecesIsTheSameWhereverItIsCut) {
  constexpr std::string_view text = "a\xC3\xA9<\xE2\x82\xAC&\xF0\x9F\x98\x80>";
  for (size_t first = 0; first <= text.size(); ++first) {
    for (size_t second = first; second <= text.size(); ++second) {
      Context ctx;
      WildcardHost host(ctx);
      host.handler.startElement(&host, "r", "r", nullptr);
      host.handler.startElement(&host, "e", "e", nullptr);
      for (const std::string_view piece :
           {text.substr(0, first), text.substr(first, second - first), text.substr(second)})
        host.handler.characters(&host, piece.data(), piece.size());
      host.handler.endElement(&host, "e", "e");
      host.handler.endElement(&host, "r", "r");
      ASSERT_EQ(host.captured(), "<e>a\xC3\xA9&lt;\xE2\x82\xAC&amp;\xF0\x9F\x98\x80&gt;</e>") << first << " " << second;
    }
  }
}

TEST(Capture, WithoutStorageNeverPassesAPartForTheWhole) {
  const std::string document =
      "<r xmlns:x='urn:x'><x:a k='1'>" + std::string(3000, 't') + "<x:b><c>&lt;</c></x:b></x:a></r>";
  const std::string expected = capture(document);
  for (size_t limit = 0; limit < 20000; limit += limit < 600 ? 8 : 199) {
    RuntimeOptions options = defaultOptions();
    options.heapLimit = limit;
    Context ctx(options);
    WildcardHost host(ctx);
    const int status = read(ctx, document, host);
    const bool said = status != 0 || host.initStatus != 0 || host.callbackStatus != 0 || rtxErrCount(ctx) > 0;
    if (said) {
      EXPECT_TRUE(host.captured() == "" || host.captured() == "(none)" || host.captured() == "(null)" ||
                  host.captured() == expected)
          << limit;
    } else {
      EXPECT_EQ(host.captured(), expected) << limit;
    }
  }
}

} // namespace
} // namespace contract
