// The registry of the module's own namespace, and the slot of a context that it shares with that of the other modules.
#include "DialogInfo/QxXmlDialogInfo.h"
#include "IsComposing/QxXmlIsComposing.h"
#include "RuleSet/QxXmlRuleSet.h"
#include "debugInfo.h"
#include "faultPlan.h"
#include "xmlJudge.h"

using namespace debugInfo;
using support::Context;

namespace {

TEST(Registry, HasOneNamespace) {
  Context ctx;
  const char *const *table = QxGet_DebugEvent_NSURI(ctx);
  ASSERT_NE(table, nullptr);
  EXPECT_STREQ(table[0], namespaceUri);
  for (int i = 1; i < QX_URI_SLOTS; ++i)
    EXPECT_EQ(table[i], nullptr) << "an empty slot, for those who look for a namespace of the other modules";
  EXPECT_EQ(QxGet_DebugEvent_NSURI(ctx), table);
  EXPECT_EQ(ctx->globalRelease, &QxFree_DebugEvent_Global);
  EXPECT_EQ(QxInit_DebugEvent_Global(ctx), 0);
  EXPECT_EQ(QxGet_DebugEvent_NSURI(ctx), table);
  QxFree_DebugEvent_Global(ctx);
  EXPECT_EQ(ctx->globalData, nullptr);
  EXPECT_EQ(ctx->globalRelease, &QxFree_DebugEvent_Global) << "the callback stays";
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TEST(Registry, IsMadeByEncodersAlone) {
  for (const Document &document : allDocuments()) {
    SCOPED_TRACE(document.root);
    Context ctx;
    decode(ctx, document, spelled(completeBody(document), ""));
    EXPECT_EQ(ctx->globalData, nullptr) << "reading leaves the slot empty";
    Held held(ctx, document);
    held.complete();
    encode(ctx, document, held);
    ASSERT_NE(ctx->globalData, nullptr);
    EXPECT_STREQ(QxGet_DebugEvent_NSURI(ctx)[0], namespaceUri);
    EXPECT_EQ(ctx->globalRelease, &QxFree_DebugEvent_Global);
  }
}

TEST(Registry, WhenItWasFreedEncodersMakeAnother) {
  for (const Document &document : allDocuments()) {
    Context ctx;
    Held held(ctx, document);
    held.complete();
    const std::string first = encode(ctx, document, held);
    QxFree_DebugEvent_Global(ctx);
    // The runtime keeps the names that it was given, not the table.
    EXPECT_EQ(decode(ctx, document, first).record, completeDump(document));
    EXPECT_EQ(encode(ctx, document, held), first);
  }
}

TEST(Registry, WithoutStorageForATableNamesAreWrittenAllTheSame) {
  for (const Document &document : allDocuments()) {
    SCOPED_TRACE(document.root);
    Context ctx;
    Held held(ctx, document);
    held.complete();
    const std::string whole = encode(ctx, document, held);
    QxFree_DebugEvent_Global(ctx);
    std::string buffer(10000, '\0');
    ASSERT_EQ(rtxSetOutput(ctx, buffer.data(), buffer.size()), 0);
    support::faultPlan().arm(1, true);
    const int status = document.encode(ctx, held);
    support::faultPlan().disarm();
    if (status == 0) {
      EXPECT_EQ(support::withoutDeclaration(support::outputText(ctx)), whole);
    } else {
      EXPECT_EQ(status, STATUS_NO_MEMORY);
      EXPECT_EQ(rtxErrGetFirstError(ctx), STATUS_NO_MEMORY);
    }
    EXPECT_EQ(ctx->globalData, nullptr);
  }
}

TEST(Registry, GoesWithTheContext) {
  const size_t before = support::faultPlan().systemBlocks;
  {
    Context ctx;
    Held held(ctx, documentOf("control"));
    held.complete();
    encode(ctx, documentOf("control"), held);
    EXPECT_GT(support::faultPlan().systemBlocks, before);
  }
  EXPECT_EQ(support::faultPlan().systemBlocks, before);
}

// ---- Shared with the other modules ------------------------------------------------------------------------------

// Documents of the other modules, whose namespaces are at different places of their table.
std::vector<std::string> otherDocuments(RuntimeContext *ctx) {
  tns__isComposing composing;
  QxInit_tns__isComposing(ctx, &composing);
  composing.tns_state = {false, "active"};
  tns__dialog_info dialogs;
  QxInit_tns__dialog_info(ctx, &dialogs);
  dialogs.tns_version = 1;
  dialogs.tns_state = 0;
  dialogs.tns_entity = {false, "sip:a@example.com"};
  cp__ruleset rules;
  QxInit_cp__ruleset(ctx, &rules);
  return {support::encoded(ctx, [&](RuntimeContext *c) { return QxXmlE_tns_isComposing(c, &composing); }),
          support::encoded(ctx, [&](RuntimeContext *c) { return QxXmlE_tns_dialog_info(c, &dialogs); }),
          support::encoded(ctx, [&](RuntimeContext *c) { return QxXmlE_cp_ruleset(c, &rules); })};
}

std::vector<std::string> ownDocuments(RuntimeContext *ctx) {
  std::vector<std::string> all;
  for (const Document &document : allDocuments()) {
    Held held(ctx, document);
    held.complete();
    all.push_back(support::encoded(ctx, [&](RuntimeContext *c) { return document.encode(c, held); }));
  }
  return all;
}

TEST(SharedRegistry, WhoeverComesFirstOwnsTheContext) {
  Context ims;
  otherDocuments(ims);
  const void *block = ims->globalData;
  EXPECT_STREQ(QxGet_DebugEvent_NSURI(ims)[0], "urn:ietf:params:xml:ns:common-policy");
  ownDocuments(ims);
  EXPECT_EQ(ims->globalData, block);
  EXPECT_EQ(ims->globalRelease, &QxFree_IMS_Global);
  EXPECT_STREQ(QxGet_IMS_NSURI(ims)[4], "urn:ietf:params:xml:ns:dialog-info");

  Context debug;
  ownDocuments(debug);
  block = debug->globalData;
  EXPECT_STREQ(QxGet_IMS_NSURI(debug)[0], namespaceUri);
  otherDocuments(debug);
  EXPECT_EQ(debug->globalData, block);
  EXPECT_EQ(debug->globalRelease, &QxFree_DebugEvent_Global);
}

TEST(SharedRegistry, OnTheOthersContextEverythingStaysWellFormed) {
  for (bool debugFirst : {false, true}) {
    Context ctx;
    ASSERT_NE(debugFirst ? QxGet_DebugEvent_NSURI(ctx) : QxGet_IMS_NSURI(ctx), nullptr);
    for (int round = 0; round < 2; ++round) {
      for (const std::string &text : ownDocuments(ctx))
        EXPECT_TRUE(support::parseNamespacedXml(text)) << text;
      for (const std::string &text : otherDocuments(ctx))
        EXPECT_TRUE(support::parseNamespacedXml(text)) << text;
    }
    EXPECT_EQ(rtxErrCount(ctx), 0u);
    for (const Document &document : allDocuments()) {
      const Reading reading = decode(ctx, document, spelled(completeBody(document), ""));
      EXPECT_EQ(reading.record, completeDump(document)) << "reading does not depend on the registry";
      EXPECT_EQ(reading.status, 0);
    }
  }
}

TEST(SharedRegistry, AfterTheOwnerWentTheOtherTakesOver) {
  Context fresh;
  const std::vector<std::string> own = ownDocuments(fresh);
  Context other;
  const std::vector<std::string> others = otherDocuments(other);

  Context ctx;
  EXPECT_EQ(otherDocuments(ctx), others);
  QxFree_IMS_Global(ctx);
  EXPECT_EQ(ownDocuments(ctx), own);
  EXPECT_EQ(ctx->globalRelease, &QxFree_DebugEvent_Global);
  QxFree_DebugEvent_Global(ctx);
  EXPECT_EQ(otherDocuments(ctx), others);
  EXPECT_EQ(ctx->globalRelease, &QxFree_IMS_Global);
  // Either may free what is in the slot.
  QxFree_DebugEvent_Global(ctx);
  EXPECT_EQ(ctx->globalData, nullptr);
}

TEST(SharedRegistry, ReadingOneKindAfterAnother) {
  Context ctx;
  const std::vector<std::string> others = otherDocuments(ctx);
  for (const Document &document : allDocuments()) {
    ASSERT_EQ(support::setInput(ctx, others[1]), 0);
    tns__dialog_info dialogs;
    EXPECT_EQ(QxXmlD_tns_dialog_info(ctx, &dialogs), 0) << support::errors(ctx);
    QxMemFree_tns__dialog_info(ctx, &dialogs);
    const Reading reading = decode(ctx, document, spelled(completeBody(document), ""));
    EXPECT_EQ(reading.status, 0) << reading.errors;
    EXPECT_EQ(reading.record, completeDump(document));
  }
}

} // namespace
