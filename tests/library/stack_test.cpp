// How much stack the library needs: every operation runs on a thread whose stack is painted first, and what was painted
// over is counted. docs/security.md tells the bounds.
#include "Catalogue.h"
#include "Engines.h"
#include "bodies.h"
#include "capture.h"
#include "drivers.h"
#include "rtx.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <pthread.h>
#include <span>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <vector>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define SANITIZED 1
#endif
#endif
#ifndef SANITIZED
#define SANITIZED 0
#endif

namespace {

using ims::DocumentSchema;

constexpr size_t boundOfReadingAndWriting = size_t{12} << 10;
constexpr size_t boundOfPrinting = size_t{16} << 10;

// ---- Measuring

constexpr unsigned char paint = 0xA5;

struct Task {
  const std::function<void()> &run;
  uintptr_t top = 0; // where the stack stood when it began
};

void *runTask(void *argument) {
  auto &task = *static_cast<Task *>(argument);
  task.top = reinterpret_cast<uintptr_t>(__builtin_frame_address(0));
  task.run();
  return nullptr;
}

// The bytes of stack below a thread's own function that run has touched.
size_t stackOf(const std::function<void()> &run) {
  constexpr size_t size = size_t{1} << 20;
  void *mapping = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
  EXPECT_NE(mapping, MAP_FAILED);
  if (mapping == MAP_FAILED) return 0;
  std::memset(mapping, paint, size);
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  EXPECT_EQ(pthread_attr_setstack(&attributes, mapping, size), 0);
  Task task{run};
  pthread_t thread;
  const int started = pthread_create(&thread, &attributes, runTask, &task);
  EXPECT_EQ(started, 0);
  if (started == 0) pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
  const auto *bottom = static_cast<const unsigned char *>(mapping);
  const auto *touched = std::find_if(bottom, bottom + size, [](unsigned char byte) { return byte != paint; });
  const size_t used = task.top - reinterpret_cast<uintptr_t>(touched);
  munmap(mapping, size);
  return used;
}

// The greatest of several measures, and what took it.
struct Deepest {
  size_t bytes = 0;
  std::string what;

  void measure(const std::string &name, const std::function<void()> &run) {
    const size_t used = stackOf(run);
    if (used <= bytes) return;
    bytes = used;
    what = name;
  }
};

void expectWithin(const Deepest &deepest, size_t bound) {
  testing::Test::RecordProperty("bytes", std::to_string(deepest.bytes));
  EXPECT_GT(deepest.bytes, 0u);
  EXPECT_LE(deepest.bytes, bound) << deepest.what;
}

// ---- Bodies

struct Body {
  const DocumentSchema *document;
  std::string text;
};

#define BODY(element) bodyOf_##element,
#define BODY_OF_RECORD(element, type) bodyOf_##element,
constexpr const char *wholeBodies[] = {IMS_DOCUMENTS(BODY_OF_RECORD, BODY)
                                           DEBUG_DOCUMENTS(BODY_OF_RECORD, BODY, BODY, BODY)};

std::vector<Body> bodies() {
  std::vector<Body> all;
  for (const std::string_view text : wholeBodies) {
    std::string_view root = text.substr(1, text.find_first_of(" />") - 1);
    root.remove_prefix(root.find(':') + 1);
    for (const DocumentSchema *document : ims::allDocuments())
      if (root == document->root) all.push_back({document, std::string(text)});
  }
  return all;
}

// A foreign element as deep as the reader goes, whose innermost tag has all the attributes that it may have.
std::string deepForeign() {
  std::string deep;
  std::string ends;
  for (int i = 1; i < 255; ++i) {
    deep += "<f:e xmlns:f='urn:f" + std::to_string(i) + "' f:a='&#233;'>t";
    ends += "</f:e>";
  }
  deep += "<f:e";
  for (int i = 0; i < 128; ++i)
    deep += " f:a" + std::to_string(i) + "='v'";
  return deep + "/>" + ends;
}

std::string withForeign(const std::string &body) {
  std::string text = body;
  return text.insert(text.rfind("</"), deepForeign());
}

std::string utf16(std::string_view ascii) {
  std::string text = "\xFF\xFE";
  for (const char c : ascii) {
    text += c;
    text += '\0';
  }
  return text;
}

// A body, and what bad luck may make of it.
std::vector<Body> bodiesGoodAndBad() {
  std::vector<Body> all;
  for (const Body &body : bodies()) {
    const auto add = [&](std::string text) { all.push_back({body.document, std::move(text)}); };
    add(body.text);
    add(withForeign(body.text));
    add(withForeign(body.text).substr(0, body.text.size() + 4000));
    add(body.text.substr(0, body.text.size() / 2));
    std::string bad = body.text;
    bad.insert(bad.find_first_of(" />", 1), " bogus='1'");
    bad.insert(bad.rfind("</"), "<bogus/>&#233;");
    add(bad);
    add("<bogus xmlns:p='urn:p' xmlns:q='urn:p' p:a='' q:a=''/>");
    add(utf16(body.text));
    add("<?xml version='1.0' encoding='ISO-8859-1'?>" + body.text);
    add("<?xml version='1.0' encoding='EUC-JP'?>" + body.text);
    add("<?xml version='1.0' encoding='no-such'?>" + body.text);
  }
  return all;
}

// ---- Operations

// A document's value, as the generic engines know it.
class Value {
public:
  Value(RuntimeContext *context, const DocumentSchema &schema)
      : ctx(context), document(schema), storage(wordsOf(schema)) {
    if (document.type) ims::initRecord(ctx, *document.type, data());
  }
  ~Value() {
    if (document.type)
      ims::discardRecord(ctx, *document.type, data());
    else if (document.simple->kind == ims::Kind::text)
      rtxMemHeapFreePtr(ctx, static_cast<RtxXmlString *>(data())->value);
    else if (document.simple->kind == ims::Kind::hexBinary)
      rtxMemHeapFreePtr(ctx, static_cast<RtxHexBinary *>(data())->bytes);
  }
  Value(const Value &) = delete;
  Value &operator=(const Value &) = delete;

  void *data() { return storage.data(); }

private:
  static size_t wordsOf(const DocumentSchema &schema) {
    const size_t bytes = schema.type ? schema.type->size : sizeof(RtxHexBinary) + sizeof(RtxXmlString);
    return bytes / sizeof(uint64_t) + 1;
  }

  RuntimeContext *ctx;
  const DocumentSchema &document;
  std::vector<uint64_t> storage;
};

// Validates, decodes and encodes, into no room, little and all of it, with a heap of so many bytes.
void work(const Body &body, size_t heapLimit) {
  RuntimeOptions options;
  rtxOptionsInit(&options);
  options.heapLimit = heapLimit;
  RuntimeContext *ctx = rtxContextCreate(&options);
  rtxSetInput(ctx, body.text.data(), body.text.size());
  ims::validateDocument(ctx, *body.document);
  rtxSetInput(ctx, body.text.data(), body.text.size());
  {
    Value value(ctx, *body.document);
    ims::decodeDocument(ctx, *body.document, value.data());
    char line[200];
    rtxErrFormat(ctx, 0, line, sizeof line);
    for (const size_t size : {size_t{0}, sizeof line}) {
      rtxSetOutput(ctx, line, size);
      ims::encodeDocument(ctx, *body.document, value.data());
    }
    rtxSetOutputDynamic(ctx);
    ims::encodeDocument(ctx, *body.document, value.data());
  }
  rtxContextReset(ctx);
  rtxContextFree(ctx);
}

template <size_t size> [[gnu::noinline]] void fill() {
  volatile char bytes[size];
  for (volatile char &byte : bytes)
    byte = 1;
}

class Stack : public testing::Test {
protected:
  void SetUp() override {
    if (SANITIZED) GTEST_SKIP() << "a sanitizer's frames are larger";
  }
};

TEST_F(Stack, IsMeasuredDownToTheLastByteTouched) {
  const size_t used = stackOf([] { fill<50000>(); });
  EXPECT_GE(used, 50000u);
  EXPECT_LE(used, 54000u);
}

TEST_F(Stack, OfEveryDocumentsFunctionsIsWithinItsBound) {
  Deepest deepest;
  const auto measure = [&](std::span<const library::Driver> drivers) {
    for (const library::Driver &driver : drivers) {
      library::Outcome outcome;
      deepest.measure(driver.name, [&] {
        RuntimeContext *ctx = rtxContextCreate(nullptr);
        outcome = driver.run(ctx);
        rtxContextFree(ctx);
      });
      EXPECT_EQ(outcome.decoded, 0) << driver.name;
      EXPECT_EQ(outcome.encoded, 0) << driver.name;
    }
  };
  measure(library::imsDrivers());
  measure(library::debugDrivers());
  expectWithin(deepest, boundOfReadingAndWriting);
}

TEST_F(Stack, OfDeepAndBadBodiesAndOfFullHeapsIsWithinItsBound) {
  Deepest deepest;
  for (const Body &body : bodiesGoodAndBad())
    for (const size_t heapLimit : {size_t{32} << 20, size_t{20000}, size_t{2000}, size_t{300}, size_t{0}})
      deepest.measure(body.text.substr(0, 200), [&] { work(body, heapLimit); });
  expectWithin(deepest, boundOfReadingAndWriting);
}

// Names of members grow by a buffer at each level, so that printing is measured on its own.
TEST_F(Stack, OfPrintingIsWithinItsBound) {
  Deepest deepest;
  size_t printed = 0;
  RuntimeContext *ctx = rtxContextCreate(nullptr);
  for (const Body &body : bodies()) {
    if (!body.document->type) continue;
    for (const std::string &text : {body.text, withForeign(body.text)}) {
      rtxSetInput(ctx, text.data(), text.size());
      Value value(ctx, *body.document);
      ims::decodeDocument(ctx, *body.document, value.data());
      const std::string output = support::captureStdout([&] {
        deepest.measure(body.document->root, [&] { ims::printRecord("name", *body.document->type, value.data()); });
      });
      printed += output.size();
    }
  }
  rtxContextFree(ctx);
  EXPECT_GT(printed, 0u);
  expectWithin(deepest, boundOfPrinting);
}

} // namespace
