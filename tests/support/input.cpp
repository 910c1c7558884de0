#include "input.h"

#include <algorithm>

namespace support {

ExactBytes::ExactBytes(std::string_view bytes) : length(bytes.size()), block(new char[bytes.size()]) {
  std::copy(bytes.begin(), bytes.end(), block.get());
}

int setInput(RuntimeContext *ctx, const std::string &document, InputForm form) {
  if (form == InputForm::terminated) return rtxSetInputZ(ctx, document.c_str(), document.size());
  const ExactBytes bytes(document);
  return rtxSetInput(ctx, bytes.data(), bytes.size());
}

} // namespace support
