// The C++ layer for all vocabularies. Written by generate; do not edit.
#pragma once

#include "imscodec/copy.hpp"
#include "imscodec/debugevent.hpp"
#include "imscodec/dialoginfo.hpp"
#include "imscodec/equal.hpp"
#include "imscodec/filterset.hpp"
#include "imscodec/imcn.hpp"
#include "imscodec/iscomposing.hpp"
#include "imscodec/pocsettings.hpp"
#include "imscodec/print.hpp"
#include "imscodec/ruleset.hpp"
