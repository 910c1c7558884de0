// The schemas' verdicts on the bodies that the agents carry, as contexts write them by default. Those of dialog states
// have display names, whose attribute their schema calls otherwise.
#include "Bodies.h"
#include "schemaJudge.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using namespace carrier;

struct Case {
  std::string_view kind;
  const char *schema;
  bool accepted = true;

  friend void PrintTo(const Case &given, std::ostream *out) { *out << given.kind; }
};

const Case cases[] = {
    {"isComposing", "im-iscomposing.xsd"},
    {"ruleset", "common-policy.xsd"},
    // Attributes get the prefix that is bound, and the schema wants them without one. A host that has declared the
    // default namespace, as the tool does, writes what it accepts.
    {"debuginfo", "debuginfo.xsd", false},
};

class Schemas : public testing::TestWithParam<Case> {};

TEST_P(Schemas, JudgeWhatIsCarried) {
  support::SchemaJudge judge(GetParam().schema);
  if (!judge.available()) GTEST_SKIP() << "IMSCODEC_SCHEMAS names no folder of schemas";
  const Bodies bodies(200, 200, 20000);
  const auto kind = std::ranges::find(kinds(), GetParam().kind, &Kind::name);
  ASSERT_NE(kind, kinds().end());
  for (std::size_t number = 0; number < bodies.count(); ++number)
    judge.add(std::to_string(number), bodies.find(*kind, number)->text);

  // With an attribute that has no place there: the judge has to be awake.
  std::string wrong = bodies.find(*kind, 0)->text;
  wrong.insert(wrong.find('>', wrong.find("?>") + 2), " wrong=\"yes\"");
  judge.add("wrong", wrong);

  for (const auto &[name, accepted] : judge.verdicts())
    EXPECT_EQ(accepted, GetParam().accepted && name != "wrong") << name << "\n" << judge.report().substr(0, 2000);
}

INSTANTIATE_TEST_SUITE_P(Written, Schemas, testing::ValuesIn(cases),
                         [](const auto &one) { return std::string(one.param.kind); });

} // namespace
