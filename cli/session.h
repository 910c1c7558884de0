// The runtime context on which one document after the other is worked on.
#pragma once

#include "Schema.h"
#include "exitStatus.h"
#include "problem.h"
#include "source.h"

#include <memory>
#include <string>
#include <vector>

namespace cli {

class Session {
public:
  // givenKind null: each document's root tells its kind.
  explicit Session(const ims::DocumentSchema *givenKind);

  // Reads a file and finds the documents in it. Why there is none, or what cannot be used, has gone to the standard
  // error stream then.
  std::vector<Source> read(const std::string &file, ExitStatus &exitStatus) const;

  // Makes a document the context's input and finds its kind. Null: problems() tells why. The source must stay.
  const ims::DocumentSchema *begin(const Source &source);

  // Records a status that nobody has recorded.
  void check(int status) const;

  // What was wrong with the document since it began. Places are those of its file.
  std::vector<Problem> problems() const;

  std::size_t inputLimit() const { return limit; }

  RuntimeContext *context() const { return owned.get(); }

private:
  struct Release {
    void operator()(RuntimeContext *ctx) const;
  };
  std::unique_ptr<RuntimeContext, Release> owned;
  const ims::DocumentSchema *given;
  const Source *current = nullptr;
  std::size_t limit;
};

} // namespace cli
