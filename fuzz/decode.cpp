// Any bytes, decoded as any document.
#include "check.h"
#include "world.h"

using namespace fuzz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const Input input(data, size);
  World world(input);
  if (!world) return 0;
  {
    Value value(world, *input.document);
    const int status = decode(world, input, value);
    requireRecord(world, input, status);
    const std::string printed = value.printed();
    if (input.pieceLength != 0 && input.isPlain()) {
      Input whole = input;
      whole.pieceLength = 0;
      World other;
      Value sameValue(other, *input.document);
      require(decode(other, whole, sameValue) == status, "how a text is cut does not change the status", errors(other));
      require(sameValue.printed() == printed, "how a text is cut does not change the record", printed);
      require(errors(other) == errors(world), "how a text is cut does not change the errors", errors(world));
    }
  }
  RtxHeapStats stats;
  rtxHeapStats(world, &stats);
  require(stats.blocks == 0, "nothing stays behind on the heap");
  world.requireUsable();
  return 0;
}
