// Documents given to a context in every way that a host may give them.
#pragma once

#include "rtx.h"

#include <memory>
#include <string>
#include <string_view>

namespace support {

// Bytes in a block of exactly their size, so that a sanitizer sees the first one read beyond.
class ExactBytes {
public:
  explicit ExactBytes(std::string_view bytes);
  const char *data() const { return block.get(); }
  char *data() { return block.get(); }
  size_t size() const { return length; }

private:
  size_t length;
  std::unique_ptr<char[]> block;
};

enum class InputForm {
  copied,    // rtxSetInput from a block without NUL that is gone before the document is read
  terminated // rtxSetInputZ
};

inline constexpr InputForm inputForms[] = {InputForm::copied, InputForm::terminated};

// Sets document as the context's input. For InputForm::terminated it must outlive the reading.
int setInput(RuntimeContext *ctx, const std::string &document, InputForm form = InputForm::copied);

} // namespace support
