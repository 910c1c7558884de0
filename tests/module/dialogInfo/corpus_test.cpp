// Bodies from the field, where a folder of them is named by IMSCODEC_CORPUS. Only what holds for any body is asserted;
// the table shows the rest.
#include "corpus.h"
#include "output.h"
#include "reading.h"

using namespace reading;
using support::Context;
using support::CorpusBody;

namespace {

// What is decoded without error is written, and read again as the same record.
void expectSameAgain(RuntimeContext *ctx, const Record &record, const void *data) {
  const std::string text = support::encoded(ctx, [data](RuntimeContext *c) { return info.encode(c, data); });
  Context other;
  const Reading again = decode(other, info, text);
  EXPECT_EQ(again.status, 0) << again.errors << " in " << text;
  EXPECT_EQ(again.record, record.text());
  EXPECT_TRUE(support::parseXml(text));
}

TEST(Corpus, EveryBodyIsReadOrRefusedInOrder) {
  support::everyCorpusBody("dialog-info", [](RuntimeContext *ctx, const CorpusBody &body) {
    Record record(ctx, types::info);
    int status = record.decode(info);
    support::expectRecordsWithPlace(ctx, status);
    EXPECT_EQ(status == STATUS_PARSE_FAILED, !body.tree);
    std::string row = "decoded " + support::orClean(support::errors(ctx)) + "\n  " + record.text() + "\n";
    if (status == 0) expectSameAgain(ctx, record, record.data());
    rtxErrClear(ctx);
    EXPECT_EQ(support::setInput(ctx, body.text), 0);
    status = info.validate(ctx);
    support::expectRecordsWithPlace(ctx, status);
    EXPECT_EQ(status == STATUS_PARSE_FAILED, !body.tree);
    return row + "  validated " + support::orClean(recorded(ctx));
  });
}

} // namespace
