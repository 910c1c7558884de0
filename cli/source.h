// The files and documents that the tool works on.
#pragma once

#include "place.h"

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>

namespace cli {

// A file that documents stand in, as it is.
class File {
public:
  File(std::string fileName, std::string fileBytes)
      : called(std::move(fileName)), content(std::move(fileBytes)), index(content) {}
  File(const File &) = delete;
  File &operator=(const File &) = delete;

  const std::string &name() const { return called; }
  const std::string &bytes() const { return content; }
  const LineIndex &lines() const { return index; }

private:
  std::string called;
  std::string content;
  LineIndex index;
};

// A document.
struct Source {
  std::string name; // for people
  std::string bytes;
  std::shared_ptr<const File> file = nullptr; // that it was taken from; null: it is a file itself
  PlaceMap places = {};                       // in that file
  std::size_t part = 0;                       // of a multipart there, from 1
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

// Sends out what was written to the standard output. Throws FileError if anything of it is lost.
void flushOutput();

// Writes a file, or the standard output for "-".
void writeFile(const std::string &file, const std::string &bytes);

} // namespace cli
