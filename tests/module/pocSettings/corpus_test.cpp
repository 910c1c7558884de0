// Bodies from the field, where a folder of them is named by IMSCODEC_CORPUS. Only what holds for any body is asserted;
// the table shows the rest.
#include "corpus.h"
#include "settings.h"

using namespace settings;
using support::CorpusBody;

namespace {

TEST(Corpus, EveryBodyIsReadOrRefusedInOrder) {
  support::everyCorpusBody("poc-settings", [](RuntimeContext *ctx, const CorpusBody &body) {
    const bool readable = body.tree.has_value();
    auto record = Record<poc_settingsType>::uninitialised(ctx);
    const int status = QxXmlD_poc_settings(ctx, record);
    record.owned = true;
    support::expectRecordsWithPlace(ctx, status);
    EXPECT_EQ(status == STATUS_PARSE_FAILED, !readable);
    const std::string decoded = support::orClean(errorsOf(ctx));
    rtxErrClear(ctx);
    const int checked = QxXmlV_poc_settings(ctx);
    support::expectRecordsWithPlace(ctx, checked);
    EXPECT_EQ(checked == STATUS_PARSE_FAILED, !readable);
    const std::string row = "decoded " + decoded + ", validated " + support::orClean(errorsOf(ctx)) + "\n" +
                            support::printed("  r", *record);
    if (status != 0) return row;

    rtxErrClear(ctx);
    EXPECT_EQ(support::setInput(ctx, encodeRecord(ctx, record)), 0);
    auto again = Record<poc_settingsType>::uninitialised(ctx);
    EXPECT_EQ(QxXmlD_poc_settings(ctx, again), 0) << support::errors(ctx);
    again.owned = true;
    EXPECT_EQ(support::printed("  r", *again), support::printed("  r", *record));
    return row;
  });
}

} // namespace
