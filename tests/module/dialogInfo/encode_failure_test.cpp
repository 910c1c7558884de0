// What a failure of writing leaves behind, and writing without room or storage.
#include "encoding.h"
#include "faults.h"

#include <set>

using namespace dialogs;
using support::Context;

namespace {

// ---- Failures -------------------------------------------------------------------------------------------------

// The trail of a failure in the identity of a participant of the second dialog.
std::vector<int> trailOfBadIdentity(tns_participant tns__dialog::*participant, uint32_t bit) {
  Context ctx;
  CompleteRecord<tns__dialog_info> record(ctx);
  auto *dialog = static_cast<tns__dialog *>(record->tns_dialog.tail->data);
  dialog->m = bit;
  (dialog->*participant).m = tns_participant_has_identity;
  (dialog->*participant).tns_identity.value = Builder(ctx).text("\xFF");
  encodedInPart(ctx, STATUS_INVALID_UTF8, [&](RuntimeContext *c) { return QxXmlE_tns_dialog_info(c, record); });
  return trail(ctx);
}

TEST(Encode, FailuresCarryTheTrailOfTheFunctionsThatTheyPass) {
  const std::vector<int> local = trailOfBadIdentity(&tns__dialog::tns_local, tns__dialog_has_local);
  const std::vector<int> remote = trailOfBadIdentity(&tns__dialog::tns_remote, tns__dialog_has_remote);
  // The contents of nameaddr, its element, those of participant, dialog and dialog-info likewise, the document.
  ASSERT_EQ(local.size(), 8u);
  ASSERT_EQ(remote.size(), 8u);
  EXPECT_EQ(std::set<int>(local.begin(), local.end()).size(), 8u) << "each call has a line of its own";
  for (size_t i = 0; i < 8; ++i)
    EXPECT_EQ(local[i] == remote[i], i != 4) << "they part where the dialog calls for its participants";
  EXPECT_EQ(trailOfBadIdentity(&tns__dialog::tns_local, tns__dialog_has_local), local) << "lines are stable";
}

TEST(EncodeType, EachOfItsStepsHasAPlaceOfItsOwn) {
  forEachType([]<typename T>() {
    Context ctx;
    CompleteRecord<T> record(ctx);
    const size_t length = encodedElement<T>(ctx, record).size();
    std::set<int> outermost;
    for (size_t size = 0; size <= length; ++size) {
      std::vector<char> room(size + 1);
      rtxErrClear(ctx);
      EXPECT_EQ(rtxSetOutput(ctx, room.data(), size), 0);
      EXPECT_EQ(Functions<T>::encode(ctx, record, "e", nullptr), STATUS_BUFFER_OVERFLOW);
      const std::vector<int> lines = trail(ctx);
      ASSERT_GE(lines.size(), 2u);
      EXPECT_EQ(std::set<int>(lines.begin(), lines.end()).size(), lines.size());
      outermost.insert(lines.back());
    }
    // Start tag, contents if there are any, end tag.
    EXPECT_EQ(outermost.size(), shapeOf<T>().contents.empty() ? 2u : 3u);
  });
}

TEST(Encode, FailureLeavesTheContextForTheNextDocument) {
  Context ctx;
  Record<tns__dialog> bad(ctx);
  bad->m = tns__dialog_has_route_set;
  CompleteRecord<tns__dialog> good(ctx);
  for (int round = 0; round < 2; ++round) {
    encodedInPart(ctx, STATUS_CONSTRAINT_VIOLATION, [&](RuntimeContext *c) { return QxXmlE_tns_dialog(c, bad); });
    rtxErrClear(ctx);
    EXPECT_EQ(encodedDocument<tns__dialog>(ctx, good), completeDocument<tns__dialog>());
  }
}

TEST(Encode, WithoutOutputItFailsWithARecord) {
  forEachDocument([]<typename T>() {
    Context ctx;
    CompleteRecord<T> record(ctx);
    EXPECT_EQ(Document<T>::encode(ctx, record), STATUS_WRITE_FAILED);
    EXPECT_EQ(errorsWithoutPlaces(ctx), "-106");
    EXPECT_EQ(trail(ctx).size(), 1u);
  });
}

// ---- Room and storage -----------------------------------------------------------------------------------------

TEST(Encode, EveryOutputSize) {
  forEachDocument([]<typename T>() {
    support::everyOutputSize([](RuntimeContext *ctx) {
      CompleteRecord<T> record(ctx);
      return Document<T>::encode(ctx, record);
    });
  });
}

// Attributes longer than all that follows them: that must not fit in their stead.
TEST(Encode, EveryOutputSizeWithLongAttributesOfRoots) {
  support::everyOutputSize([](RuntimeContext *ctx) {
    Record<tns__dialog_info> record(ctx);
    record->tns_version = 0;
    record->tns_state = 0;
    record->tns_entity = Builder(ctx).text(std::string(300, 'e'));
    return QxXmlE_tns_dialog_info(ctx, record);
  });
  support::everyOutputSize([](RuntimeContext *ctx) {
    Record<tns__dialog> record(ctx);
    record->m = tns__dialog_has_direction;
    record->tns_direction = 0;
    record->tns_id = Builder(ctx).text(std::string(300, 'i'));
    return QxXmlE_tns_dialog(ctx, record);
  });
  support::everyOutputSize([](RuntimeContext *ctx) {
    CompleteRecord<tns__state> record(ctx);
    rtxMemHeapFreePtr(ctx, record->value.value);
    record->value.value = nullptr;
    return QxXmlE_tns_state(ctx, record);
  });
}

// A growing output moves; every part is written across such a move at one of these lengths.
TEST(Encode, GrowingOutputMovesUnderneathEveryPart) {
  for (size_t length = 0; length < 1500; ++length) {
    Context ctx;
    Builder build(ctx);
    CompleteRecord<tns__dialog> record(ctx);
    rtxMemHeapFreePtr(ctx, record->tns_id.value);
    record->tns_id = build.text(std::string(length, 'i'));
    ASSERT_EQ(encodedDocument<tns__dialog>(ctx, record),
              replaced(completeDocument<tns__dialog>(), "id=\"d1\"", "id=\"" + std::string(length, 'i') + "\""));
  }
}

template <typename T> support::Outcome outcomeOf(RuntimeContext *ctx, T *record, const Builder &build) {
  if (build.failed()) return {STATUS_NO_MEMORY, {}, false};
  const int output = rtxSetOutputDynamic(ctx);
  if (output != 0) return {output, {}, false};
  const int status = Document<T>::encode(ctx, record);
  return {status, status == 0 ? support::outputText(ctx) : std::string()};
}

template <typename T> support::Outcome encodeOutcome(RuntimeContext *ctx) {
  Record<T> record(ctx);
  Builder build(ctx);
  build.complete(*record);
  return outcomeOf<T>(ctx, record, build);
}

support::Outcome encodeLongTexts(RuntimeContext *ctx) {
  Record<tns__dialog> record(ctx);
  Builder build(ctx);
  record->m = tns__dialog_has_route_set | tns__dialog_has_direction;
  record->tns_direction = 0;
  record->tns_id = build.text(std::string(40000, 'i'));
  record->tns_state.value = build.text(std::string(90000, 's'));
  build.hop(record->tns_route_set, std::string(200000, 'h'));
  return outcomeOf<tns__dialog>(ctx, record, build);
}

TEST(Encode, EveryFailingAllocation) {
  forEachDocument([]<typename T>() { EXPECT_GT(support::faults(encodeOutcome<T>).failed, 0u); });
  EXPECT_GT(support::faults(encodeLongTexts).failed, 4u);
}

TEST(Encode, EveryHeapLimit) {
  forEachDocument([]<typename T>() { EXPECT_GT(support::everyHeapLimit(encodeOutcome<T>).failed, 0u); });
}

TEST(Encode, AllocatesNothingOnTheHeap) {
  forEachDocument([]<typename T>() {
    Context ctx;
    CompleteRecord<T> record(ctx);
    encodedDocument<T>(ctx, record);
    const RtxHeapStats before = support::heapStats(ctx);
    encodedDocument<T>(ctx, record);
    EXPECT_EQ(support::heapStats(ctx).peakUsed, before.peakUsed);
    EXPECT_EQ(support::heapStats(ctx).blocks, before.blocks);
  });
}

} // namespace
