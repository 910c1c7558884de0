// A row of lamps, one for each colleague, lit while they are on the phone: keeps the dialogs of several subscriptions
// from full and partial notifications.
#include "imscodec.hpp"

#include <algorithm>
#include <cstdio>
#include <map>
#include <optional>
#include <string>

using namespace imscodec;
using namespace imscodec::dialoginfo;

namespace {

void say(const std::string &line) { std::puts(line.c_str()); }

// What is kept outlives the record that it is read from, and has texts of its own.
struct Call {
  std::string state;
  std::string with;
};

bool hasEnded(const Call &call) { return call.state == "terminated"; }

Call callOf(const dialog &read) {
  Call call{std::string(read.state().value()), "somebody"};
  if (const auto remote = read.remote()) {
    if (const auto identity = remote->identity()) call.with = identity->display_name().value_or(identity->value());
  }
  return call;
}

enum class News {
  some,
  none,    // older than what is known, or the same once more
  missing, // something was missed, so that only a full notification makes the lamp right again
};

class Lamp {
public:
  News take(const dialog_info &info) {
    const bool full = info.state() == dialog_info_state::full;
    if (version && info.version() <= *version) return News::none;
    const bool next = version && info.version() - *version == 1;
    version = info.version();
    if (full) calls.clear();
    for (const dialog call : info.dialog())
      calls[std::string(call.id())] = callOf(call);
    return full || next ? News::some : News::missing;
  }

  void show() {
    say(isLit() ? "  busy" : "  free");
    for (const auto &[id, call] : calls)
      say("    " + id + " is " + call.state + " with " + call.with);
    // An ended call is seen once, and no notification will name it again.
    std::erase_if(calls, [](const auto &entry) { return hasEnded(entry.second); });
  }

  bool isLit() const {
    return std::ranges::any_of(calls, [](const auto &entry) { return !hasEnded(entry.second); });
  }

private:
  std::optional<std::uint32_t> version; // of the newest notification; none before the first
  std::map<std::string, Call> calls;    // by the id of their dialogs
};

// All lamps, by the URI of the colleague.
class Row {
public:
  // Takes the body of a notification. False if the lamp needs a full one: the host refreshes its subscription.
  bool take(std::string_view body) {
    const auto info = context.decode<dialog_info>(body);
    if (!info) {
      // Nothing is taken from half a document. What was lost shows as a gap before the next.
      for (const Error error : info.errors()) {
        char line[256];
        say("unreadable: " + std::string(error.format(line)));
      }
      return true;
    }
    const std::string entity(info->entity());
    say(entity + ", version " + std::to_string(info->version()) + ", " + std::string(text(info->state())));
    Lamp &lamp = lamps[entity];
    const News news = lamp.take(*info);
    if (news == News::none) return true;
    lamp.show();
    return news != News::missing;
  }

  bool isLit(const std::string &entity) const {
    const auto found = lamps.find(entity);
    return found != lamps.end() && found->second.isLit();
  }

private:
  Context context;
  std::map<std::string, Lamp> lamps;
};

constexpr std::string_view notifications[] = {
    // Both subscriptions begin with all there is.
    R"(<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" version="0" state="full" entity="sip:anna@home.example"/>)",
    R"(<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" version="7" state="full" entity="sip:emil@home.example">
         <dialog id="e1"><state>confirmed</state>
           <remote><identity>sip:desk@home.example</identity></remote></dialog></dialog-info>)",

    // Anna is called, and answers.
    R"(<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" version="1" state="partial" entity="sip:anna@home.example">
         <dialog id="a1" direction="recipient"><state>early</state>
           <remote><identity display-name="Ben">sip:ben@away.example</identity></remote></dialog></dialog-info>)",
    R"(<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" version="2" state="partial" entity="sip:anna@home.example">
         <dialog id="a1" direction="recipient"><state>confirmed</state>
           <remote><identity display-name="Ben">sip:ben@away.example</identity></remote></dialog></dialog-info>)",

    // The network delivers an old one once more.
    R"(<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" version="1" state="partial" entity="sip:anna@home.example">
         <dialog id="a1"><state>early</state></dialog></dialog-info>)",

    // Emil hangs up: shown once, then forgotten.
    R"(<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" version="8" state="partial" entity="sip:emil@home.example">
         <dialog id="e1"><state event="local-bye">terminated</state>
           <remote><identity>sip:desk@home.example</identity></remote></dialog></dialog-info>)",

    // And is called again.
    R"(<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" version="9" state="partial" entity="sip:emil@home.example">
         <dialog id="e2"><state>early</state></dialog></dialog-info>)",

    // One that cannot be read, and then one that comes behind a gap: Anna makes another call, what of the first?
    R"(<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" version="3" state="partial" entity="sip:anna@home.example">
         <dialog><state>terminated</state></dialog></dialog-info>)",
    R"(<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" version="4" state="partial" entity="sip:anna@home.example">
         <dialog id="a2" direction="initiator"><state>trying</state>
           <remote><identity>sip:cleo@away.example</identity></remote></dialog></dialog-info>)",
};

// The answer to the subscription that was refreshed.
constexpr std::string_view everything =
    R"(<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" version="5" state="full" entity="sip:anna@home.example">
         <dialog id="a2" direction="initiator"><state>confirmed</state>
           <remote><identity>sip:cleo@away.example</identity></remote></dialog></dialog-info>)";

} // namespace

int main() {
  Row row;
  int refreshed = 0;
  for (const std::string_view body : notifications) {
    if (row.take(body)) continue;
    say("something was missed: subscribing anew");
    ++refreshed;
    if (!row.take(everything)) return 1;
  }
  return refreshed == 1 && row.isLit("sip:anna@home.example") && row.isLit("sip:emil@home.example") ? 0 : 1;
}
