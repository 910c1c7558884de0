// Text that arrives in pieces, and handlers driven without a reader.
#include "DebugEvent/QxXmlDebugEventTables.h"
#include "DialogInfo/QxXmlDialogInfoTables.h"
#include "context.h"
#include "input.h"
#include "records.h"
#include "rtx.h"

#include <gtest/gtest.h>
#include <string_view>

using namespace ims;
using frame::Record;
using support::Context;

namespace {

// A handler that is told events by hand.
template <class Handler> class Told {
public:
  Told(RuntimeContext *context, const TypeSchema &type, void *record) : ctx(context) {
    if constexpr (std::is_same_v<Handler, SaxTypeHandler>) {
      EXPECT_EQ(initHandler(ctx, type, &handler, record, 0), 0);
    } else {
      EXPECT_EQ(initHandler(ctx, type, &handler, 0), 0);
    }
  }
  ~Told() {
    releaseDelegates(&handler);
    rtxMemHeapFreePtr(ctx, handler.delegateStorage);
  }
  Told(const Told &) = delete;
  Told &operator=(const Told &) = delete;

  int start(const char *name) { return handler.startElement(&handler, name, name, nullptr); }
  int text(std::string_view bytes) {
    // In a block of its own, so that a byte read too far is seen.
    support::ExactBytes exact(bytes);
    return handler.characters(&handler, exact.data(), exact.size());
  }
  int end(const char *name) { return handler.endElement(&handler, name, name); }

  RuntimeContext *ctx;
  Handler handler;
};

// ---- Hexadecimal text -----------------------------------------------------------------------------------------

struct HexCase {
  std::string_view digits;
  std::string_view printed;
  std::string_view errors;
};

const HexCase hexCases[] = {
    {"0A1bFf", "r.tns_debug_id = 0A1BFF\n", ""},
    {" \n0A1b\t ", "r.tns_debug_id = 0A1B\n", ""},
    {"0A1", "", "-44(0A1|tns__start_trigger|debug-id)"},
    {"0A 1b", "", "-101"},
    {"0A1x", "", "-101"},
};

template <class Handler> void tellInPieces(const HexCase &tested, size_t first, size_t second) {
  SCOPED_TRACE(std::string(tested.digits) + " cut at " + std::to_string(first) + " and " + std::to_string(second));
  Context ctx;
  support::HeapBalance balance(ctx);
  Record record(ctx, tns__start_triggerSchema);
  Told<Handler> told(ctx, tns__start_triggerSchema, record.data());
  told.start("start-trigger");
  told.start("debug-id");
  int status = told.text(tested.digits.substr(0, first));
  if (status == 0) status = told.text(tested.digits.substr(first, second - first));
  if (status == 0) status = told.text(tested.digits.substr(second));
  if (status == 0) {
    told.end("debug-id");
    told.end("start-trigger");
  }
  EXPECT_EQ(frame::briefErrors(ctx), tested.errors);
  const std::string_view filled = std::is_same_v<Handler, SaxTypeHandler> ? tested.printed : "";
  EXPECT_EQ(frame::printed(tns__start_triggerSchema, record.data()), filled);
}

TEST(HexText, IsTheSameForEveryCut) {
  for (const HexCase &tested : hexCases) {
    for (size_t first = 0; first <= tested.digits.size(); ++first) {
      for (size_t second = first; second <= tested.digits.size(); ++second) {
        tellInPieces<SaxTypeHandler>(tested, first, second);
        tellInPieces<VsaxTypeHandler>(tested, first, second);
      }
    }
  }
}

TEST(HexText, OfOneElementDoesNotReachTheNext) {
  Context ctx;
  Record record(ctx, tns__sessionSchema);
  support::setInput(ctx,
                    "<session id='s'><start-trigger><debug-id>0A1</debug-id></start-trigger><stop-trigger/><control>"
                    "<interface>i</interface><debug-id>B2</debug-id></control></session>");
  EXPECT_EQ(decodeDocument(ctx, tns_sessionDocument, record.data()), STATUS_INVALID_CONTENT);
  const auto &session = record.as<tns__session>();
  EXPECT_EQ(session.tns_start_trigger.m, 0u);
  EXPECT_EQ(session.tns_control.m, 2u);
  ASSERT_EQ(session.tns_control.tns_debug_id.length, 1u);
  EXPECT_EQ(session.tns_control.tns_debug_id.bytes[0], 0xB2);
}

// ---- Plain text -----------------------------------------------------------------------------------------------

TEST(PlainText, IsJoinedFromItsPieces) {
  Context ctx;
  support::HeapBalance balance(ctx);
  Record record(ctx, tns__dialogSchema);
  Told<SaxTypeHandler> told(ctx, tns__dialogSchema, record.data());
  told.start("dialog");
  told.text("between");
  told.start("state");
  told.text("con");
  told.text("");
  told.text("firmed");
  told.end("state");
  told.text("between");
  told.start("duration");
  told.text("1");
  told.text("2");
  told.end("duration");
  told.end("dialog");
  EXPECT_EQ(told.handler.level, 0);
  EXPECT_EQ(told.handler.seenRequired, 1u) << "the state was seen";
  const auto &dialog = record.as<tns__dialog>();
  EXPECT_STREQ(dialog.tns_state.value.value, "confirmed");
  EXPECT_EQ(dialog.tns_duration, 12u);
  EXPECT_EQ(frame::briefErrors(ctx), "-103(tns__dialog|id)");
}

TEST(PlainText, LeftByAnotherHandlerIsForgotten) {
  Context ctx;
  support::HeapBalance balance(ctx);
  Record record(ctx, tns__controlSchema);
  for (int i = 0; i < 2; ++i) {
    Told<SaxTypeHandler> told(ctx, tns__controlSchema, record.data());
    told.start("control");
    told.start("interface");
    told.text("left behind");
  }
  Told<SaxTypeHandler> told(ctx, tns__controlSchema, record.data());
  told.start("control");
  told.start("interface");
  told.text("i");
  told.end("interface");
  told.end("control");
  EXPECT_STREQ(record.as<tns__control>().tns_interface.value, "i");
  EXPECT_EQ(told.handler.seenRequired, 1u);
}

// ---- The handler's own record ---------------------------------------------------------------------------------

TEST(Handler, BeginsAsEveryHandlerDoes) {
  Context ctx;
  Record record(ctx, tns__dialogSchema);
  Told<SaxTypeHandler> told(ctx, tns__dialogSchema, record.data());
  const auto *common = reinterpret_cast<const RtSaxHandler *>(&told.handler);
  EXPECT_EQ(common->startElement, tns__dialogSchema.decoding.startElement);
  EXPECT_EQ(common->endElement, tns__dialogSchema.decoding.endElement);
  EXPECT_EQ(common->characters, tns__dialogSchema.decoding.characters);
  EXPECT_EQ(common->release, nullptr);
  EXPECT_NE(common->delegateStorage, nullptr);
  EXPECT_EQ(told.handler.record, record.data());
  EXPECT_EQ(told.handler.rootName, nullptr);
  EXPECT_EQ(told.handler.delegate, nullptr);
  Told<VsaxTypeHandler> checking(ctx, tns__dialogSchema, nullptr);
  EXPECT_EQ(checking.handler.startElement, tns__dialogSchema.validating.startElement);
}

} // namespace
