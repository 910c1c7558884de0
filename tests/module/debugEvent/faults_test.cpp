// Storage that gives out, at every point of every operation.
#include "bodyFaults.h"
#include "debugInfo.h"

using namespace debugInfo;
using support::faults;
using support::Outcome;

namespace {

// Every kind of member once, and little text, so that every limit can be tried.
std::string smallBody(const Document &document) {
  const std::string start = "<start-trigger><from>f</from><time> t </time><debug-id>0A1B</debug-id></start-trigger>";
  const std::string stop = "<stop-trigger><reason>session_end</reason></stop-trigger>";
  const std::string control = "<control><interface>i</interface><depth>minimum</depth></control>";
  const std::string root = document.root;
  if (root == "debugconfig" || root == "debuginfo") {
    const std::string config =
        "<debugconfig aor='a'><session id='s'>" + start + stop + control + "</session></debugconfig>";
    if (root == "debugconfig") return config;
    return "<debuginfo xmlns=\""s + namespaceUri + "\" version='1' state='full'>" + config +
           "<x:f xmlns:x='u'>t<x:g/></x:f></debuginfo>";
  }
  return spelled(completeBody(document), "");
}

Outcome decodeBody(RuntimeContext *ctx, const Document &document, const std::string &text) {
  return support::decodeBody(ctx, text, [&](RuntimeContext *c) { return decodeInput(c, document); });
}

Outcome validateBody(RuntimeContext *ctx, const Document &document, const std::string &text) {
  return support::validateBody(ctx, text, document.validate);
}

Outcome encodeBody(RuntimeContext *ctx, const Document &document) {
  Held held(ctx, document);
  if (document.kind == Kind::record) held.init();
  Builder builder(ctx);
  builder.complete(document, held);
  held.owned = true;
  if (builder.failed) return {STATUS_NO_MEMORY, {}, false};
  return support::encodeBody(ctx, [&](RuntimeContext *c) { return document.encode(c, held); });
}

// Errors of every kind in one body.
std::string badBody() {
  return "<other xmlns=\""s + namespaceUri +
         "\" version='x' state='y' k='1'><bogus/><debugconfig aor='a'><session><start-trigger><from l='1'>f</from>"
         "<debug-id>4</debug-id></start-trigger><stop-trigger><reason>r</reason></stop-trigger><control><interface/>"
         "<debug-id>4x</debug-id></control></session></debugconfig><x:f xmlns:x='u'>t</x:f></other>";
}

TEST(Faults, DecodeEveryDocument) {
  for (const Document &document : allDocuments()) {
    SCOPED_TRACE(document.root);
    const std::string text = spelled(completeBody(document), "");
    EXPECT_GT(faults([&](RuntimeContext *ctx) { return decodeBody(ctx, document, text); }).failed, 0u);
  }
}

TEST(Faults, ValidateEveryRecord) {
  for (const Document *document : recordDocuments()) {
    SCOPED_TRACE(document->root);
    const std::string text = spelled(completeBody(*document), "");
    EXPECT_GT(faults([&](RuntimeContext *ctx) { return validateBody(ctx, *document, text); }).failed, 0u);
  }
}

TEST(Faults, EncodeEveryDocument) {
  for (const Document &document : allDocuments()) {
    SCOPED_TRACE(document.root);
    EXPECT_GT(faults([&](RuntimeContext *ctx) { return encodeBody(ctx, document); }).failed, 0u);
  }
}

TEST(Faults, WithErrorsOfEveryKind) {
  const Document &document = documentOf("debuginfo");
  const std::string bad = badBody();
  const std::string cutOff = bad.substr(0, bad.find("</debug-id></control>"));
  for (const std::string &text : {bad, cutOff}) {
    EXPECT_GT(faults([&](RuntimeContext *ctx) { return decodeBody(ctx, document, text); }).runs, 0u);
    EXPECT_GT(faults([&](RuntimeContext *ctx) { return validateBody(ctx, document, text); }).runs, 0u);
  }
  const std::string simple = "<other k='1'>a<b/>c</other>";
  for (const Document *value : simpleDocuments())
    EXPECT_GT(faults([&](RuntimeContext *ctx) { return decodeBody(ctx, *value, simple); }).runs, 0u);
}

TEST(Faults, LongTexts) {
  const Document &document = documentOf("debuginfo");
  const std::string text =
      element("debuginfo", "version='1' state='full'",
              "<debugconfig aor='" + std::string(40000, 'a') + "'><session id='s'><start-trigger><from>" +
                  std::string(70000, 'f') + "</from><debug-id>" + std::string(90000, '4') +
                  "</debug-id></start-trigger></session></debugconfig><x:f xmlns:x=\"u\">" + std::string(90000, 'x') +
                  "</x:f>");
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return decodeBody(ctx, document, text); }).failed, 4u);
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return validateBody(ctx, document, text); }).failed, 2u);
  for (const char *root : {"method", "debug-id"}) {
    const std::string value = element(root, std::string(90000, '4'));
    EXPECT_GT(faults([&](RuntimeContext *ctx) { return decodeBody(ctx, documentOf(root), value); }).failed, 2u);
  }
}

TEST(Faults, EncodeUnderTheHostsNames) {
  const auto report = faults([](RuntimeContext *ctx) -> Outcome {
    const std::string prefix(100, 'p');
    const int status = rtXmlNSSetNamespace(ctx, nullptr, prefix.c_str(), namespaceUri, true);
    if (status != 0) return {status, {}, false};
    return encodeBody(ctx, documentOf("debuginfo"));
  });
  EXPECT_GT(report.failed, 0u);
}

TEST(Faults, EncodeOneType) {
  for (const Document *document : recordDocuments()) {
    const auto report = faults([&](RuntimeContext *ctx) -> Outcome {
      Held held(ctx, *document);
      held.init();
      Builder builder(ctx);
      builder.complete(*document, held);
      if (builder.failed) return {STATUS_NO_MEMORY, {}, false};
      const RtxNamespace ns = {"p", "urn:p"};
      return support::encodeBody(ctx, [&](RuntimeContext *c) { return document->type->encode(c, held, "thing", &ns); });
    });
    EXPECT_GT(report.failed, 0u);
  }
}

TEST(Faults, Registry) {
  const auto report = faults([](RuntimeContext *ctx) -> Outcome {
    const int status = QxInit_DebugEvent_Global(ctx);
    QxFree_DebugEvent_Global(ctx);
    return {status, {}, false};
  });
  EXPECT_GT(report.failed, 0u);
}

TEST(HeapLimit, DecodeEveryDocument) {
  for (const Document &document : allDocuments()) {
    SCOPED_TRACE(document.root);
    const std::string text = smallBody(document);
    const auto report = support::everyHeapLimit([&](RuntimeContext *ctx) { return decodeBody(ctx, document, text); });
    if (document.kind == Kind::code) continue; // it needs nothing of the heap
    EXPECT_GT(report.failed, 0u);
  }
}

TEST(HeapLimit, ValidateEveryRecord) {
  for (const Document *document : recordDocuments()) {
    SCOPED_TRACE(document->root);
    const std::string text = smallBody(*document);
    EXPECT_GT(support::everyHeapLimit([&](RuntimeContext *ctx) { return validateBody(ctx, *document, text); }).failed,
              0u);
  }
}

TEST(HeapLimit, WithErrorsOfEveryKind) {
  const Document &document = documentOf("debuginfo");
  EXPECT_GT(support::everyHeapLimit([&](RuntimeContext *ctx) { return decodeBody(ctx, document, badBody()); }).runs,
            0u);
  EXPECT_GT(support::everyHeapLimit([&](RuntimeContext *ctx) { return validateBody(ctx, document, badBody()); }).runs,
            0u);
}

} // namespace
