// the texts are not sorted
#include "base.h"

constexpr RtxEnumRow codes[] = {{"warm", 0, 4, 0}, {"cold", 1, 4, 1}};
constexpr EnumSchema temperature = makeEnum("temperature", &module, 2, codes);
