// a choice begins with its selector
#include "base.h"

struct Choice {
  union {
    RtxXmlString t_name;
  } u;
  uint16_t t;
};
constexpr RtSaxElementInfo choiceElements[] = {{"name", 2, 1, 1}};
constexpr TypeOptions choiceOptions = {
    .name = "Choice", .module = &module, .number = 2, .content = Content::choice, .elements = choiceElements};
constexpr Field choiceRows[] = {ALTERNATIVE(Choice, t_name)};
constexpr auto choiceFields = placeFields<Choice>(choiceRows, choiceOptions);
constexpr TypeSchema choice = makeType<Choice>(choiceFields, choiceOptions);
