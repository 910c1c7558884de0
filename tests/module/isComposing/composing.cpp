#include "composing.h"

#include <cstring>

namespace composing {

RtxXmlString xmlString(RuntimeContext *ctx, const char *text, bool cdata) { return {cdata, rtxUTF8Strdup(ctx, text)}; }

Record::Record(RuntimeContext *context) : ctx(context) { std::memset(&value, 0xA5, sizeof value); }

Record::Record(RuntimeContext *context, const char *state) : Record(context) {
  EXPECT_EQ(QxInit_tns__isComposing(ctx, &value), 0);
  initialised = true;
  value.tns_state = xmlString(ctx, state);
}

Record::~Record() {
  if (initialised) QxMemFree_tns__isComposing(ctx, &value);
}

Record &Record::lastactive(const char *text) {
  value.tns_lastactive = xmlString(ctx, text);
  value.m |= tns__isComposing_has_lastactive;
  return *this;
}

Record &Record::contenttype(const char *text) {
  value.tns_contenttype = xmlString(ctx, text);
  value.m |= tns__isComposing_has_contenttype;
  return *this;
}

Record &Record::refresh(uint32_t seconds) {
  value.tns_refresh = seconds;
  value.m |= tns__isComposing_has_refresh;
  return *this;
}

Record &Record::foreign(const char *element) {
  auto *entry = static_cast<RtxXmlString *>(rtxMemHeapAlloc(ctx, sizeof(RtxXmlString)));
  *entry = xmlString(ctx, element);
  rtxDListAppend(ctx, &value.anyElems.items, entry);
  return *this;
}

std::string dump(const tns__isComposing &record) {
  const auto show = [](const RtxXmlString &text) { return text.value == nullptr ? "-"s : std::string(text.value); };
  std::string all = "state=" + show(record.tns_state);
  if ((record.m & tns__isComposing_has_lastactive) != 0) all += " lastactive=" + show(record.tns_lastactive);
  if ((record.m & tns__isComposing_has_contenttype) != 0) all += " contenttype=" + show(record.tns_contenttype);
  if ((record.m & tns__isComposing_has_refresh) != 0) all += " refresh=" + std::to_string(record.tns_refresh);
  if ((record.m & ~7u) != 0) all += " m=" + std::to_string(record.m);
  for (const std::string &element : foreignTexts(record))
    all += " any=" + element;
  return all;
}

std::vector<std::string> foreignTexts(const tns__isComposing &record) {
  std::vector<std::string> texts;
  const RtxList &list = record.anyElems.items;
  const RtxListNode *last = nullptr;
  for (const RtxListNode *node = list.head; node != nullptr; node = node->next) {
    EXPECT_EQ(node->prev, last);
    last = node;
    const auto *entry = static_cast<const RtxXmlString *>(node->data);
    texts.push_back(entry->value == nullptr ? "-" : entry->value);
  }
  EXPECT_EQ(list.tail, last);
  EXPECT_EQ(list.count, texts.size());
  return texts;
}

Reading decodeInput(RuntimeContext *ctx) {
  Record record(ctx);
  const int status = QxXmlD_tns_isComposing(ctx, record);
  record.initialised = status != STATUS_READER_FAILED;
  return {status, record.initialised ? dump(record.get()) : "", support::errors(ctx)};
}

Reading decode(RuntimeContext *ctx, const std::string &document) {
  return support::readDocument(ctx, document, decodeInput);
}

Reading decode(const std::string &document) { return support::readDocument(document, decodeInput); }

int decodeStatus(RuntimeContext *ctx) { return decodeInput(ctx).status; }

static Reading validateInput(RuntimeContext *ctx) {
  const int status = QxXmlV_tns_isComposing(ctx);
  return {status, "", support::errors(ctx)};
}

Reading validate(RuntimeContext *ctx, const std::string &document) {
  return support::readDocument(ctx, document, validateInput);
}

Reading validate(const std::string &document) { return support::readDocument(document, validateInput); }

std::string document(std::string_view content) {
  return "<isComposing xmlns=\""s + namespaceUri + "\">" + std::string(content) + "</isComposing>";
}

std::string encodeRecord(RuntimeContext *ctx, const tns__isComposing *record) {
  return support::withoutDeclaration(
      support::encoded(ctx, [record](RuntimeContext *c) { return QxXmlE_tns_isComposing(c, record); }));
}

} // namespace composing
