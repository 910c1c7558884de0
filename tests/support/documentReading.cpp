#include "documentReading.h"

#include "context.h"
#include "errors.h"
#include "input.h"

namespace support {

Reading readDocument(RuntimeContext *ctx, const std::string &document,
                     const std::function<Reading(RuntimeContext *ctx)> &read) {
  const int set = setInput(ctx, document);
  if (set != 0) return {set, "", errors(ctx)};
  HeapBalance balance(ctx, "by reading " + document);
  return read(ctx);
}

Reading readDocument(const std::string &document, const std::function<Reading(RuntimeContext *ctx)> &read) {
  Context ctx;
  return readDocument(ctx, document, read);
}

std::string errorsBySource(RuntimeContext *ctx, std::string_view stem) {
  std::string all = errors(ctx);
  for (size_t at = all.find(stem); at != std::string::npos; at = all.find(stem, at)) {
    all.erase(at, stem.size());
    const size_t colon = all.find(':', at);
    all.erase(colon, all.find_first_not_of("0123456789", colon + 1) - colon);
  }
  return all;
}

std::string errorsWithoutPlaces(RuntimeContext *ctx, ParserReason reason) {
  std::string all;
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i) {
    RtxError placeless = *error;
    placeless.siteCount = 0;
    if (reason == ParserReason::omitted && placeless.status == STATUS_PARSE_FAILED) placeless.paramCount = 0;
    all += (i == 0 ? "" : "; ") + errorText(placeless);
  }
  return all;
}

std::string byValidator(std::string errors) {
  for (const char *place : {"@SAX", "<SAX"})
    for (size_t at = errors.find(place); at != std::string::npos; at = errors.find(place, at))
      errors.replace(at + 1, 3, "Vldt");
  return errors;
}

int firstStatus(const std::string &errors) { return errors.empty() ? 0 : std::stoi(errors); }

} // namespace support
