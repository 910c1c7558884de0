#include "samples.h"

#include "DebugEvent/QxXmlDebugEventTables.h"
#include "DialogInfo/QxXmlDialogInfoTables.h"
#include "Engines.h"
#include "FilterSet/QxXmlFilterSetTables.h"
#include "ImCn/QxXmlImCnTables.h"
#include "IsComposing/QxXmlIsComposingTables.h"
#include "PocSettings/QxXmlPocSettingsTables.h"
#include "RuleSet/QxXmlRuleSetTables.h"
#include "bodies.h"
#include "rtx.h"

#include <algorithm>

namespace faults {

namespace {

template <class T> T &as(void *value) { return *static_cast<T *>(value); }
template <class T> const T &as(const void *value) { return *static_cast<const T *>(value); }

#define SAMPLE(element, Type, argument, printed, discarded)                                                            \
  {#element,                                                                                                           \
   bodyOf_##element,                                                                                                   \
   sizeof(Type),                                                                                                       \
   [](RuntimeContext *ctx, void *value) { return QxXmlD_##element(ctx, &as<Type>(value)); },                           \
   QxXmlV_##element,                                                                                                   \
   [](RuntimeContext *ctx, const void *value) { return QxXmlE_##element(ctx, argument as<Type>(value)); },             \
   [](const void *value) { printed; },                                                                                 \
   [](RuntimeContext *ctx, void *value) { discarded; }},
#define RECORD(element, Type)                                                                                          \
  SAMPLE(element, Type, &, QxPrint_##Type("r", &as<Type>(value)),                                                      \
         ims::discardRecord(ctx, *element##Document.type, value))
#define TEXT(element)                                                                                                  \
  SAMPLE(element, RtxXmlString, &, rtxPrintCharStr("r", as<RtxXmlString>(value).value),                                \
         rtxMemHeapFreePtr(ctx, as<RtxXmlString>(value).value))
#define BYTES(element)                                                                                                 \
  SAMPLE(element, RtxHexBinary, &,                                                                                     \
         rtxPrintHexBinary("r", as<RtxHexBinary>(value).length, as<RtxHexBinary>(value).bytes),                        \
         rtxMemHeapFreePtr(ctx, as<RtxHexBinary>(value).bytes))
#define CODE(element)                                                                                                  \
  SAMPLE(element, uint16_t, , rtxPrintUnsigned("r", as<uint16_t>(value)),                                              \
         (static_cast<void>(ctx), as<uint16_t>(value) = 0))

const Sample samples[] = {IMS_DOCUMENTS(RECORD, TEXT) DEBUG_DOCUMENTS(RECORD, TEXT, BYTES, CODE)};

#define ONE(...) +1
constexpr size_t imsCount = IMS_DOCUMENTS(ONE, ONE);

} // namespace

std::span<const Sample> allSamples() { return samples; }
std::span<const Sample> imsSamples() { return allSamples().first(imsCount); }
std::span<const Sample> debugSamples() { return allSamples().subspan(imsCount); }

Value::Value(RuntimeContext *context, const Sample &document)
    : ctx(context), sample(document), storage(std::make_unique<uint64_t[]>(words())) {}

bool Value::isUntouched() const {
  return std::all_of(storage.get(), storage.get() + words(), [](uint64_t word) { return word == 0; });
}

Value::~Value() { sample.discard(ctx, storage.get()); }

} // namespace faults
