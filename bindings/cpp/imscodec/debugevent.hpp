// Written by generate from the dump of the tables; do not edit.
// clang-format off
#pragma once

#include "DebugEvent/QxXmlDebugEvent.h"
#include "imscodec/core.hpp"

namespace imscodec::debugevent {

enum class reason : std::uint16_t {
  dialog_established = 0,
  session_end = 1,
};

enum class depth : std::uint16_t {
  maximum = 0,
  minimum = 1,
};

enum class state : std::uint16_t {
  full = 0,
  partial = 1,
};

using imscodec::text; // found by the type of the code

// tns__start_trigger
class start_trigger : public View<::tns__start_trigger> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tns__start_trigger(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_tns__start_trigger(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tns__start_trigger(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template optional<std::string_view>("tns_from", tns__start_trigger_has_from, record.m..., record.tns_from...) &&
           visitor.template optional<std::string_view>("tns_to", tns__start_trigger_has_to, record.m..., record.tns_to...) &&
           visitor.template optional<std::string_view>("tns_icsi", tns__start_trigger_has_icsi, record.m..., record.tns_icsi...) &&
           visitor.template optional<std::string_view>("tns_iari", tns__start_trigger_has_iari, record.m..., record.tns_iari...) &&
           visitor.template optional<std::string_view>("tns_method", tns__start_trigger_has_method, record.m..., record.tns_method...) &&
           visitor.template optional<std::string_view>("tns_time", tns__start_trigger_has_time, record.m..., record.tns_time...) &&
           visitor.template optional<std::span<const std::uint8_t>>("tns_debug_id", tns__start_trigger_has_debug_id, record.m..., record.tns_debug_id...);
  }

  Optional<std::string_view> from() const { return {has(tns__start_trigger_has_from), &raw().tns_from}; }
  [[nodiscard]] bool set_from(Context &context, std::string_view text) {
    return setOptional(context, tns__start_trigger_has_from, raw().tns_from, text);
  }
  void clear_from(Context &context) { clearOptional(context, tns__start_trigger_has_from, raw().tns_from); }

  Optional<std::string_view> to() const { return {has(tns__start_trigger_has_to), &raw().tns_to}; }
  [[nodiscard]] bool set_to(Context &context, std::string_view text) {
    return setOptional(context, tns__start_trigger_has_to, raw().tns_to, text);
  }
  void clear_to(Context &context) { clearOptional(context, tns__start_trigger_has_to, raw().tns_to); }

  Optional<std::string_view> icsi() const { return {has(tns__start_trigger_has_icsi), &raw().tns_icsi}; }
  [[nodiscard]] bool set_icsi(Context &context, std::string_view text) {
    return setOptional(context, tns__start_trigger_has_icsi, raw().tns_icsi, text);
  }
  void clear_icsi(Context &context) { clearOptional(context, tns__start_trigger_has_icsi, raw().tns_icsi); }

  Optional<std::string_view> iari() const { return {has(tns__start_trigger_has_iari), &raw().tns_iari}; }
  [[nodiscard]] bool set_iari(Context &context, std::string_view text) {
    return setOptional(context, tns__start_trigger_has_iari, raw().tns_iari, text);
  }
  void clear_iari(Context &context) { clearOptional(context, tns__start_trigger_has_iari, raw().tns_iari); }

  Optional<std::string_view> method() const { return {has(tns__start_trigger_has_method), &raw().tns_method}; }
  [[nodiscard]] bool set_method(Context &context, std::string_view text) {
    return setOptional(context, tns__start_trigger_has_method, raw().tns_method, text);
  }
  void clear_method(Context &context) { clearOptional(context, tns__start_trigger_has_method, raw().tns_method); }

  Optional<std::string_view> time() const { return {has(tns__start_trigger_has_time), &raw().tns_time}; }
  [[nodiscard]] bool set_time(Context &context, std::string_view text) {
    return setOptional(context, tns__start_trigger_has_time, raw().tns_time, text);
  }
  void clear_time(Context &context) { clearOptional(context, tns__start_trigger_has_time, raw().tns_time); }

  Optional<std::span<const std::uint8_t>> debug_id() const { return {has(tns__start_trigger_has_debug_id), &raw().tns_debug_id}; }
  [[nodiscard]] bool set_debug_id(Context &context, std::span<const std::uint8_t> bytes) {
    return setOptional(context, tns__start_trigger_has_debug_id, raw().tns_debug_id, bytes);
  }
  void clear_debug_id(Context &context) { clearOptional(context, tns__start_trigger_has_debug_id, raw().tns_debug_id); }
};

// tns__stop_trigger
class stop_trigger : public View<::tns__stop_trigger> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tns__stop_trigger(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_tns__stop_trigger(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tns__stop_trigger(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template optional<std::string_view>("tns_time", tns__stop_trigger_has_time, record.m..., record.tns_time...) &&
           visitor.template optional<std::string_view>("tns_time_period", tns__stop_trigger_has_time_period, record.m..., record.tns_time_period...) &&
           visitor.template optional<imscodec::debugevent::reason>("tns_reason", tns__stop_trigger_has_reason, record.m..., record.tns_reason...);
  }

  Optional<std::string_view> time() const { return {has(tns__stop_trigger_has_time), &raw().tns_time}; }
  [[nodiscard]] bool set_time(Context &context, std::string_view text) {
    return setOptional(context, tns__stop_trigger_has_time, raw().tns_time, text);
  }
  void clear_time(Context &context) { clearOptional(context, tns__stop_trigger_has_time, raw().tns_time); }

  Optional<std::string_view> time_period() const { return {has(tns__stop_trigger_has_time_period), &raw().tns_time_period}; }
  [[nodiscard]] bool set_time_period(Context &context, std::string_view text) {
    return setOptional(context, tns__stop_trigger_has_time_period, raw().tns_time_period, text);
  }
  void clear_time_period(Context &context) { clearOptional(context, tns__stop_trigger_has_time_period, raw().tns_time_period); }

  Optional<imscodec::debugevent::reason> reason() const { return {has(tns__stop_trigger_has_reason), &raw().tns_reason}; }
  void set_reason(imscodec::debugevent::reason value) { raw().tns_reason = static_cast<std::uint16_t>(value); mark(tns__stop_trigger_has_reason); }
  void clear_reason() { unmark(tns__stop_trigger_has_reason); }
};

// tns__control
class control : public View<::tns__control> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tns__control(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_tns__control(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tns__control(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<std::string_view>("tns_interface", record.tns_interface...) &&
           visitor.template optional<imscodec::debugevent::depth>("tns_depth", tns__control_has_depth, record.m..., record.tns_depth...) &&
           visitor.template optional<std::span<const std::uint8_t>>("tns_debug_id", tns__control_has_debug_id, record.m..., record.tns_debug_id...);
  }

  std::string_view interface() const { return textOf(raw().tns_interface); }
  [[nodiscard]] bool set_interface(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().tns_interface, text, true);
  }

  Optional<imscodec::debugevent::depth> depth() const { return {has(tns__control_has_depth), &raw().tns_depth}; }
  void set_depth(imscodec::debugevent::depth value) { raw().tns_depth = static_cast<std::uint16_t>(value); mark(tns__control_has_depth); }
  void clear_depth() { unmark(tns__control_has_depth); }

  Optional<std::span<const std::uint8_t>> debug_id() const { return {has(tns__control_has_debug_id), &raw().tns_debug_id}; }
  [[nodiscard]] bool set_debug_id(Context &context, std::span<const std::uint8_t> bytes) {
    return setOptional(context, tns__control_has_debug_id, raw().tns_debug_id, bytes);
  }
  void clear_debug_id(Context &context) { clearOptional(context, tns__control_has_debug_id, raw().tns_debug_id); }
};

// tns__session
class session : public View<::tns__session> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tns__session(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_tns__session(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tns__session(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<imscodec::debugevent::start_trigger>("tns_start_trigger", record.tns_start_trigger...) &&
           visitor.template member<imscodec::debugevent::stop_trigger>("tns_stop_trigger", record.tns_stop_trigger...) &&
           visitor.template member<imscodec::debugevent::control>("tns_control", record.tns_control...) &&
           visitor.template member<std::string_view>("tns_id", record.tns_id...);
  }

  imscodec::debugevent::start_trigger start_trigger() const { return imscodec::debugevent::start_trigger(raw().tns_start_trigger); }

  imscodec::debugevent::stop_trigger stop_trigger() const { return imscodec::debugevent::stop_trigger(raw().tns_stop_trigger); }

  imscodec::debugevent::control control() const { return imscodec::debugevent::control(raw().tns_control); }

  std::string_view id() const { return textOf(raw().tns_id); }
  [[nodiscard]] bool set_id(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().tns_id, text, true);
  }
};

// tns__debugconfig
class debugconfig : public View<::tns__debugconfig> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tns__debugconfig(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_tns__debugconfig(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tns__debugconfig(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<List<imscodec::debugevent::session>>("tns_session", record.tns_session...) &&
           visitor.template member<std::string_view>("tns_aor", record.tns_aor...);
  }

  List<imscodec::debugevent::session> session() const { return List<imscodec::debugevent::session>(raw().tns_session); }
  [[nodiscard]] Optional<imscodec::debugevent::session> add_session(Context &context) {
    return detail::appendRecord<imscodec::debugevent::session>(context.get(), raw().tns_session);
  }

  std::string_view aor() const { return textOf(raw().tns_aor); }
  [[nodiscard]] bool set_aor(Context &context, std::string_view text) {
    return detail::assign(context.get(), raw().tns_aor, text, true);
  }
};

// tns__debuginfo
class debuginfo : public View<::tns__debuginfo> {
public:
  using View::View;
  static void initialise(RuntimeContext *ctx, Raw *record) { QxInit_tns__debuginfo(ctx, record); }
  static void dispose([[maybe_unused]] RuntimeContext *ctx, [[maybe_unused]] Raw *record) {
    QxMemFree_tns__debuginfo(ctx, record);
  }
  static void print(const char *name, const Raw *record) { QxPrint_tns__debuginfo(name, record); }
  template <class Visitor, class... Records>
  static bool visitMembers(const Visitor &visitor, Records &...record) {
    return visitor.template member<List<imscodec::debugevent::debugconfig>>("tns_debugconfig", record.tns_debugconfig...) &&
           visitor.template member<List<Foreign>>("", record.anyElems...) &&
           visitor.template member<std::uint32_t>("tns_version", record.tns_version...) &&
           visitor.template member<imscodec::debugevent::state>("tns_state", record.tns_state...);
  }

  List<imscodec::debugevent::debugconfig> debugconfig() const { return List<imscodec::debugevent::debugconfig>(raw().tns_debugconfig); }
  [[nodiscard]] Optional<imscodec::debugevent::debugconfig> add_debugconfig(Context &context) {
    return detail::appendRecord<imscodec::debugevent::debugconfig>(context.get(), raw().tns_debugconfig);
  }

  List<Foreign> anyElems() const { return List<Foreign>(raw().anyElems.items); }
  [[nodiscard]] bool add_anyElems(Context &context, std::string_view xml) {
    return detail::appendText(context.get(), raw().anyElems.items, xml);
  }

  std::uint32_t version() const { return raw().tns_version; }
  void set_version(std::uint32_t value) { raw().tns_version = value; }

  imscodec::debugevent::state state() const { return static_cast<imscodec::debugevent::state>(raw().tns_state); }
  void set_state(imscodec::debugevent::state value) { raw().tns_state = static_cast<std::uint16_t>(value); }
};

// Documents by the names of their roots.
struct time {}; // of a single value
struct from {}; // of a single value
struct to {}; // of a single value
struct method {}; // of a single value
struct icsi {}; // of a single value
struct iari {}; // of a single value
struct debug_id {}; // of a single value
struct time_period {}; // of a single value
struct interface {}; // of a single value

} // namespace imscodec::debugevent

namespace imscodec {

template <> struct EnumTexts<imscodec::debugevent::reason> {
  static constexpr EnumText<imscodec::debugevent::reason> rows[] = {
    {imscodec::debugevent::reason::dialog_established, "dialog_established"},
    {imscodec::debugevent::reason::session_end, "session_end"},
  };
};

template <> struct EnumTexts<imscodec::debugevent::depth> {
  static constexpr EnumText<imscodec::debugevent::depth> rows[] = {
    {imscodec::debugevent::depth::maximum, "maximum"},
    {imscodec::debugevent::depth::minimum, "minimum"},
  };
};

template <> struct EnumTexts<imscodec::debugevent::state> {
  static constexpr EnumText<imscodec::debugevent::state> rows[] = {
    {imscodec::debugevent::state::full, "full"},
    {imscodec::debugevent::state::partial, "partial"},
  };
};

template <> struct Document<imscodec::debugevent::debuginfo> : detail::RecordDocument<imscodec::debugevent::debuginfo, QxXmlD_tns_debuginfo, QxXmlE_tns_debuginfo, QxXmlV_tns_debuginfo> {};
template <> struct Document<imscodec::debugevent::debugconfig> : detail::RecordDocument<imscodec::debugevent::debugconfig, QxXmlD_tns_debugconfig, QxXmlE_tns_debugconfig, QxXmlV_tns_debugconfig> {};
template <> struct Document<imscodec::debugevent::session> : detail::RecordDocument<imscodec::debugevent::session, QxXmlD_tns_session, QxXmlE_tns_session, QxXmlV_tns_session> {};
template <> struct Document<imscodec::debugevent::start_trigger> : detail::RecordDocument<imscodec::debugevent::start_trigger, QxXmlD_tns_start_trigger, QxXmlE_tns_start_trigger, QxXmlV_tns_start_trigger> {};
template <> struct Document<imscodec::debugevent::stop_trigger> : detail::RecordDocument<imscodec::debugevent::stop_trigger, QxXmlD_tns_stop_trigger, QxXmlE_tns_stop_trigger, QxXmlV_tns_stop_trigger> {};
template <> struct Document<imscodec::debugevent::control> : detail::RecordDocument<imscodec::debugevent::control, QxXmlD_tns_control, QxXmlE_tns_control, QxXmlV_tns_control> {};
template <> struct Document<imscodec::debugevent::time> : detail::TextDocument<QxXmlD_tns_time, QxXmlE_tns_time, QxXmlV_tns_time> {};
template <> struct Document<imscodec::debugevent::from> : detail::TextDocument<QxXmlD_tns_from, QxXmlE_tns_from, QxXmlV_tns_from> {};
template <> struct Document<imscodec::debugevent::to> : detail::TextDocument<QxXmlD_tns_to, QxXmlE_tns_to, QxXmlV_tns_to> {};
template <> struct Document<imscodec::debugevent::method> : detail::TextDocument<QxXmlD_tns_method, QxXmlE_tns_method, QxXmlV_tns_method> {};
template <> struct Document<imscodec::debugevent::icsi> : detail::TextDocument<QxXmlD_tns_icsi, QxXmlE_tns_icsi, QxXmlV_tns_icsi> {};
template <> struct Document<imscodec::debugevent::iari> : detail::TextDocument<QxXmlD_tns_iari, QxXmlE_tns_iari, QxXmlV_tns_iari> {};
template <> struct Document<imscodec::debugevent::debug_id> : detail::BytesDocument<QxXmlD_tns_debug_id, QxXmlE_tns_debug_id, QxXmlV_tns_debug_id> {};
template <> struct Document<imscodec::debugevent::time_period> : detail::TextDocument<QxXmlD_tns_time_period, QxXmlE_tns_time_period, QxXmlV_tns_time_period> {};
template <> struct Document<imscodec::debugevent::reason> : detail::EnumDocument<imscodec::debugevent::reason, QxXmlD_tns_reason, QxXmlE_tns_reason, QxXmlV_tns_reason> {};
template <> struct Document<imscodec::debugevent::interface> : detail::TextDocument<QxXmlD_tns_interface, QxXmlE_tns_interface, QxXmlV_tns_interface> {};
template <> struct Document<imscodec::debugevent::depth> : detail::EnumDocument<imscodec::debugevent::depth, QxXmlD_tns_depth, QxXmlE_tns_depth, QxXmlV_tns_depth> {};

} // namespace imscodec
