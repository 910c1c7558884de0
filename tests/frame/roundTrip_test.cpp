// Every type with random values through every engine.
#include "Catalogue.h"
#include "DialogInfo/QxXmlDialogInfoTables.h"
#include "context.h"
#include "input.h"
#include "output.h"
#include "records.h"
#include "rtx.h"
#include "sites.h"

#include <cstring>
#include <gtest/gtest.h>

using namespace ims;
using frame::Record;
using support::Context;

namespace {

class EveryType : public testing::TestWithParam<const TypeSchema *> {
protected:
  const TypeSchema &type = *GetParam();
  const DocumentSchema document = frame::documentOf(type);
};

std::vector<const TypeSchema *> typesWithElements() {
  std::vector<const TypeSchema *> types;
  const ims::DocumentRange documents = ims::allDocuments();
  for (const TypeSchema *type : frame::reachable({documents.begin(), documents.end()}).types)
    if (type->content != Content::choice) types.push_back(type);
  return types;
}

INSTANTIATE_TEST_SUITE_P(Library, EveryType, testing::ValuesIn(typesWithElements()),
                         [](const auto &tested) { return std::string(tested.param->name); });

TEST_P(EveryType, RandomRecordsComeBackFromTheirDocuments) {
  Context ctx;
  for (uint64_t seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    support::HeapBalance balance(ctx);
    support::Random random(seed);
    Record written(ctx, type);
    frame::fillRandomly(ctx, type, written.data(), random);
    const std::string text = frame::encode(ctx, document, written.data());
    SCOPED_TRACE(text);

    Record read(ctx, type);
    support::setInput(ctx, text);
    ASSERT_EQ(decodeDocument(ctx, document, read.data()), 0) << frame::briefErrors(ctx);
    ASSERT_EQ(frame::printed(type, read.data()), frame::printed(type, written.data()));
    ASSERT_EQ(validateDocument(ctx, document), 0) << frame::briefErrors(ctx);
    ASSERT_EQ(frame::encode(ctx, document, read.data()), text);
  }
}

TEST_P(EveryType, OutputFitsExactlyWhereItFits) {
  Context ctx;
  support::Random random(7);
  Record record(ctx, type);
  frame::fillRandomly(ctx, type, record.data(), random);
  // A root that keeps its declaration has it from now on: the encoding below is on another context.
  frame::encode(ctx, document, record.data());
  support::everyOutputSize([&](RuntimeContext *output) { return encodeDocument(output, document, record.data()); });
}

TEST_P(EveryType, AFreshRecordIsEmptyWhateverItsStorageHeld) {
  Context ctx;
  Record record(ctx, type);
  for (int value : {0x00, 0xA5}) {
    std::memset(record.data(), value, type.size);
    // A boolean may hold nothing but 0 and 1.
    for (uint8_t i = 0; i < type.fieldCount; ++i)
      if (type.fields[i].kind == Kind::boolean) static_cast<char *>(record.data())[type.fields[i].offset] = 0;
    ASSERT_EQ(initRecord(ctx, type, record.data()), 0);
    EXPECT_EQ(freeRecord(ctx, type, record.data()), 0);
  }
  std::memset(record.data(), 0, type.size);
  record.initialise();
}

TEST_P(EveryType, InitLeavesTheRecordAloneWithoutAContext) {
  Context ctx;
  Record record(ctx, type);
  std::string before(static_cast<const char *>(record.data()), type.size);
  EXPECT_EQ(initRecord(nullptr, type, record.data()), STATUS_BAD_CONTEXT);
  EXPECT_EQ(std::memcmp(record.data(), before.data(), type.size), 0);
}

TEST(RoundTrip, CharacterDataSectionsAreReadAsText) {
  Context ctx;
  Record record(ctx, tns_sessdSchema);
  auto &sessd = record.as<tns_sessd>();
  sessd.value = frame::text(ctx, "a<b]]>c");
  sessd.value.cdata = true;
  sessd.tns_type = frame::text(ctx, "x/y");
  const DocumentSchema document = frame::documentOf(tns_sessdSchema);
  const std::string text = frame::encode(ctx, document, record.data());
  EXPECT_NE(text.find("<![CDATA["), std::string::npos) << text;
  Record read(ctx, tns_sessdSchema);
  support::setInput(ctx, text);
  ASSERT_EQ(decodeDocument(ctx, document, read.data()), 0);
  EXPECT_STREQ(read.as<tns_sessd>().value.value, "a<b]]>c");
  EXPECT_FALSE(read.as<tns_sessd>().value.cdata);
}

} // namespace
