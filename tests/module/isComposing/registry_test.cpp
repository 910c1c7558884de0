// The block and the table of namespaces that encoders hang on a context.
#include "composing.h"
#include "faultPlan.h"

using namespace composing;
using support::Context;

namespace {

const std::vector<std::string> imsUris = {"urn:ietf:params:xml:ns:common-policy",
                                          "urn:oma:params:xml:ns:poc:poc-settings",
                                          "urn:ietf:params:xml:ns:im-iscomposing",
                                          "urn:ietf:params:xml:ns:simple-filter", "urn:ietf:params:xml:ns:dialog-info"};
const std::string debugUri = "urn:ietf:params:xml:ns:debuginfo";

std::vector<std::string> texts(const char *const *table, size_t count) { return {table, table + count}; }

TEST(Registry, ImsTableNamesTheFiveNamespacesInOrder) {
  Context ctx;
  const char *const *table = QxGet_IMS_NSURI(ctx);
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(texts(table, 5), imsUris);
  EXPECT_EQ(QxGet_IMS_NSURI(ctx), table);
}

TEST(Registry, DebugTableNamesOne) {
  Context ctx;
  const char *const *table = QxGet_DebugEvent_NSURI(ctx);
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(table[0], debugUri);
  EXPECT_EQ(QxGet_DebugEvent_NSURI(ctx), table);
}

TEST(Registry, BlockStaysInTheSlotUntilItIsFreed) {
  Context ctx;
  EXPECT_EQ(ctx->globalData, nullptr);
  QxRegistry *block = QxGet_IMS_Global(ctx);
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(ctx->globalData, block);
  EXPECT_EQ(ctx->globalRelease, &QxFree_IMS_Global);
  EXPECT_EQ(block->uriTable, nullptr);
  EXPECT_EQ(QxGet_IMS_Global(ctx), block);

  ASSERT_NE(QxGet_IMS_NSURI(ctx), nullptr);
  EXPECT_EQ(ctx->globalData, block);
  QxFree_IMS_Global(ctx);
  EXPECT_EQ(ctx->globalData, nullptr);
  EXPECT_EQ(ctx->globalRelease, &QxFree_IMS_Global) << "the callback stays";

  const char *const *table = QxGet_IMS_NSURI(ctx);
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(texts(table, 5), imsUris);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TEST(Registry, FreeingWithoutABlockLeavesNothing) {
  for (RtxContextRelease release : {&QxFree_IMS_Global, &QxFree_DebugEvent_Global}) {
    const size_t before = support::faultPlan().systemBlocks;
    Context ctx;
    release(ctx);
    EXPECT_EQ(ctx->globalData, nullptr);
    EXPECT_EQ(ctx->globalRelease, release);
    EXPECT_EQ(rtxErrCount(ctx), 0u);
    EXPECT_EQ(support::faultPlan().systemBlocks, before);
  }
}

TEST(Registry, WhoeverComesFirstOwnsTheContext) {
  Context ims;
  ASSERT_NE(QxGet_IMS_NSURI(ims), nullptr);
  EXPECT_EQ(texts(QxGet_DebugEvent_NSURI(ims), 5), imsUris);
  EXPECT_EQ(ims->globalRelease, &QxFree_IMS_Global);

  Context debug;
  ASSERT_NE(QxGet_DebugEvent_NSURI(debug), nullptr);
  EXPECT_EQ(QxGet_IMS_NSURI(debug)[0], debugUri);
  EXPECT_EQ(debug->globalRelease, &QxFree_DebugEvent_Global);

  // The block alone decides who installs the callback, the first request for the table what is in it.
  Context shared;
  ASSERT_NE(QxGet_IMS_Global(shared), nullptr);
  EXPECT_EQ(QxGet_DebugEvent_NSURI(shared)[0], debugUri);
  EXPECT_EQ(shared->globalRelease, &QxFree_IMS_Global);
}

TEST(Registry, InitSaysWhetherThereIsStorage) {
  for (int (*init)(RuntimeContext *) : {&QxInit_IMS_Global, &QxInit_DebugEvent_Global}) {
    Context ctx;
    for (uint64_t refused = 1; refused <= 2; ++refused) {
      support::faultPlan().arm(refused, true);
      EXPECT_EQ(init(ctx), STATUS_NO_MEMORY);
      support::faultPlan().disarm();
      EXPECT_EQ(ctx->globalData != nullptr, refused == 2);
      EXPECT_EQ(rtxErrCount(ctx), 0u) << "not recorded";
    }
    EXPECT_EQ(init(ctx), 0);
    EXPECT_EQ(init(ctx), 0);
  }
}

TEST(Registry, WithoutStorageThereIsNoBlockAndNoTable) {
  Context ctx;
  support::faultPlan().arm(1, true);
  EXPECT_EQ(QxGet_IMS_Global(ctx), nullptr);
  EXPECT_EQ(QxGet_IMS_NSURI(ctx), nullptr);
  QxFree_IMS_Global(ctx);
  EXPECT_EQ(ctx->globalData, nullptr);
  QxFree_DebugEvent_Global(ctx);
  support::faultPlan().disarm();
  EXPECT_EQ(ctx->globalData, nullptr);
}

TEST(Registry, GoesWithTheContext) {
  const size_t before = support::faultPlan().systemBlocks;
  {
    Context ctx;
    ASSERT_NE(QxGet_IMS_NSURI(ctx), nullptr);
    EXPECT_EQ(support::faultPlan().systemBlocks, before + 2) << "a block and a table";
  }
  EXPECT_EQ(support::faultPlan().systemBlocks, before);
}

TEST(Registry, SurvivesAResetAndServesEncodersAfterItWasFreed) {
  Context ctx;
  Record record(ctx, "active");
  const std::string first = encodeRecord(ctx, record);
  QxFree_IMS_Global(ctx);
  EXPECT_EQ(encodeRecord(ctx, record), first);
  const void *block = ctx->globalData;
  ASSERT_NE(block, nullptr) << "made by the encoder";
  record.owned = false;
  rtxContextReset(ctx);
  EXPECT_EQ(ctx->globalData, block);
}

TEST(Registry, ReadingLeavesTheSlotEmpty) {
  Context ctx;
  EXPECT_EQ(decode(ctx, document("<state>active</state>")).status, 0);
  EXPECT_EQ(validate(ctx, document("<state>active</state>")).status, 0);
  EXPECT_EQ(ctx->globalData, nullptr);
}

TEST(Registry, ReadingWorksWhileARegistryIsThereAndAfterItWent) {
  Context ctx;
  ASSERT_NE(QxGet_IMS_NSURI(ctx), nullptr);
  EXPECT_EQ(decode(ctx, document("<state>active</state>")).record, "state=active");
  QxFree_IMS_Global(ctx);
  EXPECT_EQ(decode(ctx, document("<state>active</state><bogus/>")).errors,
            "-41(bogus)@runtime/reader<QxXmlIsComposingSAX:110");
}

} // namespace
