// Storage that gives out, at every point of every operation.
#include "body.h"
#include "bodyFaults.h"

using namespace body;
using support::faults;
using support::Outcome;

namespace {

const std::string wholeDocument =
    "<ims-3gpp version='1.5' k='1'><alternative-service k='2'><type>emergency</type><reason>call</reason>"
    "<action>a</action><x:f xmlns:x='u'>t<x:h>&lt;</x:h>u</x:f></alternative-service><y xmlns='v' k='3'/></ims-3gpp>";

const std::string infoDocument = document("<service-info>some information</service-info><y k='1'>t</y>");

const std::string badDocument = "<body k='1'><bogus/><alternative-service><action/><type k='1'>t</type><type/>"
                                "<reason>r</reason><action/></alternative-service><service-info/><y/></body>";

Outcome decodeBody(RuntimeContext *ctx, const std::string &text) { return support::decodeBody(ctx, text, decodeInput); }

Outcome validateBody(RuntimeContext *ctx, const std::string &text) {
  return support::validateBody(ctx, text, QxXmlV_ims_3gpp);
}

// Reads a document and writes it back.
Outcome recodeBody(RuntimeContext *ctx, const std::string &text) {
  const int set = support::setInput(ctx, text);
  if (set != 0) return {set, {}};
  auto record = Record<tIMS3GPP>::uninitialised(ctx);
  const int status = QxXmlD_ims_3gpp(ctx, record);
  record.owned = status != STATUS_READER_FAILED;
  if (status != 0) return {status, {}};
  return support::encodeBody(ctx, [&](RuntimeContext *c) { return QxXmlE_ims_3gpp(c, record); });
}

TEST(Faults, Decode) {
  EXPECT_GT(faults([](RuntimeContext *ctx) { return decodeBody(ctx, wholeDocument); }).failed, 0u);
  EXPECT_GT(faults([](RuntimeContext *ctx) { return decodeBody(ctx, infoDocument); }).failed, 0u);
}

TEST(Faults, DecodeWithErrors) {
  EXPECT_GT(faults([](RuntimeContext *ctx) { return decodeBody(ctx, badDocument); }).runs, 0u);
  const std::string cutOff = wholeDocument.substr(0, wholeDocument.find("u</x:f>"));
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return decodeBody(ctx, cutOff); }).runs, 0u);
}

TEST(Faults, DecodeOfLongTexts) {
  const std::string text = "<ims-3gpp version='1' k='" + std::string(40000, 'k') + "'><alternative-service><type>" +
                           std::string(70000, 't') + "</type><reason>" + std::string(50000, 'r') +
                           "</reason><x:f xmlns:x=\"u\">" + std::string(90000, 'f') +
                           "</x:f></alternative-service></ims-3gpp>";
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return decodeBody(ctx, text); }).failed, 4u);
  const std::string info = document("<service-info>" + std::string(70000, 'i') + "</service-info>");
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return decodeBody(ctx, info); }).failed, 2u);
}

TEST(Faults, Validate) {
  EXPECT_GT(faults([](RuntimeContext *ctx) { return validateBody(ctx, wholeDocument); }).runs, 0u);
  EXPECT_GT(faults([](RuntimeContext *ctx) { return validateBody(ctx, badDocument); }).runs, 0u);
}

TEST(Faults, Encode) {
  EXPECT_GT(faults([](RuntimeContext *ctx) { return recodeBody(ctx, wholeDocument); }).failed, 0u);
  const std::string text = document("<service-info>" + std::string(50000, 'i') + "</service-info>");
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return recodeBody(ctx, text); }).failed, 0u);
}

TEST(HeapLimit, Decode) {
  EXPECT_GT(support::everyHeapLimit([](RuntimeContext *ctx) { return decodeBody(ctx, wholeDocument); }).failed, 50u);
  EXPECT_GT(support::everyHeapLimit([](RuntimeContext *ctx) { return decodeBody(ctx, infoDocument); }).failed, 50u);
}

TEST(HeapLimit, DecodeWithErrors) {
  EXPECT_GT(support::everyHeapLimit([](RuntimeContext *ctx) { return decodeBody(ctx, badDocument); }).runs, 0u);
}

TEST(HeapLimit, Validate) {
  EXPECT_GT(support::everyHeapLimit([](RuntimeContext *ctx) { return validateBody(ctx, wholeDocument); }).runs, 0u);
}

} // namespace
