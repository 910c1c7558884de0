// Reads records from a tree that a parser has built. Node is a thin view of the parser's own node:
//   name()                     local name
//   firstElement(), nextElement(), and conversion to bool
//   text(storage)              what the element contains
//   xml(storage)               the element itself
//   forAttributes(call)        call(name, value) for each, declarations left out
#pragma once

#include "rival.h"

namespace bench {

template <class Node> class Walk {
public:
  explicit Walk(Arena &texts) : storage(texts) {}

  void read(Node root, IsComposing &record) {
    requireRoot(root, "isComposing");
    forElements(root, [&](const char *name, Node node) {
      if (is(name, "state"))
        record.state = text(node);
      else if (is(name, "lastactive"))
        record.lastActive = text(node);
      else if (is(name, "contenttype"))
        record.contentType = text(node);
      else if (is(name, "refresh"))
        record.refresh = number<uint32_t>(node);
      else
        refuse("an unexpected element");
    });
  }

  void read(Node root, DialogInfo &record) {
    requireRoot(root, "dialog-info");
    root.forAttributes([&](const char *name, Text value) {
      if (is(name, "version"))
        record.version = numberFrom<uint32_t>(value);
      else if (is(name, "state"))
        record.state = codeFrom<Extent>(value);
      else if (is(name, "entity"))
        record.entity = value;
    });
    forElements(root, [&](const char *name, Node node) {
      if (is(name, "dialog"))
        read(node, record.dialogs.append(storage));
      else
        refuse("an unexpected element");
    });
  }

  void read(Node root, RuleSet &record) {
    requireRoot(root, "ruleset");
    forElements(root, [&](const char *name, Node node) {
      if (is(name, "rule"))
        read(node, record.rules.append(storage));
      else
        refuse("an unexpected element");
    });
  }

  void read(Node root, PocSettings &record) {
    requireRoot(root, "poc-settings");
    forElements(root, [&](const char *name, Node node) {
      if (is(name, "entity"))
        read(node, record.entities.append(storage));
      else
        refuse("an unexpected element");
    });
  }

  void read(Node root, FilterSet &record) {
    requireRoot(root, "filter-set");
    root.forAttributes([&](const char *name, Text value) {
      if (is(name, "package")) record.package = value;
    });
    forElements(root, [&](const char *name, Node node) {
      if (is(name, "filter"))
        read(node, record.filters.append(storage));
      else if (is(name, "ns-bindings")) {
        record.bindings.emplace();
        forElements(node, [&](const char *, Node binding) {
          Binding &added = record.bindings->append(storage);
          binding.forAttributes([&](const char *attribute, Text value) {
            if (is(attribute, "prefix"))
              added.prefix = value;
            else if (is(attribute, "urn"))
              added.urn = value;
          });
        });
      } else
        refuse("an unexpected element");
    });
  }

  void read(Node root, Alternative &record) {
    requireRoot(root, "ims-3gpp");
    root.forAttributes([&](const char *name, Text value) {
      if (is(name, "version")) record.version = numberFrom<double>(value);
    });
    forElements(root, [&](const char *service, Node alternative) {
      if (!is(service, "alternative-service")) refuse("an unexpected element");
      forElements(alternative, [&](const char *name, Node node) {
        if (is(name, "type"))
          record.type = text(node);
        else if (is(name, "reason"))
          record.reason = text(node);
        else
          record.others.append(storage).xml = node.xml(storage);
      });
    });
  }

  void read(Node root, DebugInfo &record) {
    requireRoot(root, "debuginfo");
    root.forAttributes([&](const char *name, Text value) {
      if (is(name, "version"))
        record.version = numberFrom<uint32_t>(value);
      else if (is(name, "state"))
        record.state = codeFrom<Extent>(value);
    });
    forElements(root, [&](const char *, Node config) {
      DebugConfig &added = record.configs.append(storage);
      config.forAttributes([&](const char *name, Text value) {
        if (is(name, "aor")) added.user = value;
      });
      forElements(config, [&](const char *, Node session) { read(session, added.sessions.append(storage)); });
    });
  }

private:
  static void requireRoot(Node root, const char *name) {
    if (!is(root.name(), name)) refuse("an unexpected root");
  }

  template <class Call> static void forElements(Node parent, Call call) {
    for (Node node = parent.firstElement(); node; node = node.nextElement())
      call(node.name(), node);
  }

  Text text(Node node) { return node.text(storage); }
  template <class Number> Number number(Node node) { return numberFrom<Number>(text(node)); }

  void read(Node dialog, Dialog &record) {
    dialog.forAttributes([&](const char *name, Text value) {
      if (is(name, "id"))
        record.id = value;
      else if (is(name, "call-id"))
        record.callId = value;
      else if (is(name, "local-tag"))
        record.localTag = value;
      else if (is(name, "remote-tag"))
        record.remoteTag = value;
      else if (is(name, "direction"))
        record.direction = codeFrom<Direction>(value);
    });
    forElements(dialog, [&](const char *name, Node node) {
      if (is(name, "state"))
        read(node, record.state);
      else if (is(name, "duration"))
        record.duration = number<uint32_t>(node);
      else if (is(name, "replaces"))
        read(node, record.replaces.emplace());
      else if (is(name, "referred-by"))
        read(node, record.referredBy.emplace());
      else if (is(name, "route-set")) {
        record.routeSet.emplace();
        forElements(node, [&](const char *, Node hop) { record.routeSet->append(storage) = text(hop); });
      } else if (is(name, "local"))
        read(node, record.local.emplace());
      else if (is(name, "remote"))
        read(node, record.remote.emplace());
      else
        refuse("an unexpected element");
    });
  }

  void read(Node state, DialogState &record) {
    record.value = text(state);
    state.forAttributes([&](const char *name, Text value) {
      if (is(name, "event"))
        record.event = codeFrom<StateEvent>(value);
      else if (is(name, "code"))
        record.code = numberFrom<uint16_t>(value);
    });
  }

  void read(Node replaces, Replaces &record) {
    replaces.forAttributes([&](const char *name, Text value) {
      if (is(name, "call-id"))
        record.callId = value;
      else if (is(name, "local-tag"))
        record.localTag = value;
      else if (is(name, "remote-tag"))
        record.remoteTag = value;
    });
  }

  void read(Node address, NameAddress &record) {
    record.value = text(address);
    address.forAttributes([&](const char *name, Text value) {
      if (is(name, "display-name")) record.displayName = value;
    });
  }

  void read(Node participant, Participant &record) {
    forElements(participant, [&](const char *name, Node node) {
      if (is(name, "identity"))
        read(node, record.identity.emplace());
      else if (is(name, "target"))
        read(node, record.target.emplace());
      else if (is(name, "session-description")) {
        SessionDescription &description = record.sessionDescription.emplace();
        description.value = text(node);
        node.forAttributes([&](const char *attribute, Text value) {
          if (is(attribute, "type")) description.type = value;
        });
      } else if (is(name, "cseq"))
        record.cseq = number<uint32_t>(node);
      else
        refuse("an unexpected element");
    });
  }

  void read(Node target, Target &record) {
    target.forAttributes([&](const char *name, Text value) {
      if (is(name, "uri")) record.uri = value;
    });
    forElements(target, [&](const char *, Node node) {
      Parameter &parameter = record.parameters.append(storage);
      node.forAttributes([&](const char *name, Text value) {
        if (is(name, "pname"))
          parameter.name = value;
        else if (is(name, "pval"))
          parameter.value = value;
      });
    });
  }

  void read(Node rule, Rule &record) {
    rule.forAttributes([&](const char *name, Text value) {
      if (is(name, "id")) record.id = value;
    });
    forElements(rule, [&](const char *name, Node node) {
      if (is(name, "conditions")) {
        record.conditions.emplace();
        forElements(node, [&](const char *condition, Node content) {
          read(condition, content, record.conditions->append(storage));
        });
      } else if (is(name, "actions"))
        foreign(node, record.actions.emplace());
      else if (is(name, "transformations"))
        foreign(node, record.transformations.emplace());
      else
        refuse("an unexpected element");
    });
  }

  void read(const char *name, Node node, Condition &record) {
    if (is(name, "identity")) {
      Identity &identity = record.emplace<Identity>();
      forElements(node, [&](const char *kind, Node item) {
        auto &added = identity.append(storage);
        if (is(kind, "one"))
          read(item, added.template emplace<One>());
        else if (is(kind, "many"))
          read(item, added.template emplace<Many>());
        else
          refuse("an unexpected element");
      });
    } else if (is(name, "sphere")) {
      Sphere &sphere = record.emplace<Sphere>();
      node.forAttributes([&](const char *attribute, Text value) {
        if (is(attribute, "value")) sphere.value = value;
      });
    } else if (is(name, "validity")) {
      Validity &validity = record.emplace<Validity>();
      forElements(node, [&](const char *limit, Node time) {
        if (is(limit, "from"))
          validity.from = text(time);
        else if (is(limit, "until"))
          validity.until = text(time);
      });
    } else
      refuse("an unexpected element");
  }

  void read(Node one, One &record) {
    one.forAttributes([&](const char *name, Text value) {
      if (is(name, "id")) record.id = value;
    });
  }

  void read(Node many, Many &record) {
    many.forAttributes([&](const char *name, Text value) {
      if (is(name, "domain")) record.domain = value;
    });
    forElements(many, [&](const char *, Node node) {
      Except &except = record.exceptions.append(storage);
      node.forAttributes([&](const char *name, Text value) {
        if (is(name, "domain"))
          except.domain = value;
        else if (is(name, "id"))
          except.id = value;
      });
    });
  }

  void foreign(Node parent, List<Foreign> &list) {
    forElements(parent, [&](const char *, Node node) { list.append(storage).xml = node.xml(storage); });
  }

  void read(Node entity, Entity &record) {
    entity.forAttributes([&](const char *name, Text value) {
      if (is(name, "id")) record.id = value;
    });
    forElements(entity, [&](const char *name, Node settings) {
      Node setting = settings.firstElement();
      if (!setting) refuse("settings without one");
      if (is(name, "isb-settings"))
        record.sessionBarring = active(setting);
      else if (is(name, "am-settings"))
        record.answerMode = codeFrom<AnswerMode>(text(setting));
      else if (is(name, "ipab-settings"))
        record.alertBarring = active(setting);
      else if (is(name, "sss-settings"))
        record.simultaneousSessions = active(setting);
      else
        refuse("an unexpected element");
    });
  }

  static bool active(Node setting) {
    bool result = false;
    setting.forAttributes([&](const char *name, Text value) {
      if (is(name, "active")) result = boolFrom(value);
    });
    return result;
  }

  void read(Node filter, Filter &record) {
    filter.forAttributes([&](const char *name, Text value) {
      if (is(name, "id"))
        record.id = value;
      else if (is(name, "uri"))
        record.uri = value;
      else if (is(name, "domain"))
        record.domain = value;
      else if (is(name, "remove"))
        record.remove = boolFrom(value);
      else if (is(name, "enabled"))
        record.enabled = boolFrom(value);
    });
    forElements(filter, [&](const char *name, Node node) {
      if (is(name, "what")) {
        What &what = record.what.emplace();
        forElements(node, [&](const char *kind, Node selection) {
          read(selection, (is(kind, "include") ? what.included : what.excluded).append(storage));
        });
      } else if (is(name, "trigger"))
        read(node, record.triggers.append(storage));
      else
        refuse("an unexpected element");
    });
  }

  void read(Node selection, Selection &record) {
    record.value = text(selection);
    selection.forAttributes([&](const char *name, Text value) {
      if (is(name, "type")) record.type = codeFrom<SelectionType>(value);
    });
  }

  void read(Node trigger, Trigger &record) {
    forElements(trigger, [&](const char *name, Node node) {
      if (is(name, "changed"))
        read(node, record.changed.append(storage));
      else if (is(name, "added"))
        record.added.append(storage) = text(node);
      else if (is(name, "removed"))
        record.removed.append(storage) = text(node);
      else
        refuse("an unexpected element");
    });
  }

  void read(Node changed, Changed &record) {
    record.value = text(changed);
    changed.forAttributes([&](const char *name, Text value) {
      if (is(name, "from"))
        record.from = value;
      else if (is(name, "to"))
        record.to = value;
      else if (is(name, "by"))
        record.by = numberFrom<double>(value);
    });
  }

  void read(Node session, Session &record) {
    session.forAttributes([&](const char *name, Text value) {
      if (is(name, "id")) record.id = value;
    });
    forElements(session, [&](const char *name, Node node) {
      if (is(name, "start-trigger"))
        read(node, record.start);
      else if (is(name, "stop-trigger"))
        read(node, record.stop);
      else if (is(name, "control"))
        read(node, record.control);
      else
        refuse("an unexpected element");
    });
  }

  void read(Node trigger, StartTrigger &record) {
    forElements(trigger, [&](const char *name, Node node) {
      if (is(name, "from"))
        record.from = text(node);
      else if (is(name, "to"))
        record.to = text(node);
      else if (is(name, "icsi"))
        record.service = text(node);
      else if (is(name, "iari"))
        record.application = text(node);
      else if (is(name, "method"))
        record.method = text(node);
      else if (is(name, "time"))
        record.time = text(node);
      else if (is(name, "debug-id"))
        record.debugId = bytesFrom(text(node), storage);
      else
        refuse("an unexpected element");
    });
  }

  void read(Node trigger, StopTrigger &record) {
    forElements(trigger, [&](const char *name, Node node) {
      if (is(name, "time"))
        record.time = text(node);
      else if (is(name, "time-period"))
        record.period = text(node);
      else if (is(name, "reason"))
        record.reason = codeFrom<StopReason>(text(node));
      else
        refuse("an unexpected element");
    });
  }

  void read(Node control, Control &record) {
    forElements(control, [&](const char *name, Node node) {
      if (is(name, "interface"))
        record.interfaces = text(node);
      else if (is(name, "depth"))
        record.depth = codeFrom<Depth>(text(node));
      else if (is(name, "debug-id"))
        record.debugId = bytesFrom(text(node), storage);
      else
        refuse("an unexpected element");
    });
  }

  Arena &storage;
};

} // namespace bench
