// Roots of other names, documents that cannot be read, and what is recorded of errors.
#include "reading.h"

#include <cstring>
#include <map>

using namespace reading;
using support::Context;

namespace {

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

} // namespace
