// docs/security.md names the tests and the promises of fuzzers that hold what it says, and the defaults of all limits.
// They must exist, and be these.
#include "rtxContext.h"

#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <sstream>
#include <string>

namespace {

constexpr const char *folder = IMSCODEC_SOURCE_DIR "/";

std::string contents(const std::string &path) {
  std::ifstream file(folder + path);
  std::ostringstream text;
  text << file.rdbuf();
  EXPECT_TRUE(file) << path;
  return text.str();
}

bool defines(const std::string &source, const std::string &suite, const std::string &name) {
  return std::regex_search(source, std::regex("\\bTEST(_F|_P)?\\(" + suite + ",\\s*" + name + "\\)"));
}

// Looks up each test and each promise that a "Held by" paragraph names in the source named before it. Their number.
size_t lookUp(const std::string &paragraph) {
  static const std::regex word("`([^`]+)`|\"([^\"]+)\"");
  size_t named = 0;
  std::string path;
  std::string source;
  for (std::sregex_iterator found(paragraph.begin(), paragraph.end(), word), end; found != end; ++found) {
    const std::string code = (*found)[1];
    const std::string quoted = (*found)[2];
    const size_t dot = code.find('.');
    if (!quoted.empty()) {
      EXPECT_EQ(path.rfind("fuzz/", 0), 0u) << quoted << " has no fuzzer";
      EXPECT_NE(source.find('"' + quoted + '"'), std::string::npos) << path << " does not promise: " << quoted;
      ++named;
    } else if (code.find('/') != std::string::npos) {
      path = code;
      source = contents(path);
    } else {
      EXPECT_NE(dot, std::string::npos) << code;
      EXPECT_TRUE(defines(source, code.substr(0, dot), code.substr(dot + 1))) << path << " has no test " << code;
      ++named;
    }
  }
  return named;
}

TEST(SecurityDocument, NamesTestsAndPromisesThatExist) {
  const std::string text = contents("docs/security.md");
  static const std::regex heading("\n### (\\d+)\\. ");
  int number = 0;
  for (std::sregex_iterator found(text.begin(), text.end(), heading), end; found != end; ++found) {
    EXPECT_EQ((*found)[1], std::to_string(++number));
    SCOPED_TRACE(number);
    const size_t begin = static_cast<size_t>(found->position());
    const std::string invariant = text.substr(begin, text.find("\n#", begin + 1) - begin);
    const size_t held = invariant.find("\nHeld by ");
    ASSERT_NE(held, std::string::npos);
    EXPECT_GT(lookUp(std::regex_replace(invariant.substr(held), std::regex("\n"), " ")), 0u);
  }
  EXPECT_GE(number, 8);
}

TEST(SecurityDocument, TellsTheDefaultOfEveryLimit) {
  const std::string text = contents("docs/security.md");
  RuntimeOptions options;
  rtxOptionsInit(&options);
  const std::map<std::string, size_t> limits = {{"inputLimit", options.inputLimit},
                                                {"depthLimit", options.depthLimit},
                                                {"attributeLimit", options.attributeLimit},
                                                {"nameLimit", options.nameLimit},
                                                {"tagLimit", options.tagLimit},
                                                {"textLimit", options.textLimit},
                                                {"errorLimit", options.errorLimit},
                                                {"errorsKept", options.errorsKept},
                                                {"heapLimit", options.heapLimit}};
  static const std::regex row("\n\\| `(\\w+)` \\| (\\d+)( MiB)? \\|");
  std::map<std::string, size_t> told;
  for (std::sregex_iterator found(text.begin(), text.end(), row), end; found != end; ++found)
    told[(*found)[1]] = std::stoul((*found)[2]) << ((*found)[3].matched ? 20 : 0);
  EXPECT_EQ(told, limits);
}

} // namespace
