#include "body.h"

#include <cstdio>

namespace body {

#define TEXT_DOCUMENT(R)                                                                                               \
  { #R, QxXmlE_##R, QxXmlE_##R##_StartElement, QxXmlE_##R##_Contents, QxXmlE_##R##_EndElement, QxXmlD_##R, QxXmlV_##R }
const TextDocument textDocuments[2] = {TEXT_DOCUMENT(type), TEXT_DOCUMENT(action)};
#undef TEXT_DOCUMENT

// ---- Records by hand ------------------------------------------------------------------------------------------

tAlternativeService &chooseAlternative(RuntimeContext *ctx, tIMS3GPP_1 &choice, const char *type, const char *reason) {
  choice.t = tIMS3GPP_1_alternative_service;
  tAlternativeService &service = choice.u.alternative_service;
  EXPECT_EQ(QxInit_tAlternativeService(ctx, &service), 0);
  service.type.value = rtxUTF8Strdup(ctx, type);
  service.reason.value = rtxUTF8Strdup(ctx, reason);
  return service;
}

void chooseInfo(RuntimeContext *ctx, tIMS3GPP_1 &choice, const char *text) {
  choice.t = tIMS3GPP_1_service_info;
  choice.u.service_info = {false, rtxUTF8Strdup(ctx, text)};
}

void fillCompletely(RuntimeContext *ctx, tIMS3GPP &record) {
  tAlternativeService &service = chooseAlternative(ctx, record._choice1, "emergency", "a<b");
  addForeign(ctx, service.anyElems, "<action>emergency-registration</action>");
  addForeign(ctx, service.anyElems, "<x:f xmlns:x=\"u\">1 &lt; 2</x:f>");
  addAttribute(ctx, service._anyAttr, "k", "1");
  addAttribute(ctx, service._anyAttr, "l", "2");
  record.version = 1.5;
  addForeign(ctx, record.anyElems, "<y/>");
  addForeign(ctx, record.anyElems, "<z/>");
  addAttribute(ctx, record._anyAttr, "k", "3");
  addAttribute(ctx, record._anyAttr, "l", "4");
}

const std::string completeDocument =
    "<ims-3gpp version=\"1.5\" k=\"3\" l=\"4\"><alternative-service k=\"1\" l=\"2\"><type>emergency</type>"
    "<reason>a&lt;b</reason><action>emergency-registration</action><x:f xmlns:x=\"u\">1 &lt; 2</x:f>"
    "</alternative-service><y/><z/></ims-3gpp>";

bool isUnset(const double &version) {
  unsigned char expected[sizeof(double)];
  std::memset(expected, pattern, sizeof expected);
  return std::memcmp(&version, expected, sizeof expected) == 0;
}

// ---- Records as text ------------------------------------------------------------------------------------------

std::string dump(const tAlternativeService &record) {
  EXPECT_FALSE(record.type.cdata || record.reason.cdata);
  return "type=" + support::orDash(record.type.value) + " reason=" + support::orDash(record.reason.value) +
         support::extraTexts(record.anyElems, record._anyAttr);
}

std::string dump(const tIMS3GPP_1 &record) {
  switch (record.t) {
  case 0: return "none";
  case 1: return "alternative(" + dump(record.u.alternative_service) + ")";
  case 2: return "info=" + support::orDash(record.u.service_info.value);
  default: return "t=" + std::to_string(record.t);
  }
}

std::string dump(const tIMS3GPP &record) {
  char version[40] = "unset";
  if (!isUnset(record.version)) std::snprintf(version, sizeof version, "%g", record.version);
  return dump(record._choice1) + " version=" + version + support::extraTexts(record.anyElems, record._anyAttr);
}

// ---- Reading and writing --------------------------------------------------------------------------------------

std::string errorsOf(RuntimeContext *ctx) { return support::errorsBySource(ctx, "QxXmlImCn"); }

Reading decodeInput(RuntimeContext *ctx) {
  auto record = Record<tIMS3GPP>::uninitialised(ctx);
  const int status = QxXmlD_ims_3gpp(ctx, record);
  record.owned = status != STATUS_READER_FAILED;
  return {status, record.owned ? dump(*record) : "", errorsOf(ctx)};
}

Reading decode(RuntimeContext *ctx, const std::string &document) {
  return support::readDocument(ctx, document, decodeInput);
}

Reading decode(const std::string &document) { return support::readDocument(document, decodeInput); }

int decodeStatus(RuntimeContext *ctx) { return decodeInput(ctx).status; }

static Reading validateInput(RuntimeContext *ctx) {
  const int status = QxXmlV_ims_3gpp(ctx);
  return {status, "", errorsOf(ctx)};
}

Reading validate(RuntimeContext *ctx, const std::string &document) {
  return support::readDocument(ctx, document, validateInput);
}

Reading validate(const std::string &document) { return support::readDocument(document, validateInput); }

Reading decodeTextInput(RuntimeContext *ctx, const TextDocument &document) {
  const char *const untouched = "untouched";
  RtxXmlString text = {true, untouched};
  const int status = document.decode(ctx, &text);
  const bool stored = text.value != untouched;
  EXPECT_EQ(text.cdata, !stored);
  Reading reading = {status, support::orDash(text.value), errorsOf(ctx)};
  if (stored) rtxMemHeapFreePtr(ctx, text.value);
  return reading;
}

Reading decodeText(RuntimeContext *ctx, const TextDocument &document, const std::string &text) {
  return support::readDocument(ctx, text, [&](RuntimeContext *c) { return decodeTextInput(c, document); });
}

std::string document(std::string_view content) {
  return "<ims-3gpp version=\"1\">" + std::string(content) + "</ims-3gpp>";
}

std::string alternative(std::string_view content) {
  return document("<alternative-service>" + std::string(content) + "</alternative-service>");
}

std::string encodeRecord(RuntimeContext *ctx, const tIMS3GPP *record) {
  return support::withoutDeclaration(
      support::encoded(ctx, [record](RuntimeContext *c) { return QxXmlE_ims_3gpp(c, record); }));
}

} // namespace body
