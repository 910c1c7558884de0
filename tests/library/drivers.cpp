#include "drivers.h"

#include "DebugEvent/QxXmlDebugEvent.h"
#include "DialogInfo/QxXmlDialogInfo.h"
#include "FilterSet/QxXmlFilterSet.h"
#include "ImCn/QxXmlImCn.h"
#include "IsComposing/QxXmlIsComposing.h"
#include "PocSettings/QxXmlPocSettings.h"
#include "RuleSet/QxXmlRuleSet.h"
#include "bodies.h"
#include "rtx.h"

#include <string_view>

namespace library {

namespace {

// What the four functions of a document do, whatever its value is.
template <class Value, class Encode>
Outcome run(RuntimeContext *ctx, std::string_view body, Value &value, int (*decode)(RuntimeContext *, Value *),
            int (*validate)(RuntimeContext *), Encode encode) {
  Outcome outcome;
  rtxSetInput(ctx, body.data(), body.size());
  outcome.validated = validate(ctx);
  rtxSetInput(ctx, body.data(), body.size());
  outcome.decoded = decode(ctx, &value);
  rtxSetOutputDynamic(ctx);
  outcome.encoded = encode(ctx);
  size_t length = 0;
  const char *text = rtxGetOutput(ctx, &length);
  if (text) outcome.output.assign(text, length);
  return outcome;
}

#define RECORD(element, type)                                                                                          \
  Outcome run_##element(RuntimeContext *ctx) {                                                                         \
    type record = {};                                                                                                  \
    Outcome outcome = run(ctx, bodyOf_##element, record, QxXmlD_##element, QxXmlV_##element,                           \
                          [&](RuntimeContext *c) { return QxXmlE_##element(c, &record); });                            \
    QxMemFree_##type(ctx, &record);                                                                                    \
    return outcome;                                                                                                    \
  }
#define VALUE(element, type, argument, release)                                                                        \
  Outcome run_##element(RuntimeContext *ctx) {                                                                         \
    type value = {};                                                                                                   \
    Outcome outcome = run(ctx, bodyOf_##element, value, QxXmlD_##element, QxXmlV_##element,                            \
                          [&](RuntimeContext *c) { return QxXmlE_##element(c, argument); });                           \
    release;                                                                                                           \
    return outcome;                                                                                                    \
  }
#define TEXT(element) VALUE(element, RtxXmlString, &value, rtxMemHeapFreePtr(ctx, value.value))
#define BYTES(element) VALUE(element, RtxHexBinary, &value, rtxMemHeapFreePtr(ctx, value.bytes))
#define CODE(element) VALUE(element, uint16_t, value, (void)0)

IMS_DOCUMENTS(RECORD, TEXT)
DEBUG_DOCUMENTS(RECORD, TEXT, BYTES, CODE)

#define RECORD_ROW(element, type) {#element, run_##element},
#define ROW(element) {#element, run_##element},

constexpr Driver ims[] = {IMS_DOCUMENTS(RECORD_ROW, ROW)};
constexpr Driver debug[] = {DEBUG_DOCUMENTS(RECORD_ROW, ROW, ROW, ROW)};

} // namespace

std::span<const Driver> imsDrivers() { return ims; }
std::span<const Driver> debugDrivers() { return debug; }

} // namespace library
