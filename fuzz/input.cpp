#include "input.h"

#include "Catalogue.h"

namespace fuzz {

namespace {

using ims::DocumentSchema;

const DocumentSchema &documentAt(size_t index) {
  const ims::DocumentRange all = ims::allDocuments();
  return *all.first[index % static_cast<size_t>(all.last - all.first)];
}

// The name behind the first '<' that begins one, without its prefix.
std::string_view rootName(std::string_view body) {
  for (size_t at = body.find('<'); at != body.npos && at + 1 < body.size(); at = body.find('<', at + 1)) {
    if (body[at + 1] == '?' || body[at + 1] == '!') continue;
    std::string_view name = body.substr(at + 1, body.find_first_of(" \t\r\n/>", at) - at - 1);
    return name.substr(name.find(':') + 1);
  }
  return {};
}

const DocumentSchema &documentOf(std::string_view body) {
  const std::string_view name = rootName(body);
  for (const DocumentSchema *document : ims::allDocuments())
    if (name == document->root) return *document;
  return documentAt(name.size());
}

constexpr std::string_view separator = "\xFF\xFF";

enum Switch : uint8_t {
  InPlace = 1,
  FreshContext = 2,
  NamespacesDeclared = 4,
  FailingOnwards = 8
};

} // namespace

std::string_view Bytes::take(size_t length) {
  const size_t left = static_cast<size_t>(end - at);
  if (length > left) length = left;
  const std::string_view taken(reinterpret_cast<const char *>(at), length);
  at += length;
  return taken;
}

Input::Input(const uint8_t *data, size_t size) : Input(std::string_view(reinterpret_cast<const char *>(data), size)) {}

Input::Input(std::string_view text) : body(text.substr(0, text.find(separator))) {
  const size_t behind = body.size() + separator.size();
  Bytes choices(behind < text.size() ? text.substr(behind) : std::string_view());
  const uint8_t kind = choices.byte();
  document = kind == 0 ? &documentOf(body) : &documentAt(kind - 1u);
  choose(choices);
}

Input::Input(std::string_view text, const DocumentSchema &schema) : body(text), document(&schema) { choose(Bytes({})); }

template <class Limit> void Input::choose(Limit &limit, Limit least, Limit step, Bytes &choices) {
  const uint8_t choice = choices.byte();
  if (choice == 0) return;
  limit = least + step * (choice - 1u);
  limited = true;
}

void Input::choose(Bytes choices) {
  const uint8_t switches = choices.byte();
  inPlace = (switches & InPlace) != 0;
  freshContext = (switches & FreshContext) != 0;
  namespacesPreset = (switches & NamespacesDeclared) != 0;
  failingOnwards = (switches & FailingOnwards) != 0;
  pieceLength = choices.byte();
  failingAllocation = static_cast<uint16_t>(choices.number());
  room = static_cast<uint16_t>(choices.number());
  rtxOptionsInit(&options);
  // Each limit lets the smallest document through; see World::requireUsable.
  choose(options.heapLimit, size_t{64}, size_t{64}, choices);
  choose(options.inputLimit, size_t{18}, size_t{16}, choices);
  choose(options.depthLimit, 1u, 1u, choices);
  choose(options.attributeLimit, 0u, 1u, choices);
  choose(options.nameLimit, 1u, 1u, choices);
  choose(options.tagLimit, size_t{0}, size_t{16}, choices);
  choose(options.textLimit, size_t{1}, size_t{8}, choices);
  choose(options.errorLimit, 0u, 1u, choices);
  choose(options.errorsKept, 0u, 1u, choices);
}

} // namespace fuzz
