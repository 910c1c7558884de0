// Any bytes, validated as any document.
#include "check.h"
#include "world.h"

using namespace fuzz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const Input input(data, size);
  World world(input);
  if (!world) return 0;
  const int status = validate(world, input);
  requireRecords(world, input, status);
  requireLimits(world, input, status);
  world.requireNothingLeft();
  const bool trusted = status == 0 && input.options.errorLimit != 0; // with that limit all errors go untold
  if (!input.isPlainly() && (trusted || input.isPlain())) {
    World other;
    const int expected = validate(other, input.plainly());
    const auto all = [&] { return errors(world) + "---\n" + errors(other); };
    require(expected == status, "how a body is read does not change the status", all);
    require(errors(other) == errors(world), "how a body is read does not change the errors", all);
  }
  world.requireUsable();
  return 0;
}
