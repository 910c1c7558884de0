// Bindings of prefixes, the host's and the document's declarations, and the lists that records keep.

#include "contract.h"

#include <cstring>
#include <string_view>

namespace contract {
namespace {

void bind(RuntimeContext *ctx, const char *prefix, const char *uri) {
  ASSERT_EQ(rtXmlNSAddPrefixLink(ctx, prefix, uri, nullptr, 0), 0);
}

constexpr const char *table[] = {"urn:a", nullptr, "urn:c"};

TEST(NamespaceIndex, IsThePlaceOfTheUriInTheTable) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetURITable(ctx, table, 3), 0);
  bind(ctx, "a", "urn:a");
  bind(ctx, "c", "urn:c");
  bind(ctx, "x", "urn:other");
  bind(ctx, "e", "");
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "a"), 0);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "c"), 2);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "x"), RTXML_NS_FOREIGN);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "e"), RTXML_NS_NONE);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "unbound"), RTXML_NS_NONE);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, nullptr), RTXML_NS_NONE);
  bind(ctx, nullptr, "urn:c");
  EXPECT_EQ(rtXmlNSGetIndex(ctx, nullptr), 2);
}

TEST(NamespaceIndex, WithoutTableIsNone) {
  Context ctx;
  bind(ctx, "a", "urn:a");
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "a"), RTXML_NS_NONE);
  ASSERT_EQ(rtXmlNSSetURITable(ctx, table, 3), 0);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "a"), 0);
  ASSERT_EQ(rtXmlNSSetURITable(ctx, nullptr, 5), 0);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "a"), RTXML_NS_NONE);
  ASSERT_EQ(rtXmlNSSetURITable(ctx, table, 3), 0);
  ASSERT_EQ(rtXmlNSSetURITable(ctx, table, 0), 0);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "a"), RTXML_NS_NONE);
}

TEST(NamespaceIndex, UsesACopyOfThePointers) {
  Context ctx;
  {
    auto pointers = std::make_unique<const char *[]>(2);
    pointers[0] = "urn:x";
    pointers[1] = "urn:y";
    ASSERT_EQ(rtXmlNSSetURITable(ctx, pointers.get(), 2), 0);
  }
  bind(ctx, "y", "urn:y");
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "y"), 1);
}

TEST(NamespaceScope, EndsWithItsBindings) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetURITable(ctx, table, 3), 0);
  bind(ctx, "p", "urn:a");
  ASSERT_EQ(rtXmlNSPush(ctx), 0);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p"), 0);
  bind(ctx, "p", "urn:c");
  bind(ctx, "q", "urn:c");
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p"), 2);
  ASSERT_EQ(rtXmlNSPush(ctx), 0);
  bind(ctx, "p", "");
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p"), RTXML_NS_NONE);
  EXPECT_EQ(rtXmlNSPop(ctx), 0);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p"), 2);
  EXPECT_EQ(rtXmlNSPop(ctx), 0);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p"), 0);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "q"), RTXML_NS_NONE);
}

TEST(NamespaceScope, ClosedOnceTooOftenStaysOpen) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetURITable(ctx, table, 3), 0);
  bind(ctx, "p", "urn:a");
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(rtXmlNSPop(ctx), 0);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p"), 0);
  ASSERT_EQ(rtXmlNSPush(ctx), 0);
  bind(ctx, "p", "urn:c");
  EXPECT_EQ(rtXmlNSPop(ctx), 0);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p"), 0);
}

TEST(NamespaceScope, MayBeDeepAndWide) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetURITable(ctx, table, 3), 0);
  for (int i = 0; i < 500; ++i) {
    ASSERT_EQ(rtXmlNSPush(ctx), 0);
    for (int j = 0; j < 4; ++j)
      bind(ctx, ("p" + std::to_string(i) + "-" + std::to_string(j)).c_str(), "urn:c");
  }
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p0-0"), 2);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p499-3"), 2);
  for (int i = 0; i < 499; ++i)
    rtXmlNSPop(ctx);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p0-3"), 2);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p1-0"), RTXML_NS_NONE);
}

TEST(NamespaceBinding, CopiesItsTexts) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetURITable(ctx, table, 3), 0);
  {
    std::string prefix = "prefix";
    std::string uri = "urn:c";
    bind(ctx, prefix.c_str(), uri.c_str());
    prefix.assign(6, '#');
    uri.assign(5, '#');
  }
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "prefix"), 2);
  EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:c"), "prefix");
}

TEST(NamespaceBinding, WithoutStorageFailsAndBindsNothing) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetURITable(ctx, table, 3), 0);
  bind(ctx, "p", "urn:a");
  ctx.allocator.failNext(1, true);
  const std::string longUri = "urn:" + std::string(100000, 'x');
  EXPECT_EQ(rtXmlNSAddPrefixLink(ctx, "p", longUri.c_str(), nullptr, 0), STATUS_NO_MEMORY);
  int status = 0;
  int pushed = 0;
  while (status == 0 && pushed < 1000000) {
    status = rtXmlNSPush(ctx);
    if (status == 0) ++pushed;
  }
  EXPECT_EQ(status, STATUS_NO_MEMORY);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p"), 0);
  ctx.allocator.heal();
  while (pushed-- > 0)
    rtXmlNSPop(ctx);
  EXPECT_EQ(rtXmlNSGetIndex(ctx, "p"), 0);
}

TEST(NamespacePrefix, IsTheNewestOneBoundToTheUri) {
  Context ctx;
  EXPECT_EQ(rtXmlNSGetPrefix(ctx, nullptr), nullptr);
  EXPECT_EQ(rtXmlNSGetPrefix(ctx, "urn:a"), nullptr);
  EXPECT_EQ(rtXmlNSGetPrefix(ctx, ""), nullptr);
  bind(ctx, "a", "urn:a");
  EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:a"), "a");
  ASSERT_EQ(rtXmlNSPush(ctx), 0);
  bind(ctx, "b", "urn:a");
  EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:a"), "b");
  bind(ctx, nullptr, "urn:a");
  EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:a"), "");
  EXPECT_EQ(rtXmlNSPop(ctx), 0);
  EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:a"), "a");
  EXPECT_EQ(rtXmlNSGetPrefix(ctx, "urn:other"), nullptr);
}

TEST(NamespacePrefix, OfNoUriIsNoneThoughTheTableHasAnEntryThatIsNone) {
  Context ctx;
  const char *const uris[] = {"urn:a", nullptr};
  ASSERT_EQ(rtXmlNSSetURITable(ctx, uris, 2), 0);
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  ASSERT_EQ(rtXmlEncStartDocument(ctx), 0);
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "p", nullptr, false), 0);
  EXPECT_EQ(rtXmlNSGetPrefix(ctx, nullptr), nullptr);
  const RtxNamespace none = {nullptr, nullptr};
  ASSERT_EQ(rtXmlEncStartElement(ctx, "e", &none, nullptr, false), 0);
  ASSERT_EQ(rtXmlEncEndElement(ctx, "e", &none), 0);
  const std::string_view output(rtxGetOutput(ctx, nullptr));
  EXPECT_NE(output.find("<e/>"), output.npos) << output;
}

TEST(NamespacePrefix, ThatMeansAnotherUriByNowIsNotGiven) {
  Context ctx;
  bind(ctx, "a", "urn:a");
  bind(ctx, "p", "urn:a");
  ASSERT_EQ(rtXmlNSPush(ctx), 0);
  bind(ctx, "p", "urn:b");
  EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:a"), "a");
  bind(ctx, "a", "urn:b");
  EXPECT_EQ(rtXmlNSGetPrefix(ctx, "urn:a"), nullptr);
  EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:b"), "a");
}

// ---- Declarations --------------------------------------------------------------------------------------------

const RtxNsDecl &declaration(const RtxListNode *node) { return *static_cast<const RtxNsDecl *>(node->data); }

TEST(Declaration, InAListIsAddedOnceAndBound) {
  Context ctx;
  RtxNsDeclList list{};
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, &list, "p", "urn:a", false), 0);
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, &list, nullptr, "urn:d", false), 0);
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(rtXmlNSSetNamespace(ctx, &list, "p", "urn:a", false), 0);
    ASSERT_EQ(rtXmlNSSetNamespace(ctx, &list, nullptr, "urn:d", false), 0);
  }
  ASSERT_EQ(list.items.count, 2u);
  EXPECT_STREQ(declaration(list.items.head).prefix, "p");
  EXPECT_STREQ(declaration(list.items.head).uri, "urn:a");
  EXPECT_EQ(declaration(list.items.tail).prefix, nullptr);
  EXPECT_STREQ(declaration(list.items.tail).uri, "urn:d");
  EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:a"), "p");
  EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:d"), "");
}

TEST(Declaration, CopiesItsTexts) {
  Context ctx;
  RtxNsDeclList list{};
  {
    std::string prefix = "p";
    std::string uri = "urn:a";
    ASSERT_EQ(rtXmlNSSetNamespace(ctx, &list, prefix.c_str(), uri.c_str(), false), 0);
    ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, prefix.c_str(), uri.c_str(), false), 0);
    prefix.assign(1, '#');
    uri.assign(5, '#');
  }
  EXPECT_STREQ(declaration(list.items.head).prefix, "p");
  EXPECT_STREQ(declaration(list.items.head).uri, "urn:a");
  EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:a"), "p");
}

TEST(Declaration, ListIsFreedWithItsTexts) {
  Context ctx;
  RtxNsDeclList list{};
  const size_t before = stats(ctx).blocks;
  for (const char *prefix : {"p", "q", static_cast<const char *>(nullptr)}) {
    ASSERT_EQ(
        rtXmlDecNSAttr(ctx, prefix == nullptr ? "xmlns" : ("xmlns:"s + prefix).c_str(), "urn:a", &list, nullptr, 0), 0);
  }
  ASSERT_EQ(list.items.count, 3u);
  const size_t listed = stats(ctx).blocks;
  EXPECT_GE(listed, before + 6);
  rtXmlNSFreeAttrList(ctx, &list);
  EXPECT_EQ(list.items.count, 0u);
  EXPECT_EQ(list.items.head, nullptr);
  EXPECT_LE(stats(ctx).blocks, listed - 6);
  rtXmlNSFreeAttrList(ctx, &list);

  // The list's blocks are all that came from it: freeing an equal list leaves the same number as before.
  const size_t bound = stats(ctx).blocks;
  ASSERT_EQ(rtXmlNSPush(ctx), 0);
  ASSERT_EQ(rtXmlDecNSAttr(ctx, "xmlns:r", "urn:r", &list, nullptr, 0), 0);
  rtXmlNSFreeAttrList(ctx, &list);
  EXPECT_EQ(rtXmlNSPop(ctx), 0);
  EXPECT_EQ(stats(ctx).blocks, bound);
}

TEST(ForeignAttributes, AreFreedWithTheirTexts) {
  Context ctx;
  RtxAttrList list{};
  for (int i = 0; i < 3; ++i) {
    auto *pair = static_cast<RtxNamePair *>(rtxMemHeapAlloc(ctx, sizeof(RtxNamePair)));
    ASSERT_NE(pair, nullptr);
    pair->name = i == 0 ? nullptr : rtxUTF8Strdup(ctx, "name");
    pair->value = i == 1 ? nullptr : rtxUTF8Strdup(ctx, "value");
    ASSERT_NE(rtxDListAppend(ctx, &list.items, pair), nullptr);
  }
  rtXmlMemFreeAnyAttrs(ctx, &list);
  EXPECT_EQ(stats(ctx).blocks, 0u);
  EXPECT_EQ(list.items.count, 0u);
  EXPECT_EQ(list.items.head, nullptr);
  EXPECT_EQ(list.items.tail, nullptr);
  rtXmlMemFreeAnyAttrs(ctx, &list);
}

// The declarations that the context would write into a start tag now.
std::string ownDeclarations(RuntimeContext *ctx) {
  EXPECT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, nullptr, false), 0);
  EXPECT_EQ(rtXmlEncNSAttrs(ctx, nullptr), 0);
  EXPECT_EQ(rtXmlEncEndElement(ctx, "e", nullptr), 0);
  return output(ctx);
}

TEST(Declaration, OfTheHostStaysAndIsProtected) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "h", "urn:host", false), 0);
  EXPECT_EQ(ownDeclarations(ctx), "<e xmlns:h=\"urn:host\"/>");
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "h", "urn:other", false), 0);
  EXPECT_EQ(ownDeclarations(ctx), "<e xmlns:h=\"urn:host\"/>");
  EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:host"), "h");
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "h", "urn:other", true), 0);
  EXPECT_EQ(ownDeclarations(ctx), "<e xmlns:h=\"urn:other\"/>");
  EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:other"), "h");
}

TEST(Declaration, OfTheHostIsProtectedFromADocument) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "tns", "urn:host", false), 0);
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  ASSERT_EQ(rtXmlEncStartDocument(ctx), 0);
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "tns", "urn:document", false), 0);
  EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:host"), "tns");
  ASSERT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, nullptr, false), 0);
  ASSERT_EQ(rtXmlEncNSAttrs(ctx, nullptr), 0);
  ASSERT_EQ(rtXmlEncEndElement(ctx, "e", nullptr), 0);
  ASSERT_EQ(rtXmlEncEndDocument(ctx), 0);
  EXPECT_NE(output(ctx).find("urn:host"), std::string::npos);
  EXPECT_EQ(output(ctx).find("urn:document"), std::string::npos);
}

TEST(Declaration, OfADocumentGoesWithIt) {
  Context ctx;
  for (const char *uri : {"urn:first", "urn:second", "urn:third"}) {
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
    ASSERT_EQ(rtXmlEncStartDocument(ctx), 0);
    ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "tns", uri, false), 0);
    const RtxNamespace ns = {"tns", uri};
    EXPECT_STREQ(rtXmlNSGetPrefix(ctx, uri), "tns");
    ASSERT_EQ(rtXmlEncStartElement(ctx, "e", &ns, nullptr, false), 0);
    ASSERT_EQ(rtXmlEncNSAttrs(ctx, nullptr), 0);
    ASSERT_EQ(rtXmlEncEndElement(ctx, "e", &ns), 0);
    ASSERT_EQ(rtXmlEncEndDocument(ctx), 0);
    EXPECT_EQ(infoset(output(ctx)), "{"s + uri + "}e[]()");
    EXPECT_EQ(rtXmlNSGetPrefix(ctx, uri), nullptr);
    EXPECT_EQ(ownDeclarations(ctx), "<e/>");
  }
}

TEST(Declaration, OfADocumentThatFailedGoesWithTheNextStart) {
  Context ctx;
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  ASSERT_EQ(rtXmlEncStartDocument(ctx), 0);
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "tns", "urn:failed", false), 0);
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, nullptr, "urn:failed-default", false), 0);
  ASSERT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, nullptr, false), 0);
  // The document is given up here.
  ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
  ASSERT_EQ(rtXmlEncStartDocument(ctx), 0);
  EXPECT_EQ(rtXmlNSGetPrefix(ctx, "urn:failed"), nullptr);
  EXPECT_EQ(rtXmlNSGetPrefix(ctx, "urn:failed-default"), nullptr);
  ASSERT_EQ(rtXmlEncStartElement(ctx, "e", nullptr, nullptr, false), 0);
  ASSERT_EQ(rtXmlEncNSAttrs(ctx, nullptr), 0);
  ASSERT_EQ(rtXmlEncEndElement(ctx, "e", nullptr), 0);
  ASSERT_EQ(rtXmlEncEndDocument(ctx), 0);
  EXPECT_EQ(infoset(output(ctx)), "e[]()");
}

TEST(Declaration, OfADocumentInAListKeepsItsEntryAndLosesItsBinding) {
  Context ctx;
  RtxNsDeclList list{};
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
    ASSERT_EQ(rtXmlEncStartDocument(ctx), 0);
    ASSERT_EQ(rtXmlNSSetNamespace(ctx, &list, "tns", "urn:a", false), 0);
    EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:a"), "tns");
    ASSERT_EQ(rtXmlEncEndDocument(ctx), 0);
    EXPECT_EQ(rtXmlNSGetPrefix(ctx, "urn:a"), nullptr);
    EXPECT_EQ(list.items.count, 1u);
  }
}

TEST(Declaration, OfTheHostOutlivesDocumentsAndResets) {
  Context ctx;
  ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "h", "urn:host", false), 0);
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(rtxSetOutputDynamic(ctx), 0);
    ASSERT_EQ(rtXmlEncStartDocument(ctx), 0);
    ASSERT_EQ(rtXmlNSSetNamespace(ctx, nullptr, "d", "urn:doc", false), 0);
    ASSERT_EQ(rtXmlEncEndDocument(ctx), 0);
    EXPECT_EQ(ownDeclarations(ctx), "<e xmlns:h=\"urn:host\"/>");
    Recorder recorder;
    EXPECT_EQ(read(ctx, "<a xmlns:h='urn:shadow' xmlns='urn:d'/>", recorder), 0);
    EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:host"), "h");
    rtxContextReset(ctx);
    EXPECT_STREQ(rtXmlNSGetPrefix(ctx, "urn:host"), "h");
  }
}

TEST(Declaration, WithoutStorageFailsAndDeclaresNothingByHalf) {
  for (size_t i = 1; i < 20; ++i) {
    Context ctx;
    RtxNsDeclList list{};
    const std::string uri = "urn:" + std::string(100000, 'x');
    ctx.allocator.failNext(i, false);
    const int status = rtXmlNSSetNamespace(ctx, &list, "p", uri.c_str(), false);
    const bool refused = ctx.allocator.refused > 0;
    ctx.allocator.heal();
    EXPECT_EQ(status, refused ? STATUS_NO_MEMORY : 0) << i;
    EXPECT_EQ(list.items.count, status == 0 ? 1u : list.items.count);
    EXPECT_LE(list.items.count, 1u);
    if (list.items.count == 1) {
      EXPECT_EQ(declaration(list.items.head).uri, uri);
    }
    EXPECT_EQ(rtXmlNSSetNamespace(ctx, &list, "p", uri.c_str(), false), 0);
    EXPECT_EQ(list.items.count, 1u);
    if (!refused) break;
  }
}

// ---- Qualified attribute names ---------------------------------------------------------------------------------

std::string attributeName(RuntimeContext *ctx, const RtxNamespace *ns, std::string_view local) {
  char buffer[64];
  ExactBytes name(local);
  EXPECT_EQ(rtXmlNSGetAttrQName(ctx, buffer, sizeof buffer, ns, name.data(), name.size()), 0);
  return buffer;
}

TEST(AttributeName, HasThePrefixThatIsBoundToItsNamespace) {
  Context ctx;
  const RtxNamespace ns = {"other", "urn:a"};
  EXPECT_EQ(attributeName(ctx, nullptr, "id"), "id");
  EXPECT_EQ(attributeName(ctx, &ns, "id"), "id");
  bind(ctx, nullptr, "urn:a");
  EXPECT_EQ(attributeName(ctx, &ns, "id"), "id");
  bind(ctx, "p", "urn:a");
  EXPECT_EQ(attributeName(ctx, &ns, "id"), "p:id");
  bind(ctx, "q", "urn:a");
  EXPECT_EQ(attributeName(ctx, &ns, "id"), "q:id");
  bind(ctx, nullptr, "urn:a");
  EXPECT_EQ(attributeName(ctx, &ns, "id"), "q:id");
  const RtxNamespace none = {nullptr, nullptr};
  EXPECT_EQ(attributeName(ctx, &none, "id"), "id");
}

TEST(AttributeName, NeedsRoomForItsNul) {
  Context ctx;
  bind(ctx, "pre", "urn:a");
  const RtxNamespace ns = {"pre", "urn:a"};
  for (size_t size = 0; size <= 10; ++size) {
    ExactBytes buffer(std::string(size, '#'));
    const int status = rtXmlNSGetAttrQName(ctx, buffer.data(), size, &ns, "idle", 2);
    EXPECT_EQ(status, size >= 7 ? 0 : STATUS_BUFFER_OVERFLOW) << size;
    if (status == 0) {
      EXPECT_STREQ(buffer.data(), "pre:id");
    }
    ExactBytes bare(std::string(size, '#'));
    EXPECT_EQ(rtXmlNSGetAttrQName(ctx, bare.data(), size, nullptr, "idle", 2), size >= 3 ? 0 : STATUS_BUFFER_OVERFLOW);
  }
}

} // namespace
} // namespace contract
