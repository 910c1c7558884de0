// imscodec validate: whether documents are good, and where they are not.
#include "Engines.h"
#include "commands.h"
#include "progress.h"
#include "record.h"
#include "rtxError.h"
#include "session.h"
#include "stream.h"

namespace cli {

namespace {

// From so many files on it takes long enough to show how far it is.
constexpr std::size_t manyFiles = 20;

struct Verdict {
  const ims::DocumentSchema *kind = nullptr;
  bool decodedOnly = false; // no validator is offered for this kind
  std::vector<Problem> problems;

  bool good() const { return problems.empty(); }
};

Verdict judge(Session &session, const Source &source) {
  Verdict verdict;
  verdict.kind = session.begin(source);
  if (verdict.kind) {
    int status = ims::validateDocument(session.context(), *verdict.kind);
    verdict.decodedOnly = status == STATUS_NOT_SUPPORTED;
    if (verdict.decodedOnly) status = Record(session.context(), *verdict.kind).decode();
    session.check(status);
  }
  verdict.problems = session.problems();
  return verdict;
}

void printVerdict(const Source &source, const Verdict &verdict, ColorWish colors) {
  const Paint paint(colors, stdout);
  const char *note = verdict.decodedOnly ? " (decoded, since no validator is offered for its kind)" : "";
  if (verdict.good()) {
    std::printf("%s: %s%s\n", source.name.c_str(), paint.success("ok").c_str(), note);
    return;
  }
  writeProblems(stdout, source, verdict.problems, colors);
  if (verdict.decodedOnly) std::printf("%s: not validated%s\n", source.name.c_str(), note);
}

Answer validated(Session &session, const Source &source) {
  Verdict verdict = judge(session, source);
  Answer answer;
  if (verdict.kind) {
    answer.members["kind"] = verdict.kind->root;
    answer.members["validated"] = !verdict.decodedOnly;
  }
  answer.problems = std::move(verdict.problems);
  return answer;
}

Json verdictJson(const Source &source, const Answer &answer) {
  Json result = {{"file", source.name}, {"ok", answer.problems.empty()}};
  result.update(answer.members);
  result["errors"] = problemsJson(answer.problems);
  return result;
}

struct Count {
  std::size_t files = 0;
  std::size_t good = 0;
  std::size_t bad = 0;
  std::size_t unreadable = 0; // files

  std::size_t bodies() const { return good + bad; }
};

void printSummary(const Count &count) {
  std::printf("%zu file%s", count.files, count.files == 1 ? "" : "s");
  if (count.bodies() + count.unreadable != count.files) std::printf(" with %zu bodies", count.bodies());
  std::printf(": %zu ok, %zu bad", count.good, count.bad);
  if (count.unreadable > 0) std::printf(", %zu unreadable", count.unreadable);
  std::printf("\n");
}

} // namespace

ExitStatus validateDocuments(const Request &request) {
  if (request.stream) return answerStream(request, validated);
  ExitStatus exitStatus = allGood;
  Session session(request.kind);
  Progress progress(request.files.size(), manyFiles);
  Json verdicts = Json::array();
  Count count;
  for (const std::string &file : request.files) {
    const std::vector<Source> sources = session.read(file, exitStatus);
    if (sources.empty()) ++count.unreadable;
    for (const Source &source : sources) {
      progress.show(count.files);
      bool good = false;
      if (request.json) {
        const Answer answer = validated(session, source);
        good = answer.problems.empty();
        verdicts.push_back(verdictJson(source, answer));
      } else {
        const Verdict verdict = judge(session, source);
        good = verdict.good();
        progress.hide();
        printVerdict(source, verdict, request.colors);
      }
      progress.hide();
      ++(good ? count.good : count.bad);
    }
    ++count.files;
  }
  if (request.json) {
    printJson(verdicts);
  } else if (count.files > 1 || count.bodies() > 1) {
    printSummary(count);
  }
  if (count.bad > 0) worsen(exitStatus, badDocument);
  return exitStatus;
}

} // namespace cli
