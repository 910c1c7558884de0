// SIPp as a process that ends with its owner.
#pragma once

#include "Link.h"

#include <filesystem>
#include <string>
#include <sys/types.h>
#include <vector>

namespace carrier {

class Sipp {
public:
  // Runs in this folder, and leaves there what it prints.
  Sipp(const std::filesystem::path &folder, Transport transport, const std::vector<std::string> &arguments);
  ~Sipp();
  Sipp(const Sipp &) = delete;
  Sipp &operator=(const Sipp &) = delete;

  bool isRunning();

  // Waits until it has ended.
  bool ends(std::chrono::milliseconds patience);

  int status() const { return exitStatus; } // once it has ended; 0: every call went well

  std::string said() const; // the errors that it has told, and how it ended

private:
  const std::filesystem::path folder;
  pid_t process;
  int exitStatus = -1;
};

} // namespace carrier
