// Reading dialog state into records. Every case is validated as well, see expectCase.
#include "reading.h"
#include "xmlJudge.h"

#include <cstring>
#include <map>
#include <optional>
#include <regex>

using namespace reading;
using support::Context;
using support::everySpelling;
using support::SpelledDocument;

namespace {

// A dialog with content behind its state, and the record that it comes to.
Marked inDialog(const std::string &content) { return in(dialog, "<state>s</state>" + content); }
std::string dialogWith(const std::string &members) {
  return "state='s' " + (members.empty() ? "" : members + " ") + "id='d'";
}

Marked inLocal(const std::string &content) { return inDialog("<local>" + content + "</local>"); }
Marked inTarget(const std::string &content) { return inLocal("<target uri='u'>" + content + "</target>"); }

// Without the declarations that state, nameaddr and sessd keep. Those within a fragment are in double quotes.
std::string withoutDeclarations(const std::string &record) {
  static const std::regex declaration(R"( [^ ='"]*xmlns(:[^ ='"]*)?='[^']*')");
  return std::regex_replace(record, declaration, "");
}

// ---- Spellings ----------------------------------------------------------------------------------------------------

constexpr std::string_view fullRecord =
    "dialog[0].state='terminated' dialog[0].state.event='remote-bye' dialog[0].state.code=486 dialog[0].duration=145 "
    "dialog[0].replaces=null dialog[0].replaces.call_id='rc' dialog[0].replaces.local_tag='rl' "
    "dialog[0].replaces.remote_tag='rr' dialog[0].referred_by='sip:carol@c.example' "
    "dialog[0].referred_by.display_name='Carol' dialog[0].route_set.hop[0]='sip:p1' "
    "dialog[0].route_set.hop[1]='sip:p2' dialog[0].local.identity='sip:bob' "
    "dialog[0].local.identity.display_name='Bob' dialog[0].local.target.param[0]=null "
    "dialog[0].local.target.param[0].pname='audio' dialog[0].local.target.param[0].pval='true' "
    "dialog[0].local.target.param[1]=null dialog[0].local.target.param[1].pname='video' "
    "dialog[0].local.target.param[1].pval='' dialog[0].local.target.uri='sip:pc1' "
    "dialog[0].local.session_description='v=0' dialog[0].local.session_description.type='application/sdp' "
    "dialog[0].local.cseq=4294967295 dialog[0].local[0]='<x:f xmlns:x=\"urn:x\">t<x:g/></x:f>' "
    "dialog[0][0]='<x:f xmlns:x=\"urn:x\"/>' dialog[0][1]='<y xmlns=\"urn:y\"/>' dialog[0].id='d1' "
    "dialog[0].call_id='c' dialog[0].local_tag='l' dialog[0].remote_tag='r' dialog[0].direction='recipient' "
    "dialog[1].state='' dialog[1].id='d2' [0]='<x:f xmlns:x=\"urn:x\"/>' version=7 state='partial' "
    "entity='sip:bob@biloxi.example'";

TEST(Decode, EverySpelling) {
  everySpelling(fullBody, namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &) {
    const Reading reading = decodeInput(ctx, info);
    EXPECT_EQ(reading.status, 0);
    EXPECT_EQ(withoutDeclarations(reading.record), fullRecord);
    EXPECT_EQ(reading.errors, "");
    EXPECT_EQ(validateInput(ctx, info).status, 0);
  });
  everySpelling("<q:dialog id='d'><q:state code='200'>s</q:state><q:local/></q:dialog>", namespaceUri,
                [](RuntimeContext *ctx, const SpelledDocument &) {
                  const Reading reading = decodeInput(ctx, dialog);
                  EXPECT_EQ(reading.status, 0);
                  EXPECT_EQ(withoutDeclarations(reading.record), "state='s' state.code=200 id='d'");
                  EXPECT_EQ(validateInput(ctx, dialog).status, 0);
                });
  everySpelling("<q:state event='error'>s</q:state>", namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &) {
    const Reading reading = decodeInput(ctx, state);
    EXPECT_EQ(reading.status, 0);
    EXPECT_EQ(withoutDeclarations(reading.record), "value='s' event='error'");
    EXPECT_EQ(validateInput(ctx, state).status, 0);
  });
}

TEST(Decode, ErrorsNameElementsAsTheyAreSpelledAndTypesAsTheyAre) {
  everySpelling("<q:dialog-info version='1' state='full' entity='e'><q:dialog id='d'><q:state>s</q:state>"
                "<q:replaces call-id='c' local-tag='l' remote-tag='r'><q:no/></q:replaces>"
                "<q:route-set><q:jump/><q:hop>h</q:hop></q:route-set><q:local><q:cseq>x</q:cseq></q:local>"
                "<q:duration>5</q:duration></q:dialog></q:dialog-info>",
                namespaceUri, [](RuntimeContext *ctx, const SpelledDocument &document) {
                  const std::string errors = "-41(" + document.qualified("no") + "); -3(tns_hop," +
                                             document.qualified("jump") + "); -44(x,tns_participant," +
                                             document.qualified("cseq") + "); -41(" + document.qualified("duration") +
                                             ")";
                  const Reading reading = decodeInput(ctx, info);
                  EXPECT_EQ(reading.status, STATUS_UNEXPECTED_ELEMENT);
                  EXPECT_EQ(reading.errors, errors);
                  EXPECT_EQ(withoutDeclarations(reading.record),
                            "dialog[0].state='s' dialog[0].replaces=null dialog[0].replaces.call_id='c' "
                            "dialog[0].replaces.local_tag='l' dialog[0].replaces.remote_tag='r' "
                            "dialog[0].route_set.hop[0]='h' dialog[0].id='d' version=1 state='full' entity='e'");
                  rtxErrClear(ctx);
                  EXPECT_EQ(validateInput(ctx, info).errors, errors);
                });
}

// ---- Attributes ---------------------------------------------------------------------------------------------------

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

// ---- Presence -----------------------------------------------------------------------------------------------------

TEST(DecodePresence, EveryMemberHasItsBit) {
  struct Row {
    const char *attributes;
    const char *children;
    uint32_t bits;
  };
  constexpr Row rows[] = {
      {"", "", 0},
      {"", "<duration>1</duration>", 1},
      {"", "<duration>x</duration>", 0},
      {"", "<replaces/>", 2},
      {"", "<referred-by/>", 4},
      {"", "<route-set/>", 8},
      {"", "<local/>", 16},
      {"", "<remote/>", 32},
      {"call-id=''", "", 64},
      {"local-tag=''", "", 128},
      {"remote-tag=''", "", 256},
      {"direction='initiator'", "", 512},
      {"", "<x:f xmlns:x='u'/>", 0},
      {"call-id='' local-tag='' remote-tag='' direction=''",
       "<duration>0</duration><replaces/><referred-by/><route-set/><local/><remote/>", 1023},
  };
  for (const Row &row : rows) {
    Context ctx;
    const std::string text = "<dialog id='d' "s + row.attributes + "><state>s</state>" + row.children + "</dialog>";
    ASSERT_EQ(support::setInput(ctx, text), 0);
    Record record(ctx, types::dialog);
    record.decode(dialog);
    EXPECT_EQ(record.as<tns__dialog>().m, row.bits) << text;
  }

  const std::pair<const char *, uint32_t> participants[] = {
      {"", 0},
      {"<identity/>", 1},
      {"<target/>", 2},
      {"<session-description/>", 4},
      {"<cseq>0</cseq>", 8},
      {"<cseq/>", 0},
      {"<x:f xmlns:x='u'/>", 0},
      {"<identity/><target/><session-description/><cseq>0</cseq>", 15}};
  for (const auto &[children, bits] : participants) {
    for (const char *name : {"local", "remote"}) {
      Context ctx;
      ASSERT_EQ(
          support::setInput(ctx, "<dialog id='d'><state/><"s + name + ">" + children + "</" + name + "></dialog>"), 0);
      Record record(ctx, types::dialog);
      record.decode(dialog);
      const auto &read = record.as<tns__dialog>();
      EXPECT_EQ((name == "local"sv ? read.tns_local : read.tns_remote).m, bits) << children;
      EXPECT_EQ((name == "local"sv ? read.tns_remote : read.tns_local).m, 0u) << children;
    }
  }
}

TEST(DecodePresence, ComplexChildStaysThoughItFails) {
  expectCases({
      {inDialog("^^^<replaces ^k='1'/>"),
       dialogWith("replaces=null replaces.call_id=null replaces.local_tag=null replaces.remote_tag=null"),
       "-33(tns__dialog_replaces,k); -103(tns__dialog_replaces,call-id); -103(tns__dialog_replaces,local-tag); "
       "-103(tns__dialog_replaces,remote-tag)"},
      {inLocal("^<target/>^<session-description/>"),
       dialogWith("local.target.uri=null local.session_description='' local.session_description.type=null"),
       "-103(tns_participant_target,uri); -103(tns_sessd,type)"},
  });
}

TEST(DecodePresence, ItemsStayThoughTheyFail) {
  expectCases({
      {in(info, "^<dialog ^^direction='x'><state/></dialog><dialog id='e'><state/></dialog>"),
       "dialog[0].state='' dialog[0].id=null dialog[0].direction='initiator' dialog[1].state='' dialog[1].id='e' "s +
           infoEnd,
       "-4(x); -45(tns__dialog,direction); -103(tns__dialog,id)"},
      {inTarget("^^<param/><param pname='a' pval='b'/>"),
       dialogWith("local.target.param[0]=null local.target.param[0].pname=null local.target.param[0].pval=null "
                  "local.target.param[1]=null local.target.param[1].pname='a' local.target.param[1].pval='b' "
                  "local.target.uri='u'"),
       "-103(tns_participant_target_param,pname); -103(tns_participant_target_param,pval)"},
  });
}

// ---- Simple children ----------------------------------------------------------------------------------------------

TEST(DecodeContent, DurationAndCseqConvertOrNot) {
  const std::pair<const char *, const char *> good[] = {{"0", "0"},
                                                        {"145", "145"},
                                                        {" \n 5\t", "5"},
                                                        {"0007", "7"},
                                                        {"4294967295", "4294967295"},
                                                        {"<![CDATA[1]]>2<!-- c -->&#51;<?p?>", "123"},
                                                        {"1<b>2</b>3", "123"}};
  for (const auto &[text, value] : good)
    expectCases({
        {inDialog("<duration>"s + text + "</duration>"), dialogWith("duration="s + value), ""},
        {inLocal("<cseq>"s + text + "</cseq>"), dialogWith("local.cseq="s + value), ""},
    });
  for (const char *text : {"abc", "-1", "1.5", "4294967296", "5 5", "5s", " ", "PT5S"})
    expectCases({
        {inDialog("<duration>^"s + text + "</duration><local><cseq>1</cseq></local>"), dialogWith("local.cseq=1"),
         "-44("s + text + ",tns__dialog,duration)"},
        {inLocal("<cseq>^"s + text + "</cseq><x:f xmlns:x='u'/>"), dialogWith("local[0]='<x:f xmlns:x=\"u\"/>'"),
         "-44("s + text + ",tns_participant,cseq)"},
    });
  // An empty one is at fault where its start tag is.
  expectCases({
      {inDialog("^<duration/>"), dialogWith(""), "-44(,tns__dialog,duration)"},
      {inLocal("^<cseq></cseq>"), dialogWith(""), "-44(,tns_participant,cseq)"},
      {inDialog("<p:duration xmlns:p='"s + namespaceUri + "'>^x</p:duration>"), dialogWith(""),
       "-44(x,tns__dialog,p:duration)"},
  });
}

TEST(DecodeContent, NumberThatDoesNotConvertKeepsItsValue) {
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, inDialog("<duration>x</duration><local><cseq>y</cseq></local>").unmarked()), 0);
  Record record(ctx, types::dialog);
  record.as<tns__dialog>().tns_duration = 4711;
  EXPECT_EQ(record.decode(dialog), STATUS_INVALID_CONTENT);
  EXPECT_EQ(record.as<tns__dialog>().tns_duration, 4711u);
  EXPECT_EQ(record.as<tns__dialog>().m, 16u);
}

TEST(DecodeContent, RouteSetsHaveHopsAlone) {
  expectCases({
      {inDialog("<route-set><hop>sip:a</hop> <hop/><hop> b </hop></route-set>"),
       dialogWith("route_set.hop[0]='sip:a' route_set.hop[1]='' route_set.hop[2]=' b '"), ""},
      // Only the local name is compared.
      {inDialog("<route-set><x:hop xmlns:x='u'>h</x:hop><hop xmlns=''>i</hop></route-set>"),
       dialogWith("route_set.hop[0]='h' route_set.hop[1]='i'"), ""},
      // Another name is refused with all that it holds.
      {inDialog(
           "<route-set><hop>a</hop>^<Hop>b<hop>c</hop></Hop>^<hops/>^<ho/>^<x:f xmlns:x='u'/><hop>d</hop></route-set>"
           "<local/>"),
       dialogWith("route_set.hop[0]='a' route_set.hop[1]='d'"),
       "-3(tns_hop,Hop); -3(tns_hop,hops); -3(tns_hop,ho); -3(tns_hop,x:f)"},
      // What is inside a hop is part of its text.
      {inDialog("<route-set><hop>a<b>c<hop>d</hop></b>e</hop></route-set>"), dialogWith("route_set.hop[0]='acde'"), ""},
      {inDialog("<route-set>text<hop>a</hop>text</route-set>"), dialogWith("route_set.hop[0]='a'"), ""},
  });
}

TEST(DecodeContent, RouteSetWithoutAHopIsReportedAndKept) {
  expectCases({
      {inDialog("^<route-set/><local><cseq>1</cseq></local>"), dialogWith("local.cseq=1"),
       "-16(tns__dialog_route_set.count,0)"},
      {inDialog("\n  ^<route-set>\n text </route-set>"), dialogWith(""), "-16(tns__dialog_route_set.count,0)"},
      {inDialog("^<route-set>\n^<route>a</route></route-set>"), dialogWith(""),
       "-3(tns_hop,route); -16(tns__dialog_route_set.count,0)"},
  });
}

// Every element with text takes all of it, around a child that is refused with all that it holds.
TEST(DecodeContent, TextsAroundARefusedChildAreJoined) {
  struct Row {
    const char *content; // with marks
    const char *text;
    const char *errors;
  };
  constexpr Row rows[] = {
      {"", "", ""},
      {" a b ", " a b ", ""},
      {"&lt;a&#98;<![CDATA[<c>]]>&amp;<!-- d --><?e?>", "<ab<c>&", ""},
      {"conf^<b/>irmed", "confirmed", "-41(b)"},
      {"conf^<b>zz</b>irmed", "confirmed", "-41(b)"},
      {"^<b>zz</b>a", "a", "-41(b)"},
      {"a^<b>zz</b>", "a", "-41(b)"},
      {"^<b/>", "", "-41(b)"},
      {"a^<x:b xmlns:x='u'>z<c>y</c>w</x:b>b^<state>q</state>c", "abc", "-41(x:b); -41(state)"},
  };
  struct Place {
    const char *before, *behind;
    const char *type; // attributes
    const char *member, *rest;
  };
  constexpr Place places[] = {
      {"", "", "", "state", ""},
      {"<state>s</state><referred-by>", "</referred-by>", "", "state='s' referred_by", ""},
      {"<state>s</state><local><identity>", "</identity></local>", "", "state='s' local.identity", ""},
      {"<state>s</state><remote><session-description type='t'>", "</session-description></remote>", "",
       "state='s' remote.session_description", " remote.session_description.type='t'"},
  };
  for (const Row &row : rows) {
    expectCase({whole(state, "<state>"s + row.content + "</state>"), "value='"s + row.text + "'", row.errors});
    for (const Place &place : places) {
      const bool own = *place.before == '\0';
      const std::string content = own ? "<state>"s + row.content + "</state><duration>5</duration>"
                                      : place.before + std::string(row.content) + place.behind;
      expectCase({in(dialog, content),
                  place.member + "='"s + row.text + "'" + place.rest + (own ? " duration=5" : "") + " id='d'",
                  row.errors});
    }
  }
}

TEST(DecodeContent, LongTextsArriveWhole) {
  std::string text;
  for (int i = 0; i < 20000; ++i)
    text += "a=line " + std::to_string(i) + ";";
  expectCase({inLocal("<session-description type='t'>" + text + "</session-description><cseq>1</cseq>"),
              dialogWith("local.session_description='" + text + "' local.session_description.type='t' local.cseq=1"),
              ""});
}

TEST(DecodeContent, TextBetweenChildrenIsNoOnes) {
  expectCases({
      {in(info, "one<dialog id='d'>two<state>s</state>three &amp; <duration>5</duration><![CDATA[four]]><local>five"
                "<target uri='u'>six<param pname='n' pval='v'>seven</param>eight</target>nine<cseq>6</cseq>ten</local>"
                "eleven</dialog>twelve"),
       "dialog[0].state='s' dialog[0].duration=5 dialog[0].local.target.param[0]=null "
       "dialog[0].local.target.param[0].pname='n' dialog[0].local.target.param[0].pval='v' "
       "dialog[0].local.target.uri='u' dialog[0].local.cseq=6 dialog[0].id='d' "s +
           infoEnd,
       ""},
  });
}

// Types with neither children nor text.
TEST(DecodeContent, EmptyTypesTakeNoChildrenAndIgnoreText) {
  expectCases({
      {inDialog("<replaces call-id='c' local-tag='l' remote-tag='r'>text^<state>z</state>^<x:f xmlns:x='u'><g/></x:f>"
                "</replaces><local><cseq>5</cseq></local>"),
       dialogWith("replaces=null replaces.call_id='c' replaces.local_tag='l' replaces.remote_tag='r' local.cseq=5"),
       "-41(state); -41(x:f)"},
      {inTarget("<param pname='a' pval='b'>text^<x><y/></x></param><param pname='c' pval='d'/>"),
       dialogWith("local.target.param[0]=null local.target.param[0].pname='a' local.target.param[0].pval='b' "
                  "local.target.param[1]=null local.target.param[1].pname='c' local.target.param[1].pval='d' "
                  "local.target.uri='u'"),
       "-41(x)"},
  });
}

// ---- Order of children --------------------------------------------------------------------------------------------

struct Child {
  const char *name;
  const char *xml;
  const char *shown; // in the record, with "#" for its index
  bool repeats = false;
};

// What a type may hold, in its order.
struct Content {
  std::vector<Child> children;
  bool firstLeads; // nothing may come before the first child
  size_t longest;  // sequence to try
};

// All sequences of children, checked against the rule in words: none comes before one that the list has earlier, and
// only some come twice.
void expectEverySequence(const Content &content,
                         const std::function<Case(const std::string &children, const std::string &record,
                                                  const std::string &errors)> &around) {
  const size_t kinds = content.children.size();
  std::vector<size_t> sequence;
  size_t sequences = 0;
  while (sequence.size() <= content.longest && !testing::Test::HasFailure()) {
    std::string children, record, errors;
    std::vector<size_t> count(kinds);
    std::optional<size_t> last;
    for (size_t kind : sequence) {
      const Child &child = content.children[kind];
      const bool allowed = last ? kind > *last || (kind == *last && child.repeats) : !content.firstLeads || kind == 0;
      children += (allowed ? "" : "^") + std::string(child.xml);
      if (!allowed) {
        errors += (errors.empty() ? "-41(" : "; -41(") + std::string(child.name) + ")";
        continue;
      }
      std::string shown = child.shown;
      for (size_t at; (at = shown.find('#')) != shown.npos;)
        shown.replace(at, 1, std::to_string(count[kind]));
      record += (record.empty() ? "" : " ") + shown;
      ++count[kind];
      last = kind;
    }
    expectCase(around(children, record, errors));
    ++sequences;
    size_t place = 0;
    while (place < sequence.size() && ++sequence[place] == kinds)
      sequence[place++] = 0;
    if (place == sequence.size()) sequence.push_back(0);
  }
  size_t expected = 0;
  for (size_t length = 0, all = 1; length <= content.longest; ++length, all *= kinds)
    expected += all;
  EXPECT_EQ(sequences, expected);
}

TEST(DecodeOrder, OfDialogInfo) {
  const Content content = {
      {{"dialog", "<dialog id='d'><state>s</state></dialog>", "dialog[#].state='s' dialog[#].id='d'", true},
       {"x:f", "<x:f xmlns:x=\"u\"/>", "[#]='<x:f xmlns:x=\"u\"/>'", true}},
      false,
      6};
  expectEverySequence(content, [](const std::string &children, const std::string &record, const std::string &errors) {
    return Case{in(info, children), record + (record.empty() ? "" : " ") + infoEnd, errors};
  });
}

TEST(DecodeOrder, OfADialog) {
  const Content content = {{{"state", "<state>s</state>", "state='s'"},
                            {"duration", "<duration>5</duration>", "duration=5"},
                            {"replaces", "<replaces call-id='c' local-tag='l' remote-tag='r'/>",
                             "replaces=null replaces.call_id='c' replaces.local_tag='l' replaces.remote_tag='r'"},
                            {"referred-by", "<referred-by>b</referred-by>", "referred_by='b'"},
                            {"route-set", "<route-set><hop>h</hop></route-set>", "route_set.hop[0]='h'"},
                            {"local", "<local><cseq>1</cseq></local>", "local.cseq=1"},
                            {"remote", "<remote><cseq>2</cseq></remote>", "remote.cseq=2"},
                            {"x:f", "<x:f xmlns:x=\"u\" xmlns=\"u\"><state>q</state></x:f>",
                             "[#]='<x:f xmlns:x=\"u\" xmlns=\"u\"><state>q</state></x:f>'", true}},
                           true,
                           4};
  expectEverySequence(content, [](const std::string &children, const std::string &record, const std::string &errors) {
    return Case{in(dialog, children), (record.empty() ? "state=null" : record) + " id='d'", errors};
  });
}

TEST(DecodeOrder, OfAParticipant) {
  const Content content = {{{"identity", "<identity>i</identity>", "local.identity='i'"},
                            {"target", "<target uri='u'/>", "local.target.uri='u'"},
                            {"session-description", "<session-description type='t'>v</session-description>",
                             "local.session_description='v' local.session_description.type='t'"},
                            {"cseq", "<cseq>1</cseq>", "local.cseq=1"},
                            {"x:f", "<x:f xmlns:x=\"u\"/>", "local[#]='<x:f xmlns:x=\"u\"/>'", true}},
                           false,
                           4};
  expectEverySequence(content, [](const std::string &children, const std::string &record, const std::string &errors) {
    return Case{inLocal(children), dialogWith(record), errors};
  });
}

TEST(DecodeOrder, OfATarget) {
  const Content content = {
      {{"param", "<param pname='n' pval='v'/>",
        "local.target.param[#]=null local.target.param[#].pname='n' local.target.param[#].pval='v'", true}},
      false,
      5};
  expectEverySequence(content, [](const std::string &children, const std::string &record, const std::string &errors) {
    return Case{inTarget(children), dialogWith(record + (record.empty() ? "" : " ") + "local.target.uri='u'"), errors};
  });
  // Nothing else has a place there.
  expectCases({
      {inTarget("^<x:f xmlns:x='u'/>^<bogus/><param pname='n' pval='v'/>^<params/>"),
       dialogWith("local.target.param[0]=null local.target.param[0].pname='n' local.target.param[0].pval='v' "
                  "local.target.uri='u'"),
       "-41(x:f); -41(bogus); -41(params)"},
  });
}

TEST(DecodeOrder, MissingStateShowsAtTheNextChildOnly) {
  expectCases({
      {in(dialog, ""), "state=null id='d'", ""},
      {in(dialog, "  \n"), "state=null id='d'", ""},
      {in(info, "<dialog id='a'/>"), "dialog[0].state=null dialog[0].id='a' "s + infoEnd, ""},
      {in(dialog, "^<duration>5</duration><state>s</state>"), "state='s' id='d'", "-41(duration)"},
      {in(dialog, "^<x:f xmlns:x='u'/><state>s</state>"), "state='s' id='d'", "-41(x:f)"},
  });
}

TEST(DecodeOrder, ReadingGoesOnBehindWhatIsRefused) {
  expectCases({
      {in(info,
          "<dialog id='a'><state/></dialog><x:f xmlns:x='u'/>^<dialog id='b'><state/><local><cseq>x</cseq></local>"
          "</dialog><y:f xmlns:y='u'/>"),
       "dialog[0].state='' dialog[0].id='a' [0]='<x:f xmlns:x=\"u\"/>' [1]='<y:f xmlns:y=\"u\"/>' "s + infoEnd,
       "-41(dialog)"},
      {inLocal("<target uri='u'/>^<identity>i</identity><cseq>1</cseq>"),
       dialogWith("local.target.uri='u' local.cseq=1"), "-41(identity)"},
      {inLocal("<x:f xmlns:x='u'/><x:g xmlns:x='u'/>"),
       dialogWith("local[0]='<x:f xmlns:x=\"u\"/>' local[1]='<x:g xmlns:x=\"u\"/>'"), ""},
      {inDialog("^<bogus><local><cseq>1</cseq></local></bogus><local>^<bogus/></local>^<bogus/>"), dialogWith(""),
       "-41(bogus); -41(bogus); -41(bogus)"},
      {in(info, "^<bogus/>^<state>s</state><dialog id='a'/>"), "dialog[0].state=null dialog[0].id='a' "s + infoEnd,
       "-41(bogus); -41(state)"},
  });
}

// ---- Namespaces ---------------------------------------------------------------------------------------------------

TEST(DecodeNamespaces, DecideWhatIsForeign) {
  expectCases({
      // A name of ours in another namespace is another vocabulary's, wherever such may stand.
      {inDialog("<x:duration xmlns:x='u'>z</x:duration>"), dialogWith("[0]='<x:duration xmlns:x=\"u\">z</x:duration>'"),
       ""},
      {in(info, "<dialog xmlns='u'/>"), "[0]='<dialog xmlns=\"u\"/>' "s + infoEnd, ""},
      {inLocal("<identity xmlns='u'>i</identity>"), dialogWith("local[0]='<identity xmlns=\"u\">i</identity>'"), ""},
      // Other namespaces of the library are as foreign as any.
      {inDialog("<cp:local xmlns:cp='urn:ietf:params:xml:ns:common-policy'/>"),
       dialogWith("[0]='<cp:local xmlns:cp=\"urn:ietf:params:xml:ns:common-policy\"/>'"), ""},
      // Names of ours without a namespace are ours, others are foreign.
      {inDialog("<duration xmlns=''>5</duration>"), dialogWith("duration=5"), ""},
      {inDialog("<bogus xmlns=''/>"), dialogWith("[0]='<bogus xmlns=\"\"/>'"), ""},
      // Where nothing foreign may stand, the name alone is tried.
      {in(dialog, "<x:state xmlns:x='u'>s</x:state>"), "state='s' state.xmlns:x='u' id='d'", ""},
      {inTarget("<x:param xmlns:x='u' pname='n' pval='v'/>"),
       dialogWith("local.target.param[0]=null local.target.param[0].pname='n' local.target.param[0].pval='v' "
                  "local.target.uri='u'"),
       ""},
      // An undeclared prefix is no namespace.
      {inDialog("<u:duration>5</u:duration><u:local/><u:bogus>t</u:bogus>"),
       dialogWith("duration=5 [0]='<u:bogus>t</u:bogus>'"), ""},
  });
}

TEST(DecodeNamespaces, ForeignElementsMeanTheSameOnTheirOwn) {
  const std::string text = "<p:dialog xmlns:p='"s + namespaceUri +
                           "' xmlns:x='urn:x' xmlns='urn:default' id='d'><p:state>s</p:state><p:local>"
                           "<x:f k='\"'>t &amp; <g><!--c--><p:state x:l='&#10;'>&lt;</p:state></g></x:f></p:local>"
                           "<g/><x:h xmlns:x='urn:inner'><x:i/></x:h></p:dialog>";
  const auto document = support::parseNamespacedXml(text);
  ASSERT_TRUE(document);
  const std::vector<support::XmlElement> originals = {document->children[1].children[0], document->children[2],
                                                      document->children[3]};
  Context ctx;
  ASSERT_EQ(support::setInput(ctx, text), 0);
  Record record(ctx, types::dialog);
  EXPECT_EQ(record.decode(dialog), 0) << recorded(ctx);
  const auto &read = record.as<tns__dialog>();
  std::vector<std::string> fragments;
  for (const RtxList *list : {&read.tns_local.anyElems.items, &read.anyElems.items})
    for (const RtxListNode *node = list->head; node != nullptr; node = node->next)
      fragments.push_back(static_cast<const RtxXmlString *>(node->data)->value);
  ASSERT_EQ(fragments.size(), originals.size());
  for (size_t i = 0; i < fragments.size(); ++i) {
    const auto fragment = support::parseNamespacedXml(fragments[i]);
    ASSERT_TRUE(fragment) << fragments[i];
    EXPECT_EQ(fragment->infoset(), originals[i].infoset());
  }
}

TEST(DecodeNamespaces, DeclarationsOnTextsAreKept) {
  expectCases({
      {whole(state, "<state xmlns:a='urn:a' event='error' xmlns='' xmlns:b='urn:b'>s</state>"),
       "value='s' xmlns:a='urn:a' xmlns='' xmlns:b='urn:b' event='error'", ""},
      {in(dialog, "<state xmlns:a='urn:a'>s</state><referred-by xmlns:b='urn:b' display-name='n'>r</referred-by>"
                  "<local><identity xmlns:c='urn:c'>i</identity>"
                  "<session-description xmlns:d='urn:d' type='t' xmlns:e='urn:e'>v</session-description></local>"),
       "state='s' state.xmlns:a='urn:a' referred_by='r' referred_by.xmlns:b='urn:b' referred_by.display_name='n' "
       "local.identity='i' local.identity.xmlns:c='urn:c' local.session_description='v' "
       "local.session_description.xmlns:d='urn:d' local.session_description.xmlns:e='urn:e' "
       "local.session_description.type='t' id='d'",
       ""},
      // Nowhere else.
      {in(info,
          "<dialog id='d' xmlns:a='urn:a'><state/><route-set xmlns:b='urn:b'><hop xmlns:c='urn:c'>h</hop></route-set>"
          "<local xmlns:d='urn:d'><target uri='u' xmlns:e='urn:e'/></local></dialog>"),
       "dialog[0].state='' dialog[0].route_set.hop[0]='h' dialog[0].local.target.uri='u' dialog[0].id='d' "s + infoEnd,
       ""},
  });
}

// ---- Roots --------------------------------------------------------------------------------------------------------

TEST(DecodeRoot, OfAnotherNameIsReportedAndRead) {
  const std::string ns = " xmlns:p='"s + namespaceUri + "'";
  expectCases({
      {whole(info, "^<dialoginfo version='1' state='full' entity='e'><dialog id='d'/></dialoginfo>"),
       "dialog[0].state=null dialog[0].id='d' "s + infoEnd, "-3(dialog-info,dialoginfo)"},
      {whole(info, "^<Dialog-Info version='1' state='full' entity='e'/>"), infoEnd, "-3(dialog-info,Dialog-Info)"},
      {whole(dialog, "^<dialogs id='d'><state>s</state></dialogs>"), "state='s' id='d'", "-3(dialog,dialogs)"},
      {whole(dialog, "^<p:dialo" + ns + " id='d'><p:state>s</p:state></p:dialo>"), "state='s' id='d'",
       "-3(dialog,dialo)"},
      {whole(state, "\n\n ^<status event='error'>s</status>"), "value='s' event='error'", "-3(state,status)"},
      // The root of another document of the module.
      {whole(info, "^^^^<dialog xmlns='"s + namespaceUri + "' ^id='d'>^<state>s</state></dialog>"),
       "version="s + untouchedNumber + " state=" + untouchedCode + " entity=null",
       "-3(dialog-info,dialog); -33(tns__dialog_info,id); -103(tns__dialog_info,version); "
       "-103(tns__dialog_info,state); -103(tns__dialog_info,entity); -41(state)"},
      {whole(dialog, "^^<dialog-info ^version='1'/>"), "state=null id=null",
       "-3(dialog,dialog-info); -33(tns__dialog,version); -103(tns__dialog,id)"},
  });
}

TEST(DecodeRoot, IsKnownByItsLocalNameAlone) {
  const std::string ours = "xmlns:t='"s + namespaceUri + "'";
  expectCases({
      {whole(dialog, "<dialog xmlns='urn:other' " + ours + " id='d'><t:state>s</t:state></dialog>"), "state='s' id='d'",
       ""},
      {whole(info, "<u:dialog-info version='1' state='full' entity='e'/>"), infoEnd, ""},
      {whole(state, "<t:state " + ours + ">s</t:state>"), "value='s' xmlns:t='"s + namespaceUri + "'", ""},
  });
}

TEST(DecodeRoot, NeedsNothingButItsAttributes) {
  expectCases({
      {in(info, ""), infoEnd, ""},
      {whole(state, "<state/>"), "value=''", ""},
      {whole(dialog, "<dialog id='d'/>"), "state=null id='d'", ""},
  });
}

// ---- Failures of the document -------------------------------------------------------------------------------------

TEST(DecodeFailure, WithoutInputTheRecordIsNotTouched) {
  for (const Root *root : allRoots) {
    Context ctx;
    Record record(ctx, *root->type);
    const std::vector<unsigned char> before(root->type->size, 0xA5);
    EXPECT_EQ(record.decode(*root), STATUS_READER_FAILED);
    EXPECT_EQ(std::memcmp(record.data(), before.data(), before.size()), 0);
    EXPECT_FALSE(record.initialised);
    EXPECT_EQ(recorded(ctx), "-26");
    EXPECT_EQ(rtxErrAt(ctx, 0)->sites[0].path, "xmlAddOns/addons/IMS/DialogInfo/QxXmlDialogInfoDec"sv);
    rtxErrClear(ctx);
    EXPECT_EQ(root->validate(ctx), STATUS_READER_FAILED);
    EXPECT_EQ(rtxErrAt(ctx, 0)->sites[0].path, "xmlAddOns/addons/IMS/DialogInfo/QxXmlDialogInfoVldt"sv);
  }
}

TEST(DecodeFailure, WhatWasReadBeforeItIsKept) {
  struct Row {
    const Root *root;
    const char *text;
    const char *record;
  };
  const Row rows[] = {
      {&info, "", "version=2779096485 state='_UNKNOWN_' entity=null"},
      {&info, "dialog-info", "version=2779096485 state='_UNKNOWN_' entity=null"},
      {&info, "<dialog-info version='1' state='full' entity='e'>", infoEnd},
      {&dialog, "<dialog id='d'><state>s</state><duration>5", "state='s' id='d'"},
      {&dialog, "<dialog id='d'><state>s", "state=null id='d'"},
      {&dialog, "<dialog id='d'><state>s</state><local><target uri='u'><param pname='n' pval='v'>",
       "state='s' local.target.param[0]=null local.target.param[0].pname='n' local.target.param[0].pval='v' "
       "local.target.uri='u' id='d'"},
      {&dialog, "<dialog id='d'><state>s</state><local><x:f xmlns:x='u'>t", "state='s' local[0]=null id='d'"},
      {&dialog, "<dialog id='d'><state>s</state><route-set><hop>a</hop><hop>b",
       "state='s' route_set.hop[0]='a' id='d'"},
      {&dialog, "<dialog id='d'><state>s</state></dialog><dialog/>", "state='s' id='d'"},
      {&dialog, "<dialog id='d' id='e'/>", "state=null id=null"},
      {&state, "<state event='error'>a&undefined;b</state>", "value=null event='error'"},
      {&state, "<state event='error'>\x01</state>", "value=null event='error'"},
      {&state, "<state event='error'>\xFF</state>", "value=null event='error'"},
  };
  for (const Row &row : rows) {
    SCOPED_TRACE(row.text);
    const Reading reading = decode(*row.root, row.text);
    EXPECT_EQ(reading.status, STATUS_PARSE_FAILED);
    EXPECT_EQ(reading.record, row.record);
    EXPECT_EQ(reading.errors, "-104");
    const Reading checked = validate(*row.root, row.text);
    EXPECT_EQ(checked.status, STATUS_PARSE_FAILED);
    EXPECT_EQ(checked.errors, "-104");
  }
}

TEST(DecodeFailure, OfTheParseComesBeforeThatOfAHandler) {
  Context ctx;
  EXPECT_EQ(decode(ctx, dialog, "<dialog><state code='700'>s</state>").status, STATUS_PARSE_FAILED);
  EXPECT_EQ(recorded(ctx), "-103(tns__dialog,id); -16(tns__state.tns_code,700u); -104");
}

TEST(DecodeFailure, EarlierOneIsReturnedThoughTheRecordIsFilled) {
  Context ctx;
  EXPECT_EQ(decode(ctx, state, "<state code='700'/>").status, STATUS_CONSTRAINT_VIOLATION);
  const Reading second = decode(ctx, dialog, inDialog("<duration>5</duration>").text);
  EXPECT_EQ(second.status, STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(second.record, dialogWith("duration=5"));
  EXPECT_EQ(validate(ctx, state, "<state/>").status, STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(rtxErrCount(ctx), 1u);
}

// An unknown text and a number that does not convert are recorded whatever the count says; what follows is not.
TEST(DecodeFailure, BeyondTheLimitIsNotRecorded) {
  const std::string bad =
      "<dialogue bogus='1' direction='x'><state code='700' event='y'>a<b/></state><duration>z</duration>"
      "<duration/><replaces/><route-set><foo/></route-set><local><target/></local></dialogue>";
  const char *const all[] = {"-3(dialog,dialogue)",
                             "-33(tns__dialog,bogus)",
                             "-45(tns__dialog,direction)",
                             "-103(tns__dialog,id)",
                             "-16(tns__state.tns_code,700u)",
                             "-45(tns__state,event)",
                             "-41(b)",
                             "-44(z,tns__dialog,duration)",
                             "-41(duration)",
                             "-103(tns__dialog_replaces,call-id)",
                             "-103(tns__dialog_replaces,local-tag)",
                             "-103(tns__dialog_replaces,remote-tag)",
                             "-3(tns_hop,foo)",
                             "-16(tns__dialog_route_set.count,0)",
                             "-103(tns_participant_target,uri)"};
  for (uint32_t limit = 0; limit <= std::size(all) + 1; ++limit) {
    std::string expected;
    const auto add = [&](const std::string &error) { expected += (expected.empty() ? "" : "; ") + error; };
    for (uint32_t i = 0; i < std::size(all); ++i) {
      if (i == 2) add("-4(x)");
      if (i == 5) add("-4(y)");
      if (i < limit) add(all[i]);
    }
    Context ctx([limit](RuntimeOptions &options) { options.errorLimit = limit; });
    const Reading reading = decode(ctx, dialog, bad);
    EXPECT_EQ(reading.errors, expected) << "limit " << limit;
    EXPECT_EQ(reading.status, limit == 0 ? STATUS_ENUM_NOT_FOUND : STATUS_ROOT_MISMATCH);
    EXPECT_EQ(reading.record, "state='a' state.event="s + untouchedCode +
                                  " replaces=null replaces.call_id=null replaces.local_tag=null "
                                  "replaces.remote_tag=null local.target.uri=null id=null direction=" +
                                  untouchedCode);
  }
  Context ctx([](RuntimeOptions &options) { options.errorLimit = 0; });
  EXPECT_EQ(decode(ctx, info, "<dialog-info version='x'/>").errors, "-101");
}

// Each place of the sources that finds an error has a line of its own.
TEST(DecodeFailure, EveryKindOfErrorHasItsOwnLine) {
  const auto dialogOf = [](const char *content) { return "<dialog id='d'><state/>"s + content + "</dialog>"; };
  const std::pair<const Root *, std::string> documents[] = {
      {&info, "<dialoginfo version='1' state='full' entity='e'/>"},
      {&info, "<dialog-info version='1' state='full' entity='e' k=''/>"},
      {&info, "<dialog-info/>"},
      {&info, "<dialog-info version='x' state='full' entity='e'/>"},
      {&info, "<dialog-info version='1' state='x' entity='e'/>"},
      {&info, in(info, "<bogus/>").text},
      {&dialog, "<dialogs id='d'/>"},
      {&dialog, "<dialog id='d' k=''/>"},
      {&dialog, "<dialog/>"},
      {&dialog, "<dialog id='d' direction='x'/>"},
      {&dialog, in(dialog, "<bogus/>").text},
      {&dialog, dialogOf("<duration k=''>5</duration>")},
      {&dialog, dialogOf("<duration>x</duration>")},
      {&state, "<status/>"},
      {&state, "<state k=''/>"},
      {&state, "<state event='x'/>"},
      {&state, "<state code='x'/>"},
      {&state, "<state code='1'/>"},
      {&state, "<state><b/></state>"},
      {&dialog, dialogOf("<replaces/>")},
      {&dialog, dialogOf("<replaces call-id='' local-tag='' remote-tag='' k=''/>")},
      {&dialog, dialogOf("<replaces call-id='' local-tag='' remote-tag=''><b/></replaces>")},
      {&dialog, dialogOf("<referred-by k=''/>")},
      {&dialog, dialogOf("<referred-by><b/></referred-by>")},
      {&dialog, dialogOf("<route-set><hop/><b/></route-set>")},
      {&dialog, dialogOf("<route-set/>")},
      {&dialog, dialogOf("<local><cseq>1</cseq><identity/></local>")},
      {&dialog, dialogOf("<local><cseq k=''>5</cseq></local>")},
      {&dialog, dialogOf("<local><cseq>x</cseq></local>")},
      {&dialog, dialogOf("<local><target/></local>")},
      {&dialog, dialogOf("<local><target uri='' k=''/></local>")},
      {&dialog, dialogOf("<local><target uri=''><b/></target></local>")},
      {&dialog, dialogOf("<local><target uri=''><param/></target></local>")},
      {&dialog, dialogOf("<local><target uri=''><param pname='' pval='' k=''/></target></local>")},
      {&dialog, dialogOf("<local><target uri=''><param pname='' pval=''><b/></param></target></local>")},
      {&dialog, dialogOf("<local><session-description/></local>")},
      {&dialog, dialogOf("<local><session-description type='' k=''/></local>")},
      {&dialog, dialogOf("<local><session-description type=''><b/></session-description></local>")},
  };
  for (bool validator : {false, true}) {
    std::map<int, std::string> lines;
    for (const auto &[root, text] : documents) {
      Context ctx;
      if (validator && text.find("<route-set/>") != text.npos) continue;
      const Reading reading = validator ? validate(ctx, *root, text) : decode(ctx, *root, text);
      ASSERT_LT(reading.status, 0) << text;
      // The first place in the module's sources; what the runtime finds leads there.
      int line = 0;
      for (uint32_t i = 0; line == 0 && i < rtxErrCount(ctx); ++i) {
        const RtxErrorSite &site = rtxErrAt(ctx, i)->sites[rtxErrAt(ctx, i)->siteCount - 1];
        if (site.path != "runtime/reader"sv) line = site.line;
      }
      EXPECT_NE(line, 0) << text;
      EXPECT_TRUE(lines.emplace(line, text).second) << text << " and " << lines[line] << ": line " << line;
    }
  }
}

// ---- Bodies as they are seen in the field -------------------------------------------------------------------------

struct Seen {
  const char *text;
  std::string record;
  std::string errors;
  std::vector<const char *> places; // of each error
};

void expectSeen(const Root &root, const Seen &seen) {
  SCOPED_TRACE(seen.text);
  Context ctx;
  const Reading reading = decode(ctx, root, seen.text);
  EXPECT_EQ(reading.record, seen.record);
  EXPECT_EQ(reading.errors, seen.errors);
  EXPECT_EQ(validate(root, seen.text).errors, seen.errors);
  ASSERT_EQ(rtxErrCount(ctx), seen.places.size());
  for (uint32_t i = 0; i < seen.places.size(); ++i) {
    const std::string place = support::placeText(*rtxErrAt(ctx, i));
    EXPECT_EQ(place.substr(0, place.find('+')) + place.substr(place.find(' ')), seen.places[i]);
  }
}

TEST(DecodeField, RemoteBeforeLocal) {
  expectSeen(info, {R"(<?xml version="1.0"?>
<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" version="3" state="full" entity="sip:200@pbx.example">
  <dialog id="200-1" direction="recipient">
    <state>confirmed</state>
    <remote><identity>sip:300@pbx.example</identity><target uri="sip:300@192.0.2.7"/></remote>
    <local><identity>sip:200@pbx.example</identity><target uri="sip:200@192.0.2.8"/></local>
  </dialog>
  <dialog id="200-2">
    <state>early</state>
  </dialog>
</dialog-info>
)",
                    "dialog[0].state='confirmed' dialog[0].remote.identity='sip:300@pbx.example' "
                    "dialog[0].remote.target.uri='sip:300@192.0.2.7' dialog[0].id='200-1' "
                    "dialog[0].direction='recipient' dialog[1].state='early' dialog[1].id='200-2' version=3 "
                    "state='full' entity='sip:200@pbx.example'",
                    "-41(local)",
                    {"6:5 /dialog-info/dialog/local"}});
}

TEST(DecodeField, TargetWithAnotherAttributeForItsValues) {
  expectSeen(info,
             {R"(<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" version="0" state="full" entity="sip:a@b">
<dialog id="x"><state>confirmed</state>
<local><target uri="sip:a@192.0.2.1">
<param pname="+sip.rendering" pvalue="no"/>
</target></local>
</dialog></dialog-info>)",
              "dialog[0].state='confirmed' dialog[0].local.target.param[0]=null "
              "dialog[0].local.target.param[0].pname='+sip.rendering' dialog[0].local.target.param[0].pval=null "
              "dialog[0].local.target.uri='sip:a@192.0.2.1' dialog[0].id='x' version=0 state='full' "
              "entity='sip:a@b'",
              "-33(tns_participant_target_param,pvalue); -103(tns_participant_target_param,pval)",
              {"4:31 /dialog-info/dialog/local/target/param", "4:1 /dialog-info/dialog/local/target/param"}});
}

TEST(DecodeField, OwnWordsForDirectionAndState) {
  expectSeen(info,
             {R"(<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" version="1" state="partial" entity="sip:a@b">
  <dialog id="9" call-id="k"
          direction="receiver">
    <state>Trying</state>
    <local/>
  </dialog>
</dialog-info>)",
              "dialog[0].state='Trying' dialog[0].id='9' dialog[0].call_id='k' "
              "dialog[0].direction='initiator' version=1 state='partial' entity='sip:a@b'",
              "-4(receiver); -45(tns__dialog,direction)",
              {"3:11 /dialog-info/dialog", "3:11 /dialog-info/dialog"}});
}

TEST(DecodeField, UndeclaredPrefixes) {
  expectSeen(info, {R"(<dlg:dialog-info version="1" state="full" entity="sip:a@b"><dlg:dialog id="1">
<dlg:state>early</dlg:state><sa:exclusive>no</sa:exclusive></dlg:dialog></dlg:dialog-info>)",
                    "dialog[0].state='early' dialog[0][0]='<sa:exclusive>no</sa:exclusive>' dialog[0].id='1' "
                    "version=1 state='full' entity='sip:a@b'",
                    "",
                    {}});
}

TEST(DecodeField, NoVersion) {
  expectSeen(info, {R"(<?xml version="1.0" encoding="UTF-8"?>
<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" state="full" entity="sip:a@b">
<dialog id="1"><state>terminated</state></dialog>
</dialog-info>)",
                    "dialog[0].state='terminated' dialog[0].id='1' version="s + untouchedNumber +
                        " state='full' entity='sip:a@b'",
                    "-103(tns__dialog_info,version)",
                    {"2:1 /dialog-info"}});
}

TEST(DecodeField, DisplayNameUnderItsOtherName) {
  expectSeen(dialog, {R"(<dialog xmlns="urn:ietf:params:xml:ns:dialog-info" id="1"><state>early</state>
 <remote><identity display="Anna">sip:anna@c</identity></remote></dialog>)",
                      "state='early' remote.identity='sip:anna@c' id='1'",
                      "-33(tns_nameaddr,display)",
                      {"2:20 /dialog/remote/identity"}});
}

TEST(DecodeField, ForeignElementsBeforeTheParticipants) {
  expectSeen(dialog, {R"(<dialog xmlns="urn:ietf:params:xml:ns:dialog-info" id="1"><state>early</state>
<v:line xmlns:v="urn:v">2</v:line>
<local><identity>sip:a</identity></local><remote/></dialog>)",
                      "state='early' [0]='<v:line xmlns:v=\"urn:v\">2</v:line>' id='1'",
                      "-41(local); -41(remote)",
                      {"3:1 /dialog/local", "3:42 /dialog/remote"}});
}

// Not well-formed: what came before is there, and the error knows its line.
TEST(DecodeField, DisplayNamesThatAreNotEscaped) {
  for (const char *name : {"Smith & Sons", "Tom <tom>", "A&B", "\"Bob\""}) {
    const std::string text =
        R"(<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" version="1" state="full" entity="e">
<dialog id="1"><state>early</state>
<local><cseq>1</cseq></local>
<remote>
<identity display-name=")"s +
        name + R"(">sip:b</identity></remote></dialog></dialog-info>)";
    SCOPED_TRACE(name);
    Context ctx;
    const Reading reading = decode(ctx, info, text);
    EXPECT_EQ(reading.status, STATUS_PARSE_FAILED);
    EXPECT_EQ(reading.record, "dialog[0].state='early' dialog[0].local.cseq=1 dialog[0].id='1' "s + infoEnd);
    EXPECT_EQ(reading.errors, "-104");
    EXPECT_EQ(rtxErrAt(ctx, 0)->line, 5u);
    EXPECT_EQ(validate(info, text).errors, "-104");
  }
}

} // namespace
