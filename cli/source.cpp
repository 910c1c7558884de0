#include "source.h"

#include "visible.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace cli {

namespace {

struct Closer {
  void operator()(FILE *stream) const {
    if (stream != stdin && stream != stdout) std::fclose(stream);
  }
};
using Stream = std::unique_ptr<FILE, Closer>;

Stream open(const std::string &file, const char *mode, FILE *standard) {
  Stream stream(file == "-" ? standard : std::fopen(file.c_str(), mode));
  if (!stream) throw FileError(visible(file), errno);
  return stream;
}

} // namespace

FileError::FileError(const std::string &fileName, int error)
    : std::runtime_error(fileName + ": " + std::strerror(error)), name(fileName), reason(std::strerror(error)) {}

Source readSource(const std::string &file, std::size_t limit) {
  Source source{file == "-" ? "<stdin>" : visible(file), {}};
  const Stream stream = open(file, "rb", stdin);
  char piece[65536];
  while (source.bytes.size() <= limit) {
    const std::size_t wanted = std::min(sizeof(piece), limit + 1 - source.bytes.size());
    const std::size_t count = std::fread(piece, 1, wanted, stream.get());
    if (count == 0) break;
    source.bytes.append(piece, count);
  }
  if (std::ferror(stream.get())) throw FileError(source.name, errno);
  return source;
}

void flushOutput() {
  if (std::fflush(stdout) != 0 || std::ferror(stdout)) throw FileError("<stdout>", errno);
}

void writeFile(const std::string &file, const std::string &bytes) {
  const Stream stream = open(file, "wb", stdout);
  const std::size_t written = std::fwrite(bytes.data(), 1, bytes.size(), stream.get());
  if (written != bytes.size() || std::fflush(stream.get()) != 0)
    throw FileError(file == "-" ? "<stdout>" : visible(file), errno);
}

} // namespace cli
