// imscodec recode: a document as the codec itself writes it.
#include "commands.h"
#include "indent.h"
#include "record.h"
#include "rtXmlNamespace.h"
#include "rtxError.h"
#include "session.h"

namespace cli {

namespace {

// Where attributes belong to the module's namespace the codec writes them with the prefix that is bound to it. Their
// schema wants them bare, and so they are when the namespace has no prefix.
void declareNamespace(RuntimeContext *ctx, const ims::ModuleSchema &module) {
  if (!module.qualifiedAttributes) return;
  rtXmlNSSetNamespace(ctx, nullptr, nullptr, module.uri, true);
  ctx->flags |= NamespacesPreset;
}

// Encodes a record. Nothing if that fails: what was written until then is no document.
std::optional<std::string> encode(const Session &session, const ims::DocumentSchema &kind, const Record &record) {
  RuntimeContext *ctx = session.context();
  rtxErrClear(ctx);
  declareNamespace(ctx, *kind.module);
  int status = rtxSetOutputDynamic(ctx);
  if (status == 0) status = record.encode();
  session.check(status);
  if (status != 0) return std::nullopt;
  std::size_t length = 0;
  const char *text = rtxGetOutput(ctx, &length);
  return std::string(text, length);
}

} // namespace

ExitStatus recodeDocument(const Request &request, const std::string &output, bool indented) {
  ExitStatus exitStatus = allGood;
  Session session(request.kind);
  const std::optional<Source> source = session.read(request.files.front(), exitStatus);
  if (!source) return exitStatus;

  const ims::DocumentSchema *kind = session.begin(*source);
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

  writeProblems(stderr, *source, problems);
  if (!problems.empty()) worsen(exitStatus, badDocument);
  if (document) writeFile(output, indented ? indent(*document) : *document);
  return exitStatus;
}

} // namespace cli
