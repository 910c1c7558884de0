// The runtime context on which one document after the other is worked on.
#pragma once

#include "Schema.h"
#include "exitStatus.h"
#include "problem.h"
#include "source.h"

#include <memory>
#include <optional>
#include <string>

namespace cli {

class Session {
public:
  // givenKind null: each document's root tells its kind.
  explicit Session(const ims::DocumentSchema *givenKind);

  // Reads a file. Nothing if that cannot be done: the reason has gone to the standard error stream then.
  std::optional<Source> read(const std::string &file, ExitStatus &exitStatus) const;

  // Makes a document the context's input and finds its kind. Null: problems() tells why. The source must stay.
  const ims::DocumentSchema *begin(const Source &source);

  // Records a status that nobody has recorded.
  void check(int status) const;

  // What was wrong with the document since it began.
  std::vector<Problem> problems() const { return problemsOf(context()); }

  RuntimeContext *context() const { return owned.get(); }

private:
  struct Release {
    void operator()(RuntimeContext *ctx) const;
  };
  std::unique_ptr<RuntimeContext, Release> owned;
  const ims::DocumentSchema *given;
  std::size_t inputLimit;
};

} // namespace cli
