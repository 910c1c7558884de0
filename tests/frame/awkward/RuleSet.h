// Authorisation rules: choices, runs of foreign elements, items that enter their list at their end.
#pragma once

#include "Awkward.h"
#include "rtxTypes.h"

namespace awkward {

struct cp_oneType {
  uint32_t m;
  RtxXmlString cp__any; // 1
  RtxXmlString cp_id;
};

struct cp_exceptType {
  uint32_t m;
  RtxXmlString cp_domain; // 1
  RtxXmlString cp_id;     // 2
};

struct cp_manyType_1 {
  uint16_t t;
  union {
    cp_exceptType cp_except;
    RtxXmlString cp__any;
  } u;
};

struct cp_manyType {
  uint32_t m;
  RtxList cp__choice;
  RtxXmlString cp_domain; // 1
};

struct cp_identityType_1 {
  uint16_t t;
  union {
    cp_oneType cp_one;
    cp_manyType cp_many;
    RtxXmlString cp__any;
  } u;
};

struct cp_identityType {
  RtxList items;
};

struct cp_sphereType {
  RtxXmlString cp_value;
};

struct cp_validityType {
  RtxXmlString cp_from;
  RtxXmlString cp_until;
};

struct cp_conditionsType_1 {
  uint16_t t;
  union {
    cp_identityType cp_identity;
    cp_sphereType cp_sphere;
    cp_validityType cp_validity;
    RtxAnyList cp__any;
  } u;
};

struct cp_conditionsType {
  RtxList items;
};

struct cp_extensibleType {
  RtxAnyList items;
};

struct cp_ruleType {
  uint32_t m;
  cp_conditionsType cp_conditions;      // 1
  cp_extensibleType cp_actions;         // 2
  cp_extensibleType cp_transformations; // 4
  RtxXmlString cp_id;
};

struct cp__ruleset {
  RtxList cp_rule;
};

extern const ims::DocumentSchema cp_rulesetDocument;
extern const ims::DocumentSchema cp_conditionsDocument;

} // namespace awkward

AWKWARD_SCHEMA(cp_oneType);
AWKWARD_SCHEMA(cp_exceptType);
AWKWARD_SCHEMA(cp_manyType_1);
AWKWARD_SCHEMA(cp_manyType);
AWKWARD_SCHEMA(cp_identityType_1);
AWKWARD_SCHEMA(cp_identityType);
AWKWARD_SCHEMA(cp_sphereType);
AWKWARD_SCHEMA(cp_validityType);
AWKWARD_SCHEMA(cp_conditionsType_1);
AWKWARD_SCHEMA(cp_conditionsType);
AWKWARD_SCHEMA(cp_extensibleType);
AWKWARD_SCHEMA(cp_ruleType);
AWKWARD_SCHEMA(cp__ruleset);
