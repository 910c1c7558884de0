// Texts of enumerations.

#include "contract.h"

namespace contract {
namespace {

int lookup(std::string_view text, const std::vector<RtxEnumRow> &rows) {
  ExactBytes bytes(text);
  return rtxLookupEnum(bytes.data(), bytes.size(), rows.data(), static_cast<uint32_t>(rows.size()));
}

RtxEnumRow row(const char *text) { return {text, 0, static_cast<uint16_t>(std::string_view(text).size()), 0}; }

TEST(EnumText, IsFoundByItsWholeLength) {
  const std::vector<RtxEnumRow> rows = {row("a"), row("ab"), row("abc"), row("b"), row("xpath")};
  EXPECT_EQ(lookup("a", rows), 0);
  EXPECT_EQ(lookup("ab", rows), 1);
  EXPECT_EQ(lookup("abc", rows), 2);
  EXPECT_EQ(lookup("b", rows), 3);
  EXPECT_EQ(lookup("xpath", rows), 4);
  EXPECT_EQ(rtxLookupEnum("xpath", 4, rows.data(), 5), STATUS_ENUM_NOT_FOUND);
  EXPECT_EQ(rtxLookupEnum("abcd", 3, rows.data(), 5), 2);
}

TEST(EnumText, ThatIsNoValueIsNotFound) {
  const std::vector<RtxEnumRow> rows = {row("confirmed"), row("early"), row("trying")};
  for (const std::string_view text : {""sv, "a"sv, "c"sv, "confirme"sv, "confirmedx"sv, "Confirmed"sv, " early"sv,
                                      "early "sv, "early\0"sv, "zzz"sv, "trying\xFF"sv, "\xFF"sv, "\0"sv}) {
    EXPECT_EQ(lookup(text, rows), STATUS_ENUM_NOT_FOUND) << text;
  }
  EXPECT_EQ(rtxLookupEnum(nullptr, 0, rows.data(), 3), STATUS_ENUM_NOT_FOUND);
  EXPECT_EQ(rtxLookupEnum("early", 5, rows.data(), 0), STATUS_ENUM_NOT_FOUND);
  EXPECT_EQ(rtxLookupEnum("early", 5, nullptr, 0), STATUS_ENUM_NOT_FOUND);
}

TEST(EnumText, IsFoundInTablesOfEverySize) {
  std::vector<std::string> texts;
  for (int i = 0; i < 40; ++i)
    texts.push_back("value-" + std::to_string(100 + i) + (i % 3 == 0 ? "-more" : ""));
  for (size_t size = 1; size <= texts.size(); ++size) {
    std::vector<RtxEnumRow> rows;
    for (size_t i = 0; i < size; ++i)
      rows.push_back(row(texts[i].c_str()));
    for (size_t i = 0; i < texts.size(); ++i) {
      EXPECT_EQ(lookup(texts[i], rows), i < size ? static_cast<int>(i) : STATUS_ENUM_NOT_FOUND) << size << ' ' << i;
    }
  }
}

TEST(EnumText, IsOrderedByUnsignedBytes) {
  const std::vector<RtxEnumRow> rows = {row("a"), row("z"), row("\xC3\xA9")};
  EXPECT_EQ(lookup("a", rows), 0);
  EXPECT_EQ(lookup("z", rows), 1);
  EXPECT_EQ(lookup("\xC3\xA9", rows), 2);
}

} // namespace
} // namespace contract
