// The texts of enumerations, against those of the C interface.
#include "imscodec.hpp"

#include <gtest/gtest.h>

using namespace imscodec;

namespace {

template <class E> void expectTexts(const char *(*textOfCode)(uint32_t), size_t count) {
  EXPECT_EQ(count, std::size(EnumTexts<E>::rows));
  for (uint16_t code = 0; code < count; ++code) {
    const E value = static_cast<E>(code);
    EXPECT_EQ(textOfCode(code), text(value));
    EXPECT_EQ(value, fromText<E>(textOfCode(code)));
  }
  EXPECT_EQ("", text(static_cast<E>(count)));
  EXPECT_STREQ("_UNKNOWN_", textOfCode(static_cast<uint32_t>(count)));
  EXPECT_FALSE(fromText<E>(""));
  EXPECT_FALSE(fromText<E>(std::string(text(E{})) + "x"));
}

TEST(CppEnumerations, HaveTheTextsOfTheVocabulary) {
  expectTexts<dialoginfo::dialog_info_state>(Qxtns__dialog_info_state_ToString, 2);
  expectTexts<dialoginfo::state_event>(Qxtns__state_event_ToString, 7);
  expectTexts<dialoginfo::dialog_direction>(Qxtns__dialog_direction_ToString, 2);
  expectTexts<filterset::TypeType>(QxTypeType_ToString, 2);
  expectTexts<pocsettings::amSettingType_answer_mode>(QxamSettingType_answer_mode_ToString, 2);
  expectTexts<debugevent::reason>(Qxtns__reason_ToString, 2);
  expectTexts<debugevent::depth>(Qxtns__depth_ToString, 2);
  expectTexts<debugevent::state>(Qxtns__state_ToString, 2);
}

static_assert(text(dialoginfo::state_event::local_bye) == "local-bye");
static_assert(fromText<filterset::TypeType>("namespace") == filterset::TypeType::namespace_);

} // namespace
