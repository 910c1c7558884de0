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
    requireRecords(world, input, status);
    requireLimits(world, input, status);
    const std::string printed = value.printed();
    const bool trusted = status == 0 && input.options.errorLimit != 0; // with that limit all errors go untold
    if (!input.isPlainly() && (trusted || input.isPlain())) {
      World other;
      Value same(other, *input.document);
      const int expected = decode(other, input.plainly(), same);
      const auto all = [&] { return errors(world) + "---\n" + errors(other) + printed + "---\n" + same.printed(); };
      require(expected == status, "how a body is read does not change the status", all);
      require(same.printed() == printed, "how a body is read does not change the record", all);
      require(errors(other) == errors(world), "how a body is read does not change the errors", all);
    }
  }
  world.requireNothingLeft();
  world.requireUsable();
  return 0;
}
