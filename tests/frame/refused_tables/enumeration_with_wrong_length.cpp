// a text and its length do not agree
#include "base.h"

constexpr RtxEnumRow codes[] = {{"cold", 0, 4, 0}, {"warm", 1, 5, 1}};
constexpr EnumSchema temperature = makeEnum("temperature", &module, 2, codes);
