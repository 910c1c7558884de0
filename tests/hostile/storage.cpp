#include "storage.h"

#include <gtest/gtest.h>
#include <libxml/xmlmemory.h>

#include <cstdlib>
#include <cstring>
#include <malloc.h>

namespace hostile {

Storage storage;

namespace {

void *counted(void *block) {
  storage.held += malloc_usable_size(block);
  if (storage.held > storage.mostHeld) storage.mostHeld = storage.held;
  return block;
}

void release(void *block) {
  storage.held -= malloc_usable_size(block);
  std::free(block);
}

void *allocateForContext(void *, size_t size) {
  ++storage.contextCalls;
  return counted(std::malloc(size));
}

void releaseForContext(void *, void *block) { release(block); }

void *allocateForParser(size_t size) {
  ++storage.parserCalls;
  return counted(std::malloc(size));
}

void *resizeForParser(void *block, size_t size) {
  ++storage.parserCalls;
  const size_t before = malloc_usable_size(block);
  void *resized = std::realloc(block, size);
  if (resized == nullptr) return nullptr;
  storage.held -= before;
  return counted(resized);
}

char *duplicateForParser(const char *text) {
  ++storage.parserCalls;
  return static_cast<char *>(counted(strdup(text)));
}

// Before the first parser.
class CountingParser : public testing::Environment {
public:
  void SetUp() override { ASSERT_EQ(0, xmlMemSetup(release, allocateForParser, resizeForParser, duplicateForParser)); }
};

[[maybe_unused]] testing::Environment *const countingParser = testing::AddGlobalTestEnvironment(new CountingParser);

} // namespace

Context makeContext() {
  RuntimeOptions options;
  rtxOptionsInit(&options);
  options.allocate = allocateForContext;
  options.release = releaseForContext;
  return Context(rtxContextCreate(&options));
}

int run(const Context &ctx, const std::string &body, int (*call)(RuntimeContext *)) {
  rtxContextReset(ctx.get());
  const int status = rtxSetInputZ(ctx.get(), body.data(), body.size());
  return status != 0 ? status : call(ctx.get());
}

} // namespace hostile
