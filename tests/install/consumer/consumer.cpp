// Writes a composing indication from C++.
#include "IsComposing/QxXmlIsComposing.h"
#include "rtx.h"

#include <cstdio>
#include <memory>

int main() {
  const std::unique_ptr<RuntimeContext, decltype(&rtxContextFree)> ctx(rtxContextCreate(nullptr), rtxContextFree);
  if (!ctx) return 1;
  tns__isComposing message;
  QxInit_tns__isComposing(ctx.get(), &message);
  message.tns_state.value = rtxUTF8Strdup(ctx.get(), "idle");
  rtxSetOutputDynamic(ctx.get());
  const int status = QxXmlE_tns_isComposing(ctx.get(), &message);
  if (status == 0) std::puts(rtxGetOutput(ctx.get(), nullptr));
  QxMemFree_tns__isComposing(ctx.get(), &message);
  return status == 0 ? 0 : 1;
}
