// Dialog states that the library wrote, published to the server and decoded from the notifications that it makes of
// them.
#include "Publication.h"
#include "imscodec.hpp"
#include "server.h"
#include "xmlJudge.h"

#include <functional>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

namespace {

using namespace agent;
using namespace imscodec;
using namespace imscodec::dialoginfo;
using namespace kamailio;

constexpr char vocabulary[] = "urn:ietf:params:xml:ns:dialog-info";

enum class Form {
  prefixed,  // as a context writes by default
  unprefixed // as it writes for a host that has declared the default namespace
};
void PrintTo(Form form, std::ostream *out) { *out << (form == Form::prefixed ? "prefixed" : "unprefixed"); }

Context contextFor(Form form) {
  Context context;
  if (form == Form::unprefixed) {
    EXPECT_EQ(rtXmlNSSetNamespace(context.get(), nullptr, nullptr, vocabulary, false), 0);
    context.get()->flags |= NamespacesPreset;
  }
  return context;
}

struct Case {
  std::string name;
  std::function<void(Context &, dialog_info)> fill;
  Transport transport = Transport::udp;
  bool hasExtensions = false; // which are kept as texts, and get other white space on their way

  friend void PrintTo(const Case &given, std::ostream *out) { *out << given.name; }
};

void addDialog(Context &context, dialog_info info, const std::string &id, const std::string &state) {
  auto call = info.add_dialog(context);
  EXPECT_TRUE(call && call->set_id(context, id) && call->state().set_value(context, state));
}

// Takes the dialogs and what stands beside them from a document's content.
std::function<void(Context &, dialog_info)> dialogsOf(const std::string &content, const std::string &state = "full") {
  return [content, state](Context &context, dialog_info info) {
    Context other;
    const auto read =
        other.decode<dialog_info>("<dialog-info xmlns='" + std::string(vocabulary) + "' version='7' state='" + state +
                                  "' entity='sip:any@home.example'>" + content + "</dialog-info>");
    ASSERT_TRUE(read) << content;
    auto copied = copy(context, *read);
    ASSERT_TRUE(copied);
    info.raw() = copied->raw();
    (*copied).release();
  };
}

// A dialog for each name.
std::function<void(Context &, dialog_info)> named(const std::vector<std::string> &names) {
  return [names](Context &context, dialog_info info) {
    for (std::size_t index = 0; index < names.size(); ++index) {
      auto call = info.add_dialog(context);
      ASSERT_TRUE(call && call->set_id(context, "n" + std::to_string(index)) &&
                  call->state().set_value(context, "confirmed"));
      auto identity = call->make_remote(context).make_identity(context);
      ASSERT_TRUE(identity.set_value(context, "sip:ben@away.example") &&
                  identity.set_display_name(context, names[index]));
    }
  };
}

std::function<void(Context &, dialog_info)> many(int count) {
  return [count](Context &context, dialog_info info) {
    for (int index = 0; index < count; ++index)
      addDialog(context, info, "m" + std::to_string(index), index % 2 ? "confirmed" : "early");
  };
}

constexpr char everything[] =
    R"(<dialog id="e1" call-id="77c1@10.0.0.1" local-tag="l-1" remote-tag="r-1" direction="recipient">
  <state event="remote-bye" code="486">terminated</state><duration>3600</duration>
  <replaces call-id="51aa" local-tag="12" remote-tag="9k"/>
  <referred-by display-name="The Desk">sip:desk@home.example</referred-by>
  <route-set><hop>&lt;sip:one.example;lr&gt;</hop><hop>&lt;sip:two.example;lr&gt;</hop></route-set>
  <local><identity display-name="Anna">sip:anna@home.example</identity>
    <target uri="sip:anna@10.0.0.2;ob"><param pname="audio" pval="true"/><param pname="x" pval="&quot;&lt;"/></target>
    <session-description type="application/sdp">v=0&#13;
o=- 1 1 IN IP4 10.0.0.2&#13;
s=-&#13;
</session-description><cseq>4294967295</cseq></local>
  <remote><identity>sip:ben@away.example</identity><cseq>0</cseq></remote></dialog>)";

const Case cases[] = {
    {"noDialog", dialogsOf("")},
    {"oneDialog", dialogsOf("<dialog id='a1' direction='initiator'><state>early</state></dialog>")},
    {"twoDialogs",
     dialogsOf("<dialog id='a1'><state>early</state></dialog><dialog id='a2'><state>confirmed</state></dialog>")},
    {"everyMember", dialogsOf(everything)},
    {"partialState", dialogsOf("<dialog id='a1'><state>proceeding</state></dialog>", "partial")},
    {"fiftyDialogs", many(50)},
    {"fiftyDialogsOverTcp", many(50), Transport::tcp},
    {"thousandDialogsOverTcp", many(1000), Transport::tcp},
    {"namesWithMarkup", named({"\"Ben\" & 'Co' <ben>", "]]>", "&amp;", "&#10;", "<!-- -->", "a=\"b\"", "%41\\"})},
    {"namesWithWhiteSpace", named({" Ben ", "Ben\tK.", "Ben\nK.", "Ben\r\nK.", "  ", "", "\t"})},
    {"namesOfAllScripts",
     named({"Zoë", "Бен", "貝恩", "\u202eneB\u202c", "\u200fבן\u200e", "\U0001F600\U0001F9D1\u200d\U0001F680",
            "\U0010FFFD", "e\u0301", "\u00a0", "\ufeffBen"})},
    {"extensionElements",
     dialogsOf(
         R"(<dialog id="x1"><state>early</state><local><n:note xmlns:n="urn:example:notes" n:kind="a&amp;b" plain="1"
  >on <n:b>hold</n:b> &lt;now&gt;</n:note></local><note xmlns="urn:example:notes"><deep><deeper/></deep></note
  ></dialog>)"),
     Transport::udp, true},
    {"extensionBesideDialogs",
     dialogsOf("<dialog id='x1'><state>early</state></dialog><note xmlns='urn:example:notes'>all of it</note>")},
};

// What documents say is compared, not the white space that stands between their tags.
std::string meaning(std::string_view document) {
  std::string tight;
  for (std::size_t at = 0; at < document.size(); ++at) {
    tight += document[at];
    if (document[at] != '>') continue;
    const std::size_t next = document.find_first_not_of(" \n", at + 1);
    if (next != std::string_view::npos && document[next] == '<') at = next - 1;
  }
  const auto parsed = support::parseNamespacedXml(tight);
  return parsed ? parsed->infoset() : "";
}

// ---- One source ---------------------------------------------------------------------------------------------------

class PublishedDialogs : public testing::TestWithParam<std::tuple<Case, Form>> {};

TEST_P(PublishedDialogs, ComeBackInTheNotification) {
  const auto &[given, form] = GetParam();
  const std::string resource = "sip:" + given.name + (form == Form::prefixed ? "-p" : "-u") + "@home.example";
  Context context = contextFor(form);
  auto sent = context.create<dialog_info>();
  given.fill(context, *sent);
  sent->set_version(7);
  ASSERT_TRUE(sent->set_entity(context, resource));
  const auto body = context.encode(sent);
  ASSERT_TRUE(body);

  Watcher watcher(resource, given.transport);
  Publication publication(watcher.stack, resource, "dialog", "application/dialog-info+xml");
  ASSERT_TRUE(publication.publish(*body)) << publication.status() << " " << publication.phrase();
  ASSERT_TRUE(watcher.waitFor(2));
  const std::string notified = watcher.bodies[1];
  record(resource.substr(4, resource.find('@') - 4) + ".txt",
         "== published\n" + std::string(*body) + "\n\n== notified\n" + notified + "\n");

  Context other;
  auto received = other.decode<dialog_info>(notified);
  ASSERT_TRUE(received) << notified;
  EXPECT_EQ(received->entity(), resource);
  ASSERT_EQ(received->dialog().size(), sent->dialog().size());
  if (!given.hasExtensions) {
    auto one = sent->dialog().begin();
    for (const dialog call : received->dialog())
      EXPECT_TRUE(equal(*one++, call)) << call.id();
  }

  // Versions are those of the subscription, whose first notification had none to tell, and all state is full.
  EXPECT_EQ(received->version(), 2u);
  EXPECT_EQ(received->state(), dialog_info_state::full);

  // Everything else is as it was.
  received->set_version(sent->version());
  received->set_state(sent->state());
  const auto again = other.encode(*received);
  ASSERT_TRUE(again);
  EXPECT_NE(meaning(*body), "");
  EXPECT_EQ(meaning(*again), meaning(*body));

  // The server makes a new root for the dialogs, and with it a prefix that the old one has declared gets lost.
  const bool keepsNamespaces = form == Form::unprefixed || sent->dialog().empty();
  EXPECT_EQ(support::parseNamespacedXml(notified).has_value(), keepsNamespaces) << notified;
}

INSTANTIATE_TEST_SUITE_P(Kamailio, PublishedDialogs,
                         testing::Combine(testing::ValuesIn(cases), testing::Values(Form::prefixed, Form::unprefixed)),
                         [](const auto &one) {
                           return std::get<0>(one.param).name +
                                  (std::get<1>(one.param) == Form::prefixed ? "Prefixed" : "Unprefixed");
                         });

// ---- Several bodies -----------------------------------------------------------------------------------------------

// A body with one dialog.
std::string bodyWith(const std::string &resource, const std::string &id, const std::string &state) {
  Context context = contextFor(Form::unprefixed);
  auto info = context.create<dialog_info>();
  addDialog(context, *info, id, state);
  EXPECT_TRUE(info->set_entity(context, resource));
  const auto body = context.encode(info);
  EXPECT_TRUE(body);
  return body ? std::string(*body) : "";
}

TEST(SeveralBodies, OfOneSourceReplaceEachOther) {
  const std::string resource = "sip:replacing@home.example";
  Watcher watcher(resource);
  Publication publication(watcher.stack, resource, "dialog", "application/dialog-info+xml");
  std::size_t count = 1;
  for (const char *state : {"trying", "early", "confirmed", "terminated"}) {
    ASSERT_TRUE(publication.publish(bodyWith(resource, "a1", state)));
    ASSERT_TRUE(watcher.waitFor(++count));
  }
  EXPECT_EQ(summaries(watcher),
            (Lines{"nothing", "2 full a1=trying", "3 full a1=early", "4 full a1=confirmed", "5 full a1=terminated"}));
}

TEST(SeveralBodies, OfSeveralSourcesAreJoined) {
  const std::string resource = "sip:joined@home.example";
  Watcher watcher(resource);
  Publication desk(watcher.stack, resource, "dialog", "application/dialog-info+xml");
  Publication mobile(watcher.stack, resource, "dialog", "application/dialog-info+xml");
  ASSERT_TRUE(desk.publish(bodyWith(resource, "d1", "early")));
  ASSERT_TRUE(watcher.waitFor(2));
  ASSERT_TRUE(mobile.publish(bodyWith(resource, "m1", "confirmed")));
  ASSERT_TRUE(watcher.waitFor(3));
  ASSERT_TRUE(desk.publish(bodyWith(resource, "d1", "confirmed")));
  ASSERT_TRUE(watcher.waitFor(4));
  EXPECT_EQ(summaries(watcher),
            (Lines{"nothing", "2 full d1=early", "3 full d1=early m1=confirmed", "4 full d1=confirmed m1=confirmed"}));
}

// Withdrawing is told by all that there was before. Who subscribes later is told nothing.
TEST(SeveralBodies, AreStillToldWhenTheyAreWithdrawn) {
  const std::string resource = "sip:withdrawn@home.example";
  Watcher watcher(resource);
  {
    Publication publication(watcher.stack, resource, "dialog", "application/dialog-info+xml");
    ASSERT_TRUE(publication.publish(bodyWith(resource, "a1", "confirmed")));
    ASSERT_TRUE(watcher.waitFor(2));
  }
  ASSERT_TRUE(watcher.waitFor(3));
  EXPECT_EQ(summaries(watcher), (Lines{"nothing", "2 full a1=confirmed", "3 full a1=confirmed"}));
  const Watcher late(resource);
  EXPECT_EQ(summaries(late), (Lines{"nothing"}));
}

TEST(SeveralBodies, BeginWithAllThatThereIsForLaterWatchers) {
  const std::string resource = "sip:late@home.example";
  Stack stack(settingsFor(Transport::udp));
  Publication publication(stack, resource, "dialog", "application/dialog-info+xml");
  ASSERT_TRUE(publication.publish(bodyWith(resource, "a1", "early")));
  ASSERT_TRUE(publication.publish(bodyWith(resource, "a1", "confirmed")));
  const Watcher watcher(resource);
  EXPECT_EQ(summaries(watcher), (Lines{"1 full a1=confirmed"}));
}

TEST(SeveralBodies, AreToldOnceMoreToWhoAsks) {
  const std::string resource = "sip:asked@home.example";
  Watcher watcher(resource);
  Publication publication(watcher.stack, resource, "dialog", "application/dialog-info+xml");
  ASSERT_TRUE(publication.publish(bodyWith(resource, "a1", "early")));
  ASSERT_TRUE(watcher.waitFor(2));
  watcher.refresh();
  ASSERT_TRUE(watcher.waitFor(3));
  EXPECT_EQ(summaries(watcher), (Lines{"nothing", "2 full a1=early", "3 full a1=early"}));
}

// ---- What is no dialog state --------------------------------------------------------------------------------------

// The server takes them for good, and hands to its watchers what it cannot read: as it is, without a version.
TEST(BadBodies, ReachTheWatchers) {
  const std::string resource = "sip:bad@home.example";
  const std::string good = bodyWith(resource, "a1", "early");
  Watcher watcher(resource);
  Publication publication(watcher.stack, resource, "dialog", "application/dialog-info+xml");
  EXPECT_TRUE(publication.publish(good.substr(0, good.size() - 1)));
  EXPECT_TRUE(watcher.waitFor(2));
  EXPECT_TRUE(publication.publish("<presence xmlns='urn:ietf:params:xml:ns:pidf'/>"));
  EXPECT_TRUE(watcher.waitFor(3));
  EXPECT_TRUE(publication.publish(good));
  EXPECT_TRUE(watcher.waitFor(4));
  EXPECT_EQ(summaries(watcher), (Lines{"nothing", "unreadable", "3 full", "4 full a1=early"}));
  EXPECT_EQ(watcher.bodies[1], good.substr(0, good.size() - 1));
}

} // namespace
