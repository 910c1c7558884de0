// Modes in which every test of a reading function can run.
#pragma once

#include "context.h"
#include "input.h"
#include "spelling.h"

#include <functional>
#include <string>

namespace support {

// Runs test with every spelling of body, given in every form of input, each on a context of its own whose input is set.
// test reads the input and leaves nothing of its own on the heap.
void everySpelling(std::string_view body, std::string_view uri,
                   const std::function<void(RuntimeContext *ctx, const SpelledDocument &document)> &test,
                   bool withoutNamespace = true);

// Runs read with every proper prefix of document, in every form of input, one context after another and then all on
// one. read returns its status and releases what it got. Only a prefix that lacks nothing but what may follow a root
// may succeed; every failure has a record that knows its place.
void everyPrefix(const std::string &document, const std::function<int(RuntimeContext *ctx)> &read);

} // namespace support
