// Allocations of an XML parser beneath the runtime refused. Skipped for a runtime that does not stand on libxml2.

#include "wildcard.h"

#include <cstdlib>
#include <cstring>
#include <libxml/parser.h>
#include <libxml/xmlmemory.h>

namespace contract {
namespace {

size_t calls = 0;
size_t failAt = 0;
bool persistent = false;
size_t refusals = 0;

bool refuse() {
  ++calls;
  const bool yes = failAt != 0 && (calls == failAt || (persistent && calls > failAt));
  if (yes) ++refusals;
  return yes;
}

void *allocate(size_t size) { return refuse() ? nullptr : std::malloc(size); }
void *reallocate(void *block, size_t size) { return refuse() ? nullptr : std::realloc(block, size); }
char *duplicate(const char *text) { return refuse() ? nullptr : strdup(text); }

class ParserAllocations {
public:
  ParserAllocations() {
    xmlInitParser();
    xmlMemGet(&free, &malloc, &realloc, &strdup);
    xmlMemSetup(std::free, allocate, reallocate, duplicate);
    calls = failAt = refusals = 0;
  }
  ~ParserAllocations() { xmlMemSetup(free, malloc, realloc, strdup); }

  void failNext(size_t n, bool andAllAfter) {
    failAt = calls + n;
    persistent = andAllAfter;
    refusals = 0;
  }
  void heal() { failAt = 0; }

private:
  xmlFreeFunc free;
  xmlMallocFunc malloc;
  xmlReallocFunc realloc;
  xmlStrdupFunc strdup;
};

std::string sampleDocument(const char *encoding) {
  std::string text = "<?xml version='1.0' encoding='"s + encoding + "'?><p:r xmlns:p='urn:p' xmlns='urn:d'>";
  for (int i = 0; i < 30; ++i) {
    text += "<name" + std::to_string(i) + " k" + std::to_string(i) + "='value &lt; " + std::string(60, 'v') +
            "'>text &amp; " + std::string(400, 't') + "<![CDATA[more]]></name" + std::to_string(i) + ">";
  }
  return text + "<!-- a comment --><?an instruction?></p:r>";
}

class ParserFaults : public testing::TestWithParam<std::tuple<const char *, bool>> {};
INSTANTIATE_TEST_SUITE_P(In, ParserFaults, testing::Combine(testing::Values("UTF-8", "ISO-8859-1"), testing::Bool()),
                         [](const auto &row) {
                           std::string name = std::get<0>(row.param);
                           std::erase(name, '-');
                           return name + (std::get<1>(row.param) ? "ForGood" : "Once");
                         });

TEST_P(ParserFaults, EndInAStatusOrTheWholeDocument) {
  const auto &[encoding, forGood] = GetParam();
  const std::string document = sampleDocument(encoding);
  ParserAllocations parser;
  Recorder expected;
  {
    Context ctx;
    ASSERT_EQ(read(ctx, document, expected), 0);
  }
  bool injected = false;
  for (size_t i = 1;; ++i) {
    ASSERT_LT(i, 5000u);
    Capture err(stderr);
    {
      Context ctx;
      Recorder recorder;
      parser.failNext(i, forGood);
      const int status = read(ctx, document, recorder);
      parser.heal();
      if (status == 0) {
        EXPECT_EQ(recorder.log, expected.log) << "allocation " << i;
      } else {
        EXPECT_TRUE(status == STATUS_NO_MEMORY || status == STATUS_READER_FAILED)
            << "allocation " << i << ": " << status;
        EXPECT_EQ(expected.log.substr(0, recorder.log.size()), recorder.log) << "allocation " << i;
        if (status != STATUS_READER_FAILED) {
          EXPECT_EQ(rtxErrGetFirstError(ctx), status) << "allocation " << i;
        }
      }
      rtxErrClear(ctx);
      Recorder again;
      EXPECT_EQ(read(ctx, document, again), 0) << "after allocation " << i;
      EXPECT_EQ(again.log, expected.log) << "after allocation " << i;
    }
    EXPECT_EQ(err.finish(), "") << "allocation " << i;
    if (refusals == 0) break;
    injected = true;
  }
  if (calls == 0) GTEST_SKIP() << "the parser beneath does not take its storage from libxml2";
  EXPECT_TRUE(injected);
}

} // namespace
} // namespace contract
