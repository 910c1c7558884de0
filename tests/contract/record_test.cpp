// Records that a host builds by hand.

#include "contract.h"

#include <cstring>

namespace contract {
namespace {

// What a list of texts holds, null as "-".
std::string texts(const RtxList &list) {
  std::string all;
  const RtxListNode *last = nullptr;
  uint32_t count = 0;
  for (const RtxListNode *node = list.head; node != nullptr; last = node, node = node->next, ++count) {
    EXPECT_EQ(node->prev, last);
    const auto *text = static_cast<const RtxXmlString *>(node->data);
    EXPECT_FALSE(text->cdata);
    all.append(text->value != nullptr ? text->value : "-").append("|");
  }
  EXPECT_EQ(list.tail, last);
  EXPECT_EQ(list.count, count);
  return all;
}

void freeTexts(RuntimeContext *ctx, RtxList &list) {
  for (const RtxListNode *node = list.head; node != nullptr; node = node->next)
    rtxMemHeapFreePtr(ctx, static_cast<const RtxXmlString *>(node->data)->value);
  rtxDListFreeAll(ctx, &list);
}

TEST(Record, TextIsCopiedAndEndsWithANul) {
  Context ctx;
  RtxXmlString member{};
  {
    ExactBytes bytes("active and more"sv);
    ASSERT_EQ(rtxSetText(ctx, &member, bytes.data(), 6), 0);
  }
  EXPECT_STREQ(member.value, "active");
  EXPECT_FALSE(member.cdata);
  ASSERT_EQ(rtxSetText(ctx, &member, "", 0), 0);
  EXPECT_STREQ(member.value, "");
  EXPECT_EQ(rtxErrCount(ctx), 0u);
}

TEST(Record, TextThatWasThereIsFreed) {
  Context ctx;
  RtxXmlString member{};
  for (const std::string &text : {"a"s, std::string(5000, 'b'), ""s, "c"s}) {
    member.cdata = true;
    ASSERT_EQ(rtxSetText(ctx, &member, text.data(), text.size()), 0);
    EXPECT_EQ(member.value, text);
    EXPECT_FALSE(member.cdata);
    EXPECT_EQ(stats(ctx).blocks, 1u);
  }
  ASSERT_EQ(rtxSetText(ctx, &member, nullptr, 5), 0);
  EXPECT_EQ(member.value, nullptr);
  EXPECT_EQ(stats(ctx).blocks, 0u);
}

TEST(Record, TextMayBecomeAPartOfItself) {
  Context ctx;
  RtxXmlString member{};
  const std::string uri = "sip:" + std::string(3000, 'u');
  ASSERT_EQ(rtxSetText(ctx, &member, uri.data(), uri.size()), 0);
  ASSERT_EQ(rtxSetText(ctx, &member, member.value + 4, 3000), 0);
  EXPECT_EQ(member.value, uri.substr(4));
  ASSERT_EQ(rtxSetText(ctx, &member, member.value, 2), 0);
  EXPECT_STREQ(member.value, "uu");
  EXPECT_EQ(stats(ctx).blocks, 1u);
}

TEST(Record, TextWithANulIsRefused) {
  Context ctx;
  RtxXmlString member{};
  ASSERT_EQ(rtxSetText(ctx, &member, "before", 6), 0);
  member.cdata = true;
  RtxList list{};
  ASSERT_EQ(rtxAppendText(ctx, &list, "before", 6), 0);
  const size_t blocks = stats(ctx).blocks;
  uint32_t records = 0;
  for (const std::string_view bytes : {"\0"sv, "a\0b"sv, "ab\0"sv}) {
    ExactBytes text(bytes);
    EXPECT_EQ(rtxSetText(ctx, &member, text.data(), text.size()), STATUS_INVALID_UTF8);
    EXPECT_EQ(rtxAppendText(ctx, &list, text.data(), text.size()), STATUS_INVALID_UTF8);
    EXPECT_EQ(rtxErrCount(ctx), records += 2);
    EXPECT_EQ(rtxErrGetLastError(ctx), STATUS_INVALID_UTF8);
  }
  EXPECT_STREQ(member.value, "before");
  EXPECT_TRUE(member.cdata);
  EXPECT_EQ(texts(list), "before|");
  EXPECT_EQ(stats(ctx).blocks, blocks);
}

TEST(Record, ItemsAreZeroAndInOrder) {
  Context ctx;
  RtxList list{};
  std::vector<void *> items;
  for (const size_t size : {24u, 1u, 704u, 3000u, 0u}) {
    // Storage that is used again has something in it.
    void *used = rtxMemHeapAlloc(ctx, size);
    std::memset(used, 0xA5, size);
    rtxMemHeapFreePtr(ctx, used);

    void *item = rtxAppendItem(ctx, &list, size);
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(item) % 8, 0u);
    EXPECT_EQ(std::string(static_cast<char *>(item), size), std::string(size, '\0'));
    EXPECT_EQ(list.tail->data, item);
    items.push_back(item);
  }
  size_t i = 0;
  for (const RtxListNode *node = list.head; node != nullptr; node = node->next)
    EXPECT_EQ(node->data, items[i++]);
  EXPECT_EQ(list.count, i);
  EXPECT_EQ(stats(ctx).blocks, 2 * items.size());
  rtxDListFreeAll(ctx, &list);
  EXPECT_EQ(stats(ctx).blocks, 0u);
}

TEST(Record, TextsAreAppendedInOrder) {
  Context ctx;
  RtxAnyList list{};
  EXPECT_EQ(rtxAppendText(ctx, &list.items, "<x/>", 4), 0);
  EXPECT_EQ(rtxAppendText(ctx, &list.items, "<y/>more", 4), 0);
  EXPECT_EQ(rtxAppendText(ctx, &list.items, "", 0), 0);
  EXPECT_EQ(rtxAppendText(ctx, &list.items, nullptr, 3), 0);
  EXPECT_EQ(texts(list.items), "<x/>|<y/>||-|");
  freeTexts(ctx, list.items);
  EXPECT_EQ(stats(ctx).blocks, 0u);
}

TEST(Record, UnusableContextsAndNullChangeNothing) {
  Context ctx;
  RuntimeContext zero{};
  const char before[] = "before";
  for (RuntimeContext *bad : {static_cast<RuntimeContext *>(nullptr), &zero}) {
    RtxXmlString member = {true, before};
    RtxList list{};
    EXPECT_EQ(rtxSetText(bad, &member, "x", 1), STATUS_BAD_CONTEXT);
    EXPECT_EQ(rtxAppendItem(bad, &list, 8), nullptr);
    EXPECT_EQ(rtxAppendText(bad, &list, "x", 1), STATUS_BAD_CONTEXT);
    EXPECT_EQ(member.value, before);
    EXPECT_TRUE(member.cdata);
    EXPECT_EQ(texts(list), "");
  }
  EXPECT_EQ(rtxSetText(ctx, nullptr, "x", 1), STATUS_BAD_CONTEXT);
  EXPECT_EQ(rtxAppendItem(ctx, nullptr, 8), nullptr);
  EXPECT_EQ(rtxAppendText(ctx, nullptr, "x", 1), STATUS_BAD_CONTEXT);
  EXPECT_EQ(rtxErrCount(ctx), 0u);
  EXPECT_EQ(stats(ctx).blocks, 0u);
}

TEST(Record, WhatIsTooLargeIsRefused) {
  RuntimeOptions options = defaultOptions();
  options.heapLimit = 1000;
  Context ctx(options);
  RtxXmlString member{};
  RtxList list{};
  const std::string text(1000, 'x');
  EXPECT_EQ(rtxSetText(ctx, &member, text.data(), text.size()), STATUS_NO_MEMORY);
  EXPECT_EQ(rtxAppendText(ctx, &list, text.data(), text.size()), STATUS_NO_MEMORY);
  EXPECT_EQ(rtxAppendItem(ctx, &list, 1001), nullptr);
  EXPECT_EQ(rtxAppendItem(ctx, &list, SIZE_MAX), nullptr);
  EXPECT_EQ(statuses(ctx), "-10 -10 -10 -10");
  EXPECT_EQ(stats(ctx).blocks, 0u);
  EXPECT_EQ(rtxSetText(ctx, &member, text.data(), 900), 0);
}

// A member and two lists, each changed as long as there is storage: what fails leaves them as they were, says so, and
// takes nothing.
struct Built {
  RtxXmlString member{};
  RtxList items{};
  RtxList texts{};

  std::string show() const {
    return (member.value != nullptr ? member.value : "-"s) + " " + std::to_string(items.count) + " " +
           contract::texts(texts);
  }
  void free(RuntimeContext *ctx) {
    rtxMemHeapFreePtr(ctx, member.value);
    rtxDListFreeAll(ctx, &items);
    freeTexts(ctx, texts);
  }
};

// The number of steps that failed.
size_t build(RuntimeContext *ctx, Built &record) {
  size_t failed = 0;
  for (int round = 0; round < 12; ++round) {
    const std::string text(static_cast<size_t>(round) * 90, static_cast<char>('a' + round));
    for (int step = 0; step < 3; ++step) {
      const std::string before = record.show();
      const RtxHeapStats heap = stats(ctx);
      const uint32_t records = rtxErrCount(ctx);
      int status = 0;
      switch (step) {
      case 0: status = rtxSetText(ctx, &record.member, text.data(), text.size()); break;
      case 1: status = rtxAppendItem(ctx, &record.items, text.size()) != nullptr ? 0 : STATUS_NO_MEMORY; break;
      default: status = rtxAppendText(ctx, &record.texts, text.data(), text.size()); break;
      }
      if (status == 0) {
        EXPECT_EQ(rtxErrCount(ctx), records);
        continue;
      }
      ++failed;
      EXPECT_EQ(status, STATUS_NO_MEMORY);
      EXPECT_EQ(rtxErrCount(ctx), records + 1);
      EXPECT_EQ(rtxErrGetLastError(ctx), STATUS_NO_MEMORY);
      EXPECT_EQ(record.show(), before);
      EXPECT_EQ(stats(ctx).blocks, heap.blocks);
      EXPECT_EQ(stats(ctx).used, heap.used);
    }
  }
  return failed;
}

TEST(Record, EveryRefusalOfTheHeapLeavesAllAsItWas) {
  size_t limits = 0;
  for (size_t limit = 0;; limit += 8, ++limits) {
    SCOPED_TRACE(limit);
    RuntimeOptions options = defaultOptions();
    options.heapLimit = limit;
    Context ctx(options);
    Built record;
    const size_t failed = build(ctx, record);
    record.free(ctx);
    EXPECT_EQ(stats(ctx).blocks, 0u);
    if (failed == 0 || testing::Test::HasFailure()) break;
  }
  EXPECT_GT(limits, 100u);
}

TEST(Record, EveryRefusalOfTheAllocatorLeavesAllAsItWas) {
  for (const bool forGood : {false, true}) {
    for (size_t i = 1;; ++i) {
      SCOPED_TRACE(i);
      Context ctx;
      ctx.allocator.failNext(i, forGood);
      Built record;
      const size_t failed = build(ctx, record);
      ctx.allocator.heal();
      EXPECT_EQ(failed > 0, ctx.allocator.refused > 0);
      record.free(ctx);
      EXPECT_EQ(stats(ctx).blocks, 0u);
      if (failed == 0 || testing::Test::HasFailure()) {
        EXPECT_GT(i, 1u);
        break;
      }
    }
  }
}

} // namespace
} // namespace contract
