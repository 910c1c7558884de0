// Debug configuration: qualified attributes, hexadecimal text, a registry of its own, documents of simple types.
#pragma once

#include "Awkward.h"
#include "rtxTypes.h"

namespace awkward {

struct tns__start_trigger {
  uint32_t m;
  RtxXmlString tns_from;     // 1
  RtxXmlString tns_to;       // 2
  RtxXmlString tns_icsi;     // 4
  RtxXmlString tns_iari;     // 8
  RtxXmlString tns_method;   // 16
  RtxXmlString tns_time;     // 32
  RtxHexBinary tns_debug_id; // 64
};

struct tns__stop_trigger {
  uint32_t m;
  RtxXmlString tns_time;        // 1
  RtxXmlString tns_time_period; // 2
  uint16_t tns_reason;          // 4
};

struct tns__control {
  uint32_t m;
  RtxXmlString tns_interface;
  uint16_t tns_depth;        // 1
  RtxHexBinary tns_debug_id; // 2
};

struct tns__session {
  tns__start_trigger tns_start_trigger;
  tns__stop_trigger tns_stop_trigger;
  tns__control tns_control;
  RtxXmlString tns_id;
};

struct tns__debugconfig {
  RtxList tns_session;
  RtxXmlString tns_aor;
};

struct tns__debuginfo {
  RtxList tns_debugconfig;
  RtxAnyList anyElems;
  uint32_t tns_version;
  uint16_t tns_state;
};

extern const ims::EnumSchema reasonEnumeration;
extern const ims::EnumSchema depthEnumeration;
extern const ims::EnumSchema debugStateEnumeration;

extern const ims::DocumentSchema tns_start_triggerDocument;
extern const ims::DocumentSchema tns_controlDocument;
extern const ims::DocumentSchema tns_sessionDocument;
extern const ims::DocumentSchema tns_debuginfoDocument;
extern const ims::DocumentSchema tns_timeDocument;
extern const ims::DocumentSchema tns_debug_idDocument;
extern const ims::DocumentSchema tns_reasonDocument;

} // namespace awkward

AWKWARD_SCHEMA(tns__start_trigger);
AWKWARD_SCHEMA(tns__stop_trigger);
AWKWARD_SCHEMA(tns__control);
AWKWARD_SCHEMA(tns__session);
AWKWARD_SCHEMA(tns__debugconfig);
AWKWARD_SCHEMA(tns__debuginfo);
