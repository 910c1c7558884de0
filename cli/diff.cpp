// imscodec diff: what two documents say differently.
#include "commands.h"
#include "difference.h"
#include "record.h"
#include "session.h"
#include "visible.h"

#include <optional>

namespace cli {

namespace {

// One side of a comparison.
class Side {
public:
  explicit Side(const Request &request) : session(request.kind), colors(request.colors) {}

  // Reads and decodes a document. False if there is nothing good to compare; the reasons have been told then.
  bool load(const std::string &file) {
    ExitStatus exitStatus = allGood;
    std::vector<Source> sources = session.read(file, exitStatus);
    if (exitStatus != allGood) return false;
    if (sources.size() > 1) {
      std::fprintf(stderr, "imscodec: %s: %zu bodies, of which only one could be compared\n",
                   sources[0].file->name().c_str(), sources.size());
      return false;
    }
    source = std::move(sources[0]);
    kind = session.begin(*source);
    if (kind) {
      record.emplace(session.context(), *kind);
      session.check(record->decode());
    }
    const std::vector<Problem> problems = session.problems();
    writeProblems(stderr, *source, problems, colors);
    return problems.empty();
  }

  const std::string &name() const { return source->name; }
  const void *value() const { return record->value(); }

  const ims::DocumentSchema *kind = nullptr;

private:
  Session session;
  ColorWish colors;
  std::optional<Source> source;
  std::optional<Record> record;
};

std::string shown(const Json &value) { return value.is_null() ? "(none)" : visible(jsonLine(value)); }

void printDifferences(const std::vector<Difference> &all, const Paint &paint) {
  for (const Difference &difference : all)
    std::printf("%s: %s -> %s\n", paint.place(visible(difference.path)).c_str(),
                paint.error(shown(difference.before)).c_str(), paint.success(shown(difference.after)).c_str());
}

Json differencesJson(const std::vector<Difference> &all) {
  Json result = Json::array();
  for (const Difference &difference : all)
    result.push_back({{"path", difference.path}, {"old", difference.before}, {"new", difference.after}});
  return result;
}

} // namespace

ExitStatus compareDocuments(const Request &request) {
  if (request.files[0] == "-" && request.files[1] == "-") {
    std::fputs("imscodec: only one of both documents can be the standard input\n", stderr);
    return unusable;
  }
  Side before(request);
  Side after(request);
  // Both are read in any case, so that the errors of both are told.
  const bool goodBefore = before.load(request.files[0]);
  const bool goodAfter = after.load(request.files[1]);
  if (!goodBefore || !goodAfter) return unusable;
  if (before.kind != after.kind) {
    std::fprintf(stderr, "imscodec: %s is %s, %s is %s: documents of one kind can be compared\n", before.name().c_str(),
                 before.kind->root, after.name().c_str(), after.kind->root);
    return unusable;
  }
  const std::vector<Difference> all = differences(*before.kind, before.value(), after.value());
  if (request.json) {
    printJson(differencesJson(all));
  } else {
    printDifferences(all, Paint(request.colors, stdout));
  }
  return all.empty() ? allGood : different;
}

} // namespace cli
