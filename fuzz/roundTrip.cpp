// What is decoded is encoded, and decodes to the same.
#include "Engines.h"
#include "check.h"
#include "world.h"

using namespace fuzz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const Input input(data, size);
  World world(input);
  if (!world) return 0;
  {
    Value first(world, *input.document);
    const bool clean = decode(world, input, first) == 0 && input.options.errorLimit != 0;
    rtxErrClear(world);
    int status = rtxSetOutputDynamic(world);
    if (status == 0) {
      status = ims::encodeDocument(world, *input.document, first.data());
      require(status == 0 || rtxErrCount(world) > 0, "a failure is recorded");
    }
    // Prefixes that nobody declared are read, and written again.
    const auto declared = [&] { return judge(input.body) == Xml::namespaced; };
    if (status != 0) {
      // What a body lacks is no error of its reader, but one of the writer.
      const bool lacking = status == STATUS_INVALID_CHOICE || status == STATUS_CONSTRAINT_VIOLATION;
      require(!clean || !input.isPlain() || lacking || !declared(), "what is read can be written",
              [&] { return errors(world); });
      return 0;
    }
    size_t length = 0;
    const char *output = rtxGetOutput(world, &length);
    const std::string text(output, length);
    const Xml verdict = judge(text);
    require(verdict != Xml::broken, "what is written is well-formed", [&] { return text; });
    // Foreign attributes are written by the names that they have.
    const bool own = verdict == Xml::namespaced || first.printed().find("_anyAttr") != std::string::npos;
    require(own || !declared(), "what is written declares its prefixes", [&] { return text; });
    if (!clean) return 0;
    require(!input.isPlain() || hasRootOf(*input.document, text), "a root is of its document's namespace",
            [&] { return text; });

    Input written = input.plainly();
    written.body = text;
    World other;
    Value second(other, *input.document);
    const auto both = [&] { return text + '\n' + first.printed() + "---\n" + second.printed() + errors(other); };
    status = decode(other, written, second);
    require(status == 0 || !declared(), "what is written can be read", both);
    require(first.printed() == second.printed() || !declared(), "what is written says the same", both);
  }
  world.requireNothingLeft();
  return 0;
}
