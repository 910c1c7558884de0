// Any bytes, validated as any document.
#include "check.h"
#include "world.h"

using namespace fuzz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const Input input(data, size);
  World world(input);
  if (!world) return 0;
  const int status = validate(world, input);
  requireRecord(world, input, status);
  RtxHeapStats stats;
  rtxHeapStats(world, &stats);
  require(stats.blocks == 0, "a validator leaves nothing on the heap");
  if (input.pieceLength != 0 && input.isPlain()) {
    Input whole = input;
    whole.pieceLength = 0;
    World other;
    require(validate(other, whole) == status, "how a text is cut does not change the status", errors(other));
    require(errors(other) == errors(world), "how a text is cut does not change the errors", errors(world));
  }
  world.requireUsable();
  return 0;
}
