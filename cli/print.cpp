// imscodec print: what the codec makes of a document.
#include "commands.h"
#include "record.h"
#include "session.h"
#include "stream.h"

namespace cli {

namespace {

Answer decoded(Session &session, const Source &source) {
  Answer answer;
  if (const ims::DocumentSchema *kind = session.begin(source)) {
    Record record(session.context(), *kind);
    session.check(record.decode());
    answer.members["kind"] = kind->root;
    answer.members["record"] = documentJson(*kind, record.value());
  }
  answer.problems = session.problems();
  return answer;
}

Json printedJson(Session &session, const Source &source, ExitStatus &exitStatus) {
  const Answer answer = decoded(session, source);
  Json result = {{"file", source.name}};
  result.update(answer.members);
  result["errors"] = problemsJson(answer.problems);
  if (!answer.problems.empty()) worsen(exitStatus, badDocument);
  return result;
}

void printText(Session &session, const Source &source, ColorWish colors, ExitStatus &exitStatus) {
  if (const ims::DocumentSchema *kind = session.begin(source)) {
    Record record(session.context(), *kind);
    session.check(record.decode());
    record.print();
  }
  const std::vector<Problem> problems = session.problems();
  flushOutput();
  writeProblems(stderr, source, problems, colors);
  if (!problems.empty()) worsen(exitStatus, badDocument);
}

} // namespace

ExitStatus printDocuments(const Request &request) {
  if (request.stream) return answerStream(request, decoded);
  ExitStatus exitStatus = allGood;
  Session session(request.kind);
  Json documents = Json::array();
  bool first = true;
  for (const std::string &file : request.files) {
    const std::vector<Source> sources = session.read(file, exitStatus);
    for (const Source &source : sources) {
      if (request.json) {
        documents.push_back(printedJson(session, source, exitStatus));
        continue;
      }
      if (request.files.size() > 1 || sources.size() > 1)
        std::printf("%s%s:\n", first ? "" : "\n", source.name.c_str());
      first = false;
      printText(session, source, request.colors, exitStatus);
    }
  }
  if (request.json) printJson(documents);
  return exitStatus;
}

} // namespace cli
