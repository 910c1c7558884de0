#include "documents.h"

#include "errors.h"

#include <gtest/gtest.h>

namespace support {

void everySpelling(std::string_view body, std::string_view uri,
                   const std::function<void(RuntimeContext *ctx, const SpelledDocument &document)> &test,
                   bool withoutNamespace) {
  for (Spelling spelling : allSpellings) {
    if (spelling == Spelling::noNamespace && !withoutNamespace) continue;
    const SpelledDocument document = spell(body, uri, spelling);
    for (InputForm form : inputForms) {
      SCOPED_TRACE(std::string(spellingName(spelling)) + (form == InputForm::copied ? ", copied: " : ", terminated: ") +
                   document.text);
      Context ctx;
      ASSERT_EQ(setInput(ctx, document.text, form), 0);
      HeapBalance balance(ctx);
      test(ctx, document);
    }
  }
}

namespace {

void readPrefix(RuntimeContext *ctx, const std::string &prefix, InputForm form, bool rootIsOpen,
                const std::function<int(RuntimeContext *ctx)> &read) {
  SCOPED_TRACE("prefix: " + prefix);
  rtxErrClear(ctx);
  if (setInput(ctx, prefix, form) != 0) {
    ADD_FAILURE() << "the input is refused: " << errors(ctx);
    return;
  }
  HeapBalance balance(ctx);
  const int status = read(ctx);
  if (!rootIsOpen && status == 0) return;
  EXPECT_LT(status, 0);
  EXPECT_GT(rtxErrCount(ctx), 0u) << "failed without a record";
  bool placed = false;
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i)
    placed = placed || error->line != 0;
  EXPECT_TRUE(placed) << "no record knows its place: " << errors(ctx);
}

} // namespace

void everyPrefix(const std::string &document, const std::function<int(RuntimeContext *ctx)> &read) {
  const size_t rootEnd = document.rfind('>') + 1;
  for (InputForm form : inputForms) {
    Context kept;
    for (size_t length = 0; length < document.size(); ++length) {
      const std::string prefix = document.substr(0, length);
      Context fresh;
      readPrefix(fresh, prefix, form, length < rootEnd, read);
      readPrefix(kept, prefix, form, length < rootEnd, read);
      if (testing::Test::HasFailure()) return;
    }
  }
}

} // namespace support
