// What is measured: each workload handles one document once a call. They share no state, so that several can run in
// one process; each throws if its first call does not do what it should.
#pragma once

#include "documents.h"

#include <memory>

namespace bench {

// What a workload has taken from its context. Workloads without one have taken nothing.
struct Storage {
  unsigned long long systemCalls = 0; // of the system allocator, by our code
  size_t peak = 0;                    // of the heap, with the record that the caller gave
  size_t result = 0;                  // records, nodes and texts of the result; 0: there is none
};

class Workload {
public:
  Workload() = default;
  Workload(const Workload &) = delete;
  Workload &operator=(const Workload &) = delete;
  virtual ~Workload() = default;

  virtual void run() = 0;

  // Bytes read or written by one run.
  virtual size_t bytes() const = 0;

  virtual Storage storage() { return {}; }
};

struct NamedWorkload {
  std::string_view name;
  std::unique_ptr<Workload> (*make)(const Document &document);
  bool isRival = false;
  std::string_view documents = "abcdefgh"; // that it can handle

  bool handles(const Document &document) const { return documents.find(document.name) != std::string_view::npos; }
};

// The parser alone, with callbacks that do nothing: what everything else is compared with.
std::unique_ptr<Workload> makeFloor(const Document &document);
// The runtime's reader with handlers that do nothing.
std::unique_ptr<Workload> makeReader(const Document &document);
// Through the exported functions: into a record, without one, and from a record into a buffer that is used again.
std::unique_ptr<Workload> makeDecode(const Document &document);
std::unique_ptr<Workload> makeValidate(const Document &document);
std::unique_ptr<Workload> makeEncode(const Document &document);
// The decoder, and the function that gives back what its record holds; without it that goes with the message.
std::unique_ptr<Workload> makeRelease(const Document &document);
// A context in its first use: created, one body decoded, freed.
std::unique_ptr<Workload> makeFirstUse(const Document &document);
// All that a host does with a message, written in C and in C++; of documents a, b and d.
std::unique_ptr<Workload> makeHostInC(const Document &document);
std::unique_ptr<Workload> makeHostInCpp(const Document &document);

// The floor first.
const std::vector<NamedWorkload> &allWorkloads();

} // namespace bench
