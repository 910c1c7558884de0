// Two vocabularies of the library have something that is called "state" under the prefix "tns". One file can use both.
#include "DebugEvent/QxXmlDebugEvent.h"
#include "DialogInfo/QxXmlDialogInfo.h"
#include "capture.h"
#include "context.h"
#include "output.h"

#include <gtest/gtest.h>
#include <type_traits>

using support::Context;

namespace {

static_assert(std::is_class_v<tns__state>, "the type of that name is the record of dialog state");
static_assert(std::is_invocable_v<decltype(QxPrint_tns__state), const char *, const tns__state *>);
static_assert(std::is_invocable_v<decltype(QxXmlE_tns_state), RuntimeContext *, const tns__state *>);
static_assert(std::is_invocable_v<decltype(QxDbPrint_tns__state), const char *, uint32_t>);
static_assert(std::is_invocable_v<decltype(QxXmlDbET_tns__state), RuntimeContext *, uint32_t, const char *,
                                  const RtxNamespace *>);

TEST(Names, RecordAndEnumerationCalledStateKeepApart) {
  Context ctx;
  tns__state record;
  ASSERT_EQ(QxInit_tns__state(ctx, &record), 0);
  record.value = {false, "confirmed"};
  EXPECT_EQ(support::captureStdout([&] { QxPrint_tns__state("s", &record); }), "s = \"confirmed\"\n");
  EXPECT_EQ(support::captureStdout([] { QxDbPrint_tns__state("s", 1); }), "s = \"partial\"\n");

  const auto written = [&](const support::Encode &encode) { return support::encoded(ctx, encode); };
  EXPECT_EQ(written([&](RuntimeContext *c) { return QxXmlET_tns__state(c, &record, "s", nullptr); }),
            "<s>confirmed</s>");
  EXPECT_EQ(written([](RuntimeContext *c) { return QxXmlDbET_tns__state(c, 1, "s", nullptr); }), "<s>partial</s>");

  // The conversions belong to the enumeration.
  EXPECT_STREQ(Qxtns__state_ToString(1), "partial");
  EXPECT_EQ(Qxtns__state_ToEnum(ctx, "full", nullptr), 0);
  EXPECT_EQ(Qxtns__state_ToEnum(ctx, "confirmed", nullptr), STATUS_ENUM_NOT_FOUND);
}

} // namespace
