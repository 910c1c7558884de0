// The body without a namespace: a choice by value, a number whose failure is silent, and a document of text alone.
#pragma once

#include "Awkward.h"
#include "rtxTypes.h"

namespace awkward {

struct tAlternativeService {
  RtxXmlString type;
  RtxXmlString reason;
  RtxAnyList anyElems;
  RtxAttrList _anyAttr;
};

struct tIMS3GPP_1 {
  uint16_t t;
  union {
    tAlternativeService alternative_service;
    RtxXmlString service_info;
  } u;
};

struct tIMS3GPP {
  tIMS3GPP_1 _choice1;
  RtxAnyList anyElems;
  double version;
  RtxAttrList _anyAttr;
};

extern const ims::DocumentSchema ims_3gppDocument;
extern const ims::DocumentSchema typeDocument;

} // namespace awkward

AWKWARD_SCHEMA(tAlternativeService);
AWKWARD_SCHEMA(tIMS3GPP_1);
AWKWARD_SCHEMA(tIMS3GPP);
