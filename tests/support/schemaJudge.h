// Documents judged by a published schema.
#pragma once

#include "temporaryFolder.h"

#include <map>
#include <string>

namespace support {

// Collects documents and has xmllint judge them by a schema of the folder that IMSCODEC_SCHEMAS names.
class SchemaJudge {
public:
  explicit SchemaJudge(const std::string &schemaFile);

  // Without a folder of schemas there is nothing to judge by.
  bool available() const { return !schema.empty(); }

  void add(const std::string &name, const std::string &document);

  // By name, whether the schema accepts a document. Complains unless each document got a verdict.
  std::map<std::string, bool> verdicts();

  // What xmllint said.
  const std::string &report() const { return said; }

private:
  std::filesystem::path schema;
  TemporaryFolder folder;
  size_t documents = 0;
  std::string said;
};

} // namespace support
