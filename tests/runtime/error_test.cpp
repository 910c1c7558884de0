// The error list from the inside, and what its records say to people.

#include "error.h"
#include "heap.h"
#include "internals.h"
#include "rtx.h"
#include "systemStorage.h"

#include <memory>
#include <string>
#include <vector>

namespace runtimeTest {
namespace {

// A list with a heap of its own.
class Errors {
public:
  explicit Errors(SystemStorage &system, uint32_t kept = 100)
      : heap(rt::SystemAllocator(system.options()), SIZE_MAX), list(kept) {}
  ~Errors() {
    list.destroy(heap);
    heap.destroy();
  }

  void text(const std::string &bytes) { list.addText(heap, bytes.data(), bytes.size()); }
  void start(int status, int line = 1, const rt::Place &place = {}, const std::string &path = {}) {
    list.start(heap, status, {"source", line}, place, path.c_str());
  }

  rt::Heap heap;
  rt::ErrorList list;
};

std::string paramTexts(const RtxError &error) {
  std::string texts;
  for (uint32_t i = 0; i < error.paramCount; ++i) {
    const RtxErrorParam &param = error.params[i];
    if (i != 0) texts += '|';
    switch (param.kind) {
    case RTX_PARAM_TEXT: texts.append(param.text, param.length); break;
    case RTX_PARAM_INT: texts += std::to_string(param.intValue); break;
    case RTX_PARAM_UINT: texts += std::to_string(param.uintValue); break;
    }
  }
  return texts;
}

TEST(ErrorListStorage, IsNotTouchedBeforeThereIsAParameterOrAPath) {
  SystemStorage system;
  Errors errors(system);
  EXPECT_EQ(errors.list.first(), 0);
  EXPECT_EQ(errors.list.at(0), nullptr);
  errors.list.addInt(5);
  errors.start(-1);
  errors.list.addSite({"outer", 2});
  EXPECT_EQ(system.calls, 0u);
  EXPECT_EQ(paramTexts(*errors.list.at(0)), "5");
  errors.list.clear();
  EXPECT_EQ(system.calls, 0u);
}

// Records errors of all shapes, more than are kept.
void recordMany(Errors &errors) {
  for (int i = 1; i <= 30; ++i) {
    errors.text(std::string(static_cast<size_t>(i * 37 % 1200), 'x'));
    errors.list.addInt(-i);
    errors.text("end");
    errors.start(-i, i, {1, 2, 3, false}, std::string(static_cast<size_t>(i * 11), '/'));
    for (int site = 0; site < i; ++site)
      errors.list.addSite({"outer", site});
  }
}

TEST(ErrorListStorage, IsUsedAgainAfterClear) {
  SystemStorage system;
  Errors errors(system, 20);
  recordMany(errors);
  const size_t warm = system.calls;
  for (int i = 0; i < 10; ++i) {
    errors.list.clear();
    EXPECT_EQ(errors.list.at(0), nullptr);
    recordMany(errors);
  }
  EXPECT_EQ(system.calls, warm);
}

TEST(ErrorListStorage, IsBoundedHoweverManyErrorsComeByTheNumberKept) {
  SystemStorage system;
  Errors errors(system, 3);
  for (int i = 0; i < 10000; ++i) {
    for (int param = 0; param < 12; ++param)
      errors.text(std::string(5000, 'x'));
    errors.start(-16, i, {1, 2, 3, false}, std::string(1000, '/'));
  }
  EXPECT_EQ(errors.list.count(), 10000u);
  EXPECT_LE(system.bytes, (3 + 2) * 20000u);
}

TEST(ErrorListStorage, DoesNotGrowWithTheNumberKeptUntilItIsNeeded) {
  SystemStorage system;
  Errors errors(system, UINT32_MAX);
  for (int i = 0; i < 1000; ++i)
    errors.start(-16, i);
  for (uint32_t i = 0; i < 1000; ++i)
    ASSERT_EQ(errors.list.at(i)->sites[0].line, static_cast<int>(i));
  EXPECT_EQ(errors.list.at(1000), nullptr);
}

TEST(ErrorListStorage, ThatIsRefusedCostsRecordsButNeverTheirStatus) {
  for (size_t i = 1;; ++i) {
    ASSERT_LT(i, 1000u);
    bool refused = false;
    for (const bool allAfter : {false, true}) {
      SystemStorage system;
      Errors errors(system, 20);
      system.failFrom(i, allAfter);
      recordMany(errors);
      refused = refused || system.refused != 0;
      EXPECT_EQ(errors.list.first(), -1);
      EXPECT_EQ(errors.list.last(), -30);
      EXPECT_EQ(errors.list.count(), 30u);
      uint32_t readable = 0;
      while (const RtxError *error = errors.list.at(readable)) {
        const int number = -error->status;
        EXPECT_EQ(error->sites[0].line, number);
        EXPECT_EQ(error->siteTotal, static_cast<uint32_t>(number + 1));
        ASSERT_EQ(error->paramCount, 3u);
        EXPECT_EQ(error->params[1].intValue, -number); // where it was, whatever became of the texts
        for (const uint32_t text : {0u, 2u}) {
          EXPECT_EQ(std::string(error->params[text].text).size(), error->params[text].length);
        }
        ++readable;
      }
      ASSERT_GE(readable, 1u);
      EXPECT_EQ(errors.list.at(readable - 1)->status, -30);
      if (system.refused == 0) {
        EXPECT_EQ(readable, 21u);
      }
    }
    if (!refused) break;
  }
}

TEST(ErrorListRecords, KeepTheFirstOnesAndTheNewest) {
  for (const uint32_t kept : {0u, 1u, 2u, 9u}) {
    SystemStorage system;
    Errors errors(system, kept);
    for (int line = 1; line <= 25; ++line) {
      errors.text("text " + std::to_string(line));
      errors.start(-line, line, {static_cast<uint32_t>(line), 7, 9, line % 2 == 0}, "/a/b" + std::to_string(line));
      uint32_t index = 0;
      for (; const RtxError *error = errors.list.at(index); ++index) {
        const int expected = index < kept ? static_cast<int>(index) + 1 : line;
        EXPECT_EQ(error->status, -expected);
        EXPECT_EQ(error->line, static_cast<uint32_t>(expected));
        EXPECT_EQ(error->column, 7u);
        EXPECT_EQ(error->offset, 9u);
        EXPECT_EQ(error->transcoded, expected % 2 == 0);
        EXPECT_EQ(error->elementPath, "/a/b" + std::to_string(expected));
        EXPECT_EQ(paramTexts(*error), "text " + std::to_string(expected));
      }
      EXPECT_EQ(index, std::min(static_cast<uint32_t>(line), kept + 1));
    }
    EXPECT_EQ(errors.list.first(), -1);
    EXPECT_EQ(errors.list.last(), -25);
  }
}

TEST(ErrorListRecords, KeepSixteenSitesWhenTheyAreNoLongerTheNewest) {
  SystemStorage system;
  Errors errors(system);
  errors.start(-1, 0);
  for (int line = 1; line < 20; ++line)
    errors.list.addSite({"outer", line});
  errors.start(-2, 99);
  const RtxError &first = *errors.list.at(0);
  EXPECT_EQ(first.siteTotal, 20u);
  ASSERT_EQ(first.siteCount, 16u);
  for (int line = 0; line < 16; ++line)
    EXPECT_EQ(first.sites[line].line, line);
  EXPECT_EQ(errors.list.at(1)->siteCount, 1u);
}

TEST(ErrorListParameters, BeyondTheEighthAreDropped) {
  SystemStorage system;
  Errors errors(system);
  for (int32_t i = 0; i < 20; ++i) {
    if (i % 2 == 0)
      errors.list.addInt(i);
    else
      errors.text("t" + std::to_string(i));
  }
  errors.start(-1);
  EXPECT_EQ(paramTexts(*errors.list.at(0)), "0|t1|2|t3|4|t5|6|t7");
}

TEST(ErrorListParameters, MayHoldAnyBytesAndBeDropped) {
  SystemStorage system;
  Errors errors(system);
  errors.text("dropped");
  errors.list.dropParams();
  const std::string bytes("\0a\0", 3);
  errors.text(bytes);
  errors.text("");
  errors.list.addUInt(7);
  errors.start(-1);
  errors.start(-2);
  EXPECT_EQ(paramTexts(*errors.list.at(0)), bytes + "||7");
  EXPECT_EQ(errors.list.at(1)->paramCount, 0u);
}

// ---- Messages ------------------------------------------------------------------------------------------------

struct ContextDeleter {
  void operator()(RuntimeContext *ctx) const { rtxContextFree(ctx); }
};
using OwnedContext = std::unique_ptr<RuntimeContext, ContextDeleter>;

template <class Format> std::string formatted(Format format, RuntimeContext *ctx, uint32_t index) {
  std::string text(format(ctx, index, nullptr, 0), '#');
  EXPECT_EQ(format(ctx, index, text.data(), text.size() + 1), text.size());
  return text;
}

struct MessageRow {
  int status;
  std::vector<const char *> params; // texts that are numbers are added as such
  const char *message;
};

const MessageRow messageRows[] = {
    {STATUS_BUFFER_OVERFLOW, {}, "output buffer is full"},
    {STATUS_ROOT_MISMATCH, {"state", "bogus"}, "wrong element name: expected <state>, found <bogus>"},
    {STATUS_ENUM_NOT_FOUND, {"purple"}, "not a value of the enumeration: \"purple\""},
    {STATUS_INVALID_CHOICE, {"7"}, "selector names no alternative: 7"},
    {STATUS_NO_MEMORY, {}, "out of memory"},
    {STATUS_CONSTRAINT_VIOLATION, {"refresh", "0"}, "value breaks a constraint of the schema: refresh = 0"},
    {STATUS_READER_FAILED, {}, "no document to read"},
    {STATUS_UNKNOWN_ATTRIBUTE, {"Dialog", "colour"}, "unknown attribute \"colour\" in Dialog"},
    {STATUS_UNKNOWN_ATTRIBUTE, {"", "colour"}, "unknown attribute \"colour\""},
    {STATUS_UNEXPECTED_ELEMENT, {"bogus"}, "unexpected element <bogus>"},
    {STATUS_UNEXPECTED_ELEMENT, {}, "unexpected element"},
    {STATUS_INVALID_CONTENT, {"abc", "Dialog", "duration"}, "invalid content \"abc\" of <duration> in Dialog"},
    {STATUS_INVALID_CONTENT, {"", "", "duration"}, "invalid content \"\" of <duration>"},
    {STATUS_INVALID_CONTENT, {"abc"}, "invalid content: abc"},
    {STATUS_INVALID_ATTRIBUTE, {"Dialog", "version"}, "invalid value of attribute \"version\" in Dialog"},
    {STATUS_NOT_SUPPORTED, {}, "validation is not offered for this document"},
    {STATUS_INVALID_LEXICAL_FORM, {}, "text does not have the form of its datatype"},
    {STATUS_INVALID_UTF8, {}, "text that is not UTF-8 or that XML cannot carry"},
    {STATUS_MISSING_ATTRIBUTE, {"Dialog", "id"}, "missing attribute \"id\" in Dialog"},
    {STATUS_PARSE_FAILED, {"tag mismatch"}, "document is not well-formed: tag mismatch"},
    {STATUS_BAD_CONTEXT, {}, "unusable context"},
    {STATUS_BAD_CONTEXT, {"2", "1"}, "unusable context: of contract 2 instead of 1"},
    {STATUS_WRITE_FAILED, {}, "nothing can be written here"},
    {STATUS_LIMIT_EXCEEDED, {"inputLimit", "100"}, "limit exceeded: inputLimit = 100"},
    {STATUS_LIMIT_EXCEEDED, {"inputLimit", "100", "more", "3"}, "limit exceeded: inputLimit = 100 (more, 3)"},
    {STATUS_NO_MEMORY, {"one", "2"}, "out of memory: one, 2"},
    {-999, {"one", "2"}, "unknown status: one, 2"},
    {-999, {}, "unknown status"},
    {STATUS_UNEXPECTED_ELEMENT, {"$1[$2]"}, "unexpected element <$1[$2]>"},
    {STATUS_PARSE_FAILED, {"a\nb\tc\rd\x01\x7F"}, "document is not well-formed: a\\nb\\tc\\rd\\x01\\x7F"},
    {STATUS_ENUM_NOT_FOUND, {"\"\\"}, "not a value of the enumeration: \"\\\"\\\\\""},
    {STATUS_ENUM_NOT_FOUND, {"\xC3\xA9\xC3"}, "not a value of the enumeration: \"\xC3\xA9\\xC3\""},
    {STATUS_ENUM_NOT_FOUND, {"\xC2\x9B\xC2\xA0"}, "not a value of the enumeration: \"\\xC2\\x9B\xC2\xA0\""},
};

TEST(ErrorText, SaysWhatIsWrong) {
  const OwnedContext ctx(rtxContextCreate(nullptr));
  for (const MessageRow &row : messageRows) {
    rtxErrClear(ctx.get());
    for (const char *param : row.params) {
      char *end = nullptr;
      const long number = std::strtol(param, &end, 10);
      if (*param != '\0' && *end == '\0')
        rtxErrAddIntParm(ctx.get(), static_cast<int32_t>(number));
      else
        rtxErrAddStrParm(ctx.get(), param);
    }
    rtxErrSetNewData(ctx.get(), row.status, "source", 1);
    EXPECT_EQ(formatted(rtxErrMessage, ctx.get(), 0), row.message);
    EXPECT_EQ(std::string(row.message).find(rtxStatusText(row.status)), 0u) << row.message;
  }
}

TEST(ErrorText, SaysWhereItIs) {
  const OwnedContext owned(rtxContextCreate(nullptr));
  RuntimeContext *ctx = owned.get();
  RtxInternals &internals = *ctx->internals;
  const auto lineOf = [&](const rt::Place &place, const char *path, const RtxErrorSite &site) {
    internals.errors.clear();
    internals.errors.start(internals.heap, STATUS_NO_MEMORY, site, place, path);
    return formatted(rtxErrFormat, ctx, 0);
  };
  EXPECT_EQ(lineOf({3, 14, 30, false}, "/list/item", {"some/path/source", 110}),
            "3:14: error: out of memory (status -10) at /list/item [source:110]");
  EXPECT_EQ(lineOf({3, 14, 30, true}, "/list", {"source", 1}),
            "3:14 in its UTF-8 form: error: out of memory (status -10) at /list [source:1]");
  EXPECT_EQ(lineOf({}, "", {"source", 1}), "error: out of memory (status -10) [source:1]");
  EXPECT_EQ(lineOf({}, "", {nullptr, 1}), "error: out of memory (status -10)");
  EXPECT_EQ(lineOf({1, 1, 0, false}, "/a\x01", {"", 1}), "1:1: error: out of memory (status -10) at /a\\x01 [:1]");
}

} // namespace
} // namespace runtimeTest
