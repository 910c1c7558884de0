// Writes records through the writer of a rival, whose texts end with a NUL:
//   start(name), attribute(name, value), text(value), end()
//   xml(value)     an element that is XML text already
#pragma once

#include "rival.h"

#include <array>
#include <charconv>

namespace bench {

// A number as text.
class Digits {
public:
  template <class Number> explicit Digits(Number number) {
    auto [end, error] = std::to_chars(bytes.data(), bytes.data() + bytes.size() - 1, number);
    *end = '\0';
    length = static_cast<size_t>(end - bytes.data());
  }
  explicit Digits(bool value) : Digits(static_cast<unsigned>(value)) {}
  operator Text() const { return {bytes.data(), length}; }

private:
  std::array<char, 32> bytes;
  size_t length;
};

template <class Writer> class Emit {
public:
  explicit Emit(Writer &taken) : out(taken) {}

  void write(const IsComposing &record) {
    root("isComposing", "urn:ietf:params:xml:ns:im-iscomposing");
    element("state", record.state);
    optionalElement("lastactive", record.lastActive);
    optionalElement("contenttype", record.contentType);
    if (record.refresh) element("refresh", Digits(*record.refresh));
    out.end();
  }

  void write(const DialogInfo &record) {
    root("dialog-info", "urn:ietf:params:xml:ns:dialog-info");
    out.attribute("version", Digits(record.version));
    out.attribute("state", textOf(record.state));
    out.attribute("entity", record.entity);
    for (const Dialog &dialog : record.dialogs)
      write(dialog);
    out.end();
  }

  void write(const RuleSet &record) {
    root("ruleset", "urn:ietf:params:xml:ns:common-policy");
    for (const Rule &rule : record.rules) {
      out.start("rule");
      out.attribute("id", rule.id);
      if (rule.conditions) {
        out.start("conditions");
        for (const Condition &condition : *rule.conditions)
          std::visit([&](const auto &alternative) { write(alternative); }, condition);
        out.end();
      }
      write("actions", rule.actions);
      write("transformations", rule.transformations);
      out.end();
    }
    out.end();
  }

  void write(const PocSettings &record) {
    root("poc-settings", "urn:oma:params:xml:ns:poc:poc-settings");
    for (const Entity &entity : record.entities) {
      out.start("entity");
      out.attribute("id", entity.id);
      setting("isb-settings", "incoming-session-barring", entity.sessionBarring);
      if (entity.answerMode) {
        out.start("am-settings");
        element("answer-mode", textOf(*entity.answerMode));
        out.end();
      }
      setting("ipab-settings", "incoming-personal-alert-barring", entity.alertBarring);
      setting("sss-settings", "simultaneous-sessions-support", entity.simultaneousSessions);
      out.end();
    }
    out.end();
  }

  void write(const FilterSet &record) {
    root("filter-set", "urn:ietf:params:xml:ns:simple-filter");
    optionalAttribute("package", record.package);
    if (record.bindings) {
      out.start("ns-bindings");
      for (const Binding &binding : *record.bindings) {
        out.start("ns-binding");
        out.attribute("prefix", binding.prefix);
        out.attribute("urn", binding.urn);
        out.end();
      }
      out.end();
    }
    for (const Filter &filter : record.filters)
      write(filter);
    out.end();
  }

  void write(const Alternative &record) {
    out.start("ims-3gpp");
    out.attribute("version", Digits(record.version));
    out.start("alternative-service");
    element("type", record.type);
    element("reason", record.reason);
    for (const Foreign &other : record.others)
      out.xml(other.xml);
    out.end();
    out.end();
  }

  void write(const DebugInfo &record) {
    root("debuginfo", "urn:ietf:params:xml:ns:debuginfo");
    out.attribute("version", Digits(record.version));
    out.attribute("state", textOf(record.state));
    for (const DebugConfig &config : record.configs) {
      out.start("debugconfig");
      out.attribute("aor", config.user);
      for (const Session &session : config.sessions)
        write(session);
      out.end();
    }
    out.end();
  }

private:
  void root(const char *name, const char *uri) {
    out.start(name);
    out.attribute("xmlns", uri);
  }

  void optionalAttribute(const char *name, const std::optional<Text> &value) {
    if (value) out.attribute(name, *value);
  }
  void element(const char *name, Text value) {
    out.start(name);
    out.text(value);
    out.end();
  }
  void optionalElement(const char *name, const std::optional<Text> &value) {
    if (value) element(name, *value);
  }

  void write(const Dialog &dialog) {
    out.start("dialog");
    out.attribute("id", dialog.id);
    optionalAttribute("call-id", dialog.callId);
    optionalAttribute("local-tag", dialog.localTag);
    optionalAttribute("remote-tag", dialog.remoteTag);
    if (dialog.direction) out.attribute("direction", textOf(*dialog.direction));
    out.start("state");
    if (dialog.state.event) out.attribute("event", textOf(*dialog.state.event));
    if (dialog.state.code) out.attribute("code", Digits(*dialog.state.code));
    out.text(dialog.state.value);
    out.end();
    if (dialog.duration) element("duration", Digits(*dialog.duration));
    if (dialog.replaces) {
      out.start("replaces");
      out.attribute("call-id", dialog.replaces->callId);
      out.attribute("local-tag", dialog.replaces->localTag);
      out.attribute("remote-tag", dialog.replaces->remoteTag);
      out.end();
    }
    if (dialog.referredBy) write("referred-by", *dialog.referredBy);
    if (dialog.routeSet) {
      out.start("route-set");
      for (Text hop : *dialog.routeSet)
        element("hop", hop);
      out.end();
    }
    if (dialog.local) write("local", *dialog.local);
    if (dialog.remote) write("remote", *dialog.remote);
    out.end();
  }

  void write(const char *name, const NameAddress &address) {
    out.start(name);
    optionalAttribute("display-name", address.displayName);
    out.text(address.value);
    out.end();
  }

  void write(const char *name, const Participant &participant) {
    out.start(name);
    if (participant.identity) write("identity", *participant.identity);
    if (participant.target) {
      out.start("target");
      out.attribute("uri", participant.target->uri);
      for (const Parameter &parameter : participant.target->parameters) {
        out.start("param");
        out.attribute("pname", parameter.name);
        out.attribute("pval", parameter.value);
        out.end();
      }
      out.end();
    }
    if (participant.sessionDescription) {
      out.start("session-description");
      out.attribute("type", participant.sessionDescription->type);
      out.text(participant.sessionDescription->value);
      out.end();
    }
    if (participant.cseq) element("cseq", Digits(*participant.cseq));
    out.end();
  }

  void write(const Identity &identity) {
    out.start("identity");
    for (const auto &item : identity) {
      if (const One *one = std::get_if<One>(&item)) {
        out.start("one");
        out.attribute("id", one->id);
        out.end();
      } else {
        const Many &many = *std::get_if<Many>(&item);
        out.start("many");
        optionalAttribute("domain", many.domain);
        for (const Except &except : many.exceptions) {
          out.start("except");
          optionalAttribute("domain", except.domain);
          optionalAttribute("id", except.id);
          out.end();
        }
        out.end();
      }
    }
    out.end();
  }

  void write(const Sphere &sphere) {
    out.start("sphere");
    out.attribute("value", sphere.value);
    out.end();
  }

  void write(const Validity &validity) {
    out.start("validity");
    element("from", validity.from);
    element("until", validity.until);
    out.end();
  }

  void write(const char *name, const std::optional<List<Foreign>> &elements) {
    if (!elements) return;
    out.start(name);
    for (const Foreign &element : *elements)
      out.xml(element.xml);
    out.end();
  }

  void setting(const char *group, const char *name, std::optional<bool> active) {
    if (!active) return;
    out.start(group);
    out.start(name);
    out.attribute("active", *active ? Text("true") : Text("false"));
    out.end();
    out.end();
  }

  void write(const Filter &filter) {
    out.start("filter");
    out.attribute("id", filter.id);
    optionalAttribute("uri", filter.uri);
    optionalAttribute("domain", filter.domain);
    if (filter.remove) out.attribute("remove", "true");
    if (!filter.enabled) out.attribute("enabled", "false");
    if (filter.what) {
      out.start("what");
      for (const Selection &selection : filter.what->included)
        write("include", selection);
      for (const Selection &selection : filter.what->excluded)
        write("exclude", selection);
      out.end();
    }
    for (const Trigger &trigger : filter.triggers) {
      out.start("trigger");
      for (const Changed &changed : trigger.changed) {
        out.start("changed");
        optionalAttribute("from", changed.from);
        optionalAttribute("to", changed.to);
        if (changed.by) out.attribute("by", Digits(*changed.by));
        out.text(changed.value);
        out.end();
      }
      for (Text added : trigger.added)
        element("added", added);
      for (Text removed : trigger.removed)
        element("removed", removed);
      out.end();
    }
    out.end();
  }

  void write(const char *name, const Selection &selection) {
    out.start(name);
    if (selection.type) out.attribute("type", textOf(*selection.type));
    out.text(selection.value);
    out.end();
  }

  void write(const Session &session) {
    out.start("session");
    out.attribute("id", session.id);
    out.start("start-trigger");
    optionalElement("from", session.start.from);
    optionalElement("to", session.start.to);
    optionalElement("icsi", session.start.service);
    optionalElement("iari", session.start.application);
    optionalElement("method", session.start.method);
    optionalElement("time", session.start.time);
    bytes("debug-id", session.start.debugId);
    out.end();
    out.start("stop-trigger");
    optionalElement("time", session.stop.time);
    optionalElement("time-period", session.stop.period);
    if (session.stop.reason) element("reason", textOf(*session.stop.reason));
    out.end();
    out.start("control");
    element("interface", session.control.interfaces);
    if (session.control.depth) element("depth", textOf(*session.control.depth));
    bytes("debug-id", session.control.debugId);
    out.end();
    out.end();
  }

  void bytes(const char *name, const std::optional<Text> &value) {
    if (!value) return;
    std::string digits;
    for (char byte : *value) {
      digits += "0123456789abcdef"[static_cast<unsigned char>(byte) >> 4];
      digits += "0123456789abcdef"[static_cast<unsigned char>(byte) & 15];
    }
    element(name, Text(digits));
  }

  Writer &out;
};

} // namespace bench
