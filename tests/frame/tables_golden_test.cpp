// The library's tables against the dump that is kept of them, one for each layout of records.
//
// After a change that is meant, run this test with IMSCODEC_UPDATE_GOLDEN=1 in the environment, which rewrites the
// dump of the machine that it runs on, and read the difference before it is committed. The dump for 32-bit ARM comes
// from running the test of the armhf build in the same way.
#include "Catalogue.h"
#include "tableDump.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace {

constexpr const char *golden =
    sizeof(void *) == 8 ? IMSCODEC_GOLDEN_DIR "/tables-lp64.txt" : IMSCODEC_GOLDEN_DIR "/tables-ilp32.txt";

TEST(Tables, AreAsTheyWere) {
  const ims::DocumentRange all = ims::allDocuments();
  const std::string dump = frame::dumpTables({all.begin(), all.end()});
  if (std::getenv("IMSCODEC_UPDATE_GOLDEN")) {
    std::ofstream file(golden);
    file << dump;
    ASSERT_TRUE(file.flush()) << golden;
  }
  std::ifstream file(golden);
  ASSERT_TRUE(file) << golden << " is missing: run this test with IMSCODEC_UPDATE_GOLDEN=1";
  std::ostringstream kept;
  kept << file.rdbuf();
  EXPECT_EQ(kept.str(), dump) << "if that is meant, run this test with IMSCODEC_UPDATE_GOLDEN=1";
}

} // namespace
