// What each event of a document leaves behind: levels of the handlers from the root's inwards, the state byte, the
// result of the callback. Where an element is refused, every later event must find the handlers in step.
#include "reading.h"
#include "walk.h"

using namespace reading;
using support::Context;
using support::contextWithErrorLimit;
using support::errorLimits;
using support::HandlerProbe;
using support::linesOf;
using support::Walk;

namespace {

enum class Table {
  installed,
  none
};

void setUp(RuntimeContext *ctx, const std::string &text, Table table) {
  EXPECT_EQ(support::setInput(ctx, text), 0);
  // Taken outside of what is measured.
  EXPECT_EQ(rtXmlNSSetURITable(ctx, table == Table::none ? nullptr : QxGet_IMS_NSURI(ctx),
                               table == Table::none ? 0 : QX_URI_SLOTS),
            0);
}

Walk walk(RuntimeContext *ctx, const std::string &text, Table table = Table::installed) {
  setUp(ctx, text, table);
  support::HeapBalance balance(ctx);
  auto record = Record::uninitialised(ctx);
  EXPECT_EQ(QxInit_cp__ruleset(ctx, record), 0);
  record.owned = true;
  SaxTypeHandler handler;
  EXPECT_EQ(QxSAX_cp__ruleset_init(ctx, &handler, record, 0), 0);
  Walk walk = support::walkThrough(ctx, handler, "ruleset");
  walk.record = dump(record.get());
  walk.errors = errorList(ctx);
  return walk;
}

Walk walkValidator(RuntimeContext *ctx, const std::string &text, Table table = Table::installed) {
  setUp(ctx, text, table);
  support::HeapBalance balance(ctx);
  VsaxTypeHandler handler;
  EXPECT_EQ(QxVSAX_cp__ruleset_init(ctx, &handler, 0), 0);
  Walk walk = support::walkThrough(ctx, handler, "ruleset");
  walk.errors = errorList(ctx);
  return walk;
}

// The log without the results behind the first so many: a refusal that is not recorded shows in the levels only.
std::string withResults(const std::string &log, size_t count) {
  std::string all;
  for (const std::string &line : linesOf(log)) {
    const size_t arrow = line.find(" -> ");
    all += line.substr(0, arrow != std::string::npos && count == 0 ? arrow : line.size()) + "\n";
    if (arrow != std::string::npos && count != 0) --count;
  }
  return all;
}

std::string without(std::string text, std::string_view part) {
  for (size_t at = text.find(part); at != std::string::npos; at = text.find(part))
    text.erase(at, part.size());
  return text;
}

struct Expectation {
  std::string content;
  std::string log; // with all errors recorded
  const char *record;
  const char *errors;      // with all errors recorded
  const char *errorsOfOne; // with the first recorded
  // Results are those of the errors recorded, but for the second lookup, which answers with the newest record's status.
  size_t resultsOfOne = 1;
  const char *validatorLog = nullptr;    // null: the same, but for foreign elements, which have no handler
  const char *validatorErrors = nullptr; // null: the same
};

void expectWalk(const Expectation &expected) {
  const std::string text = document(expected.content);
  const std::string validatorLog =
      expected.validatorLog == nullptr ? without(expected.log, ">any") : expected.validatorLog;
  for (uint32_t limit : errorLimits) {
    SCOPED_TRACE("error limit " + std::to_string(limit) + ": " + text);
    const size_t results = limit == 1 ? expected.resultsOfOne : limit;
    const std::string errors = limit == 100 ? expected.errors : limit == 1 ? expected.errorsOfOne : "";
    const Walk walked = walk(*contextWithErrorLimit(limit), text);
    EXPECT_EQ(walked.parse, 0);
    EXPECT_EQ(walked.log, withResults(expected.log, results));
    EXPECT_EQ(walked.record, expected.record);
    EXPECT_EQ(walked.errors, errors);

    const Walk checked = walkValidator(*contextWithErrorLimit(limit), text);
    EXPECT_EQ(checked.parse, 0);
    EXPECT_EQ(checked.log, withResults(validatorLog, results));
    if (expected.validatorErrors == nullptr) {
      EXPECT_EQ(checked.errors, support::byValidator(errors));
    } else {
      EXPECT_EQ(checked.errors, expected.validatorErrors);
    }

    // The same in one call.
    const std::unique_ptr<Context> ctx = contextWithErrorLimit(limit);
    const Reading reading = decode(*ctx, text);
    EXPECT_EQ(reading.record, expected.record);
    EXPECT_EQ(reading.errors, errors);
    EXPECT_EQ(reading.status, rtxErrGetFirstError(*ctx));
  }
}

TEST(Walk, ConditionsOfAllKindsAndRulesOfAnotherName) {
  expectWalk(
      {"<rule id=\"1\"><conditions><identity><one id=\"a\"/></identity><f:a/><f:b><sphere/></f:b>"
       "<sphere value=\"w\"/><f:c/><bogus>t<sphere value=\"no\"/></bogus></conditions></rule>"
       "<rulex><rule id=\"no\"/></rulex><rule id=\"2\"><conditions/></rule>",
       "<ruleset> 1 s2\n"
       "<rule> 2>1 s2\n"
       "<conditions> 3>2>1 s2\n"
       "<identity> 4>3>2>1 s2\n"
       "<one> 5>4>3>2>1 s2\n"
       "</one> 4>3>2>1 s5\n"
       "</identity> 3>2>1 s5\n"
       "<f:a> 4>3>2>any s2\n"
       "</f:a> 3>2>1 s2\n"
       "<f:b> 4>3>2>any s2\n"
       "<sphere> 5>4>3>any s2\n"
       "</sphere> 4>3>2>any s2\n"
       "</f:b> 3>2>1 s2\n"
       "<sphere> 4>3>2>1 s2\n"
       "</sphere> 3>2>1 s5\n"
       "<f:c> 4>3>2>any s2\n"
       "</f:c> 3>2>1 s2\n"
       "<bogus> 3>2>1 s2 -> -41\n"
       "</conditions> 2>1 s5\n"
       "</rule> 1 s5\n"
       "<rulex> 1 s2 -> -3\n"
       "<rule> 2>1 s2\n"
       "<conditions> 3>2>1 s2\n"
       "</conditions> 2>1 s5\n"
       "</rule> 1 s5\n"
       "</ruleset> 0 s5\n",
       "rule(1 conditions[identity[one(a)] any[<f:a xmlns:f=\"urn:f\"/> <f:b xmlns:f=\"urn:f\" "
       "xmlns=\"urn:ietf:params:xml:ns:common-policy\"><sphere/></f:b>] sphere(w) any[<f:c xmlns:f=\"urn:f\"/>]]) "
       "rule(2 conditions[])",
       "-41(bogus)@SAX; -3(cp_rule,rulex)@SAX", "-41(bogus)@SAX"});
}

TEST(Walk, IdentityWithoutAnItem) {
  const std::string log = "<ruleset> 1 s2\n"
                          "<rule> 2>1 s2\n"
                          "<conditions> 3>2>1 s2\n"
                          "<identity> 4>3>2>1 s2\n"
                          "</identity> 3>2>1 s5 -> -16\n"
                          "</conditions> 2>1 s5\n"
                          "<actions> 3>2>1 s2\n"
                          "<f:a> 4>3>2>any s2\n"
                          "</f:a> 3>2>1 s2\n"
                          "</actions> 2>1 s5\n"
                          "</rule> 1 s5\n"
                          "</ruleset> 0 s5\n";
  const std::string validatorLog = without(without(log, ">any"), " -> -16");
  expectWalk({"<rule id=\"1\"><conditions><identity/></conditions><actions><f:a/></actions></rule>", log,
              "rule(1 conditions[identity[]] actions[<f:a xmlns:f=\"urn:f\"/>])", "-16(.count,0)@SAX",
              "-16(.count,0)@SAX", 1, validatorLog.c_str(), ""});
}

TEST(Walk, ChildrenBehindTheClosingOne) {
  expectWalk({"<rule id=\"1\"><transformations/><actions><f:a/></actions></rule><rule id=\"2\"><actions/></rule>",
              "<ruleset> 1 s2\n"
              "<rule> 2>1 s2\n"
              "<transformations> 3>2>1 s2\n"
              "</transformations> 2>1 s5\n"
              "<actions> 2>1 s2 -> -41\n"
              "</rule> 1 s5\n"
              "<rule> 2>1 s2\n"
              "<actions> 3>2>1 s2\n"
              "</actions> 2>1 s5\n"
              "</rule> 1 s5\n"
              "</ruleset> 0 s5\n",
              "rule(1 transformations[]) rule(2 actions[])", "-41(actions)@runtime/reader<SAX",
              "-41(actions)@runtime/reader<SAX"});
  // Again and again, in every type whose content can be complete.
  expectWalk({"<rule id=\"1\"><conditions><identity><one id=\"o\"><f:a/><f:b/></one></identity>"
              "<validity><from>2024-01-02T03:04:05Z</from><until>2024-01-02T03:04:05Z</until><until>no</until>"
              "</validity></conditions><transformations/><transformations/><conditions/></rule>",
              "<ruleset> 1 s2\n"
              "<rule> 2>1 s2\n"
              "<conditions> 3>2>1 s2\n"
              "<identity> 4>3>2>1 s2\n"
              "<one> 5>4>3>2>1 s2\n"
              "<f:a> 6>5>4>3>2>any s2\n"
              "</f:a> 5>4>3>2>1 s2\n"
              "<f:b> 5>4>3>2>1 s2 -> -41\n"
              "</one> 4>3>2>1 s5\n"
              "</identity> 3>2>1 s5\n"
              "<validity> 4>3>2>1 s2\n"
              "<from> 5>4>3>2 s2\n"
              "'2024-01-02T03:04:05Z' 5>4>3>2 s4\n"
              "</from> 4>3>2>1 s4\n"
              "<until> 5>4>3>2 s2\n"
              "'2024-01-02T03:04:05Z' 5>4>3>2 s4\n"
              "</until> 4>3>2>1 s4\n"
              "<until> 4>3>2>1 s2 -> -41\n"
              "</validity> 3>2>1 s5\n"
              "</conditions> 2>1 s5\n"
              "<transformations> 3>2>1 s2\n"
              "</transformations> 2>1 s5\n"
              "<transformations> 2>1 s2 -> -41\n"
              "<conditions> 2>1 s2 -> -41\n"
              "</rule> 1 s5\n"
              "</ruleset> 0 s5\n",
              "rule(1 conditions[identity[one(o any=<f:a xmlns:f=\"urn:f\"/>)] "
              "validity(2024-01-02T03:04:05Z,2024-01-02T03:04:05Z)] transformations[])",
              "-41(f:b)@runtime/reader<SAX; -41(until)@runtime/reader<SAX; "
              "-41(transformations)@runtime/reader<SAX; -41(conditions)@runtime/reader<SAX",
              // The others are not recorded, but their status passes through all the same.
              "-41(f:b)@runtime/reader<SAX<SAX<SAX<SAX", 4});
}

TEST(Walk, WithoutATableOfNamespacesUnknownNamesAreForeign) {
  const std::string text =
      document("<rule id=\"1\"><conditions><bogus><sphere/></bogus><sphere value=\"s\"/></conditions></rule>");
  const std::string captured = "<ruleset> 1 s2\n"
                               "<rule> 2>1 s2\n"
                               "<conditions> 3>2>1 s2\n"
                               "<bogus> 4>3>2>any s2\n"
                               "<sphere> 5>4>3>any s2\n"
                               "</sphere> 4>3>2>any s2\n"
                               "</bogus> 3>2>1 s2\n"
                               "<sphere> 4>3>2>1 s2\n"
                               "</sphere> 3>2>1 s5\n"
                               "</conditions> 2>1 s5\n"
                               "</rule> 1 s5\n"
                               "</ruleset> 0 s5\n";
  for (uint32_t limit : errorLimits) {
    SCOPED_TRACE(limit);
    const Walk walked = walk(*contextWithErrorLimit(limit), text, Table::none);
    EXPECT_EQ(walked.log, captured);
    EXPECT_EQ(walked.record, "rule(1 conditions[any[<bogus xmlns=\"urn:ietf:params:xml:ns:common-policy\"><sphere/>"
                             "</bogus>] sphere(s)])");
    EXPECT_EQ(walked.errors, "");
    const Walk checked = walkValidator(*contextWithErrorLimit(limit), text, Table::none);
    EXPECT_EQ(checked.log, without(captured, ">any"));
    EXPECT_EQ(checked.errors, "");
    // A document decoder brings its table along.
    const std::unique_ptr<Context> ctx = contextWithErrorLimit(limit);
    ASSERT_EQ(rtXmlNSSetURITable(*ctx, nullptr, 0), 0);
    const Reading reading = decode(*ctx, text);
    EXPECT_EQ(reading.record, "rule(1 conditions[sphere(s)])");
    EXPECT_EQ(reading.errors, limit == 0 ? "" : "-41(bogus)@SAX");
  }
}

TEST(Walk, RefusedInsideTypesOfAttributesOnly) {
  expectWalk({"<rule id=\"1\"><conditions><identity><many><except><x><y/></x></except><except id=\"e\"/></many>"
              "</identity><sphere value=\"s\">t<x/>u</sphere></conditions></rule>",
              "<ruleset> 1 s2\n"
              "<rule> 2>1 s2\n"
              "<conditions> 3>2>1 s2\n"
              "<identity> 4>3>2>1 s2\n"
              "<many> 5>4>3>2>1 s2\n"
              "<except> 6>5>4>3>2>1 s2\n"
              "<x> 6>5>4>3>2>1 s2 -> -41\n"
              "</except> 5>4>3>2>1 s5\n"
              "<except> 6>5>4>3>2>1 s2\n"
              "</except> 5>4>3>2>1 s5\n"
              "</many> 4>3>2>1 s5\n"
              "</identity> 3>2>1 s5\n"
              "<sphere> 4>3>2>1 s2\n"
              "'t' 4>3>2>1 s2\n"
              "<x> 4>3>2>1 s2 -> -41\n"
              "'u' 4>3>2>1 s2\n"
              "</sphere> 3>2>1 s5\n"
              "</conditions> 2>1 s5\n"
              "</rule> 1 s5\n"
              "</ruleset> 0 s5\n",
              "rule(1 conditions[identity[many(except() except(id=e))] sphere(s)])", "-41(x)@SAX; -41(x)@SAX",
              "-41(x)@SAX"});
}

TEST(Walk, TextAroundARefusedElementIsJoined) {
  // The child of "from" is no child of the validity: it is neither refused nor heeded.
  expectWalk({"<rule id=\"1\"><conditions><validity><from>2024-01<b>-02</b>T03:04:05Z</from></validity></conditions>"
              "</rule>",
              "<ruleset> 1 s2\n"
              "<rule> 2>1 s2\n"
              "<conditions> 3>2>1 s2\n"
              "<validity> 4>3>2>1 s2\n"
              "<from> 5>4>3>2 s2\n"
              "'2024-01' 5>4>3>2 s4\n"
              "<b> 6>5>4>3 s4\n"
              "'-02' 6>5>4>3 s4\n"
              "</b> 5>4>3>2 s4\n"
              "'T03:04:05Z' 5>4>3>2 s4\n"
              "</from> 4>3>2>1 s4\n"
              "</validity> 3>2>1 s5\n"
              "</conditions> 2>1 s5\n"
              "</rule> 1 s5\n"
              "</ruleset> 0 s5\n",
              "rule(1 conditions[validity(2024-01-02T03:04:05Z,-)])", "", ""});
}

TEST(Walk, TextThatCannotBeCollected) {
  // The heap takes the beginning of the text at most.
  const std::string text = document(conditions("<validity><from>" + std::string(400000, 'x') +
                                               "<b>inner</b>tail</from>"
                                               "<until>2024-01-02T03:04:05Z</until></validity>"));
  for (uint32_t limit : errorLimits) {
    for (const bool validator : {false, true}) {
      SCOPED_TRACE((validator ? "validator, error limit " : "decoder, error limit ") + std::to_string(limit));
      Context ctx([limit](RuntimeOptions &options) {
        options.errorLimit = limit;
        options.heapLimit = 64 * 1024;
      });
      Walk walked = validator ? walkValidator(ctx, text) : walk(ctx, text);
      EXPECT_EQ(walked.parse, 0);
      const size_t from = walked.log.find("'x");
      const size_t to = walked.log.find('\n', from);
      ASSERT_NE(to, std::string::npos) << walked.log.substr(0, 300);
      EXPECT_TRUE(walked.log.substr(0, to).ends_with(" -> -10")) << walked.log.substr(to - 30, 30);
      walked.log.erase(from, to + 1 - from);
      EXPECT_EQ(walked.log, "<ruleset> 1 s2\n"
                            "<rule> 2>1 s2\n"
                            "<conditions> 3>2>1 s2\n"
                            "<validity> 4>3>2>1 s2\n"
                            "<from> 5>4>3>2 s2\n"
                            "</from> 4>3>2>1 s0\n"
                            "<until> 5>4>3>2 s2\n"
                            "'2024-01-02T03:04:05Z' 5>4>3>2 s4\n"
                            "</until> 4>3>2>1 s4\n"
                            "</validity> 3>2>1 s5\n"
                            "</conditions> 2>1 s5\n"
                            "</rule> 1 s5\n"
                            "</ruleset> 0 s5\n");
      if (!validator) {
        EXPECT_EQ(walked.record, "rule(r conditions[validity(-,2024-01-02T03:04:05Z)])");
      }
      EXPECT_EQ(walked.errors, limit == 0 ? "" : validator ? "-10@Vldt" : "-10@SAX");
    }
  }
}

// An element that is refused, at every place where one can be: levels, states and results of all other events, and the
// record, are as without it.
TEST(Walk, OneRefusedElementAnywhere) {
  const std::string marked =
      "<ruleset xmlns='"s + namespaceUri +
      "' xmlns:f='urn:f'>^<rule id='1'>^<conditions>^<identity>^<one id='o'>^<f:a><f:b/></f:a>^</one>^<many "
      "domain='d'>^"
      "<except id='e'>^</except>^<f:c/>^</many>^<f:d/>^</identity>^<f:e/>^<f:g/>^<sphere "
      "value='s'>^</sphere>^<validity>^"
      "<from>2024-01-02T03:04:05Z</from>^<until>2024-01-02T03:04:05Z</until>^</validity>^<f:h/>^</conditions>^"
      "<actions><f:i/></actions>^<transformations><f:j/></transformations>^</rule>^<rule id='2'>^<actions/>^</rule>^"
      "</ruleset>";
  const std::string plain = without(marked, "^");
  const std::string refused = "<bogus><rule id='no'/><conditions>t</conditions></bogus>";
  const auto withoutRefused = [](const std::string &log) {
    std::string rest;
    size_t found = 0;
    for (const std::string &line : linesOf(log)) {
      if (line.starts_with("<bogus> ")) {
        ++found;
      } else {
        rest += line + "\n";
      }
    }
    EXPECT_EQ(found, 1u);
    return rest;
  };
  for (uint32_t limit : errorLimits) {
    const Walk expected = walk(*contextWithErrorLimit(limit), plain);
    const Walk expectedOfValidator = walkValidator(*contextWithErrorLimit(limit), plain);
    EXPECT_EQ(expected.errors, "");
    EXPECT_EQ(expectedOfValidator.errors, "");
    size_t places = 0;
    for (size_t at = marked.find('^'); at != std::string::npos; at = marked.find('^', at + 1)) {
      const std::string text = without(marked.substr(0, at), "^") + refused + without(marked.substr(at), "^");
      SCOPED_TRACE("error limit " + std::to_string(limit) + ": " + text);
      const std::unique_ptr<Context> ctx = contextWithErrorLimit(limit);
      const Walk walked = walk(*ctx, text);
      EXPECT_EQ(withoutRefused(walked.log), expected.log);
      EXPECT_EQ(walked.record, expected.record);
      EXPECT_EQ(rtxErrCount(*ctx), limit == 0 ? 0u : 1u);
      const std::unique_ptr<Context> checking = contextWithErrorLimit(limit);
      const Walk checked = walkValidator(*checking, text);
      EXPECT_EQ(withoutRefused(checked.log), expectedOfValidator.log);
      EXPECT_EQ(checked.errors, support::byValidator(walked.errors));
      ++places;
    }
    EXPECT_EQ(places, 30u);
  }
}

// A document that ends at any depth: the handlers are where they were, and reading it in one call leaves nothing.
TEST(Walk, DocumentCutOffInsideAForeignElement) {
  struct Cut {
    const char *text;
    const char *lastEvent;
  };
  constexpr Cut cuts[] = {
      {"<rule id='1'><conditions><identity><one id='o'><f:a>t<f:b>u", "'u' 7>6>5>4>3>any s2"},
      {"<rule id='1'><conditions><identity><many domain='d'><except id='e'/><f:a>t", "'t' 6>5>4>3>2>any s2"},
      {"<rule id='1'><conditions><identity><f:a><f:b/>", "</f:b> 5>4>3>2>any s2"},
      {"<rule id='1'><conditions><f:a/><f:b>t", "'t' 4>3>2>any s2"},
      {"<rule id='1'><actions><f:a/><f:b>t", "'t' 4>3>2>any s2"},
      {"<rule id='1'><conditions><validity><from>2024", "'2024' 5>4>3>2 s4"},
  };
  const std::string start = "<ruleset xmlns='"s + namespaceUri + "' xmlns:f='urn:f'><rule id='0'/>";
  for (uint32_t limit : errorLimits) {
    for (const Cut &cut : cuts) {
      SCOPED_TRACE("error limit " + std::to_string(limit) + ": " + cut.text);
      const std::unique_ptr<Context> ctx = contextWithErrorLimit(limit);
      setUp(*ctx, start + cut.text, Table::installed);
      cp__ruleset record; // all goes with the heap
      EXPECT_EQ(QxInit_cp__ruleset(*ctx, &record), 0);
      SaxTypeHandler handler;
      EXPECT_EQ(QxSAX_cp__ruleset_init(*ctx, &handler, &record, 0), 0);
      HandlerProbe<SaxTypeHandler> probe(*ctx, handler);
      EXPECT_EQ(probe.read(), STATUS_PARSE_FAILED);
      EXPECT_EQ(probe.log.back(), cut.lastEvent);
      EXPECT_NE(handler.delegate, nullptr);
      EXPECT_EQ(dump(record), "rule(0)");
      EXPECT_EQ(rtXmlNSGetIndex(*ctx, "f"), RTXML_NS_NONE) << "no binding is left";
      rtxErrClear(*ctx);
      EXPECT_EQ(decode(*ctx, start + cut.text).record, "rule(0)");
      EXPECT_EQ(validate(*ctx, start + cut.text).status, STATUS_PARSE_FAILED);
    }
  }
}

} // namespace
