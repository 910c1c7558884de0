// Checking dialog state without building a record: what differs from decoding. That it agrees otherwise is shown by the
// cases of decoding, each of which is validated as well.
#include "reading.h"

using namespace reading;
using support::Context;

namespace {

TEST(Validate, CodeOutOfRangeIsNamedByItsAttribute) {
  expectCases({
      {whole(state, "<state ^code='700'>s</state>"), "value='s'", "-16(tns__state.tns_code,700u)", "-16(code,700u)"},
      {whole(state, "<state ^code='99' ^foo=''>s</state>"), "value='s'",
       "-16(tns__state.tns_code,99u); -33(tns__state,foo)", "-16(code,99u); -33(tns__state,foo)"},
      {in(info, "<dialog id='d'><state ^code='0'/></dialog>"), "dialog[0].state='' dialog[0].id='d' "s + infoEnd,
       "-16(tns__state.tns_code,0u)", "-16(code,0u)"},
      {whole(state, "<state code='100'>s</state>"), "value='s' code=100", "", ""},
      {whole(state, "<state code='699'>s</state>"), "value='s' code=699", "", ""},
      // A text that is no number is as invalid for both.
      {whole(state, "<state ^^code='x'>s</state>"), "value='s' code=42405", "-101; -45(tns__state,code)",
       "-101; -45(tns__state,code)"},
  });
}

TEST(Validate, RouteSetMayBeEmpty) {
  expectCases({
      {in(dialog, "<state/>^<route-set/>"), "state='' id='d'", "-16(tns__dialog_route_set.count,0)", ""},
      {in(dialog, "<state/>^<route-set> text </route-set><local/>"), "state='' id='d'",
       "-16(tns__dialog_route_set.count,0)", ""},
      // The name of its children is looked at all the same.
      {in(dialog, "<state/>^<route-set>^<jump>h</jump></route-set>"), "state='' id='d'",
       "-3(tns_hop,jump); -16(tns__dialog_route_set.count,0)", "-3(tns_hop,jump)"},
      {in(dialog, "<state/><route-set><hop/></route-set>"), "state='' route_set.hop[0]='' id='d'", "", ""},
  });
}

// Where foreign elements may stand: before, the element's place, behind.
const std::pair<const Root *, std::pair<const char *, const char *>> foreignPlaces[] = {
    {&info, {"", ""}},
    {&info, {"<dialog id='d'><state/></dialog>", ""}},
    {&dialog, {"<state/>", ""}},
    {&dialog, {"<state/><local><cseq>1</cseq>", "</local>"}},
    {&dialog, {"<state/><remote>", "</remote>"}}};

TEST(Validate, ContentOfForeignElementsDoesNotMatter) {
  for (const auto &[root, around] : foreignPlaces) {
    const std::string text =
        in(*root, around.first +
                      "<x:f xmlns:x='u' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:type='t'>text<state/>"
                      "<bogus k='1'>t</bogus><cseq>abc</cseq><state code='1' event='x'/><x:g y='2'/><route-set/>"
                      "<dialog><duration>z</duration></dialog></x:f><x:h xmlns:x='u'>0</x:h>"s +
                      around.second)
            .text;
    const Reading reading = validate(*root, text);
    EXPECT_EQ(reading.status, 0) << text;
    EXPECT_EQ(reading.errors, "");
    EXPECT_EQ(decode(*root, text).errors, "");
  }
}

TEST(Validate, AttributesOfForeignElementsAreReportedWithoutAName) {
  for (const auto &[root, around] : foreignPlaces) {
    const std::string text =
        in(*root, around.first + "<x:f xmlns:x='u' k='1' xsi:nil='true' x:l='2'/>"s + around.second).text;
    const Reading reading = validate(*root, text);
    EXPECT_EQ(reading.status, STATUS_UNKNOWN_ATTRIBUTE) << text;
    EXPECT_EQ(reading.errors, "-33(,k); -33(,x:l)");
    EXPECT_EQ(decode(*root, text).errors, "") << "the decoder keeps them";
  }
}

TEST(Validate, FindsWhatTheDecoderFindsInOneDocument) {
  expectCase(
      {whole(info, "^^<dialoginfo ^^version='x' ^^state='all' ^k='1' xmlns='"s + namespaceUri +
                       "'>\n <dialog id='d' ^^direction='x'>\n"
                       "  <state ^^event='bye' ^code='1000'>a^<b/>c</state>\n  <duration>^x</duration>\n"
                       "  ^^<replaces local-tag='' ^k=''/>\n  <referred-by ^k=''>^<b/></referred-by>\n"
                       "  <route-set><hop/>^<jump/></route-set>\n"
                       "  <local>^<target ^Uri=''>^<param ^k='' pval=''>^<b/></param></target>"
                       "^<session-description/><cseq>^-1</cseq>^<identity/>^<bogus/></local>\n"
                       "  ^<duration>5</duration></dialog>\n ^<bogus/></dialoginfo>"),
       "dialog[0].state='ac' dialog[0].state.event='cancelled' dialog[0].replaces=null "
       "dialog[0].replaces.call_id=null dialog[0].replaces.local_tag='' dialog[0].replaces.remote_tag=null "
       "dialog[0].referred_by='' dialog[0].route_set.hop[0]='' dialog[0].local.target.param[0]=null "
       "dialog[0].local.target.param[0].pname=null dialog[0].local.target.param[0].pval='' "
       "dialog[0].local.target.uri=null dialog[0].local.session_description='' "
       "dialog[0].local.session_description.type=null dialog[0].id='d' dialog[0].direction='initiator' version="s +
           untouchedNumber + " state=" + untouchedCode + " entity=null",
       "-3(dialog-info,dialoginfo); -101; -45(tns__dialog_info,version); -4(all); -45(tns__dialog_info,state); "
       "-33(tns__dialog_info,k); -103(tns__dialog_info,entity); -4(x); -45(tns__dialog,direction); -4(bye); "
       "-45(tns__state,event); -16(tns__state.tns_code,1000u); -41(b); -44(x,tns__dialog,duration); "
       "-33(tns__dialog_replaces,k); -103(tns__dialog_replaces,call-id); -103(tns__dialog_replaces,remote-tag); "
       "-33(tns_nameaddr,k); -41(b); -3(tns_hop,jump); -33(tns_participant_target,Uri); "
       "-103(tns_participant_target,uri); -33(tns_participant_target_param,k); "
       "-103(tns_participant_target_param,pname); -41(b); -103(tns_sessd,type); -44(-1,tns_participant,cseq); "
       "-41(identity); -41(bogus); -41(duration); -41(bogus)"});
}

TEST(Validate, EarlierErrorIsReturned) {
  Context ctx;
  EXPECT_EQ(validate(ctx, state, "<state code='1'/>").status, STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(validate(ctx, dialog, "<dialog id='d'/>").status, STATUS_CONSTRAINT_VIOLATION);
  EXPECT_EQ(rtxErrCount(ctx), 1u);
}

TEST(Validate, StatusOfTheParseComesFirst) {
  Context ctx;
  EXPECT_EQ(validate(ctx, dialog, "<dialog><state code='1'/>").status, STATUS_PARSE_FAILED);
  EXPECT_EQ(recorded(ctx), "-103(tns__dialog,id); -16(code,1u); -104");
}

TEST(Validate, WithEveryErrorRefusedItReturnsSuccess) {
  Context ctx([](RuntimeOptions &options) { options.errorLimit = 0; });
  const Reading reading =
      validate(ctx, dialog,
               in(dialog, "<state code='1' k=''>a<b/></state><duration>x</duration><duration/><replaces/>"
                          "<route-set><jump/></route-set><x:f xmlns:x='u' k=''/>")
                   .text);
  EXPECT_EQ(reading.status, 0);
  EXPECT_EQ(reading.errors, "");
}

// Nothing is taken but the storage of open handlers and one text at a time.
TEST(Validate, KeepsNothingOfTheDocument) {
  std::string dialogs;
  for (int i = 0; i < 500; ++i)
    dialogs +=
        "<dialog id='" + std::to_string(i) +
        "'><state>confirmed</state><route-set><hop>sip:a</hop><hop>sip:b</hop></route-set><local><target uri='u'>"
        "<param pname='a' pval='b'/></target></local><x:f xmlns:x='u'>t</x:f></dialog>";
  size_t peaks[2];
  for (size_t i = 0; i < 2; ++i) {
    Context ctx;
    const std::string text = in(info, i == 0 ? dialogs.substr(0, dialogs.find("<dialog id='1'")) : dialogs).text;
    ASSERT_EQ(support::setInput(ctx, text, support::InputForm::terminated), 0);
    EXPECT_EQ(QxXmlV_tns_dialog_info(ctx), 0) << recorded(ctx);
    peaks[i] = support::heapStats(ctx).peakUsed;
  }
  EXPECT_EQ(peaks[0], peaks[1]);
}

} // namespace
