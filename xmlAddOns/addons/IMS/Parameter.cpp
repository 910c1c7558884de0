#include "Parameter.h"

#include "rtxError.h"

#include <stdio.h>

namespace ims {

void addMemberParameter(RuntimeContext *ctx, const TypeSchema &type, const char *member) {
  char path[128];
  snprintf(path, sizeof(path), "%s.%s", type.name, member);
  rtxErrAddStrParm(ctx, path);
}

} // namespace ims
