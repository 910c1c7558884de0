// Documents cut off and storage that runs out, at every point.
#include "DebugEvent/QxXmlDebugEventTables.h"
#include "DialogInfo/QxXmlDialogInfoTables.h"
#include "FilterSet/QxXmlFilterSetTables.h"
#include "ImCn/QxXmlImCnTables.h"
#include "PocSettings/QxXmlPocSettingsTables.h"
#include "conditions.h"
#include "documents.h"
#include "faults.h"
#include "input.h"
#include "records.h"
#include "rtx.h"

#include <gtest/gtest.h>

using namespace ims;
using frame::Record;
using support::Context;
using support::Outcome;

namespace {

// A document with everything that its type can hold.
struct Sample {
  const char *name;
  const DocumentSchema &document;
  const char *text;
};

const Sample samples[] = {
    {"DialogInfo", tns_dialog_infoDocument,
     "<dialog-info xmlns='urn:ietf:params:xml:ns:dialog-info' version='1' state='full' entity='e'><dialog id='d' "
     "call-id='c' direction='recipient'><state event='error' code='404' xmlns:q='urn:q'>gone</state><duration>5"
     "</duration><replaces call-id='c' local-tag='l' remote-tag='r'/><referred-by display-name='n'>u</referred-by>"
     "<route-set><hop>h</hop><hop/></route-set><local><identity>i</identity><target uri='u'><param pname='p' pval='v'/>"
     "</target><session-description type='t'>s</session-description><cseq>1</cseq><f:a xmlns:f='urn:f'>t<f:b/></f:a>"
     "</local></dialog><g:a xmlns:g='urn:g'/></dialog-info>"},
    {"State", tns_stateDocument, "<p:state xmlns:p='urn:ietf:params:xml:ns:dialog-info' code='200'>ok</p:state>"},
    {"RuleSet", cp_rulesetDocument,
     "<ruleset xmlns='urn:ietf:params:xml:ns:common-policy'><rule id='1'><conditions><identity><one id='o'><f:a "
     "xmlns:f='urn:f'/></one><many domain='d'><except id='x'/><f:b xmlns:f='urn:f'/></many><f:c xmlns:f='urn:f'>t"
     "</f:c></identity><f:d xmlns:f='urn:f'/><f:e xmlns:f='urn:f'/><sphere value='v'/><validity><from>"
     "2024-01-01T00:00:00Z</from><until>2024-01-02T00:00:00Z</until></validity></conditions><actions><f:g "
     "xmlns:f='urn:f'>t</f:g><h/></actions><transformations/></rule><rule id='2'/></ruleset>"},
    {"FilterSet", filter_setDocument,
     "<filter-set xmlns='urn:ietf:params:xml:ns:simple-filter' package='p' foo='1'><ns-bindings><ns-binding prefix='p' "
     "urn='u'/></ns-bindings><filter id='f' uri='u' enabled='false' foo='2'><what><include type='xpath' foo='3' "
     "xmlns:q='urn:q'>i</include><exclude>e</exclude></what><trigger><changed from='a' to='b' "
     "by='2'>c</changed><added>d"
     "</added><removed>e</removed><f:a xmlns:f='urn:f'/></trigger></filter></filter-set>"},
    {"PocSettings", poc_settingsDocument,
     "<poc-settings xmlns='urn:oma:params:xml:ns:poc:poc-settings' foo='1'><entity id='e' bar='2'><isb-settings>"
     "<incoming-session-barring active='true'/><f:a xmlns:f='urn:f'/></isb-settings><am-settings><answer-mode>manual"
     "</answer-mode></am-settings></entity></poc-settings>"},
    {"AlternativeService", ims_3gppDocument,
     "<ims-3gpp version='1' foo='1'><alternative-service bar='2'><type>t</type><reason>r</reason><a/>"
     "</alternative-service><b/></ims-3gpp>"},
    {"ServiceInformation", ims_3gppDocument, "<ims-3gpp version='1'><service-info>i</service-info></ims-3gpp>"},
    {"DebugInfo", tns_debuginfoDocument,
     "<d:debuginfo xmlns:d='urn:ietf:params:xml:ns:debuginfo' d:version='1' d:state='full'><d:debugconfig aor='a'>"
     "<d:session id='s'><d:start-trigger><d:from>f</d:from><d:time> t </d:time><d:debug-id>0A0B</d:debug-id>"
     "</d:start-trigger><d:stop-trigger><d:time-period>p</d:time-period><d:reason>session_end</d:reason>"
     "</d:stop-trigger><d:control><d:interface>i</d:interface><d:depth>minimum</d:depth><d:debug-id>FF</d:debug-id>"
     "</d:control></d:session></d:debugconfig><f:a xmlns:f='urn:f'/></d:debuginfo>"},
};

Outcome decodeAndPrint(RuntimeContext *ctx, const Sample &sample) {
  const TypeSchema &type = *sample.document.type;
  Outcome outcome;
  outcome.status = support::setInput(ctx, sample.text);
  if (outcome.status != 0) return outcome;
  Record record(ctx, type);
  outcome.status = decodeDocument(ctx, sample.document, record.data());
  outcome.result = frame::printed(type, record.data());
  return outcome;
}

Outcome validateIt(RuntimeContext *ctx, const Sample &sample) {
  Outcome outcome;
  outcome.status = support::setInput(ctx, sample.text);
  if (outcome.status == 0) outcome.status = validateDocument(ctx, sample.document);
  return outcome;
}

class Faults : public testing::TestWithParam<Sample> {};

INSTANTIATE_TEST_SUITE_P(Frame, Faults, testing::ValuesIn(samples),
                         [](const auto &tested) { return std::string(tested.param.name); });

TEST_P(Faults, SamplesAreWithoutError) {
  Context ctx;
  EXPECT_EQ(decodeAndPrint(ctx, GetParam()).status, 0) << frame::briefErrors(ctx);
  EXPECT_EQ(validateIt(ctx, GetParam()).status, 0) << frame::briefErrors(ctx);
}

TEST_P(Faults, DecodingSurvivesThemAll) {
  auto report = support::faults([](RuntimeContext *ctx) { return decodeAndPrint(ctx, GetParam()); });
  EXPECT_GT(report.failed, 10u);
}

TEST_P(Faults, ValidatingSurvivesThemAll) {
  auto report = support::faults([](RuntimeContext *ctx) { return validateIt(ctx, GetParam()); });
  EXPECT_GT(report.failed, 10u);
}

TEST_P(Faults, EncodingSurvivesThemAll) {
  auto report = support::faults([](RuntimeContext *ctx) {
    Outcome outcome;
    outcome.status = support::setInput(ctx, GetParam().text);
    if (outcome.status != 0) return outcome;
    Record record(ctx, *GetParam().document.type);
    outcome.status = decodeDocument(ctx, GetParam().document, record.data());
    if (outcome.status != 0) return outcome;
    outcome.status = rtxSetOutputDynamic(ctx);
    outcome.recorded = outcome.status == 0; // it is the host's call that failed
    if (outcome.status == 0) outcome.status = encodeDocument(ctx, GetParam().document, record.data());
    size_t length = 0;
    const char *output = rtxGetOutput(ctx, &length);
    if (outcome.status == 0) outcome.result = std::string(output, length);
    return outcome;
  });
  EXPECT_GT(report.failed, 10u);
}

TEST_P(Faults, DecodingSurvivesEveryHeapLimit) {
  auto report = support::everyHeapLimit([](RuntimeContext *ctx) { return decodeAndPrint(ctx, GetParam()); });
  EXPECT_GT(report.failed, 0u);
}

TEST_P(Faults, EveryBeginningOfADocumentIsGivenBack) {
  const DocumentSchema &document = GetParam().document;
  support::everyPrefix(GetParam().text, [&](RuntimeContext *ctx) {
    Record record(ctx, *document.type);
    return decodeDocument(ctx, document, record.data());
  });
  support::everyPrefix(GetParam().text, [&](RuntimeContext *ctx) { return validateDocument(ctx, document); });
}

} // namespace
