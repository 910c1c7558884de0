// docs/runtime.md lists what the codec imports: no function is missing, none is invented.
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <sstream>
#include <string>

namespace {

std::string contents(const std::string &path) {
  std::ifstream file(IMSCODEC_SOURCE_DIR "/" + path);
  std::ostringstream text;
  text << file.rdbuf();
  EXPECT_TRUE(file) << path;
  return text.str();
}

std::string section(const std::string &text, const std::string &heading) {
  const size_t begin = text.find("\n## " + heading + "\n");
  EXPECT_NE(begin, std::string::npos) << heading;
  return begin == std::string::npos ? "" : text.substr(begin, text.find("\n## ", begin + 1) - begin);
}

std::set<std::string> codeIn(const std::string &text) {
  static const std::regex code("`(\\w+)`");
  std::set<std::string> words;
  for (std::sregex_iterator found(text.begin(), text.end(), code), end; found != end; ++found)
    words.insert((*found)[1]);
  return words;
}

// What stands in the first column of the tables.
std::string firstCells(const std::string &text) {
  std::istringstream lines(text);
  std::string cells;
  for (std::string line; std::getline(lines, line);)
    if (line.rfind("| ", 0) == 0) cells += line.substr(0, line.find('|', 1)) + "\n";
  return cells;
}

TEST(RuntimeDocument, ListsWhatTheCodecImports) {
  std::istringstream golden(contents("tests/golden/codec.imports"));
  std::set<std::string> imports;
  for (std::string line; std::getline(golden, line);)
    imports.insert(line);
  EXPECT_GT(imports.size(), 80u);
  EXPECT_EQ(codeIn(firstCells(section(contents("docs/runtime.md"), "What the codec calls"))), imports);
}

TEST(RuntimeDocument, NamesNoFunctionThatTheHeadersDoNotDeclare) {
  std::string headers;
  for (const char *header : {"rtSax", "rtXmlDecode", "rtXmlEncode", "rtXmlNamespace", "rtxContext", "rtxError",
                             "rtxMemory", "rtxPrint", "rtxStatus", "rtxText"})
    headers += contents(std::string("runtime/") + header + ".h");
  size_t named = 0;
  for (const std::string &word : codeIn(contents("docs/runtime.md"))) {
    if (!std::regex_search(word, std::regex("^(rt|SAX|STATUS_|XMLSTATE_|RTSAX_)"))) continue;
    EXPECT_TRUE(std::regex_search(headers, std::regex("\\b" + word + "\\b"))) << word;
    ++named;
  }
  EXPECT_GT(named, 80u);
}

TEST(RuntimeDocument, NamesTheMembersThatTheCodecTouches) {
  const std::string text = firstCells(section(contents("docs/runtime.md"), "What the codec touches itself"));
  const std::set<std::string> members = {"buffer",   "state",  "flags",      "traced",
                                         "contract", "reader", "globalData", "globalRelease"};
  EXPECT_EQ(codeIn(text), members);
}

} // namespace
