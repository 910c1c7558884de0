// Storage that gives out, at every point of every operation.
#include "bodyFaults.h"
#include "settings.h"

using namespace settings;
using support::faults;
using support::Outcome;

namespace {

const std::string wholeDocument = document(
    "<entity id='alice' k='1'><isb-settings k='2'><incoming-session-barring active='1'/><x:f xmlns:x='u'>t</x:f>"
    "</isb-settings><am-settings k='3'><answer-mode>manual</answer-mode><x:f xmlns:x='u'/></am-settings>"
    "<ipab-settings k='4'><incoming-personal-alert-barring active='0'/><x:f xmlns:x='u'/></ipab-settings>"
    "<sss-settings k='5'><simultaneous-sessions-support active='1'/><x:f xmlns:x='u'/></sss-settings>"
    "<x:g xmlns:x='u'>t<x:h>&lt;</x:h>u</x:g></entity><entity id='bob'/><y xmlns='v'/>");

const std::string badDocument =
    document("<entity k='1'><isb-settings><incoming-session-barring active='x' k='1'><b/></incoming-session-barring>"
             "</isb-settings><bogus/><am-settings><answer-mode l='1'>auto</answer-mode><x:f xmlns:x='u'/></am-settings>"
             "</entity><y xmlns='v'/><entity/>");

Outcome decodeBody(RuntimeContext *ctx, const std::string &text) { return support::decodeBody(ctx, text, decodeInput); }

Outcome validateBody(RuntimeContext *ctx, const std::string &text) {
  return support::validateBody(ctx, text, QxXmlV_poc_settings);
}

// Reads a document and writes it back.
Outcome recodeBody(RuntimeContext *ctx, const std::string &text) {
  const int set = support::setInput(ctx, text);
  if (set != 0) return {set, {}};
  auto record = Record<poc_settingsType>::uninitialised(ctx);
  const int status = QxXmlD_poc_settings(ctx, record);
  record.owned = status != STATUS_READER_FAILED;
  if (status != 0) return {status, {}};
  return support::encodeBody(ctx, [&](RuntimeContext *c) { return QxXmlE_poc_settings(c, record); });
}

TEST(Faults, Decode) {
  EXPECT_GT(faults([](RuntimeContext *ctx) { return decodeBody(ctx, wholeDocument); }).failed, 0u);
}

TEST(Faults, DecodeWithErrors) {
  EXPECT_GT(faults([](RuntimeContext *ctx) { return decodeBody(ctx, badDocument); }).runs, 0u);
  const std::string cutOff = wholeDocument.substr(0, wholeDocument.find("u</x:g>"));
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return decodeBody(ctx, cutOff); }).runs, 0u);
}

TEST(Faults, DecodeOfLongTexts) {
  const std::string text = document("<entity id='" + std::string(70000, 'i') + "' k='" + std::string(40000, 'k') +
                                    "'/><x:f xmlns:x=\"u\">" + std::string(90000, 'f') + "</x:f>");
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return decodeBody(ctx, text); }).failed, 4u);
}

TEST(Faults, Validate) {
  EXPECT_GT(faults([](RuntimeContext *ctx) { return validateBody(ctx, wholeDocument); }).failed, 0u);
  EXPECT_GT(faults([](RuntimeContext *ctx) { return validateBody(ctx, badDocument); }).runs, 0u);
}

TEST(Faults, Encode) {
  EXPECT_GT(faults([](RuntimeContext *ctx) { return recodeBody(ctx, wholeDocument); }).failed, 0u);
  const std::string text = document("<entity id='" + std::string(50000, 'i') + "'/>");
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return recodeBody(ctx, text); }).failed, 0u);
}

TEST(HeapLimit, Decode) {
  const auto report = support::everyHeapLimit([](RuntimeContext *ctx) { return decodeBody(ctx, wholeDocument); });
  EXPECT_GT(report.failed, 50u);
}

TEST(HeapLimit, DecodeWithErrors) {
  EXPECT_GT(support::everyHeapLimit([](RuntimeContext *ctx) { return decodeBody(ctx, badDocument); }).runs, 0u);
}

TEST(HeapLimit, Validate) {
  const auto report = support::everyHeapLimit([](RuntimeContext *ctx) { return validateBody(ctx, wholeDocument); });
  EXPECT_GT(report.failed, 0u);
}

} // namespace
