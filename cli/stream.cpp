#include "stream.h"

#include "lineReader.h"
#include "message.h"

#include <cstdio>
#include <optional>

namespace cli {

namespace {

// An error that the codec knows nothing of, with the members that its own have.
Json refusalJson(const std::string &message) {
  return {{"status", nullptr},
          {"name", nullptr},
          {"message", message},
          {"parameters", Json::array()},
          {"trail", Json::array()}};
}

Json documentAnswer(Session &session, const Source &source, Examine examine) {
  Answer answer = examine(session, source);
  Json result = {{"ok", answer.problems.empty()}};
  if (source.part > 0) result["part"] = source.part;
  result.update(answer.members);
  if (!answer.problems.empty()) result["errors"] = problemsJson(answer.problems);
  return result;
}

Json findingsAnswer(Session &session, const Findings &findings, Examine examine) {
  if (findings.documents.size() == 1 && findings.refusals.empty())
    return documentAnswer(session, findings.documents[0], examine);
  Json result = {{"ok", findings.refusals.empty()}};
  for (const Source &source : findings.documents) {
    Json body = documentAnswer(session, source, examine);
    if (!body["ok"]) result["ok"] = false;
    result["bodies"].push_back(std::move(body));
  }
  for (const std::string &refusal : findings.refusals)
    result["errors"].push_back(refusalJson(refusal));
  return result;
}

Json refused(const std::string &message) { return {{"ok", false}, {"errors", Json::array({refusalJson(message)})}}; }

// The text of a JSON string; nothing if a line is anything else.
std::optional<std::string> textOf(const std::string &line) {
  const std::size_t first = line.find_first_not_of(" \t\r");
  if (first == std::string::npos || line[first] != '"') return std::nullopt;
  Json value = Json::parse(line, nullptr, false);
  if (!value.is_string()) return std::nullopt;
  return std::move(value.get_ref<std::string &>());
}

} // namespace

ExitStatus answerStream(const Request &request, Examine examine) {
  ExitStatus exitStatus = allGood;
  Session session(request.kind);
  LineReader lines(session.inputLimit());
  std::string line;
  for (std::size_t number = 1;; ++number) {
    const LineReader::Result result = lines.next(line);
    if (result == LineReader::Result::end) break;
    const std::string name = "line " + std::to_string(number);
    Json answer;
    if (result == LineReader::Result::tooLong) {
      answer = refused(name + ": more than " + std::to_string(session.inputLimit()) + " bytes");
    } else if (std::optional<std::string> text = textOf(line)) {
      const Findings findings = findDocuments({.name = name, .bytes = std::move(*text)}, session.inputLimit());
      answer = findingsAnswer(session, findings, examine);
    } else {
      answer = refused(name + ": no JSON string");
    }
    if (!answer["ok"]) worsen(exitStatus, badDocument);
    std::puts(jsonLine(answer).c_str());
  }
  return exitStatus;
}

} // namespace cli
