// What the tests of push-to-talk settings share.
#pragma once

#include "PocSettings/QxXmlPocSettings.h"
#include "context.h"
#include "documentReading.h"
#include "documents.h"
#include "errors.h"
#include "lists.h"
#include "output.h"
#include "record.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace settings {

// What a type's own element may hold.
enum class Shape {
  active,  // nothing but the attribute; the record owns nothing
  setting, // one element, then foreign ones
  entity,
  root
};

inline void ownsNothing(RuntimeContext *, void *) {}

} // namespace settings

#define SETTINGS_FUNCTIONS(T, ELEMENT, SHAPE, FREE)                                                                    \
  template <> struct support::Functions<T> {                                                                           \
    static constexpr const char *element = ELEMENT;                                                                    \
    static constexpr settings::Shape shape = settings::Shape::SHAPE;                                                   \
    static constexpr auto attributes = QxXmlET_##T##_Attrs;                                                            \
    static void release(RuntimeContext *ctx, T *record) { FREE(ctx, record); }                                         \
    RECORD_FUNCTIONS(T)                                                                                                \
    HANDLER_FUNCTIONS(T)                                                                                               \
  };
SETTINGS_FUNCTIONS(isbSettingType_incoming_session_barring, "incoming-session-barring", active, settings::ownsNothing)
SETTINGS_FUNCTIONS(isbSettingType, "isb-settings", setting, QxMemFree_isbSettingType)
SETTINGS_FUNCTIONS(amSettingType, "am-settings", setting, QxMemFree_amSettingType)
SETTINGS_FUNCTIONS(ipabSettingType_incoming_personal_alert_barring, "incoming-personal-alert-barring", active,
                   settings::ownsNothing)
SETTINGS_FUNCTIONS(ipabSettingType, "ipab-settings", setting, QxMemFree_ipabSettingType)
SETTINGS_FUNCTIONS(sssSettingType_simultaneous_sessions_support, "simultaneous-sessions-support", active,
                   settings::ownsNothing)
SETTINGS_FUNCTIONS(sssSettingType, "sss-settings", setting, QxMemFree_sssSettingType)
SETTINGS_FUNCTIONS(entityType, "entity", entity, QxMemFree_entityType)
SETTINGS_FUNCTIONS(poc_settingsType, "poc-settings", root, QxMemFree_poc_settingsType)
#undef SETTINGS_FUNCTIONS

namespace settings {

using namespace std::string_literals;
using namespace std::string_view_literals;
using support::addAttribute;
using support::addForeign;
using support::foreignTexts;
using support::Functions;
using support::pattern;
using support::Reading;
using support::Record;
using support::xmlString;

inline constexpr const char *namespaceUri = "urn:oma:params:xml:ns:poc:poc-settings";

// ---- Functions by type ----------------------------------------------------------------------------------------

// Calls test<T>() for each record type.
template <typename Test> void forEachType(const Test &test) {
  support::forEachType<isbSettingType_incoming_session_barring, isbSettingType, amSettingType,
                       ipabSettingType_incoming_personal_alert_barring, ipabSettingType,
                       sssSettingType_simultaneous_sessions_support, sssSettingType, entityType, poc_settingsType>(
      test);
}

// The value in a settings record of any of the four types: active, or the answer mode.
inline bool &valueOf(isbSettingType &setting) { return setting.incoming_session_barring.active; }
inline uint16_t &valueOf(amSettingType &setting) { return setting.answer_mode; }
inline bool &valueOf(ipabSettingType &setting) { return setting.incoming_personal_alert_barring.active; }
inline bool &valueOf(sssSettingType &setting) { return setting.simultaneous_sessions_support.active; }

// Calls test(setting) for each setting of an entity, in the order of their bits.
template <typename Entity, typename Test> void forEachSetting(Entity &entity, Test test) {
  test(entity.isb_settings);
  test(entity.am_settings);
  test(entity.ipab_settings);
  test(entity.sss_settings);
}

// ---- Records by hand ------------------------------------------------------------------------------------------

entityType *addEntity(RuntimeContext *ctx, poc_settingsType &record, const char *id);

// Every member present, each with a value of its own.
void fillCompletely(RuntimeContext *ctx, poc_settingsType &record);

// What QxXmlE_poc_settings writes for that, without the XML declaration.
extern const std::string completeDocument;

// ---- Records as text ------------------------------------------------------------------------------------------

// "active=true" or "mode=manual", a value that nobody wrote as "unset"; behind it foreign elements as they are and
// foreign attributes as "@name=value", each after a blank.
std::string dump(const isbSettingType_incoming_session_barring &record);
std::string dump(const isbSettingType &record);
std::string dump(const amSettingType &record);
std::string dump(const ipabSettingType_incoming_personal_alert_barring &record);
std::string dump(const ipabSettingType &record);
std::string dump(const sssSettingType_simultaneous_sessions_support &record);
std::string dump(const sssSettingType &record);
// "id=a isb(active=true) am(mode=manual) ipab(active=false) sss(active=true) <x/> @k=v".
std::string dump(const entityType &record);
// "[id=a] [id=b] <x/> @k=v".
std::string dump(const poc_settingsType &record);

// ---- Reading and writing --------------------------------------------------------------------------------------

// As support::errors, with the ending of the source alone for a place: "-41(bogus)@runtime/reader<SAX".
std::string errorsOf(RuntimeContext *ctx);

// Decodes, validates the context's input, and releases what it got.
Reading decodeInput(RuntimeContext *ctx);
Reading decode(RuntimeContext *ctx, const std::string &document);
Reading decode(const std::string &document);
int decodeStatus(RuntimeContext *ctx);
Reading validate(RuntimeContext *ctx, const std::string &document);
Reading validate(const std::string &document);

// A document with the module's namespace as the default one around content.
std::string document(std::string_view content);
// The same with an entity "e" around it.
std::string entityDocument(std::string_view content);

std::string encodeRecord(RuntimeContext *ctx, const poc_settingsType *record);
} // namespace settings
