// What release functions give back and what they leave to the heap; what printing returns.
#include "DebugEvent/QxXmlDebugEventTables.h"
#include "DialogInfo/QxXmlDialogInfoTables.h"
#include "FilterSet/QxXmlFilterSetTables.h"
#include "ImCn/QxXmlImCnTables.h"
#include "capture.h"
#include "conditions.h"
#include "context.h"
#include "input.h"
#include "records.h"
#include "rtx.h"

#include <cstdio>
#include <gtest/gtest.h>

using frame::Record;
using support::Context;

namespace {

struct Case {
  const char *name;
  const ims::DocumentSchema &document;
  const char *text;
  size_t left; // blocks that stay until the heap goes
};

const Case cases[] = {
    {"ReplacesKeepsThree", tns_dialogDocument,
     "<dialog id='d'><state>s</state><replaces call-id='c' local-tag='l' remote-tag='r'/><route-set><hop>h</hop>"
     "</route-set></dialog>",
     3},
    {"EachParamKeepsTwo", tns_dialogDocument,
     "<dialog id='d'><state/><local><target uri='u'><param pname='p' pval='v'/><param pname='p' pval='v'/></target>"
     "</local></dialog>",
     4},
    {"ExceptKeepsItsTexts", frame::conditionsDocument,
     "<conditions><identity><many><except domain='d' id='i'/><f:a xmlns:f='urn:f'/></many></identity></conditions>", 2},
    {"SphereKeepsItsValue", frame::conditionsDocument,
     "<conditions><sphere value='v'/><f:a xmlns:f='urn:f'/><f:b xmlns:f='urn:f'/></conditions>", 1},
    {"EachBindingKeepsTwo", filter_setDocument,
     "<filter-set package='p'><ns-bindings><ns-binding prefix='p' urn='u'/><ns-binding prefix='q' urn='v'/>"
     "</ns-bindings></filter-set>",
     4},
    {"TheRestGoes", tns_debuginfoDocument,
     "<debuginfo version='1' state='full'><debugconfig aor='a'><session id='s'><start-trigger><from>f</from><debug-id>"
     "00</debug-id></start-trigger><stop-trigger><time>t</time></stop-trigger><control><interface>i</interface>"
     "<debug-id>00</debug-id></control></session></debugconfig><f:a xmlns:f='urn:f'/></debuginfo>",
     0},
};

class Release : public testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(Frame, Release, testing::ValuesIn(cases),
                         [](const auto &tested) { return std::string(tested.param.name); });

TEST_P(Release, LeavesOnlyWhatNoReleaseFunctionOwns) {
  Context ctx;
  Record record(ctx, *GetParam().document.type);
  support::setInput(ctx, GetParam().text);
  const size_t before = support::heapStats(ctx).blocks;
  ASSERT_EQ(ims::decodeDocument(ctx, GetParam().document, record.data()), 0) << frame::briefErrors(ctx);
  ASSERT_GT(support::heapStats(ctx).blocks, before + GetParam().left);
  ims::freeRecord(ctx, *GetParam().document.type, record.data());
  record.forget();
  EXPECT_EQ(support::heapStats(ctx).blocks, before + GetParam().left);
}

TEST(ReleaseRecord, LeavesMembersAloneThatAreNotPresent) {
  Context ctx;
  Record record(ctx, tns_nameaddrSchema);
  auto &address = record.as<tns_nameaddr>();
  address.value = frame::text(ctx, "v");
  address.tns_display_name = {false, "not of the heap"};
  ims::freeRecord(ctx, tns_nameaddrSchema, &address);
  EXPECT_STREQ(address.tns_display_name.value, "not of the heap");
  record.forget();
}

// A stream that refuses every line shows in the result of the last one, whatever lists and records without a line
// come behind it.
TEST(PrintRecord, ReturnsTheResultOfItsLastLine) {
  Context ctx;
  Record dialog(ctx, tns__dialogSchema);
  Record start(ctx, tns__start_triggerSchema);
  Record participant(ctx, tns_participantSchema);
  participant.as<tns_participant>().m = 8;
  std::FILE *full = std::fopen("/dev/full", "w");
  ASSERT_NE(full, nullptr);
  std::setvbuf(full, nullptr, _IONBF, 0);
  std::FILE *saved = stdout;
  stdout = full;
  const int lastMember = ims::printRecord("r", tns__dialogSchema, dialog.data());
  const int lastIsAnEmptyList = ims::printRecord("r", tns_participantSchema, participant.data());
  const int nothing = ims::printRecord("r", tns__start_triggerSchema, start.data());
  stdout = saved;
  std::fclose(full);
  EXPECT_LT(lastMember, 0);
  EXPECT_LT(lastIsAnEmptyList, 0);
  EXPECT_EQ(nothing, 0);
}

TEST(PrintRecord, CutsNamesThatGrowTooLong) {
  Context ctx;
  Record record(ctx, cp_exceptTypeSchema);
  auto &except = record.as<cp_exceptType>();
  except.m = 1;
  except.cp_domain = frame::text(ctx, "d");
  const std::string name(600, 'n');
  const std::string printed =
      support::captureStdout([&] { ims::printRecord(name.c_str(), cp_exceptTypeSchema, &except); });
  EXPECT_EQ(printed, name + " = <null>\n" + std::string(511, 'n') + " = \"d\"\n");
}

} // namespace
