#include "problem.h"

#include "excerpt.h"
#include "rtxError.h"
#include "utf8.h"
#include "visible.h"

#include <map>
#include <optional>
#include <set>

namespace cli {

namespace {

const char *nameOf(int status) {
  switch (static_cast<RtxStatus>(status)) {
  case STATUS_OK: return "STATUS_OK";
  case STATUS_BUFFER_OVERFLOW: return "STATUS_BUFFER_OVERFLOW";
  case STATUS_ROOT_MISMATCH: return "STATUS_ROOT_MISMATCH";
  case STATUS_ENUM_NOT_FOUND: return "STATUS_ENUM_NOT_FOUND";
  case STATUS_INVALID_CHOICE: return "STATUS_INVALID_CHOICE";
  case STATUS_NO_MEMORY: return "STATUS_NO_MEMORY";
  case STATUS_CONSTRAINT_VIOLATION: return "STATUS_CONSTRAINT_VIOLATION";
  case STATUS_READER_FAILED: return "STATUS_READER_FAILED";
  case STATUS_UNKNOWN_ATTRIBUTE: return "STATUS_UNKNOWN_ATTRIBUTE";
  case STATUS_UNEXPECTED_ELEMENT: return "STATUS_UNEXPECTED_ELEMENT";
  case STATUS_INVALID_CONTENT: return "STATUS_INVALID_CONTENT";
  case STATUS_INVALID_ATTRIBUTE: return "STATUS_INVALID_ATTRIBUTE";
  case STATUS_NOT_SUPPORTED: return "STATUS_NOT_SUPPORTED";
  case STATUS_INVALID_LEXICAL_FORM: return "STATUS_INVALID_LEXICAL_FORM";
  case STATUS_INVALID_UTF8: return "STATUS_INVALID_UTF8";
  case STATUS_MISSING_ATTRIBUTE: return "STATUS_MISSING_ATTRIBUTE";
  case STATUS_PARSE_FAILED: return "STATUS_PARSE_FAILED";
  case STATUS_BAD_CONTEXT: return "STATUS_BAD_CONTEXT";
  case STATUS_WRITE_FAILED: return "STATUS_WRITE_FAILED";
  case STATUS_LIMIT_EXCEEDED: return "STATUS_LIMIT_EXCEEDED";
  }
  return "unknown";
}

std::string messageOf(RuntimeContext *ctx, std::uint32_t index) {
  std::string message(rtxErrMessage(ctx, index, nullptr, 0), '\0');
  rtxErrMessage(ctx, index, message.data(), message.size() + 1);
  return message;
}

Json parameterJson(const RtxErrorParam &parameter) {
  switch (parameter.kind) {
  case RTX_PARAM_TEXT: return std::string(parameter.text, parameter.length);
  case RTX_PARAM_INT: return parameter.intValue;
  case RTX_PARAM_UINT: return parameter.uintValue;
  }
  return nullptr;
}

Problem problemOf(RuntimeContext *ctx, std::uint32_t index, const RtxError &error) {
  Problem problem{.status = error.status,
                  .message = messageOf(ctx, index),
                  .parameters = Json::array(),
                  .line = error.line,
                  .column = error.column,
                  .offset = error.offset,
                  .transcoded = error.transcoded,
                  .path = error.elementPath,
                  .trail = {}};
  for (std::uint32_t i = 0; i < error.paramCount; ++i)
    problem.parameters.push_back(parameterJson(error.params[i]));
  for (std::uint32_t i = 0; i < error.siteCount; ++i)
    problem.trail.emplace_back(error.sites[i].path, error.sites[i].line);
  return problem;
}

// The texts that places of a document point into.
class Texts {
public:
  explicit Texts(const std::string &document) : bytes(document) {}

  std::string excerptOf(const Problem &problem, const Paint &paint) {
    if (!problem.transcoded) return excerpt(bytes, problem.offset, problem.line, paint);
    if (!converted) {
      converted = true;
      utf8 = toUtf8(bytes);
    }
    return utf8 ? excerpt(*utf8, problem.offset, problem.line, paint) : std::string();
  }

private:
  const std::string &bytes;
  std::optional<std::string> utf8;
  bool converted = false;
};

std::string headline(const std::string &file, const Problem &problem, const Paint &paint) {
  std::string place = file + ":";
  if (problem.line != 0) place += std::to_string(problem.line) + ":" + std::to_string(problem.column) + ":";
  return paint.place(place) + " " + paint.error("error:") + " " + visible(problem.message) + " (status " +
         std::to_string(problem.status) + ")\n";
}

} // namespace

void placeInFile(std::vector<Problem> &problems, const Source &document) {
  if (!document.file) return;
  std::set<std::size_t> transcoded;
  for (const Problem &problem : problems)
    if (problem.transcoded) transcoded.insert(problem.offset);
  std::map<std::size_t, std::size_t> original;
  if (!transcoded.empty()) original = fromUtf8(document.bytes, transcoded);

  for (Problem &problem : problems) {
    if (problem.line == 0) continue;
    problem.offset = document.places.inFile(problem.transcoded ? original[problem.offset] : problem.offset);
    const LineAndColumn place = document.file->lines().at(problem.offset);
    problem.line = place.line;
    problem.column = place.column;
    problem.transcoded = false;
  }
}

std::vector<Problem> problemsOf(RuntimeContext *ctx) {
  std::vector<Problem> problems;
  for (std::uint32_t index = 0; const RtxError *error = rtxErrAt(ctx, index); ++index)
    problems.push_back(problemOf(ctx, index, *error));
  return problems;
}

void writeProblems(std::FILE *stream, const Source &source, const std::vector<Problem> &problems, ColorWish colors) {
  const Paint paint(colors, stream);
  Texts texts(source.file ? source.file->bytes() : source.bytes);
  for (const Problem &problem : problems) {
    std::string text = headline(source.name, problem, paint);
    if (problem.line != 0) text += texts.excerptOf(problem, paint);
    std::fwrite(text.data(), 1, text.size(), stream);
  }
}

Json problemsJson(const std::vector<Problem> &problems) {
  Json result = Json::array();
  for (const Problem &problem : problems) {
    Json item = {{"status", problem.status},
                 {"name", nameOf(problem.status)},
                 {"message", problem.message},
                 {"parameters", problem.parameters}};
    if (problem.line != 0) {
      item["line"] = problem.line;
      item["column"] = problem.column;
      item["offset"] = problem.offset;
      if (problem.transcoded) item["transcoded"] = true;
      item["path"] = problem.path;
    }
    item["trail"] = Json::array();
    for (const auto &[path, line] : problem.trail)
      item["trail"].push_back({{"path", path}, {"line", line}});
    result.push_back(std::move(item));
  }
  return result;
}

} // namespace cli
