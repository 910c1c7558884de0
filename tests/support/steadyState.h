// A context that has seen a few messages asks the system's allocator for nothing more.
#pragma once

#include "rtx.h"

#include <functional>
#include <string>

namespace support {

// Runs round on a fresh context to warm it up, then so many rounds more. Between these no block comes from the
// allocator, and each leaves as many blocks on the context's heap as there were before the first; at the end the heap
// is back at its level. round counts from 0, for rounds that are each to be different.
void expectSteadyState(const std::string &what, const std::function<void(RuntimeContext *ctx, int number)> &round,
                       int rounds = 200);

// The same for rounds that are all alike.
void expectSteadyState(const std::string &what, const std::function<void(RuntimeContext *ctx)> &round);

} // namespace support
