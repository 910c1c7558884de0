// What the tests of the records of rule sets, and of writing them, share.
#pragma once

#include "builder.h"
#include "context.h"
#include "errors.h"
#include "output.h"
#include "parts.h"
#include "types.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace rules {

using namespace std::string_literals;
using namespace std::string_view_literals;
using support::allBits;
using support::bytesOf;
using support::Functions;
using support::Part;
using support::Parts;
using support::patterned;
using support::present;
using support::printed;
using support::Record;
using support::replaced;
using support::setPresence;

// Puts members into records.
class Builder : public support::Builder {
public:
  using support::Builder::Builder;
  using support::Builder::foreign;

  // Initialised items at the end of a list, the selector of choices set; null if there is no storage.
  cp_manyType_1 *item(cp_manyType &record, uint16_t t);
  cp_identityType_1 *item(cp_identityType &record, uint16_t t);
  cp_conditionsType_1 *item(cp_conditionsType &record, uint16_t t);
  cp_ruleType *rule(cp__ruleset &record, std::string_view id);

  // Items with members.
  void one(cp_identityType &record, std::string_view id);
  void sphere(cp_conditionsType &record, std::string_view value);
  void validity(cp_conditionsType &record, std::string_view from, std::string_view until);
  void foreign(cp_manyType &record, std::string_view element);
  void foreign(cp_identityType &record, std::string_view element);
  void foreign(cp_conditionsType &record, const std::vector<std::string> &elements);

  // Every member present, each with a value of its own; of choices the first alternative, of lists of choices all.
  void complete(cp_oneType &record);
  void complete(cp_exceptType &record);
  void complete(cp_manyType_1 &record);
  void complete(cp_manyType &record);
  void complete(cp_identityType_1 &record);
  void complete(cp_identityType &record);
  void complete(cp_sphereType &record);
  void complete(cp_validityType &record);
  void complete(cp_conditionsType_1 &record);
  void complete(cp_conditionsType &record);
  void complete(cp_extensibleType &record);
  void complete(cp_ruleType &record);
  void complete(cp__ruleset &record); // of two rules, the second with nothing but an id
};

template <typename T> struct CompleteRecord : Record<T> {
  explicit CompleteRecord(RuntimeContext *context) : Record<T>(context) { Builder(context).complete(**this); }
};

// What the document function writes, without the XML declaration.
std::string encodedDocument(RuntimeContext *ctx, const cp__ruleset *record);

} // namespace rules
