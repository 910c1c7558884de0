// a code does not lead to its row
#include "base.h"

constexpr RtxEnumRow codes[] = {{"cold", 1, 4, 0}, {"warm", 0, 4, 1}};
constexpr EnumSchema temperature = makeEnum("temperature", &module, 2, codes);
