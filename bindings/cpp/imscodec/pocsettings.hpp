// Written by generate from the dump of the tables; do not edit.
// clang-format off
#pragma once

#include "PocSettings/QxXmlPocSettings.h"
#include "imscodec/core.hpp"

namespace imscodec::pocsettings {

enum class amSettingType_answer_mode : std::uint16_t {
  automatic = 0,
  manual = 1,
};

using imscodec::text; // found by the type of the code

// isbSettingType_incoming_session_barring
class isbSettingType_incoming_session_barring : public View<::isbSettingType_incoming_session_barring> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_isbSettingType_incoming_session_barring(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
  }
  static void print(const char *name, const Raw *record) { QxPrint_isbSettingType_incoming_session_barring(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<bool>("active", record.active...);
  }

  bool active() const { return raw().active; }
  void set_active(bool value) { raw().active = value; }
};

// isbSettingType
class isbSettingType : public View<::isbSettingType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_isbSettingType(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_isbSettingType(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_isbSettingType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<imscodec::pocsettings::isbSettingType_incoming_session_barring>("incoming_session_barring", record.incoming_session_barring...) &&
           visitor.template member<List<Foreign>>("", record.anyElems...) &&
           visitor.template member<List<Attribute>>("_anyAttr", record._anyAttr...);
  }

  imscodec::pocsettings::isbSettingType_incoming_session_barring incoming_session_barring() const { return imscodec::pocsettings::isbSettingType_incoming_session_barring(raw().incoming_session_barring); }

  List<Foreign> anyElems() const { return List<Foreign>(raw().anyElems.items); }
  [[nodiscard]] bool add_anyElems(Context &context, std::string_view xml) {
    return detail::appendText(context.get(), raw().anyElems.items, xml);
  }

  List<Attribute> anyAttr() const { return List<Attribute>(raw()._anyAttr.items); }
  [[nodiscard]] bool add_anyAttr(Context &context, std::string_view name, std::string_view value) {
    return detail::appendPair<RtxNamePair>(context.get(), raw()._anyAttr.items, name, value);
  }
};

// amSettingType
class amSettingType : public View<::amSettingType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_amSettingType(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_amSettingType(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_amSettingType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<imscodec::pocsettings::amSettingType_answer_mode>("answer_mode", record.answer_mode...) &&
           visitor.template member<List<Foreign>>("", record.anyElems...) &&
           visitor.template member<List<Attribute>>("_anyAttr", record._anyAttr...);
  }

  imscodec::pocsettings::amSettingType_answer_mode answer_mode() const { return static_cast<imscodec::pocsettings::amSettingType_answer_mode>(raw().answer_mode); }
  void set_answer_mode(imscodec::pocsettings::amSettingType_answer_mode value) { raw().answer_mode = static_cast<std::uint16_t>(value); }

  List<Foreign> anyElems() const { return List<Foreign>(raw().anyElems.items); }
  [[nodiscard]] bool add_anyElems(Context &context, std::string_view xml) {
    return detail::appendText(context.get(), raw().anyElems.items, xml);
  }

  List<Attribute> anyAttr() const { return List<Attribute>(raw()._anyAttr.items); }
  [[nodiscard]] bool add_anyAttr(Context &context, std::string_view name, std::string_view value) {
    return detail::appendPair<RtxNamePair>(context.get(), raw()._anyAttr.items, name, value);
  }
};

// ipabSettingType_incoming_personal_alert_barring
class ipabSettingType_incoming_personal_alert_barring : public View<::ipabSettingType_incoming_personal_alert_barring> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_ipabSettingType_incoming_personal_alert_barring(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
  }
  static void print(const char *name, const Raw *record) { QxPrint_ipabSettingType_incoming_personal_alert_barring(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<bool>("active", record.active...);
  }

  bool active() const { return raw().active; }
  void set_active(bool value) { raw().active = value; }
};

// ipabSettingType
class ipabSettingType : public View<::ipabSettingType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_ipabSettingType(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_ipabSettingType(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_ipabSettingType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<imscodec::pocsettings::ipabSettingType_incoming_personal_alert_barring>("incoming_personal_alert_barring", record.incoming_personal_alert_barring...) &&
           visitor.template member<List<Foreign>>("", record.anyElems...) &&
           visitor.template member<List<Attribute>>("_anyAttr", record._anyAttr...);
  }

  imscodec::pocsettings::ipabSettingType_incoming_personal_alert_barring incoming_personal_alert_barring() const { return imscodec::pocsettings::ipabSettingType_incoming_personal_alert_barring(raw().incoming_personal_alert_barring); }

  List<Foreign> anyElems() const { return List<Foreign>(raw().anyElems.items); }
  [[nodiscard]] bool add_anyElems(Context &context, std::string_view xml) {
    return detail::appendText(context.get(), raw().anyElems.items, xml);
  }

  List<Attribute> anyAttr() const { return List<Attribute>(raw()._anyAttr.items); }
  [[nodiscard]] bool add_anyAttr(Context &context, std::string_view name, std::string_view value) {
    return detail::appendPair<RtxNamePair>(context.get(), raw()._anyAttr.items, name, value);
  }
};

// sssSettingType_simultaneous_sessions_support
class sssSettingType_simultaneous_sessions_support : public View<::sssSettingType_simultaneous_sessions_support> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_sssSettingType_simultaneous_sessions_support(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
  }
  static void print(const char *name, const Raw *record) { QxPrint_sssSettingType_simultaneous_sessions_support(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<bool>("active", record.active...);
  }

  bool active() const { return raw().active; }
  void set_active(bool value) { raw().active = value; }
};

// sssSettingType
class sssSettingType : public View<::sssSettingType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_sssSettingType(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_sssSettingType(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_sssSettingType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<imscodec::pocsettings::sssSettingType_simultaneous_sessions_support>("simultaneous_sessions_support", record.simultaneous_sessions_support...) &&
           visitor.template member<List<Foreign>>("", record.anyElems...) &&
           visitor.template member<List<Attribute>>("_anyAttr", record._anyAttr...);
  }

  imscodec::pocsettings::sssSettingType_simultaneous_sessions_support simultaneous_sessions_support() const { return imscodec::pocsettings::sssSettingType_simultaneous_sessions_support(raw().simultaneous_sessions_support); }

  List<Foreign> anyElems() const { return List<Foreign>(raw().anyElems.items); }
  [[nodiscard]] bool add_anyElems(Context &context, std::string_view xml) {
    return detail::appendText(context.get(), raw().anyElems.items, xml);
  }

  List<Attribute> anyAttr() const { return List<Attribute>(raw()._anyAttr.items); }
  [[nodiscard]] bool add_anyAttr(Context &context, std::string_view name, std::string_view value) {
    return detail::appendPair<RtxNamePair>(context.get(), raw()._anyAttr.items, name, value);
  }
};

// entityType
class entityType : public View<::entityType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_entityType(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_entityType(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_entityType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template optional<imscodec::pocsettings::isbSettingType>("isb_settings", entityType_has_isb_settings, record.m..., record.isb_settings...) &&
           visitor.template optional<imscodec::pocsettings::amSettingType>("am_settings", entityType_has_am_settings, record.m..., record.am_settings...) &&
           visitor.template optional<imscodec::pocsettings::ipabSettingType>("ipab_settings", entityType_has_ipab_settings, record.m..., record.ipab_settings...) &&
           visitor.template optional<imscodec::pocsettings::sssSettingType>("sss_settings", entityType_has_sss_settings, record.m..., record.sss_settings...) &&
           visitor.template member<List<Foreign>>("", record.anyElems...) &&
           visitor.template member<std::string_view>("id", record.id...) &&
           visitor.template member<List<Attribute>>("_anyAttr", record._anyAttr...);
  }

  Optional<imscodec::pocsettings::isbSettingType> isb_settings() const { return {has(entityType_has_isb_settings), &raw().isb_settings}; }
  imscodec::pocsettings::isbSettingType make_isb_settings(Context &context) {
    return makeOptional<imscodec::pocsettings::isbSettingType>(context, entityType_has_isb_settings, raw().isb_settings);
  }
  void clear_isb_settings(Context &context) { disposeOptional<imscodec::pocsettings::isbSettingType>(context, entityType_has_isb_settings, raw().isb_settings); }

  Optional<imscodec::pocsettings::amSettingType> am_settings() const { return {has(entityType_has_am_settings), &raw().am_settings}; }
  imscodec::pocsettings::amSettingType make_am_settings(Context &context) {
    return makeOptional<imscodec::pocsettings::amSettingType>(context, entityType_has_am_settings, raw().am_settings);
  }
  void clear_am_settings(Context &context) { disposeOptional<imscodec::pocsettings::amSettingType>(context, entityType_has_am_settings, raw().am_settings); }

  Optional<imscodec::pocsettings::ipabSettingType> ipab_settings() const { return {has(entityType_has_ipab_settings), &raw().ipab_settings}; }
  imscodec::pocsettings::ipabSettingType make_ipab_settings(Context &context) {
    return makeOptional<imscodec::pocsettings::ipabSettingType>(context, entityType_has_ipab_settings, raw().ipab_settings);
  }
  void clear_ipab_settings(Context &context) { disposeOptional<imscodec::pocsettings::ipabSettingType>(context, entityType_has_ipab_settings, raw().ipab_settings); }

  Optional<imscodec::pocsettings::sssSettingType> sss_settings() const { return {has(entityType_has_sss_settings), &raw().sss_settings}; }
  imscodec::pocsettings::sssSettingType make_sss_settings(Context &context) {
    return makeOptional<imscodec::pocsettings::sssSettingType>(context, entityType_has_sss_settings, raw().sss_settings);
  }
  void clear_sss_settings(Context &context) { disposeOptional<imscodec::pocsettings::sssSettingType>(context, entityType_has_sss_settings, raw().sss_settings); }

  List<Foreign> anyElems() const { return List<Foreign>(raw().anyElems.items); }
  [[nodiscard]] bool add_anyElems(Context &context, std::string_view xml) {
    return detail::appendText(context.get(), raw().anyElems.items, xml);
  }

  std::string_view id() const { return textOf(raw().id); }
  [[nodiscard]] bool set_id(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().id, text, true);
  }

  List<Attribute> anyAttr() const { return List<Attribute>(raw()._anyAttr.items); }
  [[nodiscard]] bool add_anyAttr(Context &context, std::string_view name, std::string_view value) {
    return detail::appendPair<RtxNamePair>(context.get(), raw()._anyAttr.items, name, value);
  }
};

// poc_settingsType
class poc_settingsType : public View<::poc_settingsType> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_poc_settingsType(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_poc_settingsType(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_poc_settingsType(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<List<imscodec::pocsettings::entityType>>("entity", record.entity...) &&
           visitor.template member<List<Foreign>>("", record.anyElems...) &&
           visitor.template member<List<Attribute>>("_anyAttr", record._anyAttr...);
  }

  List<imscodec::pocsettings::entityType> entity() const { return List<imscodec::pocsettings::entityType>(raw().entity); }
  [[nodiscard]] Optional<imscodec::pocsettings::entityType> add_entity(Context &context) {
    return detail::appendRecord<imscodec::pocsettings::entityType>(context.get(), raw().entity);
  }

  List<Foreign> anyElems() const { return List<Foreign>(raw().anyElems.items); }
  [[nodiscard]] bool add_anyElems(Context &context, std::string_view xml) {
    return detail::appendText(context.get(), raw().anyElems.items, xml);
  }

  List<Attribute> anyAttr() const { return List<Attribute>(raw()._anyAttr.items); }
  [[nodiscard]] bool add_anyAttr(Context &context, std::string_view name, std::string_view value) {
    return detail::appendPair<RtxNamePair>(context.get(), raw()._anyAttr.items, name, value);
  }
};

// Documents by the names of their roots.
using poc_settings = poc_settingsType;

} // namespace imscodec::pocsettings

namespace imscodec {

template <> struct EnumTexts<imscodec::pocsettings::amSettingType_answer_mode> {
  static constexpr EnumText<imscodec::pocsettings::amSettingType_answer_mode> rows[] = {
    {imscodec::pocsettings::amSettingType_answer_mode::automatic, "automatic"},
    {imscodec::pocsettings::amSettingType_answer_mode::manual, "manual"},
  };
};

template <> struct Document<imscodec::pocsettings::poc_settingsType> : detail::RecordDocument<imscodec::pocsettings::poc_settingsType, QxXmlD_poc_settings, QxXmlE_poc_settings, QxXmlV_poc_settings> {};

} // namespace imscodec
