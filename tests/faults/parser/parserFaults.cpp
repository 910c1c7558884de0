// The parser's own storage fails, at every request that it makes, once and from there on: each document still gets a
// status that says so, with a record; nothing is lost, and the context then works as if nothing had happened.
#include "rtx.h"
#include "samples.h"

#include <libxml/parser.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

using faults::Sample;
using faults::Value;

namespace {

// ---- The parser's allocator

struct Plan {
  unsigned long seen = 0;
  unsigned long failing = 0; // counted from 1; 0: none
  bool onwards = false;
  unsigned long refused = 0;
  long blocks = 0; // alive
} plan;

bool refuse() {
  ++plan.seen;
  if (plan.failing == 0 || (plan.onwards ? plan.seen < plan.failing : plan.seen != plan.failing)) return false;
  ++plan.refused;
  return true;
}

void *allocate(size_t size) {
  if (refuse()) return nullptr;
  void *block = std::malloc(size);
  if (block != nullptr) ++plan.blocks;
  return block;
}

void release(void *block) {
  if (block != nullptr) --plan.blocks;
  std::free(block);
}

void *resize(void *block, size_t size) {
  if (block == nullptr) return allocate(size);
  return refuse() ? nullptr : std::realloc(block, size);
}

char *duplicate(const char *text) {
  const size_t size = std::strlen(text) + 1;
  auto *copy = static_cast<char *>(allocate(size));
  if (copy != nullptr) std::memcpy(copy, text, size);
  return copy;
}

void arm(unsigned long failing, bool onwards) {
  plan.seen = plan.refused = 0;
  plan.failing = failing;
  plan.onwards = onwards;
}
void disarm() { plan.failing = 0; }

// ---- What is tried

unsigned failures = 0;

void expect(bool holds, const char *promise, const std::string &where) {
  if (holds) return;
  ++failures;
  std::printf("%s: %s\n", where.c_str(), promise);
}

struct Result {
  int decoded = 0;
  int validated = 0;
  std::string output;
  bool operator==(const Result &) const = default;
};

std::string encoded(RuntimeContext *ctx, const Sample &sample, const Value &value) {
  rtxSetOutputDynamic(ctx);
  const int status = sample.encode(ctx, value);
  size_t length = 0;
  const char *text = rtxGetOutput(ctx, &length);
  return status == 0 ? std::string(text, length) : std::to_string(status);
}

Result run(RuntimeContext *ctx, const Sample &sample, std::string_view body, const std::string &where) {
  Result result;
  rtxSetInput(ctx, body.data(), body.size());
  result.validated = sample.validate(ctx);
  expect(result.validated == 0 || result.validated == STATUS_NOT_SUPPORTED || rtxErrCount(ctx) > 0,
         "a failed validation leaves a record", where);
  rtxErrClear(ctx);
  Value value(ctx, sample);
  result.decoded = sample.decode(ctx, value);
  expect(result.decoded == 0 || rtxErrCount(ctx) > 0, "a failed decoding leaves a record", where);
  rtxErrClear(ctx);
  if (result.decoded == 0) result.output = encoded(ctx, sample, value);
  return result;
}

void expectNothingLeft(RuntimeContext *ctx, const std::string &where) {
  RtxHeapStats stats;
  rtxHeapStats(ctx, &stats);
  expect(stats.blocks == 0, "nothing stays behind on the heap", where);
}

// What a call may return that had no failure of its own to tell.
bool tellsStorage(int status, int otherwise) {
  return status == otherwise || status == STATUS_NO_MEMORY || status == STATUS_READER_FAILED;
}

// Each run is judged; true if anything was refused.
bool runWithFailure(const Sample &sample, std::string_view body, const Result &expected, unsigned long failing,
                    bool onwards) {
  const std::string where = std::string(sample.name) + ", " + std::to_string(body.size()) + " bytes, request " +
                            std::to_string(failing) + (onwards ? " and all after it" : "");
  xmlResetLastError();
  const long before = plan.blocks;
  arm(failing, onwards);
  RuntimeContext *ctx = rtxContextCreate(nullptr);
  const Result result = run(ctx, sample, body, where);
  disarm();
  const bool refused = plan.refused != 0;
  expect(tellsStorage(result.validated, expected.validated), "validating fails for lack of storage or not at all",
         where);
  expect(tellsStorage(result.decoded, expected.decoded), "decoding fails for lack of storage or not at all", where);
  expect(result.decoded != expected.decoded || result.output == expected.output, "no success with something missing",
         where);
  expect(!(refused && onwards) || result.decoded != 0, "without storage nothing is read", where);
  expectNothingLeft(ctx, where);
  expect(run(ctx, sample, body, where) == expected, "the context works as if nothing had happened", where);
  rtxContextReset(ctx);
  expect(run(ctx, sample, body, where) == expected, "and after a reset too", where);
  rtxContextFree(ctx);
  xmlResetLastError();
  expect(plan.blocks == before, "the parser has given back all its storage", where);
  return refused;
}

unsigned long runs = 0;

void tryBody(const Sample &sample, std::string_view body) {
  RuntimeContext *ctx = rtxContextCreate(nullptr);
  const Result expected = run(ctx, sample, body, sample.name);
  rtxContextFree(ctx);
  for (bool onwards : {false, true}) {
    unsigned long failing = 1;
    while (runWithFailure(sample, body, expected, failing, onwards))
      ++failing;
    expect(failing > 1, "the parser asks for storage", sample.name);
    runs += failing - 1;
  }
}

// Leads what is written to standard error into a file from now on.
FILE *catchStandardError() {
  FILE *log = std::tmpfile();
  if (log == nullptr || dup2(fileno(log), STDERR_FILENO) < 0) std::exit(2);
  return log;
}

bool isSilent(FILE *log) {
  std::fflush(stderr);
  return lseek(fileno(log), 0, SEEK_END) == 0;
}

// What a child's exit code says.
constexpr int childRefused = 1; // a request was refused
constexpr int childFailed = 2;

// The first use of the parser by a process, which makes what all parsers share; in a process of its own each time.
void tryFirstUse(const Sample &sample, bool onwards) {
  for (unsigned long failing = 1;; ++failing) {
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
      failures = 0;
      const std::string where = "first use, request " + std::to_string(failing) + (onwards ? " and all after it" : "");
      FILE *log = catchStandardError();
      arm(failing, onwards);
      RuntimeContext *ctx = rtxContextCreate(nullptr);
      const Result result = run(ctx, sample, sample.body, where);
      disarm();
      expect(tellsStorage(result.decoded, 0), "decoding fails for lack of storage or not at all", where);
      expectNothingLeft(ctx, where);
      expect(run(ctx, sample, sample.body, where).decoded == 0, "the context works as if nothing had happened", where);
      rtxContextFree(ctx);
      expect(isSilent(log), "nothing is written to standard error", where);
      std::fflush(stdout);
      _exit((plan.refused != 0 ? childRefused : 0) | (failures != 0 ? childFailed : 0));
    }
    int status = 0;
    const bool ended = child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status);
    const int result = ended ? WEXITSTATUS(status) : childFailed;
    expect((result & ~childRefused) == 0, "a first use holds what is promised", sample.name);
    if ((result & childRefused) == 0) return;
    ++runs;
  }
}

std::string repeated(std::string_view text, unsigned times) {
  std::string all;
  for (unsigned i = 0; i < times; ++i)
    all += text;
  return all;
}

// More than the samples ask of the parser: names and attributes enough to grow its tables, references, sections, an
// encoding that has to be converted, and errors of the document's own at its end.
void tryLargeBodies(const Sample &composing) {
  const std::string open = "<isComposing xmlns='urn:ietf:params:xml:ns:im-iscomposing'><state>idle</state>";
  std::string names = open;
  for (unsigned i = 0; i < 300; ++i)
    names += "<x:n" + std::to_string(i) + " xmlns:x='urn:example:" + std::to_string(i) + "'/>";
  std::string attributes = open + "<x:y xmlns:x='urn:example:x'";
  for (unsigned i = 0; i < 60; ++i)
    attributes += " a" + std::to_string(i) + "='&lt;" + std::string(i * 10, 'v') + "&#233;'";
  const std::string nested = open + repeated("<y xmlns='urn:example:y'>", 100) + repeated("</y>", 100);
  const std::string texts = open + "<y xmlns='urn:example:y'>" +
                            repeated("&amp;<![CDATA[c]]>&#65;<!-- c --><?p i?>t", 50) + std::string(3000, 't') + "</y>";
  const std::string close = "</isComposing>";
  const std::string labelled = "<?xml version='1.0' encoding='ISO-8859-1'?>" + open;
  const std::string bodies[] = {names + close,
                                attributes + "/>" + close,
                                nested + close,
                                texts + close,
                                labelled + "<contenttype>\xE9</contenttype>" + close,
                                texts,
                                open + "</mismatch>",
                                open + "&undeclared;" + close,
                                open + "<y a='1' a='2'/>" + close,
                                "<!DOCTYPE isComposing [<!ENTITY e 'e'>]>" + open + "&e;" + close};
  for (const std::string &body : bodies)
    tryBody(composing, body);
}

} // namespace

int main() {
  if (xmlMemSetup(release, allocate, resize, duplicate) != 0) return 2;
  const std::span<const Sample> samples = faults::allSamples();
  for (bool onwards : {false, true})
    tryFirstUse(samples.front(), onwards);
  FILE *log = catchStandardError();
  for (const Sample &sample : samples)
    tryBody(sample, sample.body);
  tryLargeBodies(samples.front());
  expect(isSilent(log), "nothing is written to standard error", "all bodies");
  std::printf("%lu runs with a failure, %u broken promises\n", runs, failures);
  return failures == 0 && samples.size() == 27 ? 0 : 1;
}
