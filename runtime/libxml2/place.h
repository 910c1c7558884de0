// Where in the input an error was found. The reader knows; the error list asks.
#pragma once

#include "rtxContext.h"

namespace rt {

struct Place {
  uint32_t line = 0; // 0: no place
  uint32_t column = 0;
  size_t offset = 0;
  bool transcoded = false;
};

// The place of the event that is being handled, and the path of open elements as "/a/b" in path, cut at pathSize
// and NUL-terminated. No place and an empty path outside a parse. Reads the input again, so it costs nothing until
// there is an error.
Place currentPlace(const RuntimeContext *ctx, char *path, size_t pathSize);

} // namespace rt
