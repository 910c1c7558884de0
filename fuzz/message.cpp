// Any bytes, as a file that the tool takes documents from.
#include "message.h"

#include "check.h"

#include <cstdint>

using namespace fuzz;

namespace {

constexpr size_t limit = 3000;
constexpr size_t mostParts = 1000;

bool endsWithReason(const std::string &refusal) { return refusal.starts_with("file") && refusal.size() > 6; }

// Where a document's bytes come from: in order, all inside of the file, and the very bytes if nothing was encoded.
void requirePlaces(const cli::Source &document, bool encoded) {
  const std::string &file = document.file->bytes();
  size_t before = 0;
  for (size_t i = 0; i < document.bytes.size(); ++i) {
    const size_t at = document.places.inFile(i);
    require(at < file.size(), "a byte of a document has a place in its file");
    require(at >= before, "the places of a document are in order");
    require(encoded || file[at] == document.bytes[i], "a document is what stands in its file");
    before = at;
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const std::string bytes(reinterpret_cast<const char *>(data), size);
  const cli::Findings findings = cli::findDocuments({.name = "file", .bytes = bytes}, limit);
  require(!findings.documents.empty() || !findings.refusals.empty(), "something is found or refused");
  require(findings.documents.size() <= mostParts, "documents of a file are bounded");
  for (const std::string &refusal : findings.refusals)
    require(endsWithReason(refusal), "a refusal names the file and a reason", [&] { return refusal; });
  // Header names come in any case.
  std::string lower = bytes;
  for (char &c : lower)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  const bool encoded = lower.find("content-transfer-encoding") != std::string::npos;
  for (const cli::Source &document : findings.documents) {
    require(document.name.starts_with("file"), "a document is named by its file", [&] { return document.name; });
    if (document.file) {
      require(size <= limit, "a message that is too long is refused");
      requirePlaces(document, encoded);
    } else {
      require(document.bytes == bytes, "a file that is no message is the document");
    }
  }
  return 0;
}
