// Bodies that cost a reader as much as their length allows: one shape for each way to do so.
#pragma once

#include "rtx.h"

#include <functional>
#include <string>
#include <vector>

namespace bench {

// The document that a shape is written for.
struct HostileDocument {
  int (*decode)(RuntimeContext *ctx);
  int (*validate)(RuntimeContext *ctx);
};

struct HostileShape {
  const char *name;
  const char *attack; // what there is so much of
  const HostileDocument *document;
  int status;                                    // of decoding, while the heap suffices
  std::function<std::string(size_t bytes)> make; // a body of about so many bytes
};

const std::vector<HostileShape> &hostileShapes();

// Elements that take more of the heap than there is, in little input.
struct GreedySpelling {
  const char *name;
  const HostileDocument *document;
  std::string opening;
  std::string element;
  std::string ending;
  unsigned count;   // of the elements
  int status;       // of decoding
  const char *path; // of the first element that finds no storage; null: other errors have taken all records
};
const std::vector<GreedySpelling> &greedySpellings();
std::string greedyBody(const GreedySpelling &spelling);

// A small body that decodes and whose names and prefixes no body of another number has.
std::string bodyWithFreshNames(unsigned number);

} // namespace bench
