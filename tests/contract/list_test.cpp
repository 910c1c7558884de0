// Doubly linked lists.

#include "contract.h"

namespace contract {
namespace {

TEST(List, KeepsTheOrderAndBothLinks) {
  Context ctx;
  RtxList list{};
  int items[5] = {};
  std::vector<RtxListNode *> nodes;
  for (int &item : items) {
    nodes.push_back(rtxDListAppend(ctx, &list, &item));
    ASSERT_NE(nodes.back(), nullptr);
  }
  EXPECT_EQ(list.count, 5u);
  EXPECT_EQ(list.head, nodes.front());
  EXPECT_EQ(list.tail, nodes.back());
  for (size_t i = 0; i < nodes.size(); ++i) {
    EXPECT_EQ(nodes[i]->data, &items[i]);
    EXPECT_EQ(nodes[i]->next, i + 1 < nodes.size() ? nodes[i + 1] : nullptr);
    EXPECT_EQ(nodes[i]->prev, i > 0 ? nodes[i - 1] : nullptr);
  }
}

TEST(List, IsFreedWithItsItems) {
  Context ctx;
  RtxList list{};
  for (int i = 0; i < 20; ++i)
    ASSERT_NE(rtxDListAppend(ctx, &list, rtxMemHeapAlloc(ctx, 24)), nullptr);
  EXPECT_EQ(stats(ctx).blocks, 40u);
  rtxDListFreeAll(ctx, &list);
  EXPECT_EQ(stats(ctx).blocks, 0u);
  EXPECT_EQ(list.count, 0u);
  EXPECT_EQ(list.head, nullptr);
  EXPECT_EQ(list.tail, nullptr);
  EXPECT_NE(rtxDListAppend(ctx, &list, rtxMemHeapAlloc(ctx, 1)), nullptr);
  EXPECT_EQ(list.count, 1u);
}

TEST(List, MayHoldNull) {
  Context ctx;
  RtxList list{};
  ASSERT_NE(rtxDListAppend(ctx, &list, nullptr), nullptr);
  ASSERT_NE(rtxDListAppend(ctx, &list, rtxMemHeapAlloc(ctx, 8)), nullptr);
  EXPECT_EQ(list.head->data, nullptr);
  rtxDListFreeAll(ctx, &list);
  EXPECT_EQ(stats(ctx).blocks, 0u);
}

TEST(List, ThatIsEmptyCanBeFreed) {
  Context ctx;
  RtxList list{};
  rtxDListFreeAll(ctx, &list);
  EXPECT_EQ(list.count, 0u);
  EXPECT_EQ(list.head, nullptr);
}

TEST(List, IsUnchangedWithoutStorage) {
  RuntimeOptions options = defaultOptions();
  options.heapLimit = 4 * sizeof(RtxListNode);
  Context ctx(options);
  RtxList list{};
  int item = 0;
  RtxListNode *last = nullptr;
  while (RtxListNode *node = rtxDListAppend(ctx, &list, &item)) {
    last = node;
    ASSERT_LE(list.count, 4u);
  }
  EXPECT_GE(list.count, 1u);
  EXPECT_EQ(list.tail, last);
  EXPECT_EQ(last->next, nullptr);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

} // namespace
} // namespace contract
