#include "temporaryFolder.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <string>

namespace support {

TemporaryFolder::TemporaryFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "imscodec-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    ADD_FAILURE() << "no temporary folder";
  } else {
    path = name;
  }
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  if (!path.empty()) std::filesystem::remove_all(path, ignored);
}

} // namespace support
