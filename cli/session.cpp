#include "session.h"

#include "kinds.h"
#include "message.h"
#include "rtxError.h"

#include <cstdio>
#include <new>

namespace cli {

void Session::Release::operator()(RuntimeContext *ctx) const { rtxContextFree(ctx); }

Session::Session(const ims::DocumentSchema *givenKind) : given(givenKind) {
  RuntimeOptions options;
  rtxOptionsInit(&options);
  limit = options.inputLimit;
  owned.reset(rtxContextCreate(&options));
  if (!owned) throw std::bad_alloc();
}

std::vector<Source> Session::read(const std::string &file, ExitStatus &exitStatus) const {
  Findings findings;
  try {
    findings = findDocuments(readSource(file, limit), limit);
  } catch (const FileError &error) {
    findings.refusals.emplace_back(error.what());
  }
  for (const std::string &refusal : findings.refusals) {
    flushOutput();
    std::fprintf(stderr, "imscodec: %s\n", refusal.c_str());
    worsen(exitStatus, unusable);
  }
  return std::move(findings.documents);
}

void Session::check(int status) const {
  if (status != 0 && rtxErrCount(context()) == 0) rtxErrSetNewData(context(), status, "cli/session", 1);
}

const ims::DocumentSchema *Session::begin(const Source &source) {
  current = &source;
  rtxContextReset(context());
  const int status = rtxSetInputZ(context(), source.bytes.c_str(), source.bytes.size());
  check(status);
  if (status != 0) return nullptr;
  return given ? given : findKind(context());
}

std::vector<Problem> Session::problems() const {
  std::vector<Problem> problems = problemsOf(context());
  if (current) placeInFile(problems, *current);
  return problems;
}

} // namespace cli
