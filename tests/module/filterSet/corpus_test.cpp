// Bodies from the field, where a folder of them is named by IMSCODEC_CORPUS. Only what holds for any body is asserted;
// the table shows the rest.
#include "corpus.h"
#include "filters.h"

using namespace filters;
using support::CorpusBody;

namespace {

TEST(Corpus, EveryBodyIsReadOrRefusedInOrder) {
  support::everyCorpusBody("simple-filter", [](RuntimeContext *ctx, const CorpusBody &body) {
    auto record = Record<FilterSetType>::uninitialised(ctx);
    const int status = QxXmlD_filter_set(ctx, record);
    record.owned = true;
    support::expectRecordsWithPlace(ctx, status);
    EXPECT_EQ(status == STATUS_PARSE_FAILED, !body.tree);
    const std::string decoded = support::orClean(errorList(ctx));
    rtxErrClear(ctx);
    EXPECT_EQ(support::setInput(ctx, body.text), 0);
    const int checked = QxXmlV_filter_set(ctx);
    support::expectRecordsWithPlace(ctx, checked);
    const std::string validated = support::orClean(errorList(ctx));
    rtxErrClear(ctx);
    if (status == 0) {
      const std::string written = encodeRecord(ctx, record);
      const auto again = support::parseNamespacedXml(written);
      EXPECT_TRUE(again) << written;
      if (again && body.tree) {
        EXPECT_EQ(meaning(*again), meaning(*body.tree));
      }
      EXPECT_EQ(decode(ctx, written).record, dump(*record));
    }
    return "decoded " + decoded + ", validated " + validated + "\n" + printed<FilterSetType>("  set", record);
  });
}

} // namespace
