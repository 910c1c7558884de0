// The record types of the module, and the functions that each of them has, for tests that go through all of them.
#pragma once

#include "FilterSet/QxXmlFilterSet.h"

#include <gtest/gtest.h>

namespace filters {

template <class T> struct Functions;

#define FILTERS_FUNCTIONS(T)                                                                                           \
  template <> struct Functions<T> {                                                                                    \
    static constexpr const char *name = #T;                                                                            \
    static constexpr auto init = QxInit_##T;                                                                           \
    static constexpr auto print = QxPrint_##T;                                                                         \
    static constexpr auto encode = QxXmlET_##T;                                                                        \
    static constexpr auto encodeStart = QxXmlET_##T##_StartElement;                                                    \
    static constexpr auto encodeContents = QxXmlET_##T##_Contents;                                                     \
    static constexpr auto encodeEnd = QxXmlET_##T##_EndElement;                                                        \
    static constexpr auto fillInit = QxSAX_##T##_init;                                                                 \
    static constexpr auto fillStart = QxSAX_##T##_startElement;                                                        \
    static constexpr auto fillCharacters = QxSAX_##T##_characters;                                                     \
    static constexpr auto fillEnd = QxSAX_##T##_endElement;                                                            \
    static constexpr auto checkInit = QxVSAX_##T##_init;                                                               \
    static constexpr auto checkStart = QxVSAX_##T##_startElement;                                                      \
    static constexpr auto checkCharacters = QxVSAX_##T##_characters;                                                   \
    static constexpr auto checkEnd = QxVSAX_##T##_endElement;                                                          \
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

using AllTypes = testing::Types<NSBinding, NSBindings, InclType, ExclType, WhatType, ChangedType, TriggerType,
                                FilterType, FilterSetType>;

} // namespace filters
