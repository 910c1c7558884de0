// Reading dialog state into records. Every case is validated as well, see expectCase.
#include "reading.h"
#include "xmlJudge.h"

using namespace reading;
using support::Context;
using support::everySpelling;
using support::SpelledDocument;

namespace {

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
