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

} // namespace

std::string_view Bytes::take(size_t length) {
  const size_t left = static_cast<size_t>(end - at);
  if (length > left) length = left;
  const std::string_view taken(reinterpret_cast<const char *>(at), length);
  at += length;
  return taken;
}

Input::Input(const uint8_t *data, size_t size) : body(reinterpret_cast<const char *>(data), size) {
  const size_t nul = body.rfind('\0');
  Bytes choices(nul == body.npos ? std::string_view() : body.substr(nul + 1));
  if (nul != body.npos) body = body.substr(0, nul);
  const uint8_t kind = choices.byte();
  document = kind == 0 ? &documentOf(body) : &documentAt(kind - 1u);
  inPlace = (choices.byte() & 1) != 0;
  pieceLength = choices.byte();
  heapLimit = size_t{choices.byte()} * 96;
  if (const uint8_t errors = choices.byte()) errorLimit = errors - 1u;
  depthLimit = choices.byte();
  failingAllocation = choices.number();
  failingOnwards = (failingAllocation & 0x8000) != 0;
  failingAllocation &= 0x7FFF;
}

} // namespace fuzz
