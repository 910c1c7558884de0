// What the tests that read rule sets share.
#pragma once

#include "context.h"
#include "documentReading.h"
#include "documents.h"
#include "errors.h"
#include "types.h"
#include "xmlJudge.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace reading {

using namespace std::string_literals;
using namespace std::string_view_literals;
using rules::namespaceUri;
using support::Reading;
using Record = support::Record<cp__ruleset>;

// ---- Documents ----

// A rule set with the module's namespace as the default one and the prefix f bound to a foreign one; a rule "r", its
// conditions, an identity in them.
std::string document(std::string_view content);
std::string rule(std::string_view content);
std::string conditions(std::string_view content);
std::string identity(std::string_view content);

// A body (see support::spell) in which every element and attribute of the vocabulary occurs, and its dump.
extern const char *const fullBody;
extern const char *const fullRecord;

// Twenty rules of presence authorisation and its extensions under several prefixes, as people write them.
std::string realLifeBody();

// ---- Records ----

// All that a record holds, a null text as "-":
//   rule(r conditions[identity[one(sip:a) many(domain=b except(id=c) any=<x/>) any=<y/>] sphere(work)
//   validity(2024,2025) any[<x/> <y/>]] actions[<x/>] transformations[])
std::string dump(const cp_oneType &record);
std::string dump(const cp_exceptType &record);
std::string dump(const cp_manyType &record);
std::string dump(const cp_identityType &record);
std::string dump(const cp_sphereType &record);
std::string dump(const cp_validityType &record);
std::string dump(const cp_conditionsType &record);
std::string dump(const cp_extensibleType &record);
std::string dump(const cp_ruleType &record);
std::string dump(const cp__ruleset &record);

// The foreign elements that a record keeps, and those of the document that it was read from, in document order.
std::vector<std::string> fragments(const cp__ruleset &record);
std::vector<support::XmlElement> foreignElements(const support::XmlElement &root);

// ---- Reading ----

// As support::errors, with the module's sources by their suffix and without lines: "-41(bogus)@runtime/reader<SAX".
std::string errorList(RuntimeContext *ctx);

// Decodes, validates the context's input, and releases what it got.
Reading decodeInput(RuntimeContext *ctx);
Reading decode(RuntimeContext *ctx, const std::string &document);
Reading decode(const std::string &document);
int decodeStatus(RuntimeContext *ctx);
Reading validate(RuntimeContext *ctx, const std::string &document);
Reading validate(const std::string &document);

// What a document comes to. Its status is that of the first error.
struct Case {
  std::string content; // of the rule set
  std::string record;
  std::string errors;
  const char *validatorErrors = nullptr; // null: the same, of the validator
};

// Decodes and validates it.
void expectReading(const Case &expected);

// What QxXmlE_cp_ruleset writes.
std::string encodeRecord(RuntimeContext *ctx, const cp__ruleset *record);

// The infoset of a rule set but for text that has no place in it and for white space in identifiers.
std::string meaning(const support::XmlElement &element);

} // namespace reading
