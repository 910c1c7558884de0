// imscodec recode: a document as the codec itself writes it.
#include "commands.h"
#include "encoding.h"
#include "indent.h"
#include "session.h"

namespace cli {

ExitStatus recodeDocument(const Request &request, const std::string &output, bool indented) {
  ExitStatus exitStatus = allGood;
  Session session(request.kind);
  const std::optional<Source> source = session.read(request.files.front(), exitStatus);
  if (!source) return exitStatus;

  const ims::DocumentSchema *kind = session.begin(*source);
  std::vector<Problem> problems;
  std::optional<std::string> document;
  if (kind) {
    Record record(session.context(), *kind);
    session.check(record.decode());
    problems = session.problems();
    document = encode(session, *kind, record);
  }
  for (Problem &problem : session.problems())
    problems.push_back(std::move(problem));

  writeProblems(stderr, *source, problems);
  if (!problems.empty()) worsen(exitStatus, badDocument);
  if (document) writeFile(output, indented ? indent(*document) : *document);
  return exitStatus;
}

} // namespace cli
