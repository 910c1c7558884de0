// Notification filters: foreign attributes and declarations kept, attributes whose failures are silent, defaults.
#pragma once

#include "Awkward.h"
#include "rtxTypes.h"

namespace awkward {

struct NSBinding {
  RtxXmlString prefix;
  RtxXmlString urn;
};

struct NSBindings {
  RtxList ns_binding;
};

struct InclType {
  uint32_t m;
  RtxXmlString value;
  uint16_t type; // 1
  RtxAttrList _anyAttr;
  RtxNsDeclList nsDecls;
};

struct WhatType {
  RtxList include;
  RtxList exclude;
  RtxAnyList _any;
};

struct ChangedType {
  uint32_t m;
  RtxXmlString value;
  RtxXmlString from; // 1
  RtxXmlString to;   // 2
  double by;         // 4
  RtxAttrList _anyAttr;
  RtxNsDeclList nsDecls;
};

struct TriggerType {
  RtxList changed;
  RtxList added;
  RtxList removed;
  RtxAnyList _any;
};

struct FilterType {
  uint32_t m;
  WhatType what; // 1
  RtxList trigger;
  RtxAnyList _any;
  RtxXmlString id;
  RtxXmlString uri;    // 2
  RtxXmlString domain; // 4
  bool remove_;        // 8
  bool enabled;        // 16
  RtxAttrList _anyAttr;
};

struct FilterSetType {
  uint32_t m;
  NSBindings ns_bindings; // 1
  RtxList filter;
  RtxXmlString package_; // 2
  RtxAttrList _anyAttr;
};

extern const ims::EnumSchema typeTypeEnumeration;
extern const ims::DocumentSchema filter_setDocument;

} // namespace awkward

AWKWARD_SCHEMA(NSBinding);
AWKWARD_SCHEMA(NSBindings);
AWKWARD_SCHEMA(InclType);
AWKWARD_SCHEMA(WhatType);
AWKWARD_SCHEMA(ChangedType);
AWKWARD_SCHEMA(TriggerType);
AWKWARD_SCHEMA(FilterType);
AWKWARD_SCHEMA(FilterSetType);
