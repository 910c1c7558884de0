#include "faultPlan.h"

namespace support {

void FaultPlan::arm(uint64_t n, bool andAllAfter) {
  armed = true;
  persistent = andAllAfter;
  seen = 0;
  target = n;
  refusals = 0;
}

void FaultPlan::disarm() { armed = false; }

bool FaultPlan::refuseNext() {
  if (!armed) return false;
  ++seen;
  if (seen != target && !(persistent && seen > target)) return false;
  ++refusals;
  return true;
}

FaultPlan &faultPlan() {
  static FaultPlan plan;
  return plan;
}

} // namespace support
