#include "settings.h"

namespace settings {

// ---- Records by hand ------------------------------------------------------------------------------------------

entityType *addEntity(RuntimeContext *ctx, poc_settingsType &record, const char *id) {
  auto *entity = static_cast<entityType *>(rtxMemHeapAlloc(ctx, sizeof(entityType)));
  std::memset(static_cast<void *>(entity), pattern, sizeof *entity);
  EXPECT_EQ(QxInit_entityType(ctx, entity), 0);
  if (id != nullptr) entity->id = xmlString(ctx, id);
  rtxDListAppend(ctx, &record.entity, entity);
  return entity;
}

void fillCompletely(RuntimeContext *ctx, poc_settingsType &record) {
  for (const char *id : {"a", "b"}) {
    entityType &entity = *addEntity(ctx, record, id);
    entity.m = 15;
    const std::string prefix = id;
    int number = 0;
    forEachSetting(entity, [&]<typename Setting>(Setting &setting) {
      valueOf(setting) = number++ % 2 != 0;
      addForeign(ctx, setting.anyElems, ("<" + prefix + std::to_string(number) + "/>").c_str());
      addForeign(ctx, setting.anyElems, "<y/>");
      addAttribute(ctx, setting._anyAttr, "k", (prefix + std::to_string(number)).c_str());
      addAttribute(ctx, setting._anyAttr, "l", "2");
    });
    addForeign(ctx, entity.anyElems, "<x:f xmlns:x=\"u\">1 &lt; 2</x:f>");
    addForeign(ctx, entity.anyElems, "<y/>");
    addAttribute(ctx, entity._anyAttr, "k", "3");
    addAttribute(ctx, entity._anyAttr, "l", "4");
  }
  addForeign(ctx, record.anyElems, "<z/>");
  addForeign(ctx, record.anyElems, "<y/>");
  addAttribute(ctx, record._anyAttr, "k", "5");
  addAttribute(ctx, record._anyAttr, "l", "6");
}

const std::string completeDocument =
    "<poc-settings xmlns=\"urn:oma:params:xml:ns:poc:poc-settings\" k=\"5\" l=\"6\">"
    "<entity id=\"a\" k=\"3\" l=\"4\">"
    "<isb-settings k=\"a1\" l=\"2\"><incoming-session-barring active=\"false\"/><a1/><y/></isb-settings>"
    "<am-settings k=\"a2\" l=\"2\"><answer-mode>manual</answer-mode><a2/><y/></am-settings>"
    "<ipab-settings k=\"a3\" l=\"2\"><incoming-personal-alert-barring active=\"false\"/><a3/><y/></ipab-settings>"
    "<sss-settings k=\"a4\" l=\"2\"><simultaneous-sessions-support active=\"true\"/><a4/><y/></sss-settings>"
    "<x:f xmlns:x=\"u\">1 &lt; 2</x:f><y/></entity>"
    "<entity id=\"b\" k=\"3\" l=\"4\">"
    "<isb-settings k=\"b1\" l=\"2\"><incoming-session-barring active=\"false\"/><b1/><y/></isb-settings>"
    "<am-settings k=\"b2\" l=\"2\"><answer-mode>manual</answer-mode><b2/><y/></am-settings>"
    "<ipab-settings k=\"b3\" l=\"2\"><incoming-personal-alert-barring active=\"false\"/><b3/><y/></ipab-settings>"
    "<sss-settings k=\"b4\" l=\"2\"><simultaneous-sessions-support active=\"true\"/><b4/><y/></sss-settings>"
    "<x:f xmlns:x=\"u\">1 &lt; 2</x:f><y/></entity>"
    "<z/><y/></poc-settings>";

// ---- Records as text ------------------------------------------------------------------------------------------

namespace {

// The byte of a boolean, which may be none.
std::string flag(const bool &active) {
  unsigned char byte = 0;
  std::memcpy(&byte, &active, 1);
  if (byte > 1) return byte == pattern ? "active=unset" : "active=" + std::to_string(byte);
  return byte == 0 ? "active=false" : "active=true";
}

} // namespace

std::string dump(const isbSettingType_incoming_session_barring &record) { return flag(record.active); }
std::string dump(const ipabSettingType_incoming_personal_alert_barring &record) { return flag(record.active); }
std::string dump(const sssSettingType_simultaneous_sessions_support &record) { return flag(record.active); }

std::string dump(const isbSettingType &record) {
  return dump(record.incoming_session_barring) + support::extraTexts(record.anyElems, record._anyAttr);
}

std::string dump(const ipabSettingType &record) {
  return dump(record.incoming_personal_alert_barring) + support::extraTexts(record.anyElems, record._anyAttr);
}

std::string dump(const sssSettingType &record) {
  return dump(record.simultaneous_sessions_support) + support::extraTexts(record.anyElems, record._anyAttr);
}

std::string dump(const amSettingType &record) {
  std::string mode = std::to_string(record.answer_mode);
  if (record.answer_mode == 0) mode = "automatic";
  if (record.answer_mode == 1) mode = "manual";
  if (record.answer_mode == 0xA5A5) mode = "unset";
  return "mode=" + mode + support::extraTexts(record.anyElems, record._anyAttr);
}

std::string dump(const entityType &record) {
  std::string all = "id=" + support::orDash(record.id.value);
  EXPECT_FALSE(record.id.cdata);
  if ((record.m & 1) != 0) all += " isb(" + dump(record.isb_settings) + ")";
  if ((record.m & 2) != 0) all += " am(" + dump(record.am_settings) + ")";
  if ((record.m & 4) != 0) all += " ipab(" + dump(record.ipab_settings) + ")";
  if ((record.m & 8) != 0) all += " sss(" + dump(record.sss_settings) + ")";
  if ((record.m & ~15u) != 0) all += " m=" + std::to_string(record.m);
  return all + support::extraTexts(record.anyElems, record._anyAttr);
}

std::string dump(const poc_settingsType &record) {
  std::string all;
  support::forEachItem<const entityType>(
      record.entity, [&](const entityType &entity) { all += (all.empty() ? "[" : " [") + dump(entity) + "]"; });
  return all + support::extraTexts(record.anyElems, record._anyAttr);
}

// ---- Reading and writing --------------------------------------------------------------------------------------

std::string errorsOf(RuntimeContext *ctx) { return support::errorsBySource(ctx, "QxXmlPocSettings"); }

Reading decodeInput(RuntimeContext *ctx) {
  auto record = Record<poc_settingsType>::uninitialised(ctx);
  const int status = QxXmlD_poc_settings(ctx, record);
  record.owned = status != STATUS_READER_FAILED;
  return {status, record.owned ? dump(*record) : "", errorsOf(ctx)};
}

Reading decode(RuntimeContext *ctx, const std::string &document) {
  return support::readDocument(ctx, document, decodeInput);
}

Reading decode(const std::string &document) { return support::readDocument(document, decodeInput); }

int decodeStatus(RuntimeContext *ctx) { return decodeInput(ctx).status; }

static Reading validateInput(RuntimeContext *ctx) {
  const int status = QxXmlV_poc_settings(ctx);
  return {status, "", errorsOf(ctx)};
}

Reading validate(RuntimeContext *ctx, const std::string &document) {
  return support::readDocument(ctx, document, validateInput);
}

Reading validate(const std::string &document) { return support::readDocument(document, validateInput); }

std::string document(std::string_view content) {
  return "<poc-settings xmlns=\""s + namespaceUri + "\">" + std::string(content) + "</poc-settings>";
}

std::string entityDocument(std::string_view content) {
  return document("<entity id=\"e\">" + std::string(content) + "</entity>");
}

std::string encodeRecord(RuntimeContext *ctx, const poc_settingsType *record) {
  return support::withoutDeclaration(
      support::encoded(ctx, [record](RuntimeContext *c) { return QxXmlE_poc_settings(c, record); }));
}

} // namespace settings
