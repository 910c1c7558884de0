// Tells what the library makes of bodies on the runtime that this program is linked with: the body of every document,
// and the same damaged at random. Linked once with each runtime, both programs have to tell the same.
#include "DebugEvent/QxXmlDebugEvent.h"
#include "DialogInfo/QxXmlDialogInfo.h"
#include "FilterSet/QxXmlFilterSet.h"
#include "ImCn/QxXmlImCn.h"
#include "IsComposing/QxXmlIsComposing.h"
#include "PocSettings/QxXmlPocSettings.h"
#include "RuleSet/QxXmlRuleSet.h"
#include "bodies.h"
#include "randomText.h"
#include "rtx.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

void tellParameter(const RtxErrorParam &param) {
  switch (param.kind) {
  case RTX_PARAM_TEXT: std::printf(" [%.*s]", static_cast<int>(param.length), param.text); break;
  case RTX_PARAM_INT: std::printf(" %ld", static_cast<long>(param.intValue)); break;
  case RTX_PARAM_UINT: std::printf(" %lu", static_cast<unsigned long>(param.uintValue)); break;
  }
}

void tell(const RtxError &error) {
  std::printf("  %d at %lu:%lu %s", error.status, static_cast<unsigned long>(error.line),
              static_cast<unsigned long>(error.column), error.elementPath);
  for (uint32_t i = 0; i < error.paramCount; ++i)
    tellParameter(error.params[i]);
  for (uint32_t i = 0; i < error.siteCount; ++i) // the lines of a runtime's own are its affair
    std::printf(" %s:%d", error.sites[i].path,
                std::strcmp(error.sites[i].path, "runtime/reader") == 0 ? 0 : error.sites[i].line);
  std::printf("\n");
}

// Of a document that is none, readers agree on that and no more: neither on why, nor on how much of it they deliver.
void tell(RuntimeContext *ctx, const char *step, int status) {
  std::printf("%s: %d\n", step, status);
  for (uint32_t i = 0; status != STATUS_PARSE_FAILED && rtxErrAt(ctx, i); ++i)
    tell(*rtxErrAt(ctx, i));
  rtxErrClear(ctx);
}

void tellOutput(RuntimeContext *ctx, int status) {
  tell(ctx, "encoded", status);
  const char *text = rtxGetOutput(ctx, nullptr);
  if (status == 0 && text) std::printf("%s\n", text);
}

// The record is printed only where it is: what a control character is printed as is the runtime's affair.
template <class Value, class Print, class Encode, class Release>
void give(RuntimeContext *ctx, const std::string &body, bool printed, int (*decode)(RuntimeContext *, Value *),
          int (*validate)(RuntimeContext *), Print print, Encode encode, Release release) {
  Value value = {};
  rtxSetInput(ctx, body.data(), body.size());
  tell(ctx, "validated", validate(ctx));
  const int status = decode(ctx, &value);
  tell(ctx, "decoded", status);
  if (printed) print(value);
  rtxSetOutputDynamic(ctx);
  if (status == 0) tellOutput(ctx, encode(ctx, value));
  release(ctx, value);
}

#define RECORD(element, type)                                                                                          \
  void give_##element(RuntimeContext *ctx, const std::string &body, bool printed) {                                    \
    give<type>(                                                                                                        \
        ctx, body, printed, QxXmlD_##element, QxXmlV_##element, [](const type &v) { QxPrint_##type(#element, &v); },   \
        [](RuntimeContext *c, const type &v) { return QxXmlE_##element(c, &v); },                                      \
        [](RuntimeContext *c, type &v) { QxMemFree_##type(c, &v); });                                                  \
  }
#define VALUE(element, type, print, argument, release)                                                                 \
  void give_##element(RuntimeContext *ctx, const std::string &body, bool printed) {                                    \
    give<type>(                                                                                                        \
        ctx, body, printed, QxXmlD_##element, QxXmlV_##element, [](const type &v) { print; },                          \
        [](RuntimeContext *c, const type &v) { return QxXmlE_##element(c, argument); },                                \
        [](RuntimeContext *c, type &v) { release; });                                                                  \
  }
#define TEXT(element)                                                                                                  \
  VALUE(element, RtxXmlString, rtxPrintCharStr(#element, v.value), &v, rtxMemHeapFreePtr(c, v.value))
#define BYTES(element)                                                                                                 \
  VALUE(element, RtxHexBinary, rtxPrintHexBinary(#element, v.length, v.bytes), &v, rtxMemHeapFreePtr(c, v.bytes))
#define CODE(element) VALUE(element, uint16_t, rtxPrintUnsigned(#element, v), v, ((void)c, (void)v))

IMS_DOCUMENTS(RECORD, TEXT)
DEBUG_DOCUMENTS(RECORD, TEXT, BYTES, CODE)

struct Document {
  const char *name;
  const char *body;
  void (*give)(RuntimeContext *ctx, const std::string &body, bool printed);
};
#define RECORD_ROW(element, type) {#element, bodyOf_##element, give_##element},
#define ROW(element) {#element, bodyOf_##element, give_##element},
const Document documents[] = {IMS_DOCUMENTS(RECORD_ROW, ROW) DEBUG_DOCUMENTS(RECORD_ROW, ROW, ROW, ROW)};

} // namespace

// usage: account DAMAGED, the number of damaged bodies for each document
int main(int argc, char **argv) {
  const uint64_t damaged = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 0;
  for (const Document &document : documents) {
    RuntimeContext *ctx = rtxContextCreate(nullptr);
    if (!ctx) return 1;
    std::printf("== %s\n", document.name);
    document.give(ctx, document.body, true);
    for (uint64_t seed = 0; seed < damaged; ++seed) {
      support::Random random(seed);
      const std::string body = support::randomlyDamaged(random, document.body);
      std::printf("-- %s %lu: %s\n", document.name, static_cast<unsigned long>(seed), body.c_str());
      document.give(ctx, body, false);
      if (seed % 3 == 0) rtxContextReset(ctx);
    }
    rtxContextFree(ctx);
  }
  return 0;
}
