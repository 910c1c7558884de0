// What each event of a document leaves behind in a chain of handlers, with as many errors recorded as there are, with
// one, and with none: whatever is refused, every later event must find the handlers in step.
#pragma once

#include "context.h"
#include "documentReading.h"
#include "handlerChain.h"
#include "handlerProbe.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace support {

inline constexpr uint32_t errorLimits[] = {100, 1, 0};

std::unique_ptr<Context> contextWithErrorLimit(uint32_t limit);

struct Walk {
  int parse;
  std::string log;    // as HandlerProbe writes it
  std::string record; // of a decoder, as the module shows its records
  std::string errors; // as the module shows its errors
};

// Reads the context's input with a handler that is initialised, and releases what it holds: parse and log of a walk.
// A document that is read to its end leaves the handler where it was.
template <typename Handler> Walk walkThrough(RuntimeContext *ctx, Handler &handler, const char *rootName) {
  handler.rootName = rootName;
  HandlerProbe<Handler> probe(ctx, handler);
  const int parse = probe.read();
  if (parse == 0) {
    EXPECT_EQ(handler.delegate, nullptr);
    EXPECT_EQ(handler.level, 0);
    EXPECT_EQ(ctx->state, XMLSTATE_DOC_END);
  }
  releaseHandlers(ctx, handler);
  return {parse, probe.text(), {}, {}};
}

std::vector<std::string> linesOf(const std::string &log);

// A log with each line changed, or dropped where change gives nothing.
std::string changedLines(const std::string &log, const std::function<std::string(const std::string &line)> &change);

// The log as it is when no error may be recorded: a refusal shows in the levels only.
std::string withoutResults(const std::string &log);

// Complains unless log is all of expected where every error is recorded, the same without results where none is, and
// the same but for results in between.
void expectLog(uint32_t errorLimit, const std::string &log, const std::string &expected,
               bool returnsUnrecorded = false);

// Errors by the number of records that are kept.
struct LimitedErrors {
  std::string all;
  std::string one;
  std::string none = {};

  const std::string &under(uint32_t errorLimit) const;
};

struct WalkExpectation {
  std::string text;
  std::string log; // with all errors recorded
  std::string record;
  LimitedErrors errors;
  std::string validatorLog = {};  // empty: the same
  bool returnsUnrecorded = false; // a callback returns its status although no error may be recorded
};

// The ways of a module to read a document.
struct WalkReaders {
  std::function<Walk(RuntimeContext *ctx, const std::string &text)> decoder;
  std::function<Walk(RuntimeContext *ctx, const std::string &text)> validator;
  std::function<Reading(RuntimeContext *ctx, const std::string &text)> inOneCall;
  // The validator's errors where the decoder has these; null: they are not compared.
  std::function<std::string(std::string errors)> byValidator;
};

// Walks through a text under every limit, and reads it in one call.
void expectWalk(const WalkExpectation &expected, const WalkReaders &readers);

} // namespace support
