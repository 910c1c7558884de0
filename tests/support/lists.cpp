#include "lists.h"

namespace support {

std::string orDash(const char *text) { return text == nullptr ? "-" : text; }

std::vector<std::string> foreignTexts(const RtxAnyList &list) {
  std::vector<std::string> texts;
  forEachItem<const RtxXmlString>(list.items, [&](const RtxXmlString &text) { texts.push_back(orDash(text.value)); });
  return texts;
}

std::string extraTexts(const RtxAnyList &elements, const RtxAttrList &attributes) {
  std::string all;
  for (const std::string &element : foreignTexts(elements))
    all += " " + element;
  forEachItem<const RtxNamePair>(
      attributes.items, [&](const RtxNamePair &pair) { all += " @" + orDash(pair.name) + "=" + orDash(pair.value); });
  return all;
}

RtxXmlString xmlString(RuntimeContext *ctx, std::string_view text, bool cdata) {
  return {cdata, rtxUTF8Strdup(ctx, std::string(text).c_str())};
}

void addText(RuntimeContext *ctx, RtxList &list, const char *text) {
  auto *entry = static_cast<RtxXmlString *>(rtxMemHeapAlloc(ctx, sizeof(RtxXmlString)));
  *entry = {false, rtxUTF8Strdup(ctx, text)};
  rtxDListAppend(ctx, &list, entry);
}

void addForeign(RuntimeContext *ctx, RtxAnyList &list, const char *element) { addText(ctx, list.items, element); }

void addAttribute(RuntimeContext *ctx, RtxAttrList &list, const char *name, const char *value) {
  auto *pair = static_cast<RtxNamePair *>(rtxMemHeapAlloc(ctx, sizeof(RtxNamePair)));
  *pair = {rtxUTF8Strdup(ctx, name), rtxUTF8Strdup(ctx, value)};
  rtxDListAppend(ctx, &list.items, pair);
}

void expectEmpty(const RtxXmlString &text) {
  EXPECT_FALSE(text.cdata);
  EXPECT_EQ(text.value, nullptr);
}

void expectEmpty(const RtxHexBinary &bytes) {
  EXPECT_EQ(bytes.length, 0u);
  EXPECT_EQ(bytes.bytes, nullptr);
}

void expectEmpty(const RtxList &list) {
  EXPECT_EQ(list.count, 0u);
  EXPECT_EQ(list.head, nullptr);
  EXPECT_EQ(list.tail, nullptr);
}

} // namespace support
