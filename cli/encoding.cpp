#include "encoding.h"

#include "rtXmlNamespace.h"
#include "rtxError.h"

namespace cli {

namespace {

// Where attributes belong to the module's namespace the codec writes them with the prefix that is bound to it. Their
// schema wants them bare, and so they are when the namespace has no prefix.
void declareNamespace(RuntimeContext *ctx, const ims::ModuleSchema &module) {
  if (!module.qualifiedAttributes) return;
  rtXmlNSSetNamespace(ctx, nullptr, nullptr, module.uri, true);
  ctx->flags |= NamespacesPreset;
}

} // namespace

std::optional<std::string> encode(const Session &session, const ims::DocumentSchema &kind, const Record &record) {
  RuntimeContext *ctx = session.context();
  rtxErrClear(ctx);
  declareNamespace(ctx, *kind.module);
  int status = rtxSetOutputDynamic(ctx);
  if (status == 0) status = record.encode();
  session.check(status);
  if (status != 0) return std::nullopt;
  std::size_t length = 0;
  const char *text = rtxGetOutput(ctx, &length);
  return std::string(text, length);
}

} // namespace cli
