// A folder of files for a test that calls another program.
#pragma once

#include <filesystem>

namespace support {

// A new folder that goes with what is in it. Its path is empty if it could not be made, which fails the test.
class TemporaryFolder {
public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder &) = delete;
  TemporaryFolder &operator=(const TemporaryFolder &) = delete;

  std::filesystem::path path;
};

} // namespace support
