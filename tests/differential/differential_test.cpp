// Random and damaged bodies, judged by the library's validators and by the schemas of the formats, which lie in the
// folder that IMSCODEC_SCHEMAS names. IMSCODEC_SEED chooses other bodies.
#include "examples.h"
#include "generator.h"
#include "tally.h"

#include <cstdlib>
#include <gtest/gtest.h>

using namespace differential;
using support::Context;
using support::Random;

namespace {

class Differential : public testing::Test {
protected:
  void SetUp() override {
    const char *folder = std::getenv("IMSCODEC_SCHEMAS");
    if (folder == nullptr || *folder == '\0') GTEST_SKIP() << "IMSCODEC_SCHEMAS names no folder of schemas";
    for (const Vocabulary &vocabulary : vocabularies()) {
      schemas.emplace_back(folder, vocabulary);
      ASSERT_TRUE(schemas.back().usable()) << vocabulary.schema;
    }
  }

  void expectExplained(const Tally &tally) {
    for (const auto &[key, difference] : tally.unexplained)
      ADD_FAILURE() << difference;
  }

  std::vector<Schema> schemas; // one for each vocabulary
};

const Root &randomRoot(Random &random, const Vocabulary &vocabulary) {
  if (random.chance(75)) return vocabulary.roots[0];
  return vocabulary.roots[random.below(static_cast<uint32_t>(vocabulary.roots.size()))];
}

TEST_F(Differential, RandomBodiesDifferInListedKindsOnly) {
  constexpr int bodiesOfEach = 10000;
  const char *chosen = std::getenv("IMSCODEC_SEED");
  const uint64_t seed = chosen == nullptr ? 20261121 : std::strtoull(chosen, nullptr, 10);
  SCOPED_TRACE("IMSCODEC_SEED=" + std::to_string(seed));
  Random random(seed);
  Context ctx;
  Tally tally;
  for (size_t i = 0; i < schemas.size(); ++i) {
    const Vocabulary &vocabulary = vocabularies()[i];
    for (int round = 0; round < bodiesOfEach; ++round) {
      const Root &root = randomRoot(random, vocabulary);
      Element tree = validBody(random, vocabulary, root);
      for (uint32_t left = random.below(4); left != 0; --left)
        damage(random, vocabulary, tree);
      const std::string body = written(tree);
      const Root &asked = random.chance(95) ? root : randomRoot(random, vocabulary);
      tally.compare(body, schemas[i].complaints(body), complaints(ctx, vocabulary, asked, body));
    }
  }
  expectExplained(tally);
  // Otherwise the agreement would be about bodies that nobody sends.
  EXPECT_GT(tally.acceptedByBoth, tally.bodies / 4);
}

// The parser that judges keeps years in a long.
bool canShow(const Example &example) { return example.kind != "great-year" || sizeof(long) > 4; }

TEST_F(Differential, EachKindIsSeen) {
  Context ctx;
  for (const Example &example : examples()) {
    if (!canShow(example)) continue;
    SCOPED_TRACE(std::string(example.kind) + ": " + example.body);
    Tally tally;
    for (size_t i = 0; i < schemas.size(); ++i) {
      const Vocabulary &vocabulary = vocabularies()[i];
      if (vocabulary.uri != example.vocabulary) continue;
      const Root *root = vocabulary.findRoot(example.root);
      ASSERT_NE(root, nullptr);
      tally.compare(example.body, schemas[i].complaints(example.body),
                    complaints(ctx, vocabulary, *root, example.body));
    }
    expectExplained(tally);
    EXPECT_EQ(tally.kinds(), std::set<std::string_view>{example.kind});
  }
}

} // namespace
