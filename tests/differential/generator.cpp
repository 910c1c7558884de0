#include "generator.h"

#include <algorithm>
#include <array>

namespace differential {

using support::Random;

namespace {

constexpr const char *foreignUri = "urn:example:foreign";

template <class Range> const auto &oneOf(Random &random, const Range &range) {
  return range[random.below(static_cast<uint32_t>(std::size(range)))];
}

// ---- Values ------------------------------------------------------------------------------------------------------

constexpr std::array oddTexts = {"",
                                 " ",
                                 "\n7\t",
                                 "abc",
                                 "1x",
                                 "-1",
                                 "-0",
                                 "+7",
                                 "007",
                                 "0",
                                 "1.0",
                                 "99",
                                 "100",
                                 "699",
                                 "700",
                                 "+487",
                                 "65536",
                                 "4294967295",
                                 "4294967296",
                                 "123456789012345678",
                                 "1234567890123456789012345678901234567890",
                                 "full",
                                 "Full",
                                 " partial",
                                 "recipient ",
                                 "timeout",
                                 "maximum",
                                 "session_end",
                                 "P1D",
                                 "PT5M",
                                 "P",
                                 "-PT1S",
                                 "00ff7E",
                                 "abf",
                                 "0g",
                                 "0 1",
                                 "sip:a@example.net",
                                 "a b",
                                 "%zz",
                                 "http://[",
                                 "http://example.net:port/",
                                 ":",
                                 "\xC3\xA9",
                                 "a:b",
                                 "r1",
                                 "1r",
                                 "<&>",
                                 "text"};

constexpr std::array oddTimes = {"2026-01-31T23:59:59Z",
                                 " 2026-01-31T23:59:59 ",
                                 "2026-02-29T00:00:00Z",
                                 "2024-02-29T00:00:00Z",
                                 "1900-02-29T00:00:00Z",
                                 "2026-01-31T24:00:00Z",
                                 "2026-01-31T24:00:01Z",
                                 "2026-01-31T00:00:60Z",
                                 "2026-01-31T00:60:00Z",
                                 "2026-01-31T25:00:00Z",
                                 "2026-13-01T00:00:00Z",
                                 "2026-00-01T00:00:00Z",
                                 "2026-01-00T00:00:00Z",
                                 "2026-1-1T0:0:0Z",
                                 "2026-01-31",
                                 "2026-01-31t00:00:00Z",
                                 "2026-01-31T00:00:00z",
                                 "2026-01-31T00:00:00.",
                                 "2026-01-31T00:00:00.5Z",
                                 "2026-01-31T00:00:00.123456789012345678Z",
                                 "2026-01-31T00:00:00+14:00",
                                 "2026-01-31T00:00:00+14:01",
                                 "2026-01-31T00:00:00-15:00",
                                 "2026-01-31T00:00:00+0100",
                                 "12026-01-31T00:00:00Z",
                                 "02026-01-31T00:00:00Z",
                                 "-0044-03-15T00:00:00Z",
                                 "0000-01-01T00:00:00Z",
                                 "2147483648-01-01T00:00:00Z",
                                 "2147483647-01-01T00:00:00Z",
                                 "-2147483648-01-01T00:00:00Z",
                                 "026-01-01T00:00:00Z",
                                 "+2026-01-01T00:00:00Z",
                                 "99999999999999999999-01-01T00:00:00Z",
                                 "2026-01-31T00:00:00Z and more"};

std::string oddText(Random &random) { return random.chance(35) ? oneOf(random, oddTimes) : oneOf(random, oddTexts); }

std::string twoDigits(uint32_t number) {
  return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

std::string validText(Random &random, Form form, const std::vector<std::string_view> &values, unsigned &identifiers) {
  switch (form) {
  case Form::none: return {};
  case Form::text:
    return random.chance(20) ? support::randomText(random, 8) : "text " + std::to_string(random.below(9));
  case Form::uri: return "sip:user" + std::to_string(random.below(100)) + "@example.net";
  case Form::unsignedNumber: return std::to_string(random.chance(20) ? 4294967295u : random.below(1000));
  case Form::positive: return std::to_string(1 + random.below(1000));
  case Form::code: return std::to_string(100 + random.below(600));
  case Form::dateTime:
    return "20" + twoDigits(random.below(100)) + "-" + twoDigits(1 + random.below(12)) + "-" +
           twoDigits(1 + random.below(28)) + "T" + twoDigits(random.below(24)) + ":00:00" +
           (random.chance(50)   ? "Z"
            : random.chance(50) ? "+01:00"
                                : "");
  case Form::period: return "PT" + std::to_string(random.below(100)) + "M";
  case Form::bytes: return oneOf(random, std::array{"", "00", "0aF1", "c0ffee"});
  case Form::list: return std::string(oneOf(random, values));
  case Form::identifier: return "r" + std::to_string(++identifiers);
  }
  return {};
}

// ---- Valid bodies ------------------------------------------------------------------------------------------------

class Builder {
public:
  Builder(Random &source, const Vocabulary &which) : random(source), vocabulary(which) {}

  Element build(std::string_view name, const std::string &prefix) {
    const ElementRule &rule = *vocabulary.find(name);
    Element element{prefix + std::string(name), {}, {}};
    for (const AttributeRule &attribute : rule.attributes)
      if (attribute.required || random.chance(50))
        element.set(std::string(attribute.name), validText(random, attribute.form, attribute.values, identifiers));
    if (rule.form != Form::none)
      element.content.push_back(Text{validText(random, rule.form, rule.values, identifiers), random.chance(10)});
    for (const ChildRule &child : rule.children)
      for (unsigned left = child.least + random.below(child.most - child.least + 1); left != 0; --left)
        element.content.push_back(build(child.name, prefix));
    for (unsigned left = random.below(mostForeign(rule.wildcard) + 1); left != 0; --left)
      element.content.push_back(foreign());
    if (rule.shuffled)
      for (size_t left = element.content.size(); left > 1; --left)
        std::swap(element.content[left - 1], element.content[random.below(static_cast<uint32_t>(left))]);
    if (rule.form == Form::none && !element.content.empty() && random.chance(30)) indent(element);
    return element;
  }

  // Without attributes, which the library does not expect there.
  Element foreign() {
    Element element{"f:" + std::string(oneOf(random, std::array{"x", "state", "rule", "from"})), {}, {}};
    if (random.chance(50)) element.content.push_back(Text{"some text", random.chance(20)});
    if (random.chance(30)) element.content.push_back(Element{"f:inner", {{"a", "1"}}, {}});
    return element;
  }

private:
  static unsigned mostForeign(Wildcard wildcard) {
    switch (wildcard) {
    case Wildcard::none: return 0;
    case Wildcard::one: return 1;
    default: return 2;
    }
  }

  static void indent(Element &element) {
    std::vector<Content> spaced;
    for (Content &item : element.content) {
      spaced.push_back(Text{"\n "});
      spaced.push_back(std::move(item));
    }
    spaced.push_back(Text{"\n"});
    element.content = std::move(spaced);
  }

  Random &random;
  const Vocabulary &vocabulary;
  unsigned identifiers = 0;
};

// ---- Damage ------------------------------------------------------------------------------------------------------

class Vandal {
public:
  Vandal(Random &source, const Vocabulary &which, Element &tree) : random(source), vocabulary(which), root(tree) {}

  void damageOnce() {
    switch (random.below(20)) {
    case 0: swapItems(chosen(hasChildren)); break;
    case 1: drop(chosen(hasChildren).content); break;
    case 2:
    case 3: doubleItem(chosen(hasChildren)); break;
    case 4: keepOneItem(chosen(hasChildren)); break;
    case 5: repeat(chosen(hasChildren)); break;
    case 6: insert(chosen(isAny), Text{random.chance(50) ? oddText(random) : " ", random.chance(50)}); break;
    case 7: insert(chosen(isAny), foreignElement()); break;
    case 8: insert(chosen(isAny), knownElement()); break;
    case 9:
    case 10: replaceText(chosen(hasNoChildren)); break;
    case 11: rename(chosen(isAny)); break;
    case 12: moveElsewhere(chosen(isAny)); break;
    case 13: drop(chosen(hasAttributes).attributes); break;
    case 14:
    case 15: replaceValue(chosen(hasAttributes)); break;
    case 16: renameAttribute(chosen(hasAttributes)); break;
    case 17: chosen(isAny).set(someAttribute(), random.chance(50) ? "1" : oddText(random)); break;
    case 18: addLikelyAttribute(chosen(isAny)); break;
    case 19:
      if (random.chance(10)) declareMuch(chosen(isAny));
      break;
    }
  }

private:
  static bool isAny(const Element &) { return true; }
  static bool hasAttributes(const Element &element) { return !element.attributes.empty(); }
  static bool hasChildren(const Element &element) {
    return std::any_of(element.content.begin(), element.content.end(),
                       [](const Content &item) { return std::holds_alternative<Element>(item); });
  }
  static bool hasNoChildren(const Element &element) { return !hasChildren(element); }

  // The root if there is no such element.
  Element &chosen(bool (*isWanted)(const Element &)) {
    if (random.chance(10)) return root;
    std::vector<Element *> candidates;
    for (Element *element : elements(root))
      if (isWanted(*element)) candidates.push_back(element);
    return candidates.empty() ? root : *oneOf(random, candidates);
  }

  template <class T> void drop(std::vector<T> &from) {
    if (from.empty()) return;
    from.erase(from.begin() + random.below(static_cast<uint32_t>(from.size())));
  }

  size_t place(const Element &victim) { return random.below(static_cast<uint32_t>(victim.content.size() + 1)); }

  void insert(Element &victim, Content item) {
    victim.content.insert(victim.content.begin() + static_cast<std::ptrdiff_t>(place(victim)), std::move(item));
  }

  void swapItems(Element &victim) {
    if (victim.content.size() < 2) return;
    const auto count = static_cast<uint32_t>(victim.content.size());
    const uint32_t a = random.below(count);
    const uint32_t b = random.below(count);
    if (a != b) std::swap(victim.content[a], victim.content[b]);
  }

  // Behind itself, at the end or anywhere.
  void doubleItem(Element &victim) {
    if (victim.content.empty()) return;
    const uint32_t item = random.below(static_cast<uint32_t>(victim.content.size()));
    Content copy = victim.content[item];
    switch (random.below(3)) {
    case 0: victim.content.insert(victim.content.begin() + item, std::move(copy)); break;
    case 1: victim.content.push_back(std::move(copy)); break;
    case 2: insert(victim, std::move(copy)); break;
    }
  }

  void keepOneItem(Element &victim) {
    if (victim.content.empty()) return;
    victim.content = {Content(oneOf(random, victim.content))};
  }

  // The whole content once more.
  void repeat(Element &victim) {
    const std::vector<Content> copy = victim.content;
    victim.content.insert(victim.content.end(), copy.begin(), copy.end());
  }

  // One that only the element's type decides about.
  void addLikelyAttribute(Element &victim) {
    const std::string local = victim.localName();
    if (local == "identity" || local == "referred-by")
      victim.set(random.chance(50) ? "display" : "display-name", "D");
    else
      victim.set(oneOf(random, std::array{"foo", "xmlnsfoo", "xsi:nil", "xsi:foo", "id"}), "r1");
  }

  // One that the form nearly has, or any.
  std::string oddValue(Form form, const std::vector<std::string_view> &values) {
    if (random.chance(50)) return oddText(random);
    switch (form) {
    case Form::code: return oneOf(random, std::array{"99", "100", "699", "700", "0", "+100"});
    case Form::positive: return oneOf(random, std::array{"0", "1", "-0", "+1", "01", "4294967295", "4294967296"});
    case Form::unsignedNumber: return oneOf(random, std::array{"-0", "-1", "+1", "01", "4294967295", "4294967296"});
    case Form::dateTime: return oneOf(random, oddTimes);
    case Form::list: {
      const std::string value(oneOf(random, values));
      return random.chance(50) ? value + "s" : value.substr(1);
    }
    default: return oddText(random);
    }
  }

  void replaceValue(Element &victim) {
    if (victim.attributes.empty()) return;
    auto &[name, value] = victim.attributes[random.below(static_cast<uint32_t>(victim.attributes.size()))];
    const ElementRule *rule = vocabulary.find(victim.localName());
    const AttributeRule *attribute = rule == nullptr ? nullptr : rule->findAttribute(name);
    value = attribute == nullptr ? oddText(random) : oddValue(attribute->form, attribute->values);
  }

  void replaceText(Element &victim) {
    const ElementRule *rule = vocabulary.find(victim.localName());
    const std::string value = rule == nullptr ? oddText(random) : oddValue(rule->form, rule->values);
    for (Content &item : victim.content) {
      if (!std::holds_alternative<Text>(item)) continue;
      std::get<Text>(item).value = value;
      return;
    }
    if (victim.content.empty()) victim.content.push_back(Text{value});
  }

  void rename(Element &victim) { victim.name = victim.prefix() + someName(); }

  std::string someName() {
    if (random.chance(15)) return "bogus";
    return std::string(oneOf(random, vocabulary.elements).name);
  }

  std::string prefix() { return root.prefix(); }

  // To another namespace, to none, or behind a prefix that is bound to nothing.
  void moveElsewhere(Element &victim) {
    const std::string local = victim.localName();
    switch (random.below(5)) {
    case 0:
    case 1: victim.name = "f:" + local; break;
    case 2:
      victim.name = local;
      victim.set("xmlns", "");
      break;
    case 3: victim.name = "u:" + local; break;
    case 4: victim.name = random.chance(30) ? "a:b:" + local : "p:" + local; break;
    }
  }

  std::string someAttribute() {
    static constexpr std::array general = {"foo",      "f:foo",     "display",  "display-name", "xsi:nil",
                                           "xsi:type", "xml:lang",  "xmlnsfoo", "id",           "state",
                                           "u:foo",    "xml:space", "xsi:foo",  "version"};
    if (random.chance(15)) return "p:" + std::string(oneOf(random, std::array{"id", "aor", "version", "state"}));
    if (random.chance(60)) return oneOf(random, general);
    const ElementRule &rule = oneOf(random, vocabulary.elements);
    return rule.attributes.empty() ? "foo" : std::string(oneOf(random, rule.attributes).name);
  }

  void renameAttribute(Element &victim) {
    if (victim.attributes.empty()) return;
    auto &attribute = victim.attributes[random.below(static_cast<uint32_t>(victim.attributes.size()))];
    if (attribute.first.starts_with("xmlns")) return;
    const std::string name =
        random.chance(30) && attribute.first.find(':') == std::string::npos ? "p:" + attribute.first : someAttribute();
    if (!victim.has(name)) attribute.first = name;
  }

  Element knownElement() {
    const Element tree = Builder(random, vocabulary).build(oneOf(random, vocabulary.elements).name, prefix());
    return random.chance(50) ? tree : Element{tree.name, {}, {}};
  }

  Element foreignElement() {
    Element element = Builder(random, vocabulary).foreign();
    if (random.chance(30)) element.set(oneOf(random, std::array{"a", "f:a", "xml:lang", "xsi:type"}), "en");
    if (random.chance(40)) element.content.push_back(knownElement());
    if (random.chance(20)) element.content.push_back(Element{"a:b:c", {}, {}});
    if (random.chance(20)) moveElsewhere(element);
    return element;
  }

  void declareMuch(Element &victim) {
    for (int i = 0; i < 130; ++i)
      victim.set("xmlns:n" + std::to_string(i), "urn:example:n");
  }

  Random &random;
  const Vocabulary &vocabulary;
  Element &root;
};

} // namespace

Element validBody(Random &random, const Vocabulary &vocabulary, const Root &root) {
  const bool prefixed = random.chance(50);
  Element body = Builder(random, vocabulary).build(root.name, prefixed ? "p:" : "");
  const std::string uri(vocabulary.uri);
  if (!prefixed) body.set("xmlns", uri);
  body.set("xmlns:p", uri);
  body.set("xmlns:f", foreignUri);
  body.set("xmlns:xsi", "http://www.w3.org/2001/XMLSchema-instance");
  return body;
}

void damage(Random &random, const Vocabulary &vocabulary, Element &root) {
  Vandal(random, vocabulary, root).damageOnce();
}

} // namespace differential
