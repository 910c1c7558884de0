// Push-to-talk settings: a validator that looks at one attribute alone, attributes kept without a table of names.
#pragma once

#include "Awkward.h"
#include "rtxTypes.h"

namespace awkward {

struct isbSettingType_incoming_session_barring {
  bool active;
};

struct isbSettingType {
  isbSettingType_incoming_session_barring incoming_session_barring;
  RtxAnyList anyElems;
  RtxAttrList _anyAttr;
};

struct amSettingType {
  uint16_t answer_mode;
  RtxAnyList anyElems;
  RtxAttrList _anyAttr;
};

struct entityType {
  uint32_t m;
  isbSettingType isb_settings; // 1
  amSettingType am_settings;   // 2
  RtxAnyList anyElems;
  RtxXmlString id;
  RtxAttrList _anyAttr;
};

struct poc_settingsType {
  RtxList entity;
  RtxAnyList anyElems;
  RtxAttrList _anyAttr;
};

extern const ims::EnumSchema answerModeEnumeration;
extern const ims::DocumentSchema poc_settingsDocument;

} // namespace awkward

AWKWARD_SCHEMA(isbSettingType_incoming_session_barring);
AWKWARD_SCHEMA(isbSettingType);
AWKWARD_SCHEMA(amSettingType);
AWKWARD_SCHEMA(entityType);
AWKWARD_SCHEMA(poc_settingsType);
