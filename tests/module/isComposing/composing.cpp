#include "composing.h"

namespace composing {

Record::Record(RuntimeContext *context, const char *state) : support::Record<tns__isComposing>(context) {
  if (state != nullptr) value.tns_state = xmlString(ctx, state);
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
  support::addForeign(ctx, value.anyElems, element);
  return *this;
}

std::string dump(const tns__isComposing &record) {
  std::string all = "state=" + orDash(record.tns_state.value);
  if ((record.m & tns__isComposing_has_lastactive) != 0) all += " lastactive=" + orDash(record.tns_lastactive.value);
  if ((record.m & tns__isComposing_has_contenttype) != 0) all += " contenttype=" + orDash(record.tns_contenttype.value);
  if ((record.m & tns__isComposing_has_refresh) != 0) all += " refresh=" + std::to_string(record.tns_refresh);
  if ((record.m & ~7u) != 0) all += " m=" + std::to_string(record.m);
  for (const std::string &element : foreignTexts(record.anyElems))
    all += " any=" + element;
  return all;
}

Reading decodeInput(RuntimeContext *ctx) {
  auto record = Record::uninitialised(ctx);
  const int status = QxXmlD_tns_isComposing(ctx, record);
  record.owned = status != STATUS_READER_FAILED;
  return {status, record.owned ? dump(record.get()) : "", support::errors(ctx)};
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
