// Storage that gives out, at every point of every operation.
#include "bodyFaults.h"
#include "composing.h"

using namespace composing;
using support::faults;
using support::Outcome;

namespace {

const std::string wholeDocument =
    document("<state>active</state><lastactive>2024-01-02T03:04:05Z</lastactive><contenttype>text/plain</contenttype>"
             "<refresh>90</refresh><x:f xmlns:x=\"u\">t<x:g>&lt;</x:g>u</x:f><y xmlns=\"v\"/>");

Outcome decodeBody(RuntimeContext *ctx, const std::string &text) { return support::decodeBody(ctx, text, decodeInput); }

Outcome validateBody(RuntimeContext *ctx, const std::string &text) {
  return support::validateBody(ctx, text, QxXmlV_tns_isComposing);
}

TEST(Faults, Decode) {
  const auto report = faults([](RuntimeContext *ctx) { return decodeBody(ctx, wholeDocument); });
  EXPECT_GT(report.failed, 0u);
}

TEST(Faults, DecodeWithErrors) {
  const std::string cutOff = document("<state>a</state><bogus/><x:f xmlns:x='u'>t").substr(0, 110);
  const std::string bad = document("<state k='1'>a</state><bogus/><refresh>abc</refresh><x:f xmlns:x='u'/>");
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return decodeBody(ctx, bad); }).runs, 0u);
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return decodeBody(ctx, cutOff); }).runs, 0u);
}

TEST(Faults, DecodeOfLongTexts) {
  const std::string text =
      document("<state>" + std::string(70000, 's') + "</state><contenttype>" + std::string(40000, 'c') +
               "</contenttype><x:f xmlns:x=\"u\">" + std::string(90000, 'f') + "</x:f>");
  const auto report = faults([&](RuntimeContext *ctx) { return decodeBody(ctx, text); });
  EXPECT_GT(report.failed, 4u);
}

TEST(Faults, Validate) {
  EXPECT_GT(faults([](RuntimeContext *ctx) { return validateBody(ctx, wholeDocument); }).failed, 0u);
  const std::string text = document("<state>" + std::string(70000, 's') + "</state>");
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return validateBody(ctx, text); }).failed, 0u);
}

Outcome encodeBody(RuntimeContext *ctx, size_t length) {
  const std::string text(length, 't');
  Record record(ctx, text.c_str());
  record.lastactive(text.c_str()).contenttype("<&>").refresh(90);
  if (record->tns_state.value == nullptr || record->tns_lastactive.value == nullptr ||
      record->tns_contenttype.value == nullptr)
    return {STATUS_NO_MEMORY, {}, false};
  return support::encodeBody(ctx, [&](RuntimeContext *c) { return QxXmlE_tns_isComposing(c, record); });
}

TEST(Faults, Encode) {
  EXPECT_GT(faults([](RuntimeContext *ctx) { return encodeBody(ctx, 10); }).failed, 0u);
  EXPECT_GT(faults([](RuntimeContext *ctx) { return encodeBody(ctx, 50000); }).failed, 0u);
}

TEST(Faults, EncodeUnderTheHostsNames) {
  const auto report = faults([](RuntimeContext *ctx) -> Outcome {
    const std::string prefix(300, 'p');
    int status = rtXmlNSSetNamespace(ctx, nullptr, prefix.c_str(), namespaceUri, true);
    if (status != 0) return {status, {}, false};
    return encodeBody(ctx, 10);
  });
  EXPECT_GT(report.failed, 0u);
}

TEST(Faults, EncodeOneType) {
  const auto report = faults([](RuntimeContext *ctx) -> Outcome {
    Record record(ctx, "active");
    if (record->tns_state.value == nullptr) return {STATUS_NO_MEMORY, {}, false};
    const RtxNamespace ns = {"p", "urn:p"};
    return support::encodeBody(ctx,
                               [&](RuntimeContext *c) { return QxXmlET_tns__isComposing(c, record, "typing", &ns); });
  });
  EXPECT_GT(report.failed, 0u);
}

TEST(Faults, Registry) {
  const auto report = faults([](RuntimeContext *ctx) -> Outcome {
    const int status = QxInit_IMS_Global(ctx);
    QxFree_IMS_Global(ctx);
    return {status, {}, false};
  });
  EXPECT_GT(report.failed, 0u);
}

TEST(HeapLimit, Decode) {
  const auto report = support::everyHeapLimit([](RuntimeContext *ctx) { return decodeBody(ctx, wholeDocument); });
  EXPECT_GT(report.failed, 50u);
}

TEST(HeapLimit, Validate) {
  const auto report = support::everyHeapLimit([](RuntimeContext *ctx) { return validateBody(ctx, wholeDocument); });
  EXPECT_GT(report.failed, 0u);
}

TEST(HeapLimit, DecodeWithErrors) {
  const std::string bad = document("<state k='1'>a</state><bogus/><refresh>abc</refresh><x:f xmlns:x='u'/>");
  EXPECT_GT(support::everyHeapLimit([&](RuntimeContext *ctx) { return decodeBody(ctx, bad); }).runs, 0u);
}

} // namespace
