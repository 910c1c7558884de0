// expat with hand-written handlers: one state for each element that may be open, and the text of the innermost.
#include "rival.h"
#include "rivals.h"

#include <expat.h>

#include <vector>

namespace bench {

namespace {

using State = uint8_t;

// States that every vocabulary has. Its own states lie between; those from firstText on collect text.
constexpr State outside = 0;
constexpr State foreignElement = 255;
constexpr State firstText = 128;

// The value of an attribute is copied, since expat's goes with the event.
template <class Call> void forAttributes(const char **attributes, Call call) {
  for (; *attributes; attributes += 2)
    call(attributes[0], attributes[1]);
}

class IsComposingBuilder {
public:
  static constexpr Text uri = "urn:ietf:params:xml:ns:im-iscomposing";
  IsComposingBuilder(IsComposing &built, Arena &texts) : record(built), storage(texts) {}

  State start(State parent, const char *name, const char **) {
    if (parent == outside && is(name, "isComposing")) return root;
    if (parent == root) {
      if (is(name, "state")) return state;
      if (is(name, "lastactive")) return lastActive;
      if (is(name, "contenttype")) return contentType;
      if (is(name, "refresh")) return refresh;
    }
    refuse("an unexpected element");
  }

  void end(State ended, Text text) {
    switch (ended) {
    case state: record.state = storage.copy(text); break;
    case lastActive: record.lastActive = storage.copy(text); break;
    case contentType: record.contentType = storage.copy(text); break;
    case refresh: record.refresh = numberFrom<uint32_t>(text); break;
    default: break;
    }
  }
  void foreign(State, Text) { refuse("an unexpected element"); }

private:
  enum : State {
    root = 1,
    state = firstText,
    lastActive,
    contentType,
    refresh
  };
  IsComposing &record;
  Arena &storage;
};

class DialogInfoBuilder {
public:
  static constexpr Text uri = "urn:ietf:params:xml:ns:dialog-info";
  DialogInfoBuilder(DialogInfo &built, Arena &texts) : record(built), storage(texts) {}

  State start(State parent, const char *name, const char **attributes) {
    switch (parent) {
    case outside:
      if (!is(name, "dialog-info")) break;
      forAttributes(attributes, [&](const char *attribute, const char *value) {
        if (is(attribute, "version"))
          record.version = numberFrom<uint32_t>(value);
        else if (is(attribute, "state"))
          record.state = codeFrom<Extent>(value);
        else if (is(attribute, "entity"))
          record.entity = storage.copy(value);
      });
      return root;
    case root:
      if (!is(name, "dialog")) break;
      dialog = &record.dialogs.append(storage);
      forAttributes(attributes, [&](const char *attribute, const char *value) {
        if (is(attribute, "id"))
          dialog->id = storage.copy(value);
        else if (is(attribute, "call-id"))
          dialog->callId = storage.copy(value);
        else if (is(attribute, "local-tag"))
          dialog->localTag = storage.copy(value);
        else if (is(attribute, "remote-tag"))
          dialog->remoteTag = storage.copy(value);
        else if (is(attribute, "direction"))
          dialog->direction = codeFrom<Direction>(value);
      });
      return inDialog;
    case inDialog: return startInDialog(name, attributes);
    case routeSet:
      if (is(name, "hop")) return hop;
      break;
    case inParticipant: return startInParticipant(name, attributes);
    case target:
      if (!is(name, "param")) break;
      {
        Parameter &parameter = participant->target->parameters.append(storage);
        forAttributes(attributes, [&](const char *attribute, const char *value) {
          if (is(attribute, "pname"))
            parameter.name = storage.copy(value);
          else if (is(attribute, "pval"))
            parameter.value = storage.copy(value);
        });
      }
      return empty;
    default: break;
    }
    refuse("an unexpected element");
  }

  void end(State ended, Text text) {
    switch (ended) {
    case state: dialog->state.value = storage.copy(text); break;
    case duration: dialog->duration = numberFrom<uint32_t>(text); break;
    case referredBy: dialog->referredBy->value = storage.copy(text); break;
    case hop: dialog->routeSet->append(storage) = storage.copy(text); break;
    case identity: participant->identity->value = storage.copy(text); break;
    case sessionDescription: participant->sessionDescription->value = storage.copy(text); break;
    case cseq: participant->cseq = numberFrom<uint32_t>(text); break;
    default: break;
    }
  }
  void foreign(State, Text) { refuse("an unexpected element"); }

private:
  enum : State {
    root = 1,
    inDialog,
    routeSet,
    inParticipant,
    target,
    empty,
    state = firstText,
    duration,
    referredBy,
    hop,
    identity,
    sessionDescription,
    cseq
  };

  State startInDialog(const char *name, const char **attributes) {
    if (is(name, "state")) {
      forAttributes(attributes, [&](const char *attribute, const char *value) {
        if (is(attribute, "event"))
          dialog->state.event = codeFrom<StateEvent>(value);
        else if (is(attribute, "code"))
          dialog->state.code = numberFrom<uint16_t>(value);
      });
      return state;
    }
    if (is(name, "duration")) return duration;
    if (is(name, "replaces")) {
      Replaces &replaces = dialog->replaces.emplace();
      forAttributes(attributes, [&](const char *attribute, const char *value) {
        if (is(attribute, "call-id"))
          replaces.callId = storage.copy(value);
        else if (is(attribute, "local-tag"))
          replaces.localTag = storage.copy(value);
        else if (is(attribute, "remote-tag"))
          replaces.remoteTag = storage.copy(value);
      });
      return empty;
    }
    if (is(name, "referred-by")) {
      address(dialog->referredBy.emplace(), attributes);
      return referredBy;
    }
    if (is(name, "route-set")) {
      dialog->routeSet.emplace();
      return routeSet;
    }
    if (is(name, "local")) {
      participant = &dialog->local.emplace();
      return inParticipant;
    }
    if (is(name, "remote")) {
      participant = &dialog->remote.emplace();
      return inParticipant;
    }
    refuse("an unexpected element");
  }

  State startInParticipant(const char *name, const char **attributes) {
    if (is(name, "identity")) {
      address(participant->identity.emplace(), attributes);
      return identity;
    }
    if (is(name, "target")) {
      Target &added = participant->target.emplace();
      forAttributes(attributes, [&](const char *attribute, const char *value) {
        if (is(attribute, "uri")) added.uri = storage.copy(value);
      });
      return target;
    }
    if (is(name, "session-description")) {
      SessionDescription &description = participant->sessionDescription.emplace();
      forAttributes(attributes, [&](const char *attribute, const char *value) {
        if (is(attribute, "type")) description.type = storage.copy(value);
      });
      return sessionDescription;
    }
    if (is(name, "cseq")) return cseq;
    refuse("an unexpected element");
  }

  void address(NameAddress &built, const char **attributes) {
    forAttributes(attributes, [&](const char *attribute, const char *value) {
      if (is(attribute, "display-name")) built.displayName = storage.copy(value);
    });
  }

  DialogInfo &record;
  Arena &storage;
  Dialog *dialog = nullptr;
  Participant *participant = nullptr;
};

class RuleSetBuilder {
public:
  static constexpr Text uri = "urn:ietf:params:xml:ns:common-policy";
  RuleSetBuilder(RuleSet &built, Arena &texts) : record(built), storage(texts) {}

  State start(State parent, const char *name, const char **attributes) {
    switch (parent) {
    case outside:
      if (is(name, "ruleset")) return root;
      break;
    case root:
      if (!is(name, "rule")) break;
      rule = &record.rules.append(storage);
      forAttributes(attributes, [&](const char *attribute, const char *value) {
        if (is(attribute, "id")) rule->id = storage.copy(value);
      });
      return inRule;
    case inRule:
      if (is(name, "conditions")) {
        rule->conditions.emplace();
        return conditions;
      }
      if (is(name, "actions")) {
        rule->actions.emplace();
        return actions;
      }
      if (is(name, "transformations")) {
        rule->transformations.emplace();
        return transformations;
      }
      break;
    case conditions: return startCondition(name, attributes);
    case inIdentity: return startIdentity(name, attributes);
    case inMany:
      if (!is(name, "except")) break;
      {
        Except &except = many->exceptions.append(storage);
        forAttributes(attributes, [&](const char *attribute, const char *value) {
          if (is(attribute, "domain"))
            except.domain = storage.copy(value);
          else if (is(attribute, "id"))
            except.id = storage.copy(value);
        });
      }
      return empty;
    case inValidity:
      if (is(name, "from")) return from;
      if (is(name, "until")) return until;
      break;
    default: break;
    }
    refuse("an unexpected element");
  }

  void end(State ended, Text text) {
    if (ended == from)
      validity->from = storage.copy(text);
    else if (ended == until)
      validity->until = storage.copy(text);
  }

  void foreign(State parent, Text xml) {
    if (parent == actions)
      rule->actions->append(storage).xml = storage.copy(xml);
    else if (parent == transformations)
      rule->transformations->append(storage).xml = storage.copy(xml);
    else
      refuse("an unexpected element");
  }

private:
  enum : State {
    root = 1,
    inRule,
    conditions,
    actions,
    transformations,
    inIdentity,
    inMany,
    inValidity,
    empty,
    from = firstText,
    until
  };

  State startCondition(const char *name, const char **attributes) {
    Condition &condition = rule->conditions->append(storage);
    if (is(name, "identity")) {
      identity = &condition.emplace<Identity>();
      return inIdentity;
    }
    if (is(name, "sphere")) {
      Sphere &sphere = condition.emplace<Sphere>();
      forAttributes(attributes, [&](const char *attribute, const char *value) {
        if (is(attribute, "value")) sphere.value = storage.copy(value);
      });
      return empty;
    }
    if (is(name, "validity")) {
      validity = &condition.emplace<Validity>();
      return inValidity;
    }
    refuse("an unexpected element");
  }

  State startIdentity(const char *name, const char **attributes) {
    auto &item = identity->append(storage);
    if (is(name, "one")) {
      One &one = item.emplace<One>();
      forAttributes(attributes, [&](const char *attribute, const char *value) {
        if (is(attribute, "id")) one.id = storage.copy(value);
      });
      return empty;
    }
    if (is(name, "many")) {
      many = &item.emplace<Many>();
      forAttributes(attributes, [&](const char *attribute, const char *value) {
        if (is(attribute, "domain")) many->domain = storage.copy(value);
      });
      return inMany;
    }
    refuse("an unexpected element");
  }

  RuleSet &record;
  Arena &storage;
  Rule *rule = nullptr;
  Identity *identity = nullptr;
  Many *many = nullptr;
  Validity *validity = nullptr;
};

class PocSettingsBuilder {
public:
  static constexpr Text uri = "urn:oma:params:xml:ns:poc:poc-settings";
  PocSettingsBuilder(PocSettings &built, Arena &texts) : record(built), storage(texts) {}

  State start(State parent, const char *name, const char **attributes) {
    switch (parent) {
    case outside:
      if (is(name, "poc-settings")) return root;
      break;
    case root:
      if (!is(name, "entity")) break;
      entity = &record.entities.append(storage);
      forAttributes(attributes, [&](const char *attribute, const char *value) {
        if (is(attribute, "id")) entity->id = storage.copy(value);
      });
      return inEntity;
    case inEntity:
      if (is(name, "isb-settings")) return sessionSettings;
      if (is(name, "am-settings")) return answerSettings;
      if (is(name, "ipab-settings")) return alertSettings;
      if (is(name, "sss-settings")) return simultaneousSettings;
      break;
    case sessionSettings:
      if (!is(name, "incoming-session-barring")) break;
      return active(entity->sessionBarring, attributes);
    case answerSettings:
      if (is(name, "answer-mode")) return answerMode;
      break;
    case alertSettings:
      if (!is(name, "incoming-personal-alert-barring")) break;
      return active(entity->alertBarring, attributes);
    case simultaneousSettings:
      if (!is(name, "simultaneous-sessions-support")) break;
      return active(entity->simultaneousSessions, attributes);
    default: break;
    }
    refuse("an unexpected element");
  }

  void end(State ended, Text text) {
    if (ended == answerMode) entity->answerMode = codeFrom<AnswerMode>(text);
  }
  void foreign(State, Text) { refuse("an unexpected element"); }

private:
  enum : State {
    root = 1,
    inEntity,
    sessionSettings,
    answerSettings,
    alertSettings,
    simultaneousSettings,
    empty,
    answerMode = firstText
  };

  static State active(std::optional<bool> &setting, const char **attributes) {
    forAttributes(attributes, [&](const char *attribute, const char *value) {
      if (is(attribute, "active")) setting = boolFrom(value);
    });
    return empty;
  }

  PocSettings &record;
  Arena &storage;
  Entity *entity = nullptr;
};

class FilterSetBuilder {
public:
  static constexpr Text uri = "urn:ietf:params:xml:ns:simple-filter";
  FilterSetBuilder(FilterSet &built, Arena &texts) : record(built), storage(texts) {}

  State start(State parent, const char *name, const char **attributes) {
    switch (parent) {
    case outside:
      if (!is(name, "filter-set")) break;
      forAttributes(attributes, [&](const char *attribute, const char *value) {
        if (is(attribute, "package")) record.package = storage.copy(value);
      });
      return root;
    case root:
      if (is(name, "ns-bindings")) {
        record.bindings.emplace();
        return bindings;
      }
      if (is(name, "filter")) return startFilter(attributes);
      break;
    case bindings:
      if (!is(name, "ns-binding")) break;
      {
        Binding &binding = record.bindings->append(storage);
        forAttributes(attributes, [&](const char *attribute, const char *value) {
          if (is(attribute, "prefix"))
            binding.prefix = storage.copy(value);
          else if (is(attribute, "urn"))
            binding.urn = storage.copy(value);
        });
      }
      return empty;
    case inFilter:
      if (is(name, "what")) {
        filter->what.emplace();
        return what;
      }
      if (is(name, "trigger")) {
        trigger = &filter->triggers.append(storage);
        return inTrigger;
      }
      break;
    case what:
      if (is(name, "include")) return select(filter->what->included, attributes);
      if (is(name, "exclude")) return select(filter->what->excluded, attributes);
      break;
    case inTrigger:
      if (is(name, "changed")) return startChanged(attributes);
      if (is(name, "added")) return added;
      if (is(name, "removed")) return removed;
      break;
    default: break;
    }
    refuse("an unexpected element");
  }

  void end(State ended, Text text) {
    switch (ended) {
    case inSelection: selection->value = storage.copy(text); break;
    case inChanged: changed->value = storage.copy(text); break;
    case added: trigger->added.append(storage) = storage.copy(text); break;
    case removed: trigger->removed.append(storage) = storage.copy(text); break;
    default: break;
    }
  }
  void foreign(State, Text) { refuse("an unexpected element"); }

private:
  enum : State {
    root = 1,
    bindings,
    inFilter,
    what,
    inTrigger,
    empty,
    inSelection = firstText,
    inChanged,
    added,
    removed
  };

  State startFilter(const char **attributes) {
    filter = &record.filters.append(storage);
    forAttributes(attributes, [&](const char *attribute, const char *value) {
      if (is(attribute, "id"))
        filter->id = storage.copy(value);
      else if (is(attribute, "uri"))
        filter->uri = storage.copy(value);
      else if (is(attribute, "domain"))
        filter->domain = storage.copy(value);
      else if (is(attribute, "remove"))
        filter->remove = boolFrom(value);
      else if (is(attribute, "enabled"))
        filter->enabled = boolFrom(value);
    });
    return inFilter;
  }

  State select(List<Selection> &list, const char **attributes) {
    selection = &list.append(storage);
    forAttributes(attributes, [&](const char *attribute, const char *value) {
      if (is(attribute, "type")) selection->type = codeFrom<SelectionType>(value);
    });
    return inSelection;
  }

  State startChanged(const char **attributes) {
    changed = &trigger->changed.append(storage);
    forAttributes(attributes, [&](const char *attribute, const char *value) {
      if (is(attribute, "from"))
        changed->from = storage.copy(value);
      else if (is(attribute, "to"))
        changed->to = storage.copy(value);
      else if (is(attribute, "by"))
        changed->by = numberFrom<double>(value);
    });
    return inChanged;
  }

  FilterSet &record;
  Arena &storage;
  Filter *filter = nullptr;
  Trigger *trigger = nullptr;
  Selection *selection = nullptr;
  Changed *changed = nullptr;
};

class AlternativeBuilder {
public:
  static constexpr Text uri = "";
  AlternativeBuilder(Alternative &built, Arena &texts) : record(built), storage(texts) {}

  State start(State parent, const char *name, const char **attributes) {
    switch (parent) {
    case outside:
      if (!is(name, "ims-3gpp")) break;
      forAttributes(attributes, [&](const char *attribute, const char *value) {
        if (is(attribute, "version")) record.version = numberFrom<double>(value);
      });
      return root;
    case root:
      if (is(name, "alternative-service")) return service;
      break;
    case service:
      if (is(name, "type")) return type;
      if (is(name, "reason")) return reason;
      return foreignElement;
    default: break;
    }
    refuse("an unexpected element");
  }

  void end(State ended, Text text) {
    if (ended == type)
      record.type = storage.copy(text);
    else if (ended == reason)
      record.reason = storage.copy(text);
  }
  void foreign(State, Text xml) { record.others.append(storage).xml = storage.copy(xml); }

private:
  enum : State {
    root = 1,
    service,
    type = firstText,
    reason
  };
  Alternative &record;
  Arena &storage;
};

class DebugInfoBuilder {
public:
  static constexpr Text uri = "urn:ietf:params:xml:ns:debuginfo";
  DebugInfoBuilder(DebugInfo &built, Arena &texts) : record(built), storage(texts) {}

  State start(State parent, const char *name, const char **attributes) {
    switch (parent) {
    case outside:
      if (!is(name, "debuginfo")) break;
      forAttributes(attributes, [&](const char *attribute, const char *value) {
        if (is(attribute, "version"))
          record.version = numberFrom<uint32_t>(value);
        else if (is(attribute, "state"))
          record.state = codeFrom<Extent>(value);
      });
      return root;
    case root:
      if (!is(name, "debugconfig")) break;
      config = &record.configs.append(storage);
      forAttributes(attributes, [&](const char *attribute, const char *value) {
        if (is(attribute, "aor")) config->user = storage.copy(value);
      });
      return inConfig;
    case inConfig:
      if (!is(name, "session")) break;
      session = &config->sessions.append(storage);
      forAttributes(attributes, [&](const char *attribute, const char *value) {
        if (is(attribute, "id")) session->id = storage.copy(value);
      });
      return inSession;
    case inSession:
      if (is(name, "start-trigger")) return startTrigger;
      if (is(name, "stop-trigger")) return stopTrigger;
      if (is(name, "control")) return control;
      break;
    case startTrigger:
      if (is(name, "from")) return from;
      if (is(name, "to")) return to;
      if (is(name, "icsi")) return service;
      if (is(name, "iari")) return application;
      if (is(name, "method")) return method;
      if (is(name, "time")) return startTime;
      if (is(name, "debug-id")) return startId;
      break;
    case stopTrigger:
      if (is(name, "time")) return stopTime;
      if (is(name, "time-period")) return period;
      if (is(name, "reason")) return reason;
      break;
    case control:
      if (is(name, "interface")) return interfaces;
      if (is(name, "depth")) return depth;
      if (is(name, "debug-id")) return controlId;
      break;
    default: break;
    }
    refuse("an unexpected element");
  }

  void end(State ended, Text text) {
    switch (ended) {
    case from: session->start.from = storage.copy(text); break;
    case to: session->start.to = storage.copy(text); break;
    case service: session->start.service = storage.copy(text); break;
    case application: session->start.application = storage.copy(text); break;
    case method: session->start.method = storage.copy(text); break;
    case startTime: session->start.time = storage.copy(text); break;
    case startId: session->start.debugId = bytesFrom(text, storage); break;
    case stopTime: session->stop.time = storage.copy(text); break;
    case period: session->stop.period = storage.copy(text); break;
    case reason: session->stop.reason = codeFrom<StopReason>(text); break;
    case interfaces: session->control.interfaces = storage.copy(text); break;
    case depth: session->control.depth = codeFrom<Depth>(text); break;
    case controlId: session->control.debugId = bytesFrom(text, storage); break;
    default: break;
    }
  }
  void foreign(State, Text) { refuse("an unexpected element"); }

private:
  enum : State {
    root = 1,
    inConfig,
    inSession,
    startTrigger,
    stopTrigger,
    control,
    from = firstText,
    to,
    service,
    application,
    method,
    startTime,
    startId,
    stopTime,
    period,
    reason,
    interfaces,
    depth,
    controlId
  };
  DebugInfo &record;
  Arena &storage;
  DebugConfig *config = nullptr;
  Session *session = nullptr;
};

template <class Record> struct BuilderOf;
template <> struct BuilderOf<IsComposing> { using Type = IsComposingBuilder; };
template <> struct BuilderOf<DialogInfo> { using Type = DialogInfoBuilder; };
template <> struct BuilderOf<RuleSet> { using Type = RuleSetBuilder; };
template <> struct BuilderOf<PocSettings> { using Type = PocSettingsBuilder; };
template <> struct BuilderOf<FilterSet> { using Type = FilterSetBuilder; };
template <> struct BuilderOf<Alternative> { using Type = AlternativeBuilder; };
template <> struct BuilderOf<DebugInfo> { using Type = DebugInfoBuilder; };

// The events of one document: keeps the stack of states and the text, and cuts foreign elements out of the input.
template <class Builder> class Events {
public:
  template <class Record>
  Events(XML_Parser used, std::string_view document, Record &record, Arena &storage, std::string &text)
      : parser(used), body(document), builder(record, storage), collected(text) {}

  static void start(void *events, const XML_Char *name, const XML_Char **attributes) {
    static_cast<Events *>(events)->startElement(name, attributes);
  }
  static void end(void *events, const XML_Char *) { static_cast<Events *>(events)->endElement(); }
  static void characters(void *events, const XML_Char *bytes, int length) {
    auto *self = static_cast<Events *>(events);
    if (self->states[self->depth] >= firstText) self->collected.append(bytes, static_cast<size_t>(length));
  }

private:
  void startElement(const char *name, const char **attributes) {
    State parent = states[depth];
    if (++depth == sizeof(states)) refuse("too deep");
    if (parent == foreignElement) {
      states[depth] = foreignElement;
      return;
    }
    collected.clear();
    const char *local = localName(name);
    states[depth] = local ? builder.start(parent, local, attributes) : foreignElement;
    if (states[depth] == foreignElement) foreignStart = static_cast<size_t>(XML_GetCurrentByteIndex(parser));
  }

  void endElement() {
    State ended = states[depth--];
    if (ended == foreignElement) {
      if (states[depth] == foreignElement) return;
      auto foreignEnd = static_cast<size_t>(XML_GetCurrentByteIndex(parser) + XML_GetCurrentByteCount(parser));
      builder.foreign(states[depth], body.substr(foreignStart, foreignEnd - foreignStart));
    } else
      builder.end(ended, collected);
  }

  // Null for a name of another namespace.
  static const char *localName(const char *name) {
    constexpr Text uri = Builder::uri;
    if constexpr (uri.empty())
      return name;
    else if (std::strncmp(name, uri.data(), uri.size()) == 0 && name[uri.size()] == '|')
      return name + uri.size() + 1;
    else
      return nullptr;
  }

  XML_Parser parser;
  std::string_view body;
  Builder builder;
  std::string &collected;
  State states[64] = {outside};
  size_t depth = 0;
  size_t foreignStart = 0;
};

// One parser for all documents.
class ExpatParser {
public:
  ExpatParser() : parser(XML_ParserCreateNS(nullptr, '|')) {}
  ExpatParser(const ExpatParser &) = delete;
  ExpatParser &operator=(const ExpatParser &) = delete;
  ~ExpatParser() { XML_ParserFree(parser); }

  template <class Record> void read(std::string_view body, Arena &storage, Record &record) {
    using TheseEvents = Events<typename BuilderOf<Record>::Type>;
    TheseEvents events(parser, body, record, storage, text);
    XML_ParserReset(parser, nullptr);
    XML_SetUserData(parser, &events);
    XML_SetElementHandler(parser, TheseEvents::start, TheseEvents::end);
    XML_SetCharacterDataHandler(parser, TheseEvents::characters);
    if (XML_Parse(parser, body.data(), static_cast<int>(body.size()), 1) != XML_STATUS_OK) refuse("expat failed");
  }

private:
  XML_Parser parser;
  std::string text;
};

} // namespace

void addExpat(std::vector<NamedWorkload> &workloads) {
  workloads.push_back({"expat", makeRivalDecode<ExpatParser>, true});
}

} // namespace bench
