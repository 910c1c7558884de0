// Storage that gives out, at every point of every operation.
#include "bodyFaults.h"
#include "filters.h"

using namespace filters;
using support::faults;
using support::Outcome;

namespace {

const std::string wholeDocument = support::spell(fullBody, namespaceUri, support::Spelling::defaultNamespace).text;
const std::string badDocument =
    document("<ns-bindings><x/><ns-binding k='1' prefix='p'><y/></ns-binding></ns-bindings><bogus/><filter><what>"
             "<exclude type='r'>a<b/>c</exclude><include/><x:f xmlns:x='u'/></what><trigger><added l='1'>t</added>"
             "</trigger></filter>");

Outcome decodeBody(RuntimeContext *ctx, const std::string &text) { return support::decodeBody(ctx, text, decodeInput); }

Outcome validateBody(RuntimeContext *ctx, const std::string &text) {
  return support::validateBody(ctx, text, QxXmlV_filter_set);
}

// Reads a document and lets encode write the record.
Outcome encodeBody(RuntimeContext *ctx, const std::string &text,
                   int (*encode)(RuntimeContext *ctx, const FilterSetType *record)) {
  const int set = support::setInput(ctx, text);
  if (set != 0) return {set, {}};
  auto record = Record<FilterSetType>::uninitialised(ctx);
  const int status = QxXmlD_filter_set(ctx, record);
  record.owned = status != STATUS_READER_FAILED;
  if (status != 0) return {status, {}};
  return support::encodeBody(ctx, [&](RuntimeContext *c) { return encode(c, record); });
}

int encodeFirstFilter(RuntimeContext *ctx, const FilterSetType *record) {
  const RtxNamespace ns = {"p", "urn:p"};
  return QxXmlET_FilterType(ctx, static_cast<const FilterType *>(record->filter.head->data), "f", &ns);
}

std::string longDocument() {
  const auto longText = [](size_t length, char c) { return std::string(length, c); };
  return "<filter-set xmlns=\""s + namespaceUri + "\" k=\"" + longText(30000, 'k') +
         "\"><ns-bindings><ns-binding prefix=\"" + longText(30000, 'p') + "\" urn=\"u\"/></ns-bindings><filter id=\"" +
         longText(40000, 'i') + "\"><what><include xmlns:v=\"" + longText(30000, 'u') + "\">" + longText(70000, 'a') +
         "</include></what><trigger><changed from=\"" + longText(30000, 'f') + "\"/><added>" + longText(40000, 'd') +
         "</added><x:f xmlns:x=\"u\">" + longText(90000, 'x') + "</x:f></trigger></filter></filter-set>";
}

TEST(Faults, Decode) {
  EXPECT_GT(faults([](RuntimeContext *ctx) { return decodeBody(ctx, wholeDocument); }).failed, 0u);
}

TEST(Faults, DecodeWithErrors) {
  EXPECT_GT(faults([](RuntimeContext *ctx) { return decodeBody(ctx, badDocument); }).runs, 0u);
  for (size_t length : {150u, 250u, 320u})
    EXPECT_GT(faults([length](RuntimeContext *ctx) { return decodeBody(ctx, badDocument.substr(0, length)); }).runs,
              0u);
}

TEST(Faults, DecodeOfLongTexts) {
  const std::string text = longDocument();
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return decodeBody(ctx, text); }).failed, 8u);
}

TEST(Faults, Validate) {
  EXPECT_GT(faults([](RuntimeContext *ctx) { return validateBody(ctx, wholeDocument); }).failed, 0u);
  const std::string text = longDocument();
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return validateBody(ctx, text); }).failed, 0u);
  EXPECT_GT(faults([](RuntimeContext *ctx) { return validateBody(ctx, badDocument); }).runs, 0u);
}

TEST(Faults, Encode) {
  EXPECT_GT(faults([](RuntimeContext *ctx) { return encodeBody(ctx, wholeDocument, QxXmlE_filter_set); }).failed, 0u);
  const std::string text = longDocument();
  EXPECT_GT(faults([&](RuntimeContext *ctx) { return encodeBody(ctx, text, QxXmlE_filter_set); }).failed, 0u);
}

TEST(Faults, EncodeOneType) {
  EXPECT_GT(faults([](RuntimeContext *ctx) { return encodeBody(ctx, wholeDocument, encodeFirstFilter); }).failed, 0u);
}

TEST(HeapLimit, Decode) {
  EXPECT_GT(support::everyHeapLimit([](RuntimeContext *ctx) { return decodeBody(ctx, wholeDocument); }).failed, 50u);
}

TEST(HeapLimit, DecodeWithErrors) {
  EXPECT_GT(support::everyHeapLimit([](RuntimeContext *ctx) { return decodeBody(ctx, badDocument); }).runs, 0u);
}

TEST(HeapLimit, Validate) {
  EXPECT_GT(support::everyHeapLimit([](RuntimeContext *ctx) { return validateBody(ctx, wholeDocument); }).failed, 0u);
}

TEST(HeapLimit, Encode) {
  EXPECT_GT(support::everyHeapLimit([](RuntimeContext *ctx) {
              return encodeBody(ctx, wholeDocument, QxXmlE_filter_set);
            }).failed,
            0u);
}

} // namespace
