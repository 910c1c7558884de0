#include "schemaJudge.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>

namespace support {

SchemaJudge::SchemaJudge(const std::string &schemaFile) {
  const char *schemas = std::getenv("IMSCODEC_SCHEMAS");
  if (schemas == nullptr || *schemas == '\0') return;
  schema = std::filesystem::absolute(schemas) / schemaFile;
  EXPECT_TRUE(std::filesystem::exists(schema)) << schema;
}

void SchemaJudge::add(const std::string &name, const std::string &document) {
  std::ofstream(folder.path / (name + ".xml"), std::ios::binary) << document;
  ++documents;
}

static std::string quoted(const std::filesystem::path &path) {
  std::string all = "'";
  for (char c : path.string())
    all += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return all + "'";
}

std::map<std::string, bool> SchemaJudge::verdicts() {
  const std::string command =
      "cd " + quoted(folder.path) + " && xmllint --noout --nonet --schema " + quoted(schema) + " *.xml >report 2>&1";
  static_cast<void>(std::system(command.c_str())); // each verdict counts for itself
  std::map<std::string, bool> all;
  std::ifstream lines(folder.path / "report");
  for (std::string line; std::getline(lines, line); said += line + "\n")
    for (const auto &[ending, accepted] : {std::pair{".xml validates", true}, {".xml fails to validate", false}})
      if (line.ends_with(ending)) all[line.substr(0, line.size() - std::string(ending).size())] = accepted;
  EXPECT_EQ(all.size(), documents) << said;
  return all;
}

} // namespace support
