// imscodec new: a document to start from.
#include "commands.h"
#include "encoding.h"
#include "indent.h"
#include "minimal.h"
#include "rtxStatus.h"
#include "session.h"

namespace cli {

ExitStatus newDocument(const ims::DocumentSchema &kind, const std::string &output, bool indented) {
  Session session(&kind);
  std::optional<std::string> document;
  {
    Record record(session.context(), kind);
    if (fillMinimal(session.context(), kind, record.value())) {
      document = encode(session, kind, record);
    } else {
      session.check(STATUS_NO_MEMORY);
    }
  }
  writeProblems(stderr, {.name = kind.root, .bytes = {}}, session.problems(), ColorWish::automatic);
  if (!document) return unusable;
  writeFile(output, indented ? indent(*document) : *document);
  return allGood;
}

} // namespace cli
