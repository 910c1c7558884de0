// Rule sets that the library wrote, put into the server over HTTP: they decide who may watch somebody's presence.
#include "Http.h"
#include "Publication.h"
#include "Subscription.h"
#include "imscodec.hpp"
#include "server.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace agent;
using namespace imscodec::ruleset;
using namespace kamailio;
using imscodec::Context;
using RuleSet = imscodec::ruleset::ruleset; // its vocabulary has the same name

// One worker of the server has all connections over TCP, those of HTTP too, so that no two use the database at once.
constexpr Transport transport = Transport::tcp;

// ---- Rules --------------------------------------------------------------------------------------------------------

struct Many {
  std::string domain;                   // empty: any
  std::vector<std::string> exceptUsers; // by their URI
  std::vector<std::string> exceptDomains;
};

struct Rule {
  std::string handling;
  std::vector<std::string> users; // of whom it speaks, by their URI
  std::vector<Many> domains;
  std::string sphere; // empty: in any
  std::string from;   // empty: always
  std::string until;
};

std::string handlingElement(const std::string &handling) {
  return R"(<pr:sub-handling xmlns:pr="urn:ietf:params:xml:ns:pres-rules">)" + handling + "</pr:sub-handling>";
}

bool addUser(Context &context, identityType identity, const std::string &user) {
  auto item = identity.add_items(context);
  return item && item->choose_one(context).set_id(context, user);
}

bool addMany(Context &context, identityType identity, const Many &given) {
  auto item = identity.add_items(context);
  if (!item) return false;
  auto many = item->choose_many(context);
  if (!given.domain.empty() && !many.set_domain(context, given.domain)) return false;
  for (const std::string &user : given.exceptUsers) {
    auto exception = many.add_choice(context);
    if (!exception || !exception->choose_except(context).set_id(context, user)) return false;
  }
  for (const std::string &domain : given.exceptDomains) {
    auto exception = many.add_choice(context);
    if (!exception || !exception->choose_except(context).set_domain(context, domain)) return false;
  }
  return true;
}

bool addRule(Context &context, RuleSet rules, const Rule &given) {
  auto rule = rules.add_rule(context);
  if (!rule || !rule->set_id(context, "r" + std::to_string(rules.rule().size()))) return false;
  auto conditions = rule->make_conditions(context);
  auto condition = conditions.add_items(context);
  if (!condition) return false;
  auto identity = condition->choose_identity(context);
  for (const std::string &user : given.users)
    if (!addUser(context, identity, user)) return false;
  for (const Many &many : given.domains)
    if (!addMany(context, identity, many)) return false;
  if (!given.sphere.empty()) {
    auto further = conditions.add_items(context);
    if (!further || !further->choose_sphere(context).set_value(context, given.sphere)) return false;
  }
  if (!given.from.empty()) {
    auto further = conditions.add_items(context);
    if (!further) return false;
    auto validity = further->choose_validity(context);
    if (!validity.set_from(context, given.from) || !validity.set_until(context, given.until)) return false;
  }
  return rule->make_actions(context).add_items(context, handlingElement(given.handling));
}

// ---- The server's copy --------------------------------------------------------------------------------------------

std::string pathOf(const std::string &resource) { return "/rules/pres-rules/users/" + resource + "/index"; }

void put(const std::string &resource, std::string_view body) {
  const auto response = ask({settingsFor().server, "PUT", pathOf(resource), "application/auth-policy+xml", body});
  ASSERT_TRUE(response);
  ASSERT_EQ(response->status / 100, 2) << response->body;
}

std::string get(const std::string &resource) {
  const auto response = ask({settingsFor().server, "GET", pathOf(resource), "", ""});
  EXPECT_TRUE(response && response->status == 200);
  return response ? response->body : "";
}

// ---- Those who watch ----------------------------------------------------------------------------------------------

// Tells by a line for each notification what came of a subscription: its state, and whether there was something to see.
class PresenceWatcher {
public:
  PresenceWatcher(const std::string &user, const std::string &resource)
      : stack(settings(user)), subscription(stack, resource, "presence", [this](const Notification &notification) {
          std::string line(notification.state);
          if (!notification.reason.empty()) line.append(" ").append(notification.reason);
          if (notification.body.find("open") != std::string_view::npos) line += " open";
          told.push_back(line);
        }) {
    EXPECT_TRUE(waitFor(1)) << user;
  }
  bool waitFor(std::size_t notifications) {
    return stack.waitUntil([&] { return told.size() >= notifications; }, std::chrono::seconds(10));
  }

  Lines told;

private:
  static Settings settings(const std::string &user) {
    Settings given = settingsFor(transport);
    given.user = user;
    return given;
  }

  Stack stack;
  Subscription subscription;
};

// Somebody who can be reached.
class Presence {
public:
  explicit Presence(const std::string &resource)
      : stack(settingsFor(transport)), publication(stack, resource, "presence", "application/pidf+xml") {
    EXPECT_TRUE(publication.publish("<presence xmlns='urn:ietf:params:xml:ns:pidf' entity='" + resource +
                                    "'><tuple id='t1'><status><basic>open</basic></status></tuple></presence>"));
  }

private:
  Stack stack;
  Publication publication;
};

// ---- What rules decide --------------------------------------------------------------------------------------------

struct Decision {
  std::string user;
  std::string told;
};

struct Case {
  std::string name;
  std::vector<Rule> rules;
  std::vector<Decision> decisions;

  friend void PrintTo(const Case &given, std::ostream *out) { *out << given.name; }
};

const Case cases[] = {
    {"everyHandling",
     {{"allow", {"sip:ada@home.example"}, {}, "", "", ""},
      {"block", {"sip:bob@home.example"}, {}, "", "", ""},
      {"confirm", {"sip:cid@home.example"}, {}, "", "", ""},
      {"polite-block", {"sip:dan@home.example"}, {}, "", "", ""}},
     {{"sip:ada@home.example", "active open"},
      {"sip:bob@home.example", "terminated rejected"},
      {"sip:cid@home.example", "pending"},
      {"sip:dan@home.example", "active"},
      {"sip:eve@home.example", "pending"}}},
    {"noRules", {}, {{"sip:ada@home.example", "pending"}}},
    {"severalUsers",
     {{"allow", {"sip:ada@home.example", "sip:bob@away.example"}, {}, "", "", ""}},
     {{"sip:ada@home.example", "active open"},
      {"sip:bob@away.example", "active open"},
      {"sip:bob@home.example", "pending"}}},
    {"usersToEscape",
     {{"allow", {"sip:tom&jerry@home.example", "sip:o'brien@home.example"}, {}, "", "", ""}},
     {{"sip:tom&jerry@home.example", "active open"},
      {"sip:o'brien@home.example", "active open"},
      {"sip:tom@home.example", "pending"}}},
    {"everybody", {{"allow", {}, {{"", {}, {}}}, "", "", ""}}, {{"sip:ada@any.example", "active open"}}},
    {"domain",
     {{"allow", {}, {{"work.example", {}, {}}}, "", "", ""}},
     {{"sip:ada@work.example", "active open"}, {"sip:bob@elsewhere.example", "pending"}}},
    {"exceptDomain",
     {{"allow", {}, {{"", {}, {"bad.example"}}}, "", "", ""}},
     {{"sip:ada@good.example", "active open"}, {"sip:bob@bad.example", "pending"}}},
    {"past",
     {{"allow", {"sip:ada@home.example"}, {}, "", "2001-01-01T00:00:00Z", "2001-12-31T00:00:00Z"}},
     {{"sip:ada@home.example", "pending"}}},
    {"now",
     {{"allow", {"sip:ada@home.example"}, {}, "", "2001-01-01T00:00:00Z", "2999-12-31T00:00:00Z"}},
     {{"sip:ada@home.example", "active open"}}},

    // Where the server reads the rules in its own way.
    // A domain is also any other of its length.
    {"domainOfSameLength",
     {{"allow", {}, {{"work.example", {}, {}}}, "", "", ""}},
     {{"sip:bob@away.example", "active open"}}},
    // A user is no exception, but who has one character less than the exception is one.
    {"exceptUser",
     {{"allow", {}, {{"work.example", {"sip:chief@work.example"}, {}}}, "", "", ""}},
     {{"sip:ada@work.example", "active open"}, {"sip:chief@work.example", "active open"}}},
    {"exceptUserAndOne",
     {{"allow", {}, {{"work.example", {"sip:chief@work.example1"}, {}}}, "", "", ""}},
     {{"sip:chief@work.example", "pending"}}},
    // A sphere that it does not know is any.
    {"sphere", {{"allow", {"sip:ada@home.example"}, {}, "work", "", ""}}, {{"sip:ada@home.example", "active open"}}},
    // The first rule that fits decides, rather than the one that permits most.
    {"severalRules",
     {{"block", {"sip:ada@home.example"}, {}, "", "", ""}, {"allow", {"sip:ada@home.example"}, {}, "", "", ""}},
     {{"sip:ada@home.example", "terminated rejected"}}},
};

class Rules : public testing::TestWithParam<Case> {};

TEST_P(Rules, DecideWhoMayWatch) {
  const Case &given = GetParam();
  const std::string resource = "sip:" + given.name + "@home.example";
  Context context;
  auto rules = context.create<RuleSet>();
  for (const Rule &rule : given.rules)
    ASSERT_TRUE(addRule(context, *rules, rule));
  const auto body = context.encode(rules);
  ASSERT_TRUE(body);
  const Presence presence(resource);
  put(resource, *body);
  EXPECT_EQ(get(resource), *body);

  std::string transcript = "== put\n" + std::string(*body) + "\n";
  for (const auto &[user, told] : given.decisions) {
    const PresenceWatcher watcher(user, resource);
    EXPECT_EQ(watcher.told, Lines{told}) << user;
    transcript += "== told to " + user + "\n" + watcher.told.front() + "\n";
  }
  record(given.name + ".txt", transcript);
}

INSTANTIATE_TEST_SUITE_P(Kamailio, Rules, testing::ValuesIn(cases), [](const auto &one) { return one.param.name; });

// ---- Rules that change --------------------------------------------------------------------------------------------

// Changes the server's copy as a settings page does: what it has is read, changed and put again.
void change(const std::string &resource, const std::function<void(Context &, RuleSet)> &edit) {
  Context context;
  auto rules = context.decode<RuleSet>(get(resource));
  ASSERT_TRUE(rules);
  edit(context, *rules);
  const auto body = context.encode(*rules);
  ASSERT_TRUE(body);
  put(resource, *body);
}

bool setHandling(Context &context, ruleType rule, const std::string &handling) {
  rule.clear_actions(context);
  return rule.make_actions(context).add_items(context, handlingElement(handling));
}

TEST(ChangedRules, DecideAnew) {
  const std::string resource = "sip:changed@home.example";
  const Presence presence(resource);
  Context context;
  auto rules = context.create<RuleSet>();
  ASSERT_TRUE(addRule(context, *rules, {"allow", {"sip:ada@home.example"}, {}, "", "", ""}));
  ASSERT_TRUE(addRule(context, *rules, {"confirm", {"sip:bob@home.example"}, {}, "", "", ""}));
  const auto body = context.encode(rules);
  ASSERT_TRUE(body);
  put(resource, *body);
  PresenceWatcher ada("sip:ada@home.example", resource);
  PresenceWatcher bob("sip:bob@home.example", resource);
  PresenceWatcher cid("sip:cid@home.example", resource);

  // Ada is blocked, Bob's question is answered, and there is a new rule for Cid.
  change(resource, [](Context &editing, RuleSet read) {
    ASSERT_EQ(read.rule().size(), 2u);
    auto rule = read.rule().begin();
    EXPECT_TRUE(setHandling(editing, *rule, "block"));
    EXPECT_TRUE(setHandling(editing, *++rule, "allow"));
    EXPECT_TRUE(addRule(editing, read, {"polite-block", {"sip:cid@home.example"}, {}, "", "", ""}));
  });
  EXPECT_TRUE(ada.waitFor(2));
  EXPECT_TRUE(bob.waitFor(2));
  EXPECT_TRUE(cid.waitFor(2));
  EXPECT_EQ(ada.told, (Lines{"active open", "terminated rejected"}));
  EXPECT_EQ(bob.told, (Lines{"pending", "active open"}));
  EXPECT_EQ(cid.told, (Lines{"pending", "active"}));

  // And once more: who was blocked may come back.
  change(resource, [](Context &editing, RuleSet read) {
    ASSERT_EQ(read.rule().size(), 3u);
    EXPECT_TRUE(setHandling(editing, read.rule().front(), "allow"));
  });
  const PresenceWatcher again("sip:ada@home.example", resource);
  EXPECT_EQ(again.told, Lines{"active open"});
  record("changed.txt", "== put at first\n" + std::string(*body) + "\n== after two changes\n" + get(resource) + "\n");
}

} // namespace
