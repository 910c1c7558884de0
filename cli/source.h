// The files that the tool works on.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace cli {

struct Source {
  std::string name; // for people
  std::string bytes;
};

// Why a file cannot be read or written: "NAME: reason".
struct FileError : std::runtime_error {
  FileError(const std::string &name, int error);
  std::string name;
  std::string reason;
};

// Reads a file, or the standard input for "-". Of a file with more than limit bytes, limit + 1 bytes are read: enough
// for the codec to refuse it.
Source readSource(const std::string &file, std::size_t limit);

// Writes a file, or the standard output for "-".
void writeFile(const std::string &file, const std::string &bytes);

} // namespace cli
