// What the hand-written rivals decode into and encode from: typed records as an application would have them. Texts are
// views, of the rival's own storage where it keeps the text anyway, of an arena where it does not.
#pragma once

#include "arena.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

namespace bench {

using Text = std::string_view;

// An element of another vocabulary as XML text. Equal if it means the same.
struct Foreign {
  Text xml;
};
bool operator==(const Foreign &left, const Foreign &right);

struct IsComposing {
  Text state;
  std::optional<Text> lastActive;
  std::optional<Text> contentType;
  std::optional<uint32_t> refresh;
  bool operator==(const IsComposing &) const = default;
};

// ---- Dialog state ---------------------------------------------------------------------------------------------

enum class StateEvent : uint8_t {
  cancelled,
  rejected,
  replaced,
  localBye,
  remoteBye,
  error,
  timeout
};
enum class Direction : uint8_t {
  initiator,
  recipient
};
enum class Extent : uint8_t {
  full,
  partial
};

struct DialogState {
  Text value;
  std::optional<StateEvent> event;
  std::optional<uint16_t> code;
  bool operator==(const DialogState &) const = default;
};

struct Replaces {
  Text callId;
  Text localTag;
  Text remoteTag;
  bool operator==(const Replaces &) const = default;
};

struct NameAddress {
  Text value;
  std::optional<Text> displayName;
  bool operator==(const NameAddress &) const = default;
};

struct Parameter {
  Text name;
  Text value;
  bool operator==(const Parameter &) const = default;
};

struct Target {
  Text uri;
  List<Parameter> parameters;
  bool operator==(const Target &) const = default;
};

struct SessionDescription {
  Text value;
  Text type;
  bool operator==(const SessionDescription &) const = default;
};

struct Participant {
  std::optional<NameAddress> identity;
  std::optional<Target> target;
  std::optional<SessionDescription> sessionDescription;
  std::optional<uint32_t> cseq;
  bool operator==(const Participant &) const = default;
};

struct Dialog {
  Text id;
  std::optional<Text> callId;
  std::optional<Text> localTag;
  std::optional<Text> remoteTag;
  std::optional<Direction> direction;
  DialogState state;
  std::optional<uint32_t> duration;
  std::optional<Replaces> replaces;
  std::optional<NameAddress> referredBy;
  std::optional<List<Text>> routeSet;
  std::optional<Participant> local;
  std::optional<Participant> remote;
  bool operator==(const Dialog &) const = default;
};

struct DialogInfo {
  uint32_t version = 0;
  Extent state = Extent::full;
  Text entity;
  List<Dialog> dialogs;
  bool operator==(const DialogInfo &) const = default;
};

// ---- Authorisation rules --------------------------------------------------------------------------------------

struct One {
  Text id;
  bool operator==(const One &) const = default;
};

struct Except {
  std::optional<Text> domain;
  std::optional<Text> id;
  bool operator==(const Except &) const = default;
};

struct Many {
  std::optional<Text> domain;
  List<Except> exceptions;
  bool operator==(const Many &) const = default;
};

using Identity = List<std::variant<One, Many>>;

struct Sphere {
  Text value;
  bool operator==(const Sphere &) const = default;
};

struct Validity {
  Text from;
  Text until;
  bool operator==(const Validity &) const = default;
};

using Condition = std::variant<Identity, Sphere, Validity>;

struct Rule {
  Text id;
  std::optional<List<Condition>> conditions;
  std::optional<List<Foreign>> actions;
  std::optional<List<Foreign>> transformations;
  bool operator==(const Rule &) const = default;
};

struct RuleSet {
  List<Rule> rules;
  bool operator==(const RuleSet &) const = default;
};

// ---- Push-to-talk settings ------------------------------------------------------------------------------------

enum class AnswerMode : uint8_t {
  automatic,
  manual
};

struct Entity {
  Text id;
  std::optional<bool> sessionBarring;
  std::optional<AnswerMode> answerMode;
  std::optional<bool> alertBarring;
  std::optional<bool> simultaneousSessions;
  bool operator==(const Entity &) const = default;
};

struct PocSettings {
  List<Entity> entities;
  bool operator==(const PocSettings &) const = default;
};

// ---- Filters --------------------------------------------------------------------------------------------------

struct Binding {
  Text prefix;
  Text urn;
  bool operator==(const Binding &) const = default;
};

enum class SelectionType : uint8_t {
  xpath,
  nameSpace
};

struct Selection {
  Text value;
  std::optional<SelectionType> type;
  bool operator==(const Selection &) const = default;
};

struct What {
  List<Selection> included;
  List<Selection> excluded;
  bool operator==(const What &) const = default;
};

struct Changed {
  Text value;
  std::optional<Text> from;
  std::optional<Text> to;
  std::optional<double> by;
  bool operator==(const Changed &) const = default;
};

struct Trigger {
  List<Changed> changed;
  List<Text> added;
  List<Text> removed;
  bool operator==(const Trigger &) const = default;
};

struct Filter {
  Text id;
  std::optional<Text> uri;
  std::optional<Text> domain;
  bool remove = false;
  bool enabled = true;
  std::optional<What> what;
  List<Trigger> triggers;
  bool operator==(const Filter &) const = default;
};

struct FilterSet {
  std::optional<Text> package;
  std::optional<List<Binding>> bindings;
  List<Filter> filters;
  bool operator==(const FilterSet &) const = default;
};

// ---- Alternative service --------------------------------------------------------------------------------------

struct Alternative {
  double version = 0;
  Text type;
  Text reason;
  List<Foreign> others;
  bool operator==(const Alternative &) const = default;
};

// ---- Debug configuration --------------------------------------------------------------------------------------

enum class StopReason : uint8_t {
  dialogEstablished,
  sessionEnd
};
enum class Depth : uint8_t {
  maximum,
  minimum
};

// Identifiers of sessions are bytes, written as hexadecimal digits.
struct StartTrigger {
  std::optional<Text> from;
  std::optional<Text> to;
  std::optional<Text> service;
  std::optional<Text> application;
  std::optional<Text> method;
  std::optional<Text> time;
  std::optional<Text> debugId;
  bool operator==(const StartTrigger &) const = default;
};

struct StopTrigger {
  std::optional<Text> time;
  std::optional<Text> period;
  std::optional<StopReason> reason;
  bool operator==(const StopTrigger &) const = default;
};

struct Control {
  Text interfaces;
  std::optional<Depth> depth;
  std::optional<Text> debugId;
  bool operator==(const Control &) const = default;
};

struct Session {
  Text id;
  StartTrigger start;
  StopTrigger stop;
  Control control;
  bool operator==(const Session &) const = default;
};

struct DebugConfig {
  Text user;
  List<Session> sessions;
  bool operator==(const DebugConfig &) const = default;
};

struct DebugInfo {
  uint32_t version = 0;
  Extent state = Extent::full;
  List<DebugConfig> configs;
  bool operator==(const DebugInfo &) const = default;
};

} // namespace bench
