#include "types.h"

#include "lists.h"

namespace support {

// No function of the module frees the texts of bindings.
void Functions<NSBinding>::release(RuntimeContext *ctx, NSBinding *record) {
  rtxMemHeapFreePtr(ctx, record->prefix.value);
  rtxMemHeapFreePtr(ctx, record->urn.value);
}

void Functions<NSBindings>::release(RuntimeContext *ctx, NSBindings *record) {
  forEachItem<NSBinding>(record->ns_binding,
                         [ctx](NSBinding &binding) { Functions<NSBinding>::release(ctx, &binding); });
  QxMemFree_NSBindings(ctx, record);
}

void Functions<FilterSetType>::release(RuntimeContext *ctx, FilterSetType *record) {
  if ((record->m & FilterSetType_has_ns_bindings) != 0) Functions<NSBindings>::release(ctx, &record->ns_bindings);
  QxMemFree_FilterSetType(ctx, record);
}

#define RELEASE(T)                                                                                                     \
  void Functions<T>::release(RuntimeContext *ctx, T *record) { QxMemFree_##T(ctx, record); }
RELEASE(InclType)
RELEASE(ExclType)
RELEASE(WhatType)
RELEASE(ChangedType)
RELEASE(TriggerType)
RELEASE(FilterType)
#undef RELEASE

} // namespace support
