#include "output.h"

#include "context.h"
#include "errors.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string_view>
#include <vector>

namespace support {

std::string outputText(RuntimeContext *ctx) {
  size_t length = 0;
  const char *text = rtxGetOutput(ctx, &length);
  return text == nullptr ? std::string() : std::string(text, length);
}

std::string encoded(RuntimeContext *ctx, const Encode &encode) {
  EXPECT_EQ(rtxSetOutputDynamic(ctx), 0);
  EXPECT_EQ(encode(ctx), 0) << errors(ctx);
  size_t length = 0;
  const char *text = rtxGetOutput(ctx, &length);
  if (text == nullptr) {
    ADD_FAILURE() << "no output";
    return {};
  }
  EXPECT_EQ(text[length], '\0');
  return std::string(text, length);
}

std::string withoutDeclaration(const std::string &document) {
  if (!document.starts_with("<?xml ")) return document;
  return document.substr(document.find_first_not_of("\n", document.find("?>") + 2));
}

void everyOutputSize(const Encode &encode) {
  constexpr char canary = '\x5A';
  constexpr size_t canaries = 64;

  Context ctx;
  const std::string whole = encoded(ctx, encode);
  for (size_t size = 0; size <= whole.size() + 3; ++size) {
    SCOPED_TRACE("output of " + std::to_string(size) + " bytes for a text of " + std::to_string(whole.size()));
    rtxContextReset(ctx);
    std::vector<char> buffer(size + canaries, canary);
    EXPECT_EQ(rtxSetOutput(ctx, buffer.data(), size), 0);
    const int status = encode(ctx);
    const std::string written = outputText(ctx);
    if (size > whole.size()) {
      EXPECT_EQ(status, 0) << errors(ctx);
      EXPECT_EQ(written, whole);
      EXPECT_EQ(buffer[whole.size()], '\0');
    } else {
      EXPECT_EQ(status, STATUS_BUFFER_OVERFLOW) << errors(ctx);
      EXPECT_EQ(rtxErrGetFirstError(ctx), STATUS_BUFFER_OVERFLOW);
      EXPECT_LE(written.size(), size);
      EXPECT_TRUE(std::string_view(whole).starts_with(written)) << written;
    }
    const auto behind = buffer.begin() + static_cast<std::ptrdiff_t>(size);
    EXPECT_EQ(std::count(behind, buffer.end(), canary), static_cast<std::ptrdiff_t>(canaries));
    if (testing::Test::HasFailure()) return;
  }
}

size_t occurrences(const std::string &text, const std::string &part) {
  size_t count = 0;
  for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
    ++count;
  return count;
}

} // namespace support
