// What the tests of the runtime contract share. They use the C API alone, so that they can be linked against any
// runtime that offers it.
#pragma once

#include "rtx.h"

#include <cstdio>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace contract {

using namespace std::string_literals;
using namespace std::string_view_literals;

// A host's allocator that counts, and refuses on demand.
class Allocator {
public:
  size_t calls = 0;        // allocations asked for so far
  size_t refused = 0;      // of these, how many were refused
  size_t failAt = 0;       // number of the allocation that is refused, from 1; 0: none
  bool persistent = false; // refuse all after it as well

  size_t live() const { return blocks.size(); }
  void install(RuntimeOptions &options);

  // Refuses the n-th allocation from now on.
  void failNext(size_t n, bool andAllAfter) {
    failAt = calls + n;
    persistent = andAllAfter;
  }
  void heal() { failAt = 0; }

private:
  std::unordered_set<void *> blocks;
};

RuntimeOptions defaultOptions();

// A context on a counting allocator. Complains at its end about a block that was not given back.
class Context {
public:
  explicit Context(const RuntimeOptions &options = defaultOptions());
  ~Context();
  Context(const Context &) = delete;
  Context &operator=(const Context &) = delete;

  operator RuntimeContext *() const { return ctx; }
  RuntimeContext *operator->() const { return ctx; }

  Allocator allocator;

private:
  RuntimeContext *ctx;
};

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

// A handler that writes down what it is told, in XML's own notation: "<p:a k="v">text</p:a>". Neighbouring pieces of
// text run together. A hook's result is the callback's.
class Recorder {
public:
  explicit Recorder(RuntimeContext *context = nullptr);

  RtSaxHandler handler{}; // first: the address is what the reader passes around
  RuntimeContext *ctx;
  std::string log;
  size_t events = 0;
  size_t open = 0; // elements whose start was delivered and whose end was not

  std::function<int(const char *local, const char *qualified, const char *const *attributes)> onStart;
  std::function<int(const char *bytes, size_t length)> onText;
  std::function<int(const char *local, const char *qualified)> onEnd;

private:
  static int start(void *self, const char *local, const char *qualified, const char *const *attributes);
  static int end(void *self, const char *local, const char *qualified);
  static int text(void *self, const char *bytes, size_t length);
};

// Runs a reader over the context's input: its status, or STATUS_READER_FAILED if none could be made.
int readInput(RuntimeContext *ctx, Recorder &recorder);

// The same for a document, given in a block of exactly its size.
int read(RuntimeContext *ctx, std::string_view document, Recorder &recorder);

// Calls action in the start callback of the first element that is called name while document is read.
int insideElement(RuntimeContext *ctx, std::string_view document, std::string_view name,
                  const std::function<int(const char *const *attributes)> &action);

// Points the text buffer at bytes.
void setText(RuntimeContext *ctx, ExactBytes &bytes);

// What goes to a stream of the C library between start and end, seen at the file descriptor.
class Capture {
public:
  explicit Capture(FILE *stream);
  ~Capture();
  Capture(const Capture &) = delete;
  Capture &operator=(const Capture &) = delete;
  std::string finish();

private:
  FILE *stream;
  FILE *file;
  int saved;
};

// The status texts of the records kept, as "-41 -33".
std::string statuses(RuntimeContext *ctx);

// The parameters of a record, as "text|5".
std::string params(RuntimeContext *ctx, uint32_t index);

RtxHeapStats stats(RuntimeContext *ctx);

// The infoset of a document as a strict parser sees it, in one spelling: "{uri}name[{uri}attribute="value"](content)",
// attributes in order of names, without comments and declarations. notWellFormed if it is none.
std::string infoset(std::string_view document);
inline constexpr std::string_view notWellFormed = "not well-formed";

// The output of a context as text.
std::string output(RuntimeContext *ctx);

// An ASCII text in UTF-16, with or without its byte order mark.
std::string utf16(std::string_view ascii, bool bigEndian, bool mark = true);

} // namespace contract
