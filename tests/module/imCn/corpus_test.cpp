// Bodies from the field, where a folder of them is named by IMSCODEC_CORPUS. Only what holds for any body is asserted;
// the table shows the rest.
#include "body.h"
#include "corpus.h"

using namespace body;
using support::CorpusBody;

namespace {

TEST(Corpus, EveryBodyIsReadOrRefusedInOrder) {
  support::everyCorpusBody("ims-3gpp", [](RuntimeContext *ctx, const CorpusBody &body) {
    // A document type is refused, well-formed or not.
    const bool readable = body.tree && body.text.find("<!DOCTYPE") == std::string::npos;
    auto record = Record<tIMS3GPP>::uninitialised(ctx);
    const int status = QxXmlD_ims_3gpp(ctx, record);
    record.owned = true;
    support::expectRecordsWithPlace(ctx, status);
    EXPECT_EQ(status == STATUS_PARSE_FAILED, !readable);
    const std::string decoded = support::orClean(errorsOf(ctx));
    rtxErrClear(ctx);
    const int checked = QxXmlV_ims_3gpp(ctx);
    support::expectRecordsWithPlace(ctx, checked);
    EXPECT_EQ(checked == STATUS_PARSE_FAILED, !readable);
    const std::string row = "decoded " + decoded + ", validated " + support::orClean(errorsOf(ctx)) + "\n" +
                            support::printed("  r", *record);
    if (status != 0) return row;

    rtxErrClear(ctx);
    EXPECT_EQ(support::setInput(ctx, encodeRecord(ctx, record)), 0);
    auto again = Record<tIMS3GPP>::uninitialised(ctx);
    EXPECT_EQ(QxXmlD_ims_3gpp(ctx, again), 0) << support::errors(ctx);
    again.owned = true;
    EXPECT_EQ(support::printed("  r", *again), support::printed("  r", *record));
    return row;
  });
}

} // namespace
