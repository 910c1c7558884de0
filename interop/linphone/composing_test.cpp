// Composing indications between the library and a chat client of others, in both directions. The client does not
// outlive a body that it cannot read, so that all of those here can be read.
#include "Peer.h"
#include "imscodec.hpp"
#include "xmlJudge.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace {

using namespace imscodec;
using namespace imscodec::iscomposing;
using linphone::Lines;
using linphone::Message;
using linphone::Peer;

constexpr char vocabulary[] = "urn:ietf:params:xml:ns:im-iscomposing";
constexpr char contentType[] = "application/im-iscomposing+xml";

std::string environment(const char *name) {
  const char *value = std::getenv(name);
  return value ? value : "";
}

std::unique_ptr<Peer> peer;

// One client for all tests, since it is slow to start.
class OneClient : public testing::Environment {
public:
  void SetUp() override {
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder / "state");
    peer = std::make_unique<Peer>(environment("CLIENT"), folder / "state");
    ASSERT_TRUE(*peer) << "the client does not start";
  }
  void TearDown() override {
    std::ofstream(folder / "transcript.txt", std::ios::binary) << peer->transcript();
    peer.reset();
  }

private:
  const std::filesystem::path folder = environment("FOLDER");
};

[[maybe_unused]] const testing::Environment *const oneClient = testing::AddGlobalTestEnvironment(new OneClient);

// ---- What the client writes ---------------------------------------------------------------------------------------

// To whom a message is, and the state and the refresh time of an indication that is good in every way.
std::string read(const std::optional<Message> &message) {
  if (!message) return "nothing";
  std::string line = message->user + " ";
  if (message->type != contentType) return line + message->type;
  SCOPED_TRACE(message->body);
  Context context;
  EXPECT_TRUE(context.validate<isComposing>(message->body));
  const auto indication = context.decode<isComposing>(message->body);
  if (!indication) return line + "unreadable";
  EXPECT_FALSE(indication->contenttype());
  EXPECT_FALSE(indication->lastactive());
  EXPECT_TRUE(indication->anyElems().empty());
  line += indication->state();
  if (indication->refresh()) line += " " + std::to_string(*indication->refresh());

  // What we write of it says the same.
  Context other;
  const auto again = other.encode(*indication);
  const auto theirs = support::parseNamespacedXml(message->body);
  const auto ours = again ? support::parseNamespacedXml(*again) : std::nullopt;
  EXPECT_TRUE(theirs && ours && theirs->infoset() == ours->infoset());
  return line;
}

// It says again that its user is active when the refresh time is over, and that it is no longer so: but not if the
// message says that.
TEST(TheirIndication, SaysWhatTheUserDoes) {
  const std::string sends = "sip:sends@away.example";
  const std::string thinks = "sip:thinks@away.example";
  peer->command("compose " + sends);
  peer->command("send " + sends);
  peer->command("compose " + thinks);
  Lines said;
  for (int i = 0; i < 5; ++i)
    said.push_back(read(peer->receive()));
  EXPECT_EQ(said, (Lines{sends + " active 2", sends + " text/plain", thinks + " active 2", thinks + " active 2",
                         thinks + " idle"}));
}

// ---- What we write ------------------------------------------------------------------------------------------------

enum class Form {
  prefixed,  // as a context writes by default
  unprefixed // as it writes for a host that has declared the default namespace
};

enum class Before {
  idle,
  active
};

struct Indication {
  std::string state;
  std::optional<std::uint32_t> refresh;
  std::string contenttype;
  std::string lastactive;
  std::vector<std::string> extensions;
};

Message messageOf(const std::string &from, const Indication &given, Form form = Form::prefixed) {
  Context context;
  if (form == Form::unprefixed) {
    EXPECT_EQ(rtXmlNSSetNamespace(context.get(), nullptr, nullptr, vocabulary, false), 0);
    context.get()->flags |= NamespacesPreset;
  }
  auto indication = context.create<isComposing>();
  EXPECT_TRUE(indication->set_state(context, given.state));
  if (given.refresh) indication->set_refresh(*given.refresh);
  EXPECT_TRUE(given.contenttype.empty() || indication->set_contenttype(context, given.contenttype));
  EXPECT_TRUE(given.lastactive.empty() || indication->set_lastactive(context, given.lastactive));
  for (const std::string &element : given.extensions)
    EXPECT_TRUE(indication->add_anyElems(context, element));
  const auto body = context.encode(indication);
  EXPECT_TRUE(body);
  return {from, contentType, body ? std::string(*body) : ""};
}

const Indication active = {"active", 600, "", "", {}};

struct Case {
  std::string name;
  Indication indication;
  std::string understood; // or nothing if the client takes no notice

  friend void PrintTo(const Case &given, std::ostream *out) { *out << given.name; }
};

const Case cases[] = {
    {"active", {"active", {}, "", "", {}}, "composing"},
    {"activeWithRefresh", {"active", 60, "", "", {}}, "composing"},
    {"longestRefresh", {"active", 4294967295, "", "", {}}, "composing"},
    {"contentType", {"active", 60, "text/plain;charset=\"utf-8\"", "", {}}, "composing"},
    {"contentTypeWithMarkup", {"active", {}, "a&b<c>]]>'", "", {}}, "composing"},
    {"lastActive", {"active", {}, "", "2026-11-21T20:00:00.5+14:00", {}}, "composing"},
    {"lastActiveIsNoDate", {"active", {}, "", "yesterday", {}}, "composing"},
    {"everyMember",
     {"active", 90, "image/jpeg", "2026-11-21T20:00:00Z", {"<n:mood xmlns:n='urn:example:mood'>calm</n:mood>"}},
     "composing"},
    {"extension",
     {"active", 60, "", "", {"<n:mood xmlns:n='urn:example:mood' n:why='&lt;'><n:b/> calm</n:mood>"}},
     "composing"},
    {"extensions",
     {"active", {}, "", "", {"<mood xmlns='urn:example:mood'><deep><deeper/></deep></mood>", "<o:o xmlns:o='urn:o'/>"}},
     "composing"},
    {"extensionInNoNamespace", {"active", {}, "", "", {"<mood xmlns=''>calm</mood>"}}, "composing"},
    {"extensionNamedState",
     {"active", {}, "", "", {"<n:state xmlns:n='urn:example:mood'>idle</n:state>"}},
     "composing"},
    {"idle", {"idle", {}, "", "", {}}, "stopped"},
    {"idleWithRefresh", {"idle", 60, "", "", {}}, "stopped"},
    {"idleWithEveryMember",
     {"idle", 90, "image/jpeg", "2026-11-21T20:00:00Z", {"<n:state xmlns:n='urn:example:mood'>active</n:state>"}},
     "stopped"},
    {"otherState", {"dreaming", 60, "", "", {}}, ""},
    {"otherCase", {"Active", 60, "", "", {}}, ""},
    {"whiteSpace", {" active ", 60, "", "", {}}, ""},
    {"emptyState", {"", {}, "", "", {}}, ""},
};

class OurBody : public testing::TestWithParam<std::tuple<Case, Form, Before>> {};

// The client says so each time, also if nothing has changed.
TEST_P(OurBody, IsUnderstood) {
  const auto &[given, form, before] = GetParam();
  const std::string from = "sip:" + given.name + (form == Form::prefixed ? "-p" : "-u") +
                           (before == Before::idle ? "-i" : "-a") + "@away.example";
  if (before == Before::active) {
    ASSERT_EQ(peer->send(messageOf(from, active)), 200);
    ASSERT_EQ(peer->saidOf({from}), (Lines{"composing " + from}));
  }
  const Message message = messageOf(from, given.indication, form);
  SCOPED_TRACE(message.body);
  EXPECT_EQ(peer->send(message), 200);
  EXPECT_EQ(peer->saidOf({from}), given.understood.empty() ? Lines{} : Lines{given.understood + " " + from});
}

INSTANTIATE_TEST_SUITE_P(Linphone, OurBody,
                         testing::Combine(testing::ValuesIn(cases), testing::Values(Form::prefixed, Form::unprefixed),
                                          testing::Values(Before::idle, Before::active)),
                         [](const auto &one) {
                           return std::get<0>(one.param).name +
                                  (std::get<1>(one.param) == Form::prefixed ? "Prefixed" : "Unprefixed") +
                                  (std::get<2>(one.param) == Before::idle ? "WhenIdle" : "WhenActive");
                         });

// ---- Until when it holds ------------------------------------------------------------------------------------------

// Without one it holds as long as the client is configured to wait.
TEST(OurIndication, EndsWithItsRefresh) {
  const std::string waits = "sip:waits@away.example";
  const std::string refreshes = "sip:refreshes@away.example";
  ASSERT_EQ(peer->send(messageOf(waits, {"active", {}, "", "", {}})), 200);
  ASSERT_EQ(peer->send(messageOf(refreshes, {"active", 1, "", "", {}})), 200);
  EXPECT_TRUE(peer->waitFor("stopped", waits));
  EXPECT_EQ(peer->saidOf({waits, refreshes}),
            (Lines{"composing " + waits, "composing " + refreshes, "stopped " + refreshes, "stopped " + waits}));
}

TEST(OurIndication, HoldsFromItsLastRepetition) {
  const std::string renewed = "sip:renewed@away.example";
  const std::string other = "sip:other@away.example";
  ASSERT_EQ(peer->send(messageOf(renewed, {"active", 3, "", "", {}})), 200);
  ASSERT_EQ(peer->send(messageOf(other, {"active", 4, "", "", {}})), 200);
  ASSERT_EQ(peer->send(messageOf(renewed, active)), 200);
  EXPECT_TRUE(peer->waitFor("stopped", other));
  EXPECT_EQ(peer->saidOf({renewed, other}),
            (Lines{"composing " + renewed, "composing " + other, "composing " + renewed, "stopped " + other}));
}

// The client counts milliseconds in 32 bits, so that what is longer than 49 days begins anew: this one ends in 0.7 s.
TEST(OurIndication, EndsEarlyAfterAVeryLongRefresh) {
  const std::string from = "sip:long@away.example";
  ASSERT_EQ(peer->send(messageOf(from, {"active", 4294968, "", "", {}})), 200);
  EXPECT_TRUE(peer->waitFor("stopped", from));
  EXPECT_EQ(peer->saidOf({from}), (Lines{"composing " + from, "stopped " + from}));
}

TEST(OurIndication, EndsWithTheMessage) {
  const std::string from = "sip:speaks@away.example";
  ASSERT_EQ(peer->send(messageOf(from, active)), 200);
  ASSERT_EQ(peer->send({from, "text/plain", "Good evening."}), 200);
  EXPECT_TRUE(peer->waitFor("message", from));
  EXPECT_EQ(peer->saidOf({from}), (Lines{"composing " + from, "stopped " + from, "message " + from}));
}

// ---- What both read, and not in the same way ----------------------------------------------------------------------

// The client takes the order and the numbers as they come. What it cannot read at all is missing here: it is not
// well-formed, has another root, or none of the namespace, or no state, and the client ends with it.
struct Difference {
  std::string name;
  std::string content;
  std::string understood; // by the client
  RtxStatus status;       // for the library
  std::string state;      // that it takes all the same
  std::string prolog = "";

  friend void PrintTo(const Difference &given, std::ostream *out) { *out << given.name; }
};

const Difference differences[] = {
    {"refreshIsFirst", "<refresh>60</refresh><state>active</state>", "composing", STATUS_UNEXPECTED_ELEMENT, "active"},
    {"refreshOfZero", "<state>active</state><refresh>0</refresh>", "composing", STATUS_CONSTRAINT_VIOLATION, "active"},
    {"refreshIsNegative", "<state>active</state><refresh>-1</refresh>", "composing", STATUS_INVALID_CONTENT, "active"},
    {"refreshIsNoNumber", "<state>active</state><refresh>soon</refresh>", "composing", STATUS_INVALID_CONTENT,
     "active"},
    {"refreshTwice", "<state>active</state><refresh>60</refresh><refresh>90</refresh>", "composing",
     STATUS_UNEXPECTED_ELEMENT, "active"},
    {"idleAfterActive", "<state>active</state><state>idle</state>", "composing", STATUS_UNEXPECTED_ELEMENT, "active"},
    {"activeAfterIdle", "<state>idle</state><state>active</state>", "stopped", STATUS_UNEXPECTED_ELEMENT, "idle"},
    {"stateHasAnAttribute", "<state why='x'>active</state>", "composing", STATUS_UNKNOWN_ATTRIBUTE, "active"},
    {"extensionIsFirst", "<n:mood xmlns:n='urn:example:mood'/><state>active</state>", "composing",
     STATUS_UNEXPECTED_ELEMENT, "active"},
    {"extensionInOwnNamespace", "<state>active</state><mood/>", "composing", STATUS_UNEXPECTED_ELEMENT, "active"},
    {"documentType", "<state>active</state>", "composing", STATUS_PARSE_FAILED, "", "<!DOCTYPE isComposing>"},
    {"entity", "<state>&a;</state>", "composing", STATUS_PARSE_FAILED, "",
     "<!DOCTYPE isComposing [<!ENTITY a 'active'>]>"},
};

class OtherBody : public testing::TestWithParam<Difference> {};

TEST_P(OtherBody, IsTakenByTheClientAsItIs) {
  const Difference &given = GetParam();
  const std::string from = "sip:" + given.name + "@away.example";
  const Message message = {
      from, contentType, given.prolog + "<isComposing xmlns='" + vocabulary + "'>" + given.content + "</isComposing>"};
  EXPECT_EQ(peer->send(message), 200);
  EXPECT_EQ(peer->saidOf({from}), (Lines{given.understood + " " + from}));

  Context context;
  const auto indication = context.decode<isComposing>(message.body);
  EXPECT_EQ(indication.status(), given.status);
  EXPECT_EQ(indication.partial() ? (*indication.partial())->state() : "", given.state);
}

INSTANTIATE_TEST_SUITE_P(Linphone, OtherBody, testing::ValuesIn(differences),
                         [](const auto &one) { return one.param.name; });

} // namespace
