// Calls through the server: what it tells of them to who watches the two sides.
#include "DialogStates.h"
#include "server.h"
#include "xmlJudge.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace agent;
using namespace imscodec::dialoginfo;
using namespace kamailio;
using std::chrono::seconds;

// One side of a call.
class Call : public Exchange {
public:
  explicit Call(nua_handle_t *taken) : handle(taken) {}
  Call(Stack &stack, const std::string &callee) : handle(stack.open(*this, callee)) { nua_invite(handle, TAG_END()); }
  ~Call() override {
    nua_handle_bind(handle, nullptr);
    nua_handle_destroy(handle);
  }
  Call(const Call &) = delete;
  Call &operator=(const Call &) = delete;

  void answer(int status, const char *phrase) { nua_respond(handle, status, phrase, TAG_END()); }
  void cancel() { nua_cancel(handle, TAG_END()); }
  void hangUp() { nua_bye(handle, TAG_END()); }

  bool isActive() const { return active; } // answered, and either side knows

private:
  void happened(nua_event_t event, int, const char *, const sip_t *) override {
    if (event == nua_i_active) active = true;
  }

  nua_handle_t *handle;
  bool active = false;
};

class Phone : public Exchange {
public:
  explicit Phone(const std::string &address) : user(address), stack(settings(user)), handle(stack.open(*this, user)) {
    stack.onCall([this](nua_handle_t *incoming) {
      call = std::make_unique<Call>(incoming);
      return call.get();
    });
    nua_register(handle, NUTAG_REGISTRAR(user.substr(user.find('@') + 1).insert(0, "sip:").c_str()), TAG_END());
    EXPECT_TRUE(stack.waitUntil([this] { return registered != 0; }, seconds(10)));
    EXPECT_EQ(registered, 200);
  }
  ~Phone() override {
    call.reset();
    nua_handle_bind(handle, nullptr);
    nua_handle_destroy(handle);
  }
  Phone(const Phone &) = delete;
  Phone &operator=(const Phone &) = delete;

  void invite(const std::string &callee) { call = std::make_unique<Call>(stack, callee); }

  const std::string user;
  Stack stack;
  std::unique_ptr<Call> call;

private:
  static Settings settings(const std::string &user) {
    Settings given = settingsFor();
    given.user = user;
    given.takesCalls = true;
    return given;
  }
  void happened(nua_event_t event, int status, const char *, const sip_t *) override {
    if (event == nua_r_register && status >= 200) registered = status;
  }

  nua_handle_t *handle;
  int registered = 0;
};

// ---- What happens in a call, and what is told of it ---------------------------------------------------------------

enum class Action {
  invite,
  ring,
  answer,
  decline,
  cancel,
  callerHangsUp,
  calleeHangsUp,
};

// With the notification that follows on either side, as "VERSION STATE DIRECTION"; an empty text for none.
struct Step {
  Action action;
  std::string toldOfCaller;
  std::string toldOfCallee;
};

struct Case {
  std::string name;
  std::vector<Step> steps;

  friend void PrintTo(const Case &given, std::ostream *out) { *out << given.name; }
};

const Case cases[] = {
    {"answered",
     {{Action::invite, "2 Trying initiator", ""},
      {Action::ring, "3 early initiator", "2 early recipient"},
      {Action::answer, "4 confirmed initiator", "3 confirmed recipient"},
      {Action::callerHangsUp, "5 terminated initiator", "4 terminated recipient"}}},
    {"endedByTheCallee",
     {{Action::invite, "2 Trying initiator", ""},
      {Action::answer, "3 confirmed initiator", "2 confirmed recipient"},
      {Action::calleeHangsUp, "4 terminated initiator", "3 terminated recipient"}}},
    {"declined",
     {{Action::invite, "2 Trying initiator", ""},
      {Action::ring, "3 early initiator", "2 early recipient"},
      {Action::decline, "4 terminated initiator", "3 terminated recipient"}}},
    {"cancelled",
     {{Action::invite, "2 Trying initiator", ""},
      {Action::ring, "3 early initiator", "2 early recipient"},
      {Action::cancel, "4 terminated initiator", "3 terminated recipient"}}},
};

// The one dialog of a body, with what does not depend on what happened.
std::string described(const std::string &body, const std::string &entity, const std::string &other) {
  if (body.empty()) return "nothing";
  imscodec::Context context;
  const auto result = context.decode<dialog_info>(body);
  const auto info = usable(result);
  if (!info) return "unreadable";
  EXPECT_EQ(info->entity(), entity);
  EXPECT_EQ(info->state(), dialog_info_state::full);
  if (info->dialog().size() != 1) return std::to_string(info->dialog().size()) + " dialogs";
  const dialog call = info->dialog().front();
  EXPECT_NE(call.call_id().value_or(""), "");
  EXPECT_EQ(call.remote() && call.remote()->identity() ? call.remote()->identity()->value() : "", other);

  // The server puts the remote side first, which costs the local one.
  EXPECT_EQ(result.status(), STATUS_UNEXPECTED_ELEMENT);
  EXPECT_FALSE(call.local());
  EXPECT_LT(body.find("<remote>"), body.find("<local>"));
  EXPECT_TRUE(support::parseNamespacedXml(body));

  const auto direction = call.direction();
  return std::to_string(info->version()) + " " + std::string(call.state().value()) + " " +
         std::string(direction ? text(*direction) : "in no direction");
}

Lines described(const Watcher &watcher, const std::string &entity, const std::string &other) {
  Lines lines;
  for (const std::string &body : watcher.bodies)
    lines.push_back(described(body, entity, other));
  return lines;
}

void act(Action action, Phone &anna, Phone &ben) {
  switch (action) {
  case Action::invite: anna.invite(ben.user); break;
  case Action::ring: ben.call->answer(180, "Ringing"); break;
  case Action::answer: ben.call->answer(200, "OK"); break;
  case Action::decline: ben.call->answer(603, "Decline"); break;
  case Action::cancel: anna.call->cancel(); break;
  case Action::callerHangsUp: anna.call->hangUp(); break;
  case Action::calleeHangsUp: ben.call->hangUp(); break;
  }
}

class Calls : public testing::TestWithParam<Case> {};

TEST_P(Calls, AreToldOnBothSides) {
  const std::string caller = "sip:anna-" + GetParam().name + "@home.example";
  const std::string callee = "sip:ben-" + GetParam().name + "@home.example";
  Watcher annas(caller);
  Watcher bens(callee);
  Phone anna(caller);
  Phone ben(callee);
  Lines toldOfCaller = {"nothing"};
  Lines toldOfCallee = {"nothing"};
  for (const Step &step : GetParam().steps) {
    const Action action = step.action;
    act(action, anna, ben);
    if (!step.toldOfCaller.empty()) toldOfCaller.push_back(step.toldOfCaller);
    if (!step.toldOfCallee.empty()) toldOfCallee.push_back(step.toldOfCallee);
    const auto isDone = [&] {
      if (action == Action::answer && !(anna.call->isActive() && ben.call->isActive())) return false;
      return ben.call && annas.bodies.size() >= toldOfCaller.size() && bens.bodies.size() >= toldOfCallee.size();
    };
    const auto end = std::chrono::steady_clock::now() + seconds(10);
    while (!isDone() && std::chrono::steady_clock::now() < end) {
      for (Stack *stack : {&annas.stack, &bens.stack, &anna.stack, &ben.stack})
        stack->waitUntil(isDone, std::chrono::milliseconds(1));
    }
    if (!isDone()) break;
  }
  EXPECT_EQ(described(annas, caller, callee), toldOfCaller);
  EXPECT_EQ(described(bens, callee, caller), toldOfCallee);

  // A call that has ended stays among the others.
  const Watcher late(caller);
  EXPECT_EQ(described(late, caller, callee), Lines{"1 terminated initiator"});

  std::string transcript;
  for (const Watcher *watcher : {&annas, &bens}) {
    for (const std::string &body : watcher->bodies)
      transcript += "== notified to the watcher of " + (watcher == &annas ? caller : callee) + "\n" + body;
  }
  record(GetParam().name + ".txt", transcript);
}

INSTANTIATE_TEST_SUITE_P(Kamailio, Calls, testing::ValuesIn(cases), [](const auto &one) { return one.param.name; });

} // namespace
