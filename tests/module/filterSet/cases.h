// Documents and what reading them comes to, for the decoder and the validator.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace filters {

struct Case {
  std::string document;
  std::string record;                              // as dump
  std::string errors = {};                         // of the decoder, as errorList
  std::optional<std::string> validatorErrors = {}; // nothing: the same
};

const std::vector<Case> &attributeCases();
const std::vector<Case> &childCases();
const std::vector<Case> &bindingCases();
const std::vector<Case> &textCases();

// Content in a filter "f", in its "what", in its "trigger"; and the record around what that comes to.
std::string inFilter(const std::string &content);
std::string inWhat(const std::string &content);
std::string inTrigger(const std::string &content);
std::string filterOf(const std::string &record);
std::string whatOf(const std::string &record);
std::string triggerOf(const std::string &record);

// The status that a call returns with these errors.
int statusOf(const std::string &errors);

} // namespace filters
