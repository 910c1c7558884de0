#include "bodyFaults.h"

#include "input.h"

namespace support {

Outcome decodeBody(RuntimeContext *ctx, const std::string &text,
                   const std::function<Reading(RuntimeContext *ctx)> &decode) {
  const int set = setInput(ctx, text);
  if (set != 0) return {set, {}};
  const Reading reading = decode(ctx);
  return {reading.status, reading.record};
}

Outcome validateBody(RuntimeContext *ctx, const std::string &text,
                     const std::function<int(RuntimeContext *ctx)> &validate) {
  const int set = setInput(ctx, text);
  if (set != 0) return {set, {}};
  return {validate(ctx), {}};
}

Outcome encodeBody(RuntimeContext *ctx, const Encode &encode) {
  const int output = rtxSetOutputDynamic(ctx);
  if (output != 0) return {output, {}, false};
  const int status = encode(ctx);
  return {status, status == 0 ? outputText(ctx) : std::string()};
}

} // namespace support
