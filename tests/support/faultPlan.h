// Which allocations fail. There is one plan, and every allocator of the tests asks it: that of a Context, in
// executables linked with imscodec_wrap_system_allocator the malloc of everything that is linked statically, and in
// those linked with imscodec_wrap_scarce_runtime the runtime's functions that need storage.
#pragma once

#include <cstddef>
#include <cstdint>

namespace support {

class FaultPlan {
public:
  // Refuses the n-th allocation from now on (from 1), or that and all after it.
  void arm(uint64_t n, bool andAllAfter);
  void disarm();

  // Counts an allocation; true if it is to be refused.
  bool refuseNext();

  uint64_t refused() const { return refusals; } // since the plan was last armed

  size_t systemBlocks = 0; // blocks of the wrapped malloc alive

private:
  bool armed = false;
  bool persistent = false;
  uint64_t seen = 0;
  uint64_t target = 0;
  uint64_t refusals = 0;
};

FaultPlan &faultPlan();

} // namespace support
