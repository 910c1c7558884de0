// Lists of records, and members of records, on a context's heap.
#pragma once

#include "rtx.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace support {

// Calls use with each item of a list whose links and count are in order.
template <typename Item, typename Use> void forEachItem(const RtxList &list, const Use &use) {
  const RtxListNode *last = nullptr;
  uint32_t count = 0;
  for (const RtxListNode *node = list.head; node != nullptr; node = node->next, ++count) {
    EXPECT_EQ(node->prev, last);
    last = node;
    use(*static_cast<Item *>(node->data));
  }
  EXPECT_EQ(list.tail, last);
  EXPECT_EQ(list.count, count);
}

// The items of such a list.
template <typename Item> std::vector<const Item *> itemsOf(const RtxList &list) {
  std::vector<const Item *> all;
  forEachItem<const Item>(list, [&](const Item &item) { all.push_back(&item); });
  return all;
}

// A text as a person can compare it, null as "-".
std::string orDash(const char *text);

// The foreign elements of a list, as orDash.
std::vector<std::string> foreignTexts(const RtxAnyList &list);

// " <x/> <y/> @k=v": foreign elements as they are, then foreign attributes, each behind a blank.
std::string extraTexts(const RtxAnyList &elements, const RtxAttrList &attributes);

// Heap copies, as a decoder makes them.
RtxXmlString xmlString(RuntimeContext *ctx, std::string_view text, bool cdata = false);
void addText(RuntimeContext *ctx, RtxList &list, const char *text); // null: an entry without text
void addForeign(RuntimeContext *ctx, RtxAnyList &list, const char *element);
void addAttribute(RuntimeContext *ctx, RtxAttrList &list, const char *name, const char *value);

void expectEmpty(const RtxXmlString &text);
void expectEmpty(const RtxHexBinary &bytes);
void expectEmpty(const RtxList &list);

} // namespace support
