// The record types of the module, and the functions that each of them has, for tests that go through all of them.
#pragma once

#include "FilterSet/QxXmlFilterSet.h"
#include "record.h"

#include <gtest/gtest.h>

#define FILTERS_FUNCTIONS(T)                                                                                           \
  template <> struct support::Functions<T> {                                                                           \
    RECORD_FUNCTIONS(T)                                                                                                \
    HANDLER_FUNCTIONS(T)                                                                                               \
    static void release(RuntimeContext *ctx, T *record);                                                               \
  };
FILTERS_FUNCTIONS(NSBinding)
FILTERS_FUNCTIONS(NSBindings)
FILTERS_FUNCTIONS(InclType)
FILTERS_FUNCTIONS(ExclType)
FILTERS_FUNCTIONS(WhatType)
FILTERS_FUNCTIONS(ChangedType)
FILTERS_FUNCTIONS(TriggerType)
FILTERS_FUNCTIONS(FilterType)
FILTERS_FUNCTIONS(FilterSetType)
#undef FILTERS_FUNCTIONS

namespace filters {

using support::Functions;

using AllTypes = testing::Types<NSBinding, NSBindings, InclType, ExclType, WhatType, ChangedType, TriggerType,
                                FilterType, FilterSetType>;

} // namespace filters
