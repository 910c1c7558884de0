// Copies of whole records.
#include "context.h"
#include "faults.h"
#include "records.h"
#include "tables.h"

#include <string>

using namespace imscodec;

namespace {

constexpr unsigned variants = 2; // of the alternatives of choices that are no items of lists

TEST(CppCopy, OfADocumentOutlivesItAndIsWrittenAlike) {
  records::forEachDocument([]<class T>(const char *, const char *body) {
    Context first;
    Context second;
    const support::HeapBalance balance(second.get());
    std::string written;
    auto copied = [&] {
      auto read = first.decode<T>(body);
      EXPECT_TRUE(read);
      auto made = copy(second, *read);
      written = *first.encode(*read); // which may add a declaration to what it writes
      return made;
    }();
    ASSERT_TRUE(copied) << copied.statusText();
    EXPECT_TRUE(copied.errors().empty());
    first.reset();

    auto fresh = first.decode<T>(body);
    ASSERT_TRUE(fresh);
    EXPECT_TRUE(equal(*copied, *fresh));
    EXPECT_EQ(written, *second.encode(*copied));
  });
}

TEST(CppCopy, HasAllThatATypeCanHold) {
  records::forEachDocument([]<class T>(const char *root, const char *) {
    const ims::TypeSchema &type = tables::typeOf(root);
    ASSERT_EQ(sizeof(typename T::Raw), type.size);
    for (unsigned variant = 0; variant < variants; ++variant) {
      Context second;
      const support::HeapBalance balance(second.get());
      std::string expected;
      size_t blocks = 0;
      auto copied = [&] {
        Context first;
        auto filled = first.create<T>();
        EXPECT_TRUE(tables::fill(first.get(), type, &filled.raw(), variant));
        expected = tables::show(type, &filled.raw());
        blocks = support::heapStats(first.get()).blocks;
        auto made = copy(second, filled);
        EXPECT_EQ(expected, tables::show(type, &filled.raw()));
        EXPECT_TRUE(made);
        EXPECT_TRUE(equal(*made, filled));
        return made;
      }();
      EXPECT_EQ(expected, tables::show(type, &(*copied).raw()));
      EXPECT_EQ(blocks, support::heapStats(second.get()).blocks);
    }
  });
}

TEST(CppCopy, OfAnEmptyRecordTakesNothing) {
  records::forEachDocument([]<class T>(const char *root, const char *) {
    Context context;
    auto empty = context.create<T>();
    auto copied = copy(context, empty.view());
    ASSERT_TRUE(copied);
    EXPECT_EQ(tables::show(tables::typeOf(root), &empty.raw()), tables::show(tables::typeOf(root), &(*copied).raw()));
    EXPECT_TRUE(equal(empty, *copied));
    EXPECT_EQ(0u, support::heapStats(context.get()).blocks);
  });
}

TEST(CppCopy, LeavesOutWhatIsAbsent) {
  Context context;
  auto record = context.create<iscomposing::isComposing>();
  ASSERT_TRUE(record->set_contenttype(context, "text/plain"));
  record->set_refresh(5);
  record.raw().m = 0x80; // no member's
  auto copied = copy(context, record);
  ASSERT_TRUE(copied);
  EXPECT_EQ(0u, (*copied).raw().m);
  EXPECT_EQ(nullptr, (*copied).raw().tns_contenttype.value);
  EXPECT_EQ(0u, (*copied).raw().tns_refresh);
  record.raw().m = tns__isComposing_has_contenttype;
}

TEST(CppCopy, KeepsASelectorThatNamesNothing) {
  Context context;
  auto body = context.create<imcn::ims_3gpp>();
  ASSERT_TRUE(body->choice1().choose_service_info(context, "left behind"));
  body.raw()._choice1.t = 7;
  auto copied = copy(context, body);
  ASSERT_TRUE(copied);
  EXPECT_EQ(7, (*copied).raw()._choice1.t);
  EXPECT_EQ(nullptr, (*copied).raw()._choice1.u.service_info.value);
  body.raw()._choice1.t = tIMS3GPP_1_service_info;
}

TEST(CppCopy, OfADocumentWithErrorsHasWhatCouldBeRead) {
  Context context;
  const support::HeapBalance balance(context.get());
  // Neither the required attributes nor their members are there.
  auto result = context.decode<pocsettings::poc_settings>(
      "<poc-settings xmlns='urn:oma:params:xml:ns:poc:poc-settings'><entity id='e'><isb-settings>"
      "<incoming-session-barring/></isb-settings></entity></poc-settings>");
  ASSERT_FALSE(result);
  ASSERT_TRUE(result.partial());
  auto copied = copy(context, *result.partial());
  ASSERT_TRUE(copied);
  EXPECT_EQ("e", copied->entity().front().id());
}

TEST(CppCopy, WithoutStorageFailsAndGivesBackWhatItTook) {
  records::forEachDocument([]<class T>(const char *root, const char *) {
    const ims::TypeSchema &type = tables::typeOf(root);
    Context source;
    auto filled = source.create<T>();
    ASSERT_TRUE(tables::fill(source.get(), type, &filled.raw(), 0));
    const auto body = [&](RuntimeContext *ctx) -> support::Outcome {
      records::Borrowed target(ctx);
      auto copied = copy(target.context, filled);
      if (copied) return {0, tables::show(type, &(*copied).raw())};
      EXPECT_EQ(nullptr, copied.partial());
      EXPECT_EQ(STATUS_NO_MEMORY, copied.status());
      EXPECT_EQ(1, std::ranges::distance(copied.errors()));
      return {copied.status(), {}};
    };
    EXPECT_GT(support::everyHeapLimit(body).failed, 0u);
    EXPECT_GT(support::faults(body).failed, 0u);
  });
}

TEST(CppCopy, WithoutAContextFails) {
  RuntimeOptions options;
  rtxOptionsInit(&options);
  options.allocate = [](void *, size_t) -> void * { return nullptr; };
  options.release = [](void *, void *) {};
  Context none(options);
  Context context;
  auto record = context.create<iscomposing::isComposing>();
  EXPECT_EQ(STATUS_BAD_CONTEXT, copy(none, record).status());
  EXPECT_EQ(STATUS_BAD_CONTEXT, copyTo(none, record, record).status());
}

TEST(CppCopy, FillsAnItemOfAnotherRecord) {
  Context first;
  Context second;
  const support::HeapBalance balance(second.get());
  auto read = first.decode<dialoginfo::dialog_info>(bodyOf_tns_dialog_info);
  ASSERT_TRUE(read);
  auto info = second.create<dialoginfo::dialog_info>();
  auto call = info->add_dialog(second);
  ASSERT_TRUE(call && call->set_id(second, "replaced"));
  ASSERT_TRUE(call->make_remote(second).make_identity(second).set_value(second, "sip:gone@example.net"));
  ASSERT_TRUE(copyTo(second, *call, read->dialog().front()));
  EXPECT_TRUE(equal(info->dialog().front(), read->dialog().front()));
  ASSERT_TRUE(copyTo(second, call->make_remote(second), *call->local()));
  EXPECT_TRUE(equal(*call->remote(), *read->dialog().front().local()));
  ASSERT_TRUE(copyTo(second, *call, *call));
  EXPECT_EQ("d", info->dialog().front().id());
}

TEST(CppCopy, LeavesItsTargetAsItWasWithoutStorage) {
  Context source;
  auto filled = source.create<dialoginfo::dialog>();
  ASSERT_TRUE(tables::fill(source.get(), tables::typeOf("dialog"), &filled.raw()));
  const auto body = [&](RuntimeContext *ctx) -> support::Outcome {
    records::Borrowed target(ctx);
    auto record = target.context.create<dialoginfo::dialog>();
    if (!record->set_id(target.context, "before")) return {STATUS_NO_MEMORY, {}, false};
    const Outcome outcome = copyTo(target.context, record, filled);
    EXPECT_EQ(outcome ? filled->id() : "before", record->id());
    EXPECT_EQ(outcome.status() == STATUS_OK, equal(record, filled));
    return {outcome.status(), std::string(record->id())};
  };
  EXPECT_GT(support::everyHeapLimit(body).failed, 100u);
}

} // namespace
