// Any rule set survives being written and read.
#include "input.h"
#include "randomText.h"
#include "reading.h"
#include "rules.h"
#include "schemaJudge.h"
#include "xmlJudge.h"

#include <array>
#include <iterator>
#include <map>

using namespace rules;
using support::Context;
using support::Random;
using support::XmlElement;

namespace {

// White space as an identifier's is kept: one blank between words.
std::string collapsed(std::string_view text) {
  std::string all;
  for (char c : text) {
    const bool space = c == ' ' || c == '\t' || c == '\r' || c == '\n';
    if (!space) all += c;
    if (space && !all.empty() && all.back() != ' ') all += ' ';
  }
  if (!all.empty() && all.back() == ' ') all.pop_back();
  return all;
}

// ---- Records --------------------------------------------------------------------------------------------------

// Fills records with anything that they can carry, or with what the schema allows.
class RandomRules {
public:
  RandomRules(Random &generator, RuntimeContext *ctx, bool bySchema)
      : random(generator), build(ctx), conforming(bySchema) {}

  void fill(cp__ruleset &record) {
    for (uint32_t left = random.below(5); left != 0; --left) {
      const std::string id = "rule-" + std::to_string(record.cp_rule.count);
      if (auto *rule = build.rule(record, conforming ? id : identifier())) fill(*rule);
    }
  }

private:
  std::string text() { return support::randomText(random, random.chance(5) ? 300 : 10); }
  std::string identifier() { return conforming ? "sip:u" + std::to_string(random.below(99)) : collapsed(text()); }
  std::string foreign() { return support::randomForeignElement(random); }

  RtxXmlString dateTime() {
    const bool cdata = random.chance(30);
    return build.text(conforming ? "20" + std::to_string(10 + random.below(90)) + "-02-03T04:05:06.7Z" : text(), cdata);
  }

  void fill(cp_ruleType &record) {
    record.m = random.below(8);
    if ((record.m & cp_ruleType_has_conditions) != 0) fill(record.cp_conditions);
    if ((record.m & cp_ruleType_has_actions) != 0) fill(record.cp_actions);
    if ((record.m & cp_ruleType_has_transformations) != 0) fill(record.cp_transformations);
  }

  void fill(cp_extensibleType &record) {
    for (uint32_t left = random.below(4); left != 0; --left)
      build.foreign(record.items, foreign());
  }

  void fill(cp_conditionsType &record) {
    bool afterRun = false; // a run of foreign elements ends where another kind of element stands
    for (uint32_t left = random.below(6); left != 0; --left) {
      const uint32_t kind = random.below(afterRun ? 3 : 4);
      afterRun = kind == 3;
      if (kind == 0) {
        if (auto *item = build.item(record, cp_conditionsType_1_identity)) fill(item->u.cp_identity);
      } else if (kind == 1) {
        build.sphere(record, text());
      } else if (kind == 2) {
        auto *item = build.item(record, cp_conditionsType_1_validity);
        if (item != nullptr) item->u.cp_validity = {dateTime(), dateTime()};
      } else {
        std::vector<std::string> run;
        for (uint32_t elements = 1 + random.below(3); elements != 0; --elements)
          run.push_back(foreign());
        build.foreign(record, run);
      }
    }
  }

  void fill(cp_identityType &record) {
    for (uint32_t left = 1 + random.below(4); left != 0; --left) {
      const uint32_t kind = random.below(3);
      if (kind == 2) {
        build.foreign(record, foreign());
        continue;
      }
      auto *item = build.item(record, kind == 0 ? uint16_t{cp_identityType_1_one} : uint16_t{cp_identityType_1_many});
      if (item == nullptr) continue;
      if (kind == 0) {
        item->u.cp_one = {0, {}, build.text(identifier())};
        if (random.chance(30)) item->u.cp_one = {1, build.text(foreign()), item->u.cp_one.cp_id};
      } else {
        fill(item->u.cp_many);
      }
    }
  }

  void fill(cp_manyType &record) {
    for (uint32_t left = random.below(4); left != 0; --left) {
      if (random.chance(40)) {
        build.foreign(record, foreign());
      } else if (auto *item = build.item(record, cp_manyType_1_except)) {
        cp_exceptType &except = item->u.cp_except;
        except.m = random.below(4);
        if ((except.m & cp_exceptType_has_domain) != 0) except.cp_domain = build.text(text());
        if ((except.m & cp_exceptType_has_id) != 0) except.cp_id = build.text(identifier());
      }
    }
    record.m = random.below(2);
    if (record.m != 0) record.cp_domain = build.text(text());
  }

  Random &random;
  Builder build;
  bool conforming;
};

TEST(Property, RecordsSurviveBeingWrittenAndRead) {
  Random random(20240102);
  Context ctx;
  for (int round = 0; round < 1500; ++round) {
    rtxErrClear(ctx);
    support::HeapBalance balance(ctx);
    Record<cp__ruleset> original(ctx);
    RandomRules(random, ctx, false).fill(*original);
    const std::string text = encodedDocument(ctx, original);
    SCOPED_TRACE("round " + std::to_string(round) + ": " + testing::PrintToString(text));
    const auto tree = support::parseNamespacedXml(text);
    ASSERT_TRUE(tree) << "not well-formed for a strict parser";
    EXPECT_EQ(tree->uri, namespaceUri);
    EXPECT_EQ(tree->name, "ruleset");
    EXPECT_EQ(tree->children.size(), original->cp_rule.count);

    ASSERT_EQ(support::setInput(ctx, text), 0);
    Record<cp__ruleset> again(ctx);
    ASSERT_EQ(QxXmlD_cp_ruleset(ctx, again), 0) << support::errors(ctx);
    EXPECT_EQ(printed<cp__ruleset>("r", again), printed<cp__ruleset>("r", original));
    if (testing::Test::HasFailure()) return;
  }
}

TEST(Property, WhatIsWrittenConformsToTheSchema) {
  support::SchemaJudge judge("common-policy.xsd");
  if (!judge.available()) GTEST_SKIP() << "IMSCODEC_SCHEMAS names no folder of schemas";
  constexpr int count = 300;
  Random random(4745);
  for (int round = 0; round < count; ++round) {
    Context ctx;
    Record<cp__ruleset> record(ctx);
    RandomRules(random, ctx, true).fill(*record);
    const std::string text = encodedDocument(ctx, record);
    judge.add("record-" + std::to_string(round), text);
    ASSERT_EQ(support::setInput(ctx, text), 0);
    // A validator, which keeps nothing, takes the attributes of a foreign element for unknown ones.
    QxXmlV_cp_ruleset(ctx);
    for (int status : support::statuses(ctx))
      EXPECT_EQ(status, STATUS_UNKNOWN_ATTRIBUTE) << support::errors(ctx) << text;
  }
  const auto accepted = judge.verdicts();
  EXPECT_EQ(accepted.size(), size_t{count});
  for (const auto &[name, verdict] : accepted)
    EXPECT_TRUE(verdict) << name << "\n" << judge.report();
}

// ---- Documents ------------------------------------------------------------------------------------------------

// A namespace of extensions by its sign in the samples below.
struct Extension {
  const char *sign;
  const char *uri;
};
constexpr Extension extensions[] = {{"$p:", "urn:ietf:params:xml:ns:pres-rules"},
                                    {"$c:", "urn:oma:xml:xdm:common-policy"},
                                    {"$o:", "urn:oma:xml:prs:pres-rules"},
                                    {"$v:", "urn:example:vendor"}};

// Extensions where they stand. "@" is any text.
constexpr std::array conditionSamples = {
    "<$c:external-list><$c:entry anc='https://xcap.example.com/lists/users/sip:ann@example.com/index/~~/list%5b1%5d'/>"
    "<$c:entry anc=\"@\"/></$c:external-list>",
    "<$c:other-identity/>",
    "<$c:anonymous-request></$c:anonymous-request>",
    "<$v:service k=\"@\" $v:k='@'>@<$v:uri>@</$v:uri>@</$v:service>",
    "<$v:call-state><!-- a remark --><$v:idle/><?hint idle?></$v:call-state>",
};
constexpr std::array actionSamples = {
    "<$p:sub-handling>allow</$p:sub-handling>",
    "<$p:sub-handling>\n  polite-block\n</$p:sub-handling>",
    "<$o:notify-watcher when='@' $p:k='@'/>",
    "<$p:confirm><$c:by><$c:mail $v:to='@'/></$c:by></$p:confirm>",
    "<$v:log level=\"&quot;1&quot;\" $v:level='&#9;&#10;'/>",
};
constexpr std::array transformationSamples = {
    "<$p:provide-services><$p:service-uri-scheme>sip</$p:service-uri-scheme>"
    "<$o:service-id>org.example:@</$o:service-id></$p:provide-services>",
    "<$p:provide-persons>\n  <$p:all-persons/>\n</$p:provide-persons>",
    "<$p:provide-devices><$p:deviceID>urn:uuid:0e5a@</$p:deviceID><$p:class>@</$p:class></$p:provide-devices>",
    "<$p:provide-activities>true</$p:provide-activities>",
    "<$p:provide-user-input>bare</$p:provide-user-input>",
    "<$p:provide-unknown-attribute ns=\"urn:example:vendor\" name=\"@\">true</$p:provide-unknown-attribute>",
    "<$p:provide-all-attributes/>",
    "<$o:provide-willingness>true</$o:provide-willingness>",
    "<$o:provide-geopriv precision='@'>full</$o:provide-geopriv>",
    "<$v:note xml:lang='en' id='n'>see <$v:b>@</$v:b> &lt;1&gt; <![CDATA[a<b]]]]><![CDATA[>&c]]> &#x1F600;</$v:note>",
};

// Writes rule sets as people and their tools do: namespaces declared anywhere, under one prefix or another, white space
// and remarks between elements.
class RandomDocument {
public:
  // bySchema: nothing that the schema refuses.
  RandomDocument(Random &generator, bool bySchema) : random(generator), conforming(bySchema) {}

  std::string ruleset(uint32_t rules) {
    own = pick(std::array{"", "cp:", "r:"});
    const std::string declaration = own.empty()
                                        ? " xmlns='"s + namespaceUri + "'"
                                        : " xmlns:" + own.substr(0, own.size() - 1) + "=\"" + namespaceUri + "\"";
    Prefixes prefixes;
    const std::string others = redeclared(prefixes);
    std::string all = "<?xml version='1.0'?>\n<" + own + "ruleset" + declaration + others + ">" + gap();
    for (uint32_t i = 0; i < rules; ++i)
      all += rule(i, prefixes) + gap();
    return all + "</" + own + "ruleset>\n";
  }

private:
  using Prefixes = std::map<std::string, std::string>; // by sign, with their colon

  template <size_t size> const char *pick(const std::array<const char *, size> &all) {
    return all[random.below(uint32_t{size})];
  }

  std::string gap() {
    return pick(std::array{"", "", "\n    ", "\r\n\t", "\n<!-- <remark/> -->\n", "<?edited by='hand'?>"});
  }

  std::string text() {
    return pick(
        std::array{"", "x", "5 &lt; 6", "Ann &amp; Bob", " two  blanks ", "\xC3\xA9\xF0\x9F\x98\x80", "]]&gt;"});
  }

  // Declares all extensions, each under a prefix that may have been another's.
  std::string redeclared(Prefixes &prefixes) {
    std::vector<std::string> free = {"pr", "ocp", "opr", "v", "a", "ns1"};
    std::string declarations;
    for (const Extension &extension : extensions) {
      const auto chosen = free.begin() + static_cast<std::ptrdiff_t>(random.below(static_cast<uint32_t>(free.size())));
      prefixes[extension.sign] = *chosen + ":";
      declarations += gapOfTag() + "xmlns:" + *chosen + "=\"" + extension.uri + "\"";
      free.erase(chosen);
    }
    return declarations;
  }

  std::string gapOfTag() { return pick(std::array{" ", " ", "\n     "}); }

  std::string sample(std::string sampleText, Prefixes prefixes) {
    std::string declarations;
    if (random.chance(30)) declarations = redeclared(prefixes);
    if (random.chance(20)) { // one of them as the default; attributes have no default namespace
      const Extension &extension = extensions[random.below(3)];
      prefixes[extension.sign] = "";
      declarations += " xmlns='"s + extension.uri + "'";
    }
    sampleText.insert(sampleText.find_first_of(" />", 1), declarations);
    for (const auto &[sign, prefix] : prefixes)
      sampleText = replaced(sampleText, sign, prefix);
    for (size_t at; (at = sampleText.find('@')) != std::string::npos;)
      sampleText.replace(at, 1, text());
    return sampleText;
  }

  // An element of the module's own, around what content writes.
  template <typename Content>
  std::string element(const std::string &name, const std::string &attributes, const Prefixes &prefixes,
                      Content content) {
    Prefixes within = prefixes;
    const std::string declarations = random.chance(15) ? redeclared(within) : "";
    const std::string inside = content(within);
    const std::string start = "<" + own + name + declarations + attributes;
    if (inside.empty() && random.chance(50)) return start + "/>";
    return start + ">" + inside + "</" + own + name + ">";
  }

  std::string empty(const std::string &name, const std::string &attributes, const Prefixes &prefixes) {
    return element(name, attributes, prefixes, [](const Prefixes &) { return std::string(); });
  }

  std::string identifierAttribute(const std::string &id) {
    return " id=\"" + std::string(pick(std::array{"", "", " ", "\n"})) + id + pick(std::array{"", "", "  ", "\t"}) +
           "\"";
  }

  std::string user() { return "sip:user" + std::to_string(random.below(1000)) + "@example.com"; }

  std::string rule(uint32_t number, const Prefixes &prefixes) {
    const std::string id = !conforming && random.chance(3) ? "r 0" : "r" + std::to_string(number);
    return element("rule", identifierAttribute(id), prefixes, [&](const Prefixes &within) {
      std::string all = gap();
      if (random.chance(80)) all += conditions(within) + gap();
      if (random.chance(80)) all += extensible("actions", actionSamples, within) + gap();
      if (random.chance(80)) all += extensible("transformations", transformationSamples, within) + gap();
      return all;
    });
  }

  template <size_t size>
  std::string extensible(const std::string &name, const std::array<const char *, size> &samples,
                         const Prefixes &prefixes) {
    return element(name, "", prefixes, [&](const Prefixes &within) {
      std::string all = gap();
      for (uint32_t left = random.below(5); left != 0; --left)
        all += sample(pick(samples), within) + gap();
      // What stands in no namespace, or in the module's own, is kept like any other.
      if (!conforming && random.chance(5)) all += "<plain xmlns=''><inner/></plain>";
      if (!conforming && random.chance(5)) all += "<" + own + "rule id='no rule'/>";
      return all;
    });
  }

  std::string conditions(const Prefixes &prefixes) {
    return element("conditions", "", prefixes, [&](const Prefixes &within) {
      std::string all = gap();
      for (uint32_t left = 1 + random.below(6); left != 0; --left) {
        switch (random.below(5)) {
        case 0: all += identity(within); break;
        case 1: all += empty("sphere", " value='" + text() + "'", within); break;
        case 2: all += validity(within); break;
        default: all += sample(pick(conditionSamples), within); break;
        }
        all += gap();
      }
      return all;
    });
  }

  std::string validity(const Prefixes &prefixes) {
    const std::string from = !conforming && random.chance(5) ? "yesterday" : "2024-01-02T03:04:05Z";
    return element("validity", "", prefixes, [&](const Prefixes &within) {
      return gap() + element("from", "", within, [&](const Prefixes &) { return from; }) + gap() +
             element("until", "", within, [](const Prefixes &) { return "2025-06-07T08:09:10.5+02:00"s; }) + gap();
    });
  }

  std::string identity(const Prefixes &prefixes) {
    return element("identity", "", prefixes, [&](const Prefixes &within) {
      std::string all = gap();
      for (uint32_t left = 1 + random.below(4); left != 0; --left) {
        switch (random.below(4)) {
        case 0: all += many(within); break;
        case 1: all += sample(pick(conditionSamples), within); break;
        default:
          all += element("one", identifierAttribute(user()), within, [&](const Prefixes &inside) {
            return gap() + (random.chance(30) ? sample(pick(conditionSamples), inside) : "") + gap();
          });
        }
        all += gap();
      }
      return all;
    });
  }

  std::string many(const Prefixes &prefixes) {
    const std::string domain = random.chance(50) ? " domain=' example.com'" : "";
    return element("many", domain, prefixes, [&](const Prefixes &within) {
      std::string all = gap();
      for (uint32_t left = random.below(4); left != 0; --left) {
        switch (random.below(4)) {
        case 0: all += sample(pick(conditionSamples), within); break;
        case 1: all += empty("except", " domain='" + text() + "'" + identifierAttribute(user()), within); break;
        case 2: all += empty("except", identifierAttribute(user()), within); break;
        default: all += empty("except", " domain='example.org'", within); break;
        }
        all += gap();
      }
      return all;
    });
  }

  Random &random;
  bool conforming;
  std::string own; // the module's prefix with its colon
};

bool isOwn(const XmlElement &element) { return element.uri == namespaceUri; }

// What a rule set says: without the white space between elements and, as read, around identifiers.
enum class Identifiers {
  asTheyStand,
  asRead
};

std::string meaning(const XmlElement &element, Identifiers identifiers) {
  if (element.name == "from" || element.name == "until") return element.infoset();
  std::string all = element.name + "[";
  for (const auto &[name, value] : element.attributes)
    all += name + "=\"" + (name == "id" && identifiers == Identifiers::asRead ? collapsed(value) : value) + "\"";
  all += "](";
  const bool allForeign = element.name == "actions" || element.name == "transformations";
  for (const XmlElement &child : element.children)
    all += allForeign || !isOwn(child) ? child.infoset() : meaning(child, identifiers);
  return all + ")";
}

// Decodes a rule set, encodes it and decodes it again; what comes of it must say the same. Returns what was encoded.
std::string throughTheCodec(RuntimeContext *ctx, const std::string &text) {
  const auto tree = support::parseNamespacedXml(text);
  EXPECT_TRUE(tree) << "the generator's fault";
  if (!tree) return {};

  EXPECT_EQ(support::setInput(ctx, text), 0);
  Record<cp__ruleset> first(ctx);
  EXPECT_EQ(QxXmlD_cp_ruleset(ctx, first), 0) << support::errors(ctx);
  EXPECT_EQ(first->cp_rule.count, tree->children.size());

  std::vector<std::string> expected;
  for (const XmlElement &element : reading::foreignElements(*tree))
    expected.push_back(element.infoset());
  std::vector<std::string> kept;
  for (const std::string &fragment : reading::fragments(*first)) {
    const auto alone = support::parseNamespacedXml(fragment);
    EXPECT_TRUE(alone) << "a fragment that does not stand on its own: " << fragment;
    kept.push_back(alone ? alone->infoset() : fragment);
  }
  EXPECT_EQ(kept, expected);

  const std::string written = encodedDocument(ctx, first);
  const auto again = support::parseNamespacedXml(written);
  EXPECT_TRUE(again) << written;
  if (again) {
    EXPECT_EQ(again->uri, namespaceUri);
    EXPECT_EQ(meaning(*again, Identifiers::asTheyStand), meaning(*tree, Identifiers::asRead));
  }

  EXPECT_EQ(support::setInput(ctx, written), 0);
  Record<cp__ruleset> second(ctx);
  EXPECT_EQ(QxXmlD_cp_ruleset(ctx, second), 0) << support::errors(ctx);
  EXPECT_EQ(printed<cp__ruleset>("r", second), printed<cp__ruleset>("r", first));
  EXPECT_EQ(encodedDocument(ctx, second), written);
  return written;
}

TEST(Property, TwentyRulesOfExtensionsKeepTheirMeaning) {
  Random random(5025);
  Context ctx;
  for (int round = 0; round < 100; ++round) {
    rtxErrClear(ctx);
    support::HeapBalance balance(ctx);
    const std::string text = RandomDocument(random, round % 2 == 0).ruleset(20);
    SCOPED_TRACE("round " + std::to_string(round) + ": " + text);
    throughTheCodec(ctx, text);
    if (testing::Test::HasFailure()) return;
  }
}

TEST(Property, TheSchemaAcceptsWhatIsWrittenWhereItAcceptedWhatWasRead) {
  support::SchemaJudge judge("common-policy.xsd");
  if (!judge.available()) GTEST_SKIP() << "IMSCODEC_SCHEMAS names no folder of schemas";
  constexpr int count = 60;
  Random random(3);
  for (int round = 0; round < count; ++round) {
    Context ctx;
    const std::string text = RandomDocument(random, round % 2 == 0).ruleset(20);
    judge.add("read-" + std::to_string(round), text);
    judge.add("written-" + std::to_string(round), throughTheCodec(ctx, text));
    if (testing::Test::HasFailure()) return;
  }
  const auto accepted = judge.verdicts();
  ASSERT_EQ(accepted.size(), size_t{2 * count});
  int refused = 0;
  for (int round = 0; round < count; ++round) {
    const bool read = accepted.at("read-" + std::to_string(round));
    if (read) {
      EXPECT_TRUE(accepted.at("written-" + std::to_string(round))) << "round " << round;
    }
    if (round % 2 == 0) {
      EXPECT_TRUE(read) << "the generator's fault: round " << round;
    }
    if (!read) ++refused;
  }
  EXPECT_GT(refused, 0) << "the schema has been asked in earnest";
}

TEST(Property, RandomBytesNeverGetThroughUnnoticed) {
  Random random(77);
  const std::string original = RandomDocument(random, true).ruleset(4);
  Context ctx;
  for (int round = 0; round < 5000; ++round) {
    const std::string text = support::randomlyDamaged(random, original);
    SCOPED_TRACE(testing::PrintToString(text));
    rtxErrClear(ctx);
    support::HeapBalance balance(ctx);
    ASSERT_EQ(support::setInput(ctx, text), 0);
    Record<cp__ruleset> record(ctx);
    const int decoded = QxXmlD_cp_ruleset(ctx, record);
    EXPECT_EQ(decoded == 0, rtxErrCount(ctx) == 0) << support::errors(ctx);
    // Names that are none are refused beyond what the grammar of XML itself asks.
    if (!support::parseXml(text)) {
      EXPECT_EQ(decoded, STATUS_PARSE_FAILED);
    }
    rtxErrClear(ctx);
    const int checked = QxXmlV_cp_ruleset(ctx);
    EXPECT_EQ(checked == 0, rtxErrCount(ctx) == 0) << support::errors(ctx);
    EXPECT_EQ(checked == STATUS_PARSE_FAILED, decoded == STATUS_PARSE_FAILED);
    if (testing::Test::HasFailure()) return;
  }
}

} // namespace
