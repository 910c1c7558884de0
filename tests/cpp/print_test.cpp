// Records printed to a host's own function.
#include "Engines.h"
#include "capture.h"
#include "context.h"
#include "faultPlan.h"
#include "records.h"
#include "tables.h"

#include <string>
#include <vector>

using namespace imscodec;

namespace {

using Lines = std::vector<std::string>;

Lines linesOf(const std::string &text) {
  Lines all;
  for (size_t start = 0; start < text.size();) {
    const size_t end = text.find('\n', start) + 1;
    all.push_back(text.substr(start, end - start));
    start = end;
  }
  return all;
}

// The lines of a record, a call each, when nothing is to go to standard output.
template <class R> Lines printed(const R &record, const char *name = "record") {
  Lines calls;
  EXPECT_EQ("", support::captureStdout([&] {
              EXPECT_TRUE(print(record, name, [&calls](std::string_view line) { calls.emplace_back(line); }));
            }));
  return calls;
}

// The lines that the C interface writes to standard output.
template <class R> Lines printedByC(const R &record, const char *root) {
  return linesOf(support::captureStdout(
      [&] { EXPECT_EQ(0, ims::printRecord("record", tables::typeOf(root), &viewOf(record).raw())); }));
}

bool isSelector(const std::string &line) { return line.find(".t = ") != std::string::npos; }

TEST(CppPrint, GivesTheLinesOfTheCInterface) {
  records::forEachDocument([]<class T>(const char *root, const char *body) {
    Context context;
    auto read = context.decode<T>(body);
    ASSERT_TRUE(read);
    EXPECT_EQ(printedByC(*read, root), printed(*read));
    EXPECT_FALSE(printed(*read).empty());
    for (unsigned variant = 0; variant < 2; ++variant) {
      auto record = context.create<T>();
      ASSERT_TRUE(tables::fill(context.get(), tables::typeOf(root), &record.raw(), variant));
      EXPECT_EQ(printedByC(record, root), printed(record.view()));
    }
    auto empty = context.create<T>();
    EXPECT_EQ(printedByC(empty, root), printed(empty));
  });
}

TEST(CppPrint, OfTheCInterfaceGoesToASinkAsAWhole) {
  Context context;
  auto read = context.decode<dialoginfo::dialog>(bodyOf_tns_dialog);
  ASSERT_TRUE(read);
  ASSERT_TRUE(read->set_call_id(context, std::string(2000, 'c')));
  Lines taken;
  RtxPrintSink sink{[](void *user, const char *line, size_t length) {
                      static_cast<Lines *>(user)->emplace_back(line, length);
                      return 0;
                    },
                    &taken, 0};
  EXPECT_EQ("", support::captureStdout([&] {
              EXPECT_EQ(nullptr, rtxSetPrintSink(&sink));
              EXPECT_EQ(0, QxPrint_tns__dialog("record", &(*read).raw()));
              EXPECT_EQ(&sink, rtxSetPrintSink(nullptr));
            }));
  EXPECT_EQ(printedByC(*read, "dialog"), taken);
  EXPECT_GT(taken.size(), 20u);
}

// Through the C interface a sink has all lines but those of selectors.
TEST(CppPrint, IsNeededForTheSelectorsOfChoices) {
  records::forEachDocument([]<class T>(const char *root, const char *body) {
    Context context;
    auto read = context.decode<T>(body);
    ASSERT_TRUE(read);
    Lines selectors;
    Lines others;
    for (const std::string &line : printedByC(*read, root))
      (isSelector(line) ? selectors : others).push_back(line);

    std::string taken;
    RtxPrintSink sink{[](void *user, const char *line, size_t length) {
                        static_cast<std::string *>(user)->append(line, length);
                        return 0;
                      },
                      &taken, 0};
    rtxSetPrintSink(&sink);
    const Lines rest = printedByC(*read, root);
    EXPECT_EQ(&sink, rtxSetPrintSink(nullptr));
    EXPECT_EQ(others, linesOf(taken));
    EXPECT_EQ(selectors, rest);
  });
}

TEST(CppPrint, CutsLongNamesAsTheCInterfaceDoes) {
  Context context;
  auto read = context.decode<ruleset::ruleset>(bodyOf_cp_ruleset);
  ASSERT_TRUE(read);
  for (size_t length = 440; length < 512; ++length) {
    const std::string name(length, 'n');
    const Lines byC = linesOf(support::captureStdout([&] { QxPrint_cp__ruleset(name.c_str(), &(*read).raw()); }));
    const Lines ours = printed(*read, name.c_str());
    ASSERT_EQ(byC.size(), ours.size());
    for (size_t i = 0; i < ours.size(); ++i) {
      if (!isSelector(byC[i])) {
        EXPECT_EQ(byC[i], ours[i]);
      }
    }
  }
}

TEST(CppPrint, TellsOfLinesThatWereRefused) {
  Context context;
  auto read = context.decode<dialoginfo::dialog>(bodyOf_tns_dialog);
  ASSERT_TRUE(read);
  const size_t all = printed(*read).size();
  for (size_t bad = 0; bad < all; ++bad) {
    size_t calls = 0;
    EXPECT_FALSE(print(*read, "d", [&](std::string_view) { return calls++ != bad; })) << bad;
    EXPECT_EQ(all, calls);
  }
  EXPECT_TRUE(print(*read, "d", [](std::string_view) { return true; }));
  EXPECT_TRUE(print(*read, "d", [](std::string_view) {}));
}

TEST(CppPrint, TellsOfLongLinesWithoutStorage) {
  Context context;
  auto record = context.create<iscomposing::isComposing>();
  const std::string text(5000, 'x');
  ASSERT_TRUE(record->set_state(context, text) && record->set_contenttype(context, "text/plain"));
  const size_t blocks = support::faultPlan().systemBlocks;
  Lines taken;
  taken.reserve(8);
  bool complete = true;
  support::faultPlan().arm(1, false);
  const bool first = print(record, "r", [&](std::string_view line) {
    support::faultPlan().disarm();
    taken.emplace_back(line);
  });
  EXPECT_FALSE(first);
  EXPECT_EQ(Lines{"r.tns_contenttype = \"text/plain\"\n"}, taken);
  complete = print(record, "r", [&](std::string_view line) { taken.emplace_back(line); });
  EXPECT_TRUE(complete);
  ASSERT_EQ(3u, taken.size());
  EXPECT_EQ("r.tns_state = \"" + text + "\"\n", taken[1]);
  taken = {};
  EXPECT_EQ(blocks, support::faultPlan().systemBlocks);
}

TEST(CppPrint, PutsBackWhatWasBefore) {
  Context context;
  auto record = context.create<iscomposing::isComposing>();
  size_t outer = 0;
  size_t inner = 0;
  EXPECT_TRUE(print(record, "outer", [&](std::string_view) {
    ++outer;
    EXPECT_TRUE(print(record, "inner", [&](std::string_view) { ++inner; }));
  }));
  EXPECT_EQ(outer, 1u);
  EXPECT_EQ(inner, 1u);

  RtxPrintSink earlier{};
  rtxSetPrintSink(&earlier);
  EXPECT_TRUE(print(record, "r", [](std::string_view) {}));
  EXPECT_EQ(&earlier, rtxSetPrintSink(nullptr));
  EXPECT_EQ(0u, earlier.refused);
}

} // namespace
