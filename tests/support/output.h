// Modes in which every test of a writing function can run.
#pragma once

#include "rtx.h"

#include <functional>
#include <string>

namespace support {

using Encode = std::function<int(RuntimeContext *ctx)>;

// What the context's output holds.
std::string outputText(RuntimeContext *ctx);

// Runs encode into the context's growing output. Fails the test unless it succeeds with a text that ends in a NUL.
std::string encoded(RuntimeContext *ctx, const Encode &encode);

// A document without its XML declaration.
std::string withoutDeclaration(const std::string &document);

// Runs encode into fixed buffers of 0 bytes, of 1 byte and so on: it succeeds exactly from the first size that holds
// the text and its NUL, fails with STATUS_BUFFER_OVERFLOW and a record below that, having written a beginning of the
// text, and touches nothing behind the buffer.
void everyOutputSize(const Encode &encode);

size_t occurrences(const std::string &text, const std::string &part);

} // namespace support
