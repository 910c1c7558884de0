// Dialog state: nested records in all their forms, texts with attributes, a list with a hop at least.
#pragma once

#include "Awkward.h"
#include "rtxTypes.h"

namespace awkward {

struct tns__state {
  uint32_t m;
  RtxXmlString value;
  uint16_t tns_event; // 1
  uint16_t tns_code;  // 2
  RtxNsDeclList nsDecls;
};

struct tns__dialog_replaces {
  RtxXmlString tns_call_id;
  RtxXmlString tns_local_tag;
  RtxXmlString tns_remote_tag;
};

struct tns_nameaddr {
  uint32_t m;
  RtxXmlString value;
  RtxXmlString tns_display_name; // 1
  RtxNsDeclList nsDecls;
};

struct tns__dialog_route_set {
  RtxList tns_hop;
};

struct tns_participant_target_param {
  RtxXmlString tns_pname;
  RtxXmlString tns_pval;
};

struct tns_participant_target {
  RtxList tns_param;
  RtxXmlString tns_uri;
};

struct tns_sessd {
  RtxXmlString value;
  RtxXmlString tns_type;
  RtxNsDeclList nsDecls;
};

struct tns_participant {
  uint32_t m;
  tns_nameaddr tns_identity;         // 1
  tns_participant_target tns_target; // 2
  tns_sessd tns_session_description; // 4
  uint32_t tns_cseq;                 // 8
  RtxAnyList anyElems;
};

struct tns__dialog {
  uint32_t m;
  tns__state tns_state;
  uint32_t tns_duration;               // 1
  tns__dialog_replaces tns_replaces;   // 2
  tns_nameaddr tns_referred_by;        // 4
  tns__dialog_route_set tns_route_set; // 8
  tns_participant tns_local;           // 16
  tns_participant tns_remote;          // 32
  RtxAnyList anyElems;
  RtxXmlString tns_id;
  RtxXmlString tns_call_id;    // 64
  RtxXmlString tns_local_tag;  // 128
  RtxXmlString tns_remote_tag; // 256
  uint16_t tns_direction;      // 512
};

struct tns__dialog_info {
  RtxList tns_dialog;
  RtxAnyList anyElems;
  uint32_t tns_version;
  uint16_t tns_state;
  RtxXmlString tns_entity;
};

extern const ims::EnumSchema stateEventEnumeration;
extern const ims::EnumSchema dialogDirectionEnumeration;
extern const ims::EnumSchema dialogInfoStateEnumeration;

extern const ims::DocumentSchema tns_stateDocument;
extern const ims::DocumentSchema tns_dialogDocument;
extern const ims::DocumentSchema tns_dialog_infoDocument;

} // namespace awkward

AWKWARD_SCHEMA(tns__state);
AWKWARD_SCHEMA(tns__dialog_replaces);
AWKWARD_SCHEMA(tns_nameaddr);
AWKWARD_SCHEMA(tns__dialog_route_set);
AWKWARD_SCHEMA(tns_participant_target_param);
AWKWARD_SCHEMA(tns_participant_target);
AWKWARD_SCHEMA(tns_sessd);
AWKWARD_SCHEMA(tns_participant);
AWKWARD_SCHEMA(tns__dialog);
AWKWARD_SCHEMA(tns__dialog_info);
