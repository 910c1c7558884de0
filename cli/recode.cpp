// imscodec recode: documents as the codec itself writes it.
#include "commands.h"
#include "encoding.h"
#include "indent.h"
#include "session.h"

#include <optional>

namespace cli {

namespace {

// The document anew, or nothing. What was wrong with it has been told then.
std::optional<std::string> recoded(Session &session, const Source &source, ColorWish colors, ExitStatus &exitStatus) {
  const ims::DocumentSchema *kind = session.begin(source);
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

  writeProblems(stderr, source, problems, colors);
  if (!problems.empty()) worsen(exitStatus, badDocument);
  return document;
}

} // namespace

ExitStatus recodeDocuments(const Request &request, const std::string &output, bool indented) {
  ExitStatus exitStatus = allGood;
  Session session(request.kind);
  std::optional<std::string> result;
  for (const Source &source : session.read(request.files.front(), exitStatus)) {
    const std::optional<std::string> document = recoded(session, source, request.colors, exitStatus);
    if (!document) continue;
    if (!result) {
      result.emplace();
    } else if (!result->ends_with('\n')) {
      *result += '\n';
    }
    *result += indented ? indent(*document) : *document;
  }
  if (result) writeFile(output, *result);
  return exitStatus;
}

} // namespace cli
