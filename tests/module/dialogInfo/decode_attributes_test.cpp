// Reading attributes. Every case is validated as well, see expectCase.
#include "reading.h"

#include <cstring>
#include <map>

using namespace reading;
using support::Context;

namespace {

// An element with attributes, and the document around it.
struct Host {
  const char *type;
  const Root *root;
  const char *before;
  const char *element;
  const char *behind; // its start tag
  std::vector<const char *> attributes;
  uint32_t required;
  const char *shown; // what its members are printed under

  Marked document(const std::string &attributeTexts, const std::string &marks = {}) const {
    return whole(*root, before + marks + "<" + element + attributeTexts + ">" + behind);
  }
};

const Host hosts[] = {
    {"tns__dialog_info", &info, "", "dialog-info", "</dialog-info>", {"version", "state", "entity"}, 7, ""},
    {"tns__dialog",
     &dialog,
     "",
     "dialog",
     "<state/></dialog>",
     {"id", "call-id", "local-tag", "remote-tag", "direction"},
     1,
     ""},
    {"tns__state", &state, "", "state", "s</state>", {"event", "code"}, 0, ""},
    {"tns__state", &dialog, "<dialog id='d'>", "state", "s</state></dialog>", {"event", "code"}, 0, "state."},
    {"tns__dialog_replaces",
     &dialog,
     "<dialog id='d'><state/>",
     "replaces",
     "</replaces></dialog>",
     {"call-id", "local-tag", "remote-tag"},
     7,
     "replaces."},
    {"tns_nameaddr",
     &dialog,
     "<dialog id='d'><state/>",
     "referred-by",
     "</referred-by></dialog>",
     {"display-name"},
     0,
     "referred_by."},
    {"tns_nameaddr",
     &dialog,
     "<dialog id='d'><state/><remote>",
     "identity",
     "</identity></remote></dialog>",
     {"display-name"},
     0,
     "remote.identity."},
    {"tns_participant_target_param",
     &dialog,
     "<dialog id='d'><state/><local><target uri='u'>",
     "param",
     "</param></target></local></dialog>",
     {"pname", "pval"},
     3,
     "local.target.param[0]."},
    {"tns_participant_target",
     &dialog,
     "<dialog id='d'><state/><local>",
     "target",
     "</target></local></dialog>",
     {"uri"},
     1,
     "local.target."},
    {"tns_sessd",
     &dialog,
     "<dialog id='d'><state/><local>",
     "session-description",
     "</session-description></local></dialog>",
     {"type"},
     1,
     "local.session_description."},
};

// A value that the attribute takes, and the line it is printed as.
std::string goodValue(const Host &host, std::string_view attribute) {
  static const std::map<std::string_view, const char *> special = {
      {"version", "7"}, {"direction", "recipient"}, {"event", "local-bye"}, {"code", "486"}};
  const auto found = special.find(attribute);
  if (found != special.end()) return found->second;
  return host.root == &info && attribute == "state" ? "partial" : "v " + std::string(attribute);
}

std::string shownValue(const Host &host, std::string_view attribute) {
  std::string name(attribute);
  for (char &c : name)
    if (c == '-') c = '_';
  const bool number = attribute == "version" || attribute == "code";
  const char *quote = number ? "" : "'";
  return host.shown + name + "=" + quote + goodValue(host, attribute) + quote;
}

bool shows(const std::string &record, const std::string &value) {
  return (" " + record + " ").find(" " + value + " ") != std::string::npos;
}

// Every set of attributes, in order and in reverse: each one given is stored, each required one not given is reported.
TEST(DecodeAttributes, EverySubsetOfThem) {
  for (const Host &host : hosts) {
    const size_t count = host.attributes.size();
    for (uint32_t set = 0; set < 1u << count; ++set) {
      std::string forward, backward, errors, marks;
      for (size_t i = 0; i < count; ++i) {
        const char *const name = host.attributes[i];
        if ((set >> i & 1) != 0) {
          const std::string text = " "s + name + "=\"" + goodValue(host, name) + "\"";
          forward += text;
          backward = text + backward;
        } else if ((host.required >> i & 1) != 0) {
          errors += (errors.empty() ? "-103(" : "; -103(") + std::string(host.type) + "," + name + ")";
          marks += "^";
        }
      }
      for (const std::string &attributes : {forward, backward}) {
        const Marked document = host.document(attributes, marks);
        SCOPED_TRACE(document.text);
        const Reading reading = decode(*host.root, document.unmarked());
        for (size_t i = 0; i < count; ++i)
          EXPECT_EQ(shows(reading.record, shownValue(host, host.attributes[i])), (set >> i & 1) != 0)
              << host.attributes[i] << " in " << reading.record;
        expectCase({document, reading.record, errors});
      }
    }
  }
}

std::string requiredAttributes(const Host &host) {
  std::string all;
  for (size_t i = 0; i < host.attributes.size(); ++i)
    if ((host.required >> i & 1) != 0)
      all += " "s + host.attributes[i] + "=\"" + goodValue(host, host.attributes[i]) + "\"";
  return all;
}

TEST(DecodeAttributes, UnknownOnesAreReportedAndTheRestIsRead) {
  for (const Host &host : hosts) {
    const std::string type = host.type;
    const char *const last = host.attributes.back();
    std::string known = requiredAttributes(host);
    if ((host.required >> (host.attributes.size() - 1) & 1) == 0)
      known += " "s + last + "=\"" + goodValue(host, last) + "\"";
    const std::string prefixed = "p:"s + last;
    const Marked document = host.document(" ^foo='1' xmlns:p='u' ^" + prefixed + "='2'" + known +
                                          "\n  ^xml:lang='en' ^Id='' ^xsitype='x' ^xml='y'");
    const Reading reading = decode(*host.root, document.unmarked());
    EXPECT_TRUE(shows(reading.record, shownValue(host, last))) << reading.record;
    const std::string start = "-33(" + type + ",";
    expectCase({document, reading.record,
                start + "foo); " + start + prefixed + "); " + start + "xml:lang); " + start + "Id); " + start +
                    "xsitype); " + start + "xml)"});
  }
}

TEST(DecodeAttributes, DeclarationsAndThoseOfTheSchemaInstanceAreIgnored) {
  for (const Host &host : hosts) {
    const Marked plain = host.document(requiredAttributes(host));
    const Marked more = host.document(" xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:nil='true' "
                                      "xmlns:p='urn:p' xsi:schemaLocation='a b' xsi:nonsense=''" +
                                      requiredAttributes(host));
    const std::string record = decode(*host.root, more.unmarked()).record;
    EXPECT_EQ(withoutDeclarations(record), decode(*host.root, plain.unmarked()).record);
    expectCase({more, record, ""});
  }
  // What merely begins as a declaration passes for one.
  expectCase({whole(dialog, "<dialog id='d' xmlnsfoo='1'><state>s</state></dialog>"), dialogWith(""), ""});
}

TEST(DecodeAttributes, OfTypesWithoutAnyAreNotLookedAt) {
  expectCases({
      {inDialog("<route-set k='1' xml:lang='en'><hop>h</hop></route-set>"), dialogWith("route_set.hop[0]='h'"), ""},
      {inDialog("<local k='1'><cseq>1</cseq></local><remote id='x' display-name='y'/>"), dialogWith("local.cseq=1"),
       ""},
  });
}

TEST(DecodeAttributes, OfSimpleChildrenAreReportedAndTheChildIsRead) {
  expectCases({
      {inDialog("<duration ^k='1' xmlns:p='u' ^p:l='2' xsi:type='t'>5</duration>"), dialogWith("duration=5"),
       "-33(duration,k); -33(duration,p:l)"},
      {inLocal("<cseq ^unit='s'>7</cseq>"), dialogWith("local.cseq=7"), "-33(cseq,unit)"},
      {inDialog("<route-set><hop ^k='1'>h</hop></route-set>"), dialogWith("route_set.hop[0]='h'"), "-33(hop,k)"},
  });
}

TEST(DecodeAttributes, TextsAreKeptAsTheyStand) {
  expectCases({
      {whole(dialog,
             "<dialog id='' call-id='  a  b ' local-tag='&lt;&amp;&quot;&gt;' remote-tag=\"'\"><state/></dialog>"),
       "state='' id='' call_id='  a  b ' local_tag='<&\">' remote_tag='''", ""},
      {whole(info, "<dialog-info version='1' state='full' entity='sip:&#xE9;@e'/>"),
       "version=1 state='full' entity='sip:\xC3\xA9@e'", ""},
  });
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, "<dialog id='a&#9;b' call-id=''><state/></dialog>"), 0);
  Record record(ctx, types::dialog);
  EXPECT_EQ(record.decode(dialog), 0);
  EXPECT_STREQ(record.as<tns__dialog>().tns_id.value, "a\tb");
  EXPECT_STREQ(record.as<tns__dialog>().tns_call_id.value, "");
  EXPECT_FALSE(record.as<tns__dialog>().tns_id.cdata);
}

TEST(DecodeAttributes, VersionConvertsOrNot) {
  const auto withVersion = [](const std::string &mark, const char *text) {
    return whole(info, "<dialog-info " + mark + "version='" + text + "' state='full' entity='e'/>");
  };
  const std::pair<const char *, const char *> good[] = {
      {"0", "0"}, {"1", "1"}, {" 7\n", "7"}, {"007", "7"}, {"4294967295", "4294967295"}};
  for (const auto &[text, value] : good)
    expectCase({withVersion("", text), "version="s + value + " state='full' entity='e'", ""});
  for (const char *text : {"", " ", "abc", "-1", "1.0", "4294967296", "1 2", "0x1"})
    expectCase({withVersion("^^", text), "version="s + untouchedNumber + " state='full' entity='e'",
                "-101; -45(tns__dialog_info,version)"});
}

TEST(DecodeAttributes, InfoStateIsLookedUpExactly) {
  for (const char *text : {"full", "partial"})
    expectCase({whole(info, "<dialog-info version='1' state='"s + text + "' entity='e'/>"),
                "version=1 state='"s + text + "' entity='e'", ""});
  for (const char *text : {"", "Full", "ful", "fullx", " full", "partial ", "0"})
    expectCase({whole(info, "<dialog-info version='1' ^^state='"s + text + "' entity='e'/>"),
                "version=1 state="s + untouchedCode + " entity='e'", "-4("s + text + "); -45(tns__dialog_info,state)"});
}

TEST(DecodeAttributes, DirectionIsPresentThoughItsTextIsUnknown) {
  for (const char *text : {"initiator", "recipient"})
    expectCase({whole(dialog, "<dialog id='d' direction='"s + text + "'><state/></dialog>"),
                "state='' id='d' direction='"s + text + "'", ""});
  for (const char *text : {"receiver", "Initiator", "initiator ", ""}) {
    const std::string body = "<dialog id='d' ^^direction='"s + text + "'><state/></dialog>";
    const std::string errors = "-4("s + text + "); -45(tns__dialog,direction)";
    expectCase({whole(dialog, body), "state='' id='d' direction="s + untouchedCode, errors});
    // In storage of the decoder's own an untouched code is the first one.
    expectCase({whole(info, "<dialog-info version='1' state='full' entity='e'>" + body + "</dialog-info>"),
                "dialog[0].state='' dialog[0].id='d' dialog[0].direction='initiator' "s + infoEnd, errors});

    Context ctx;
    ASSERT_EQ(support::setInput(ctx, whole(dialog, body).unmarked()), 0);
    Record record(ctx, types::dialog);
    record.as<tns__dialog>().tns_direction = tns__dialog_direction_recipient;
    EXPECT_EQ(record.decode(dialog), STATUS_ENUM_NOT_FOUND);
    EXPECT_EQ(record.as<tns__dialog>().m, 512u);
    EXPECT_EQ(record.as<tns__dialog>().tns_direction, tns__dialog_direction_recipient);
  }
}

TEST(DecodeAttributes, EventIsPresentThoughItsTextIsUnknown) {
  for (const char *text : {"cancelled", "rejected", "replaced", "local-bye", "remote-bye", "error", "timeout"})
    expectCase({whole(state, "<state event='"s + text + "'>s</state>"), "value='s' event='"s + text + "'", ""});
  for (const char *text : {"bye", "Timeout", "time-out", "", "remote-byes", "local-by"}) {
    const Marked document = whole(state, "<state ^^event='"s + text + "' code='200'>s</state>");
    expectCase(
        {document, "value='s' event="s + untouchedCode + " code=200", "-4("s + text + "); -45(tns__state,event)"});

    Context ctx;
    ASSERT_EQ(support::setInput(ctx, document.unmarked()), 0);
    Record record(ctx, types::state);
    record.as<tns__state>().tns_event = tns__state_event_timeout;
    EXPECT_EQ(record.decode(state), STATUS_ENUM_NOT_FOUND);
    EXPECT_EQ(record.as<tns__state>().m, 3u);
    EXPECT_EQ(record.as<tns__state>().tns_event, tns__state_event_timeout);
  }
}

TEST(DecodeAttributes, CodeIsPresentIfInRangeOrNoNumber) {
  struct Row {
    const char *text;
    const char *errors;
    uint32_t bits;
    uint16_t value;
  };
  constexpr uint16_t untouched = 0xA5A5;
  constexpr Row rows[] = {
      {"100", "", 2, 100},
      {"699", "", 2, 699},
      {" 0200 ", "", 2, 200},
      // Out of range: stored, but absent.
      {"99", "-16(tns__state.tns_code,99u)", 0, 99},
      {"700", "-16(tns__state.tns_code,700u)", 0, 700},
      {"0", "-16(tns__state.tns_code,0u)", 0, 0},
      {"65535", "-16(tns__state.tns_code,65535u)", 0, 65535},
      // No number of 16 bits: present, but not stored.
      {"65536", "-101; -45(tns__state,code)", 2, untouched},
      {"65736", "-101; -45(tns__state,code)", 2, untouched},
      {"abc", "-101; -45(tns__state,code)", 2, untouched},
      {"-200", "-101; -45(tns__state,code)", 2, untouched},
      {"200 OK", "-101; -45(tns__state,code)", 2, untouched},
      {"", "-101; -45(tns__state,code)", 2, untouched},
  };
  for (const Row &row : rows) {
    const size_t errors = *row.errors == '\0' ? 0 : row.errors[1] == '1' && row.errors[2] == '6' ? 1 : 2;
    const Marked document =
        whole(state, "<state " + std::string(errors, '^') + "code='" + row.text + "' event='error'>s</state>");
    const std::string shown = row.bits != 0 ? " code=" + std::to_string(row.value) : "";
    expectCase({document, "value='s' event='error'" + shown, row.errors});

    Context ctx;
    ASSERT_EQ(support::setInput(ctx, document.unmarked()), 0);
    Record record(ctx, types::state);
    record.decode(state);
    EXPECT_EQ(record.as<tns__state>().m, row.bits | 1) << row.text;
    EXPECT_EQ(record.as<tns__state>().tns_code, row.value) << row.text;
  }
}

TEST(DecodeAttributes, LoopGoesOnAfterEveryError) {
  expectCase({whole(state, "<state ^code='700' ^^event='x' ^foo='1'>s</state>"), "value='s' event="s + untouchedCode,
              "-16(tns__state.tns_code,700u); -4(x); -45(tns__state,event); -33(tns__state,foo)"});
  expectCase({whole(info, "<dialog-info ^^version='x' ^^state='y' entity='e'/>"),
              "version="s + untouchedNumber + " state=" + untouchedCode + " entity='e'",
              "-101; -45(tns__dialog_info,version); -4(y); -45(tns__dialog_info,state)"});
}

} // namespace
