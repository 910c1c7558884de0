// How dialog states follow from documents and their versions.
#include "DialogStates.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using agent::DialogStates;
using News = DialogStates::News;

struct Dialog {
  std::string id;
  std::string state;
};

struct Step {
  std::uint32_t version;
  std::string scope; // full or partial
  std::vector<Dialog> dialogs;
  News news;
  std::string changes; // "id=state", or "id gone"
  std::string known;   // after it
};

struct Case {
  std::string name;
  std::vector<Step> steps;

  friend void PrintTo(const Case &given, std::ostream *out) { *out << given.name; }
};

const Case cases[] = {
    {"FullStateIsAllThereIs",
     {{0, "full", {{"a", "early"}, {"b", "early"}}, News::applied, "a=early b=early", "a=early b=early"},
      {1, "full", {{"b", "confirmed"}}, News::applied, "b=confirmed a gone", "b=confirmed"},
      {2, "full", {}, News::applied, "b gone", ""}}},
    {"PartialStateIsAddedToIt",
     {{0, "full", {{"a", "early"}}, News::applied, "a=early", "a=early"},
      {1, "partial", {{"b", "trying"}}, News::applied, "b=trying", "a=early b=trying"},
      {2, "partial", {{"a", "confirmed"}}, News::applied, "a=confirmed", "a=confirmed b=trying"}}},
    {"TheSameOnceMoreIsNoChange",
     {{0, "full", {{"a", "early"}}, News::applied, "a=early", "a=early"},
      {1, "full", {{"a", "early"}}, News::applied, "", "a=early"}}},
    {"WhatHasEndedIsToldOnce",
     {{0, "full", {{"a", "confirmed"}}, News::applied, "a=confirmed", "a=confirmed"},
      {1, "full", {{"a", "terminated"}}, News::applied, "a=terminated", ""},
      {2, "full", {{"a", "terminated"}}, News::applied, "", ""},
      {3, "full", {}, News::applied, "", ""},
      {4, "partial", {{"a", "trying"}}, News::applied, "a=trying", "a=trying"}}},
    {"OlderDocumentsAreIgnored",
     {{5, "full", {{"a", "confirmed"}}, News::applied, "a=confirmed", "a=confirmed"},
      {4, "partial", {{"a", "early"}}, News::old, "", "a=confirmed"},
      {5, "partial", {{"a", "early"}}, News::old, "", "a=confirmed"},
      {4, "full", {}, News::old, "", "a=confirmed"}}},
    {"GapsAreTakenAndTold",
     {{0, "full", {{"a", "early"}}, News::applied, "a=early", "a=early"},
      {2, "partial", {{"a", "confirmed"}}, News::gap, "a=confirmed", "a=confirmed"},
      {3, "partial", {{"b", "early"}}, News::applied, "b=early", "a=confirmed b=early"}}},
    {"FullStateHasNoGaps",
     {{0, "full", {{"a", "early"}}, News::applied, "a=early", "a=early"},
      {9, "full", {{"b", "early"}}, News::applied, "b=early a gone", "b=early"}}},
    {"PartialStateAtFirstIsAGap",
     {{3, "partial", {{"a", "early"}}, News::gap, "a=early", "a=early"},
      {4, "full", {{"a", "early"}, {"b", "early"}}, News::applied, "b=early", "a=early b=early"}}},
    {"TheGreatestVersionIsTheLast",
     {{4294967294, "full", {}, News::applied, "", ""},
      {4294967295, "partial", {{"a", "early"}}, News::applied, "a=early", "a=early"},
      {0, "full", {}, News::old, "", "a=early"}}},
};

std::string bodyOf(const Step &step) {
  std::string body = "<dialog-info xmlns='urn:ietf:params:xml:ns:dialog-info' version='" +
                     std::to_string(step.version) + "' state='" + step.scope + "' entity='sip:anna@home.example'>";
  for (const auto &[id, state] : step.dialogs)
    body.append("<dialog id='").append(id).append("'><state>").append(state).append("</state></dialog>");
  return body + "</dialog-info>";
}

void add(std::string &line, const std::string &word) { line += (line.empty() ? "" : " ") + word; }

class States : public testing::TestWithParam<Case> {};

TEST_P(States, FollowTheDocuments) {
  imscodec::Context context;
  DialogStates states;
  for (const Step &step : GetParam().steps) {
    SCOPED_TRACE(bodyOf(step));
    const auto info = context.decode<imscodec::dialoginfo::dialog_info>(bodyOf(step));
    ASSERT_TRUE(info);
    EXPECT_EQ(states.take(*info), step.news);
    std::string changes;
    for (const auto &[id, state] : states.changes())
      add(changes, id + (state ? "=" + state->state : " gone"));
    EXPECT_EQ(changes, step.changes);
    std::string known;
    for (const auto &[id, state] : states.dialogs())
      add(known, id + "=" + state.state);
    EXPECT_EQ(known, step.known);
  }
}

INSTANTIATE_TEST_SUITE_P(Dialog, States, testing::ValuesIn(cases), [](const auto &one) { return one.param.name; });

} // namespace
