// What the tests of push-to-talk settings share.
#pragma once

#include "PocSettings/QxXmlPocSettings.h"
#include "context.h"
#include "documentReading.h"
#include "documents.h"
#include "errors.h"
#include "output.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace settings {

using namespace std::string_literals;
using namespace std::string_view_literals;
using support::Reading;

inline constexpr const char *namespaceUri = "urn:oma:params:xml:ns:poc:poc-settings";

// ---- Functions by type ----------------------------------------------------------------------------------------

// What a type's own element may hold.
enum class Shape {
  active,  // nothing but the attribute; the record owns nothing
  setting, // one element, then foreign ones
  entity,
  root
};

template <typename T> struct Functions;

#define SETTINGS_FUNCTIONS(T, ELEMENT, SHAPE, FREE)                                                                    \
  template <> struct Functions<T> {                                                                                    \
    static constexpr const char *name = #T;                                                                            \
    static constexpr const char *element = ELEMENT;                                                                    \
    static constexpr Shape shape = Shape::SHAPE;                                                                       \
    static constexpr auto init = QxInit_##T;                                                                           \
    static constexpr int (*release)(RuntimeContext *, T *) = FREE;                                                     \
    static constexpr auto print = QxPrint_##T;                                                                         \
    static constexpr auto encode = QxXmlET_##T;                                                                        \
    static constexpr auto startElement = QxXmlET_##T##_StartElement;                                                   \
    static constexpr auto attributes = QxXmlET_##T##_Attrs;                                                            \
    static constexpr auto contents = QxXmlET_##T##_Contents;                                                           \
    static constexpr auto endElement = QxXmlET_##T##_EndElement;                                                       \
    struct Filling {                                                                                                   \
      using Handler = SaxTypeHandler;                                                                                  \
      static int init(RuntimeContext *ctx, Handler *handler, T *record, int32_t level) {                               \
        return QxSAX_##T##_init(ctx, handler, record, level);                                                          \
      }                                                                                                                \
      static constexpr auto start = QxSAX_##T##_startElement;                                                          \
      static constexpr auto characters = QxSAX_##T##_characters;                                                       \
      static constexpr auto end = QxSAX_##T##_endElement;                                                              \
    };                                                                                                                 \
    struct Checking {                                                                                                  \
      using Handler = VsaxTypeHandler;                                                                                 \
      static int init(RuntimeContext *ctx, Handler *handler, T *, int32_t level) {                                     \
        return QxVSAX_##T##_init(ctx, handler, level);                                                                 \
      }                                                                                                                \
      static constexpr auto start = QxVSAX_##T##_startElement;                                                         \
      static constexpr auto characters = QxVSAX_##T##_characters;                                                      \
      static constexpr auto end = QxVSAX_##T##_endElement;                                                             \
    };                                                                                                                 \
  };
SETTINGS_FUNCTIONS(isbSettingType_incoming_session_barring, "incoming-session-barring", active, nullptr)
SETTINGS_FUNCTIONS(isbSettingType, "isb-settings", setting, QxMemFree_isbSettingType)
SETTINGS_FUNCTIONS(amSettingType, "am-settings", setting, QxMemFree_amSettingType)
SETTINGS_FUNCTIONS(ipabSettingType_incoming_personal_alert_barring, "incoming-personal-alert-barring", active, nullptr)
SETTINGS_FUNCTIONS(ipabSettingType, "ipab-settings", setting, QxMemFree_ipabSettingType)
SETTINGS_FUNCTIONS(sssSettingType_simultaneous_sessions_support, "simultaneous-sessions-support", active, nullptr)
SETTINGS_FUNCTIONS(sssSettingType, "sss-settings", setting, QxMemFree_sssSettingType)
SETTINGS_FUNCTIONS(entityType, "entity", entity, QxMemFree_entityType)
SETTINGS_FUNCTIONS(poc_settingsType, "poc-settings", root, QxMemFree_poc_settingsType)
#undef SETTINGS_FUNCTIONS

// Calls test<T>() for each record type.
template <typename Test> void forEachType(Test test) {
  const auto run = [&]<typename T>() {
    SCOPED_TRACE(Functions<T>::name);
    test.template operator()<T>();
  };
  run.template operator()<isbSettingType_incoming_session_barring>();
  run.template operator()<isbSettingType>();
  run.template operator()<amSettingType>();
  run.template operator()<ipabSettingType_incoming_personal_alert_barring>();
  run.template operator()<ipabSettingType>();
  run.template operator()<sssSettingType_simultaneous_sessions_support>();
  run.template operator()<sssSettingType>();
  run.template operator()<entityType>();
  run.template operator()<poc_settingsType>();
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

inline constexpr unsigned char pattern = 0xA5; // of storage that nobody wrote

RtxXmlString xmlString(RuntimeContext *ctx, std::string_view text, bool cdata = false);
void addForeign(RuntimeContext *ctx, RtxAnyList &list, const char *element); // null: an entry without text
void addAttribute(RuntimeContext *ctx, RtxAttrList &list, const char *name, const char *value);
entityType *addEntity(RuntimeContext *ctx, poc_settingsType &record, const char *id);

// Every member present, each with a value of its own.
void fillCompletely(RuntimeContext *ctx, poc_settingsType &record);

// What QxXmlE_poc_settings writes for that, without the XML declaration.
extern const std::string completeDocument;

// An initialised record in storage that had a pattern in it, released at its end.
template <typename T> class Record {
public:
  explicit Record(RuntimeContext *context) : Record(context, true) {}
  // Storage with the pattern alone, for a decoder.
  static Record uninitialised(RuntimeContext *context) { return Record(context, false); }
  ~Record() {
    if constexpr (Functions<T>::shape != Shape::active) {
      if (owned) Functions<T>::release(ctx, &value);
    }
  }
  Record(const Record &) = delete;
  Record &operator=(const Record &) = delete;

  operator T *() { return &value; }
  T *operator->() { return &value; }
  T &operator*() { return value; }
  const T &get() const { return value; }

  bool owned; // release it at the end

private:
  Record(RuntimeContext *context, bool initialise) : owned(initialise), ctx(context) {
    std::memset(static_cast<void *>(&value), pattern, sizeof value);
    if (initialise) {
      EXPECT_EQ(Functions<T>::init(ctx, &value), 0);
    }
  }

  RuntimeContext *ctx;
  T value;
};

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

std::vector<std::string> foreignTexts(const RtxAnyList &list);

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
