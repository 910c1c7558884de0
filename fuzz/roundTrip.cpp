// What is decoded is encoded, and decodes to the same.
#include "Engines.h"
#include "check.h"
#include "world.h"

using namespace fuzz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const Input input(data, size);
  if (!input.isPlain()) return 0;
  World world(input);
  {
    Value first(world, *input.document);
    const bool clean = decode(world, input, first) == 0;
    rtxErrClear(world);
    rtxSetOutputDynamic(world);
    if (ims::encodeDocument(world, *input.document, first.data()) != 0) {
      require(!clean || rtxErrCount(world) > 0, "a failure is recorded");
      return 0;
    }
    size_t length = 0;
    const char *output = rtxGetOutput(world, &length);
    const std::string text(output, length);
    const Xml verdict = judge(text);
    require(verdict != Xml::broken, "what is written is well-formed", text);
    // Prefixes that nobody declared are read, and written again; foreign attributes are written by the names they have.
    const bool declared = judge(input.body) == Xml::namespaced;
    const bool ownPrefixes = declared && first.printed().find("_anyAttr") == std::string::npos;
    require(verdict == Xml::namespaced || !ownPrefixes, "what is written declares its prefixes", text);
    if (!clean || !declared) return 0;

    Input written = input;
    written.body = text;
    written.pieceLength = 0;
    World other;
    Value second(other, *input.document);
    const int status = decode(other, written, second);
    require(status == 0, "what is written can be read", text + '\n' + errors(other));
    require(first.printed() == second.printed(), "what is written says the same",
            text + '\n' + first.printed() + "---\n" + second.printed());
  }
  return 0;
}
