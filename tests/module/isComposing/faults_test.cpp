// Storage that gives out, at every point of every operation.
#include "composing.h"
#include "faults.h"

using namespace composing;
using support::faults;
using support::Outcome;

namespace {

const std::string wholeDocument =
    document("<state>active</state><lastactive>2024-01-02T03:04:05Z</lastactive><contenttype>text/plain</contenttype>"
             "<refresh>90</refresh><x:f xmlns:x=\"u\">t<x:g>&lt;</x:g>u</x:f><y xmlns=\"v\"/>");

Outcome decodeBody(RuntimeContext *ctx, const std::string &text) {
  const int set = support::setInput(ctx, text);
  if (set != 0) return {set, {}};
  const Reading reading = decodeInput(ctx);
  return {reading.status, reading.record};
}

Outcome validateBody(RuntimeContext *ctx, const std::string &text) {
  const int set = support::setInput(ctx, text);
  if (set != 0) return {set, {}};
  return {QxXmlV_tns_isComposing(ctx), {}};
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
  const int output = rtxSetOutputDynamic(ctx);
  if (output != 0) return {output, {}, false};
  const int status = QxXmlE_tns_isComposing(ctx, record);
  return {status, status == 0 ? support::outputText(ctx) : std::string()};
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
    const int output = rtxSetOutputDynamic(ctx);
    if (output != 0) return {output, {}, false};
    const RtxNamespace ns = {"p", "urn:p"};
    const int status = QxXmlET_tns__isComposing(ctx, record, "typing", &ns);
    return {status, status == 0 ? support::outputText(ctx) : std::string()};
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
