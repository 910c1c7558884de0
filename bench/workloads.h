// What is measured: each workload handles the composing indication once a call. They share no state, so that several
// can run in one process; each throws if its first call does not do what it should.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

namespace bench {

class Workload {
public:
  Workload() = default;
  Workload(const Workload &) = delete;
  Workload &operator=(const Workload &) = delete;
  virtual ~Workload() = default;

  virtual void run() = 0;

  // Bytes read or written by one run.
  virtual size_t bytes() const = 0;

  // Calls of the system allocator that our code has made so far; workloads without a context have none.
  virtual unsigned long long systemCalls() const { return 0; }
};

struct NamedWorkload {
  std::string_view name;
  std::unique_ptr<Workload> (*make)();
};

// The parser alone, with callbacks that do nothing: what everything else is compared with.
std::unique_ptr<Workload> makeFloor();
// The runtime's reader with handlers that do nothing.
std::unique_ptr<Workload> makeReader();
// Through the exported functions: into a record, without one, and from a record into a buffer that is used again.
std::unique_ptr<Workload> makeDecode();
std::unique_ptr<Workload> makeValidate();
std::unique_ptr<Workload> makeEncode();
// A context in its first use: created, one body decoded, freed.
std::unique_ptr<Workload> makeFirstUse();

const std::vector<NamedWorkload> &allWorkloads();

} // namespace bench
