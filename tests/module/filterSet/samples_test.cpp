// The sample bodies of this kind that the library comes with: read, checked, written and read again.
#include "corpus.h"
#include "filters.h"

using namespace filters;
using support::contents;
using support::Context;

namespace {

std::vector<std::filesystem::path> samples() {
  return support::filesIn(std::filesystem::path(IMSCODEC_SOURCE_DIR) / "examples/bodies", "filter-");
}

TEST(Samples, MakeTheRoundTrip) {
  ASSERT_GE(samples().size(), 5u);
  for (const std::filesystem::path &file : samples()) {
    SCOPED_TRACE(file.filename().string());
    const std::string text = contents(file);
    const auto tree = support::parseNamespacedXml(text);
    ASSERT_TRUE(tree);
    Context ctx;
    EXPECT_EQ(validate(ctx, text).errors, "");
    ASSERT_EQ(support::setInput(ctx, text), 0);
    auto record = Record<FilterSetType>::uninitialised(ctx);
    ASSERT_EQ(QxXmlD_filter_set(ctx, record), 0) << errorList(ctx);
    record.owned = true;
    const std::string written = encodeRecord(ctx, record);
    const auto again = support::parseNamespacedXml(written);
    ASSERT_TRUE(again) << written;
    EXPECT_EQ(meaning(*again), meaning(*tree));
    const Reading reading = decode(ctx, written);
    EXPECT_EQ(reading.errors, "");
    EXPECT_EQ(reading.record, dump(*record));
    EXPECT_EQ(validate(ctx, written).errors, "");
  }
}

TEST(Samples, ShowAllThatAFilterCanSay) {
  std::string all;
  for (const std::filesystem::path &file : samples())
    all += decode(contents(file)).record + "\n";
  for (const char *kind : {"(package=",
                           "bindings{",
                           " uri=",
                           " domain=",
                           " enabled=true",
                           " enabled=false",
                           " remove=true",
                           "what{",
                           "include(type=xpath",
                           "include(type=namespace",
                           "exclude(type=xpath",
                           "exclude(type=namespace",
                           "include[",
                           "trigger{",
                           "changed[",
                           "changed(from=",
                           " to=",
                           "changed(by=",
                           "added[",
                           "removed[",
                           "xmlns:",
                           "@",
                           "any[<"})
    EXPECT_NE(all.find(kind), std::string::npos) << "no sample shows " << kind << " in\n" << all;
}

} // namespace
