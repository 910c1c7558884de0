#include "session.h"

#include "kinds.h"
#include "rtxError.h"

#include <cstdio>
#include <new>

namespace cli {

void Session::Release::operator()(RuntimeContext *ctx) const { rtxContextFree(ctx); }

Session::Session(const ims::DocumentSchema *givenKind) : given(givenKind) {
  RuntimeOptions options;
  rtxOptionsInit(&options);
  inputLimit = options.inputLimit;
  owned.reset(rtxContextCreate(&options));
  if (!owned) throw std::bad_alloc();
}

std::optional<Source> Session::read(const std::string &file, ExitStatus &exitStatus) const {
  try {
    return readSource(file, inputLimit);
  } catch (const FileError &error) {
    std::fflush(stdout);
    std::fprintf(stderr, "imscodec: %s\n", error.what());
    worsen(exitStatus, unusable);
    return std::nullopt;
  }
}

void Session::check(int status) const {
  if (status != 0 && rtxErrCount(context()) == 0) rtxErrSetNewData(context(), status, "cli/session", 1);
}

const ims::DocumentSchema *Session::begin(const Source &source) {
  rtxContextReset(context());
  const int status = rtxSetInputZ(context(), source.bytes.c_str(), source.bytes.size());
  check(status);
  if (status != 0) return nullptr;
  return given ? given : findKind(context());
}

} // namespace cli
