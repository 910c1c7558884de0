#include "hostileBodies.h"

#include "DialogInfo/QxXmlDialogInfo.h"
#include "RuleSet/QxXmlRuleSet.h"

#include <string_view>

namespace bench {

namespace {

// ---- Documents ------------------------------------------------------------------------------------------------

constexpr HostileDocument dialogInfo = {[](RuntimeContext *ctx) {
                                          tns__dialog_info record;
                                          return QxXmlD_tns_dialog_info(ctx, &record);
                                        },
                                        [](RuntimeContext *ctx) { return QxXmlV_tns_dialog_info(ctx); }};
constexpr HostileDocument ruleset = {[](RuntimeContext *ctx) {
                                       cp__ruleset record;
                                       return QxXmlD_cp_ruleset(ctx, &record);
                                     },
                                     [](RuntimeContext *ctx) { return QxXmlV_cp_ruleset(ctx); }};

constexpr char dialogUri[] = "urn:ietf:params:xml:ns:dialog-info";
constexpr char policyUri[] = "urn:ietf:params:xml:ns:common-policy";

// What stands around the pieces that a shape repeats.
struct Frame {
  std::string opening;
  std::string ending;

  Frame inside(const std::string &innerOpening, const std::string &innerEnding) const {
    return {opening + innerOpening, innerEnding + ending};
  }
};

// The root, its own namespace the default one.
Frame root(const std::string &moreAttributes = {}) {
  return {std::string("<dialog-info xmlns='") + dialogUri +
              "' xmlns:x='urn:example:x' version='1' state='full' entity='sip:a@example.net'" + moreAttributes + ">",
          "</dialog-info>"};
}
// The same with a prefix, so that elements without one are foreign.
Frame prefixedRoot(const std::string &moreAttributes = {}, const std::string &prefix = "d") {
  return {"<" + prefix + ":dialog-info xmlns:" + prefix + "='" + dialogUri +
              "' version='1' state='full' entity='sip:a@example.net'" + moreAttributes + ">",
          "</" + prefix + ":dialog-info>"};
}
Frame inDialog() { return root().inside("<dialog id='d'>", "</dialog>"); }
Frame inRouteSet() { return inDialog().inside("<state>trying</state><route-set>", "</route-set>"); }
Frame inTarget() { return inDialog().inside("<state>trying</state><local><target uri='u'>", "</target></local>"); }
// The text of an identity, which is taken as it comes.
Frame inText() { return inDialog().inside("<state>trying</state><local><identity>", "</identity></local>"); }
Frame inForeign(const std::string &moreAttributes = {}) { return root(moreAttributes).inside("<x:e>", "</x:e>"); }
Frame inRule() {
  return Frame{std::string("<ruleset xmlns='") + policyUri + "'>", "</ruleset>"}.inside("<rule id='r'>", "</rule>");
}
Frame inActions() { return inRule().inside("<actions>", "</actions>"); }
Frame inEncoding(const std::string &name, const Frame &frame) {
  return {"<?xml version='1.0' encoding='" + name + "'?>" + frame.opening, frame.ending};
}

// ---- Makers ---------------------------------------------------------------------------------------------------

using Make = std::function<std::string(size_t bytes)>;

// As many pieces as there is room for. piece: of a number.
template <class Piece> std::string fill(const Frame &frame, size_t bytes, Piece piece) {
  std::string body;
  body.reserve(bytes + bytes / 8);
  body = frame.opening;
  for (unsigned i = 0; body.size() + frame.ending.size() < bytes; ++i)
    body += piece(i);
  return body + frame.ending;
}

Make repeat(Frame frame, std::string piece) {
  return [frame = std::move(frame), piece = std::move(piece)](size_t bytes) {
    return fill(frame, bytes, [&piece](unsigned) -> const std::string & { return piece; });
  };
}

Make numbered(Frame frame, std::string (*piece)(unsigned)) {
  return [frame = std::move(frame), piece](size_t bytes) { return fill(frame, bytes, piece); };
}

// One piece of bytes in the middle of a frame.
Make once(Frame frame, std::string before, char byte, std::string behind) {
  return [=](size_t bytes) {
    const size_t taken = frame.opening.size() + before.size() + behind.size() + frame.ending.size();
    return frame.opening + before + std::string(bytes > taken ? bytes - taken : 0, byte) + behind + frame.ending;
  };
}

std::string repeated(std::string_view piece, unsigned times) {
  std::string all;
  for (unsigned i = 0; i < times; ++i)
    all += piece;
  return all;
}

// The shortest names that differ from all before.
std::string shortName(unsigned i) {
  constexpr std::string_view letters = "abcdefghijklmnopqrstuvwyzABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789";
  constexpr unsigned first = 52; // no digit, and no x: that is a prefix of its own
  std::string name(1, letters[i % first]);
  for (i /= first; i != 0; i /= 62)
    name += letters[i % 62];
  return name;
}

// " NAME=VALUE" count times. name: of a number.
template <class Name> std::string attributes(unsigned count, Name name, const std::string &value = "''") {
  std::string all;
  for (unsigned i = 0; i < count; ++i)
    all += " " + name(i) + "=" + value;
  return all;
}

constexpr unsigned most = 128; // attributes of a tag

std::string sharing(unsigned length, unsigned i) { return std::string(length, 'p') + shortName(i); }

// Outer prefixes, up to the root's limit.
constexpr unsigned outerCount = 120;
std::string outerPrefix(unsigned i) { return "y" + shortName(i); }
std::string outerDeclarations() {
  std::string all;
  for (unsigned i = 0; i < outerCount; ++i)
    all += " xmlns:" + outerPrefix(i) + "='urn:example:" + shortName(i) + "'";
  return all;
}

// As many prefixes at once as depth and attributes allow, in a fourth of the body; the rest is elements inside.
Make prefixesAtOnce(std::string element) {
  return [element](size_t bytes) {
    Frame frame = root();
    unsigned prefix = 0;
    for (unsigned level = 0; level < 250 && frame.opening.size() < bytes / 4 && prefix < 3500; ++level) {
      const unsigned before = prefix;
      frame = frame.inside("<x:e" +
                               attributes(
                                   most, [before](unsigned i) { return "xmlns:" + shortName(before + i); }, "'u'") +
                               ">",
                           "</x:e>");
      prefix += most;
    }
    return fill(frame, bytes, [&element](unsigned) -> const std::string & { return element; });
  };
}

// A namespace name that takes a part of the body and that each element borrows.
Make borrowing(size_t part, char byte) {
  return [=](size_t bytes) {
    const std::string uri(bytes / part, byte);
    return fill(root(" xmlns:y='" + uri + "'"), bytes, [](unsigned) { return "<y:e/>"; });
  };
}

// Lines first, then errors whose places go forth and back.
std::string backwards(size_t bytes) {
  const std::string errors =
      repeated("<dialog id='d'><state>trying</state><route-set>\n<x:e/></route-set></dialog>", 60);
  const Frame frame = root();
  const size_t taken = frame.opening.size() + errors.size() + frame.ending.size();
  return frame.opening + std::string(bytes > taken ? bytes - taken : 0, '\n') + errors + frame.ending;
}

// The form of an ASCII text in UTF-16, with its byte order mark.
std::string utf16(const std::string &text) {
  std::string wide = "\xFF\xFE";
  for (char c : text)
    wide += {c, '\0'};
  return wide;
}

Make widening(Frame frame, std::string piece) {
  return [make = repeat(std::move(frame), std::move(piece))](size_t bytes) { return utf16(make(bytes / 2)); };
}

std::string longName(char letter, size_t length = 40000) { return std::string(length, letter); }

// ---- Shapes ---------------------------------------------------------------------------------------------------

constexpr int malformed = STATUS_PARSE_FAILED, exceeded = STATUS_LIMIT_EXCEEDED;

void addAttributes(std::vector<HostileShape> &to) {
  const HostileDocument *d = &dialogInfo;
  const auto tagOf = [](const std::string &name, unsigned count, auto attribute) {
    return "<" + name + attributes(count, attribute) + "/>";
  };
  to.push_back(
      {"attributes", "128 short attributes in each tag", d, 0, repeat(inForeign(), tagOf("e", most, shortName))});
  to.push_back({"attributes-alike", "128 attributes whose names share 8 bytes", d, 0,
                repeat(inForeign(), tagOf("e", most, [](unsigned i) { return sharing(8, i); }))});
  to.push_back({"attributes-alike-long", "128 attributes whose names share 1000 bytes", d, 0,
                repeat(inForeign(), tagOf("e", most, [](unsigned i) { return sharing(1000, i); }))});
  to.push_back({"attributes-qualified", "120 attributes in each tag, each with a prefix of the root", d, 0,
                repeat(root(outerDeclarations()),
                       tagOf("x:e", outerCount, [](unsigned i) { return outerPrefix(i) + ":" + shortName(i); }))});
  to.push_back(
      {"attributes-compared", "120 attributes of one local name, whose prefixes tell them apart", d, exceeded,
       repeat(root(outerDeclarations()), tagOf("x:e", outerCount, [](unsigned i) { return outerPrefix(i) + ":a"; }))});
  to.push_back({"attributes-unknown", "127 attributes that the type does not have in each tag", d,
                STATUS_UNKNOWN_ATTRIBUTE, repeat(root(), tagOf("dialog id='d'", most - 1, shortName))});
  to.push_back({"attributes-surplus", "one tag with more attributes than are allowed", d, exceeded, [](size_t bytes) {
                  const Frame frame = root().inside("<x:e", "/>");
                  return fill(frame, bytes, [](unsigned i) { return " " + shortName(i) + "=''"; });
                }});
  to.push_back({"attribute", "one value", d, STATUS_MISSING_ATTRIBUTE, once(root(), "<dialog call-id='", 't', "'/>")});
  to.push_back({"attribute-references", "one value of character references", d, 0,
                repeat(root().inside("<dialog id='", "'><state>trying</state></dialog>"), "&#9;")});
  to.push_back({"attribute-quotes", "one value of characters that the copy escapes", d, 0,
                once(root(), "<x:e a='", '"', "'/>")});
  to.push_back({"attribute-endless", "a value that does not end", d, malformed, once(root(), "<x:e a='", 't', "")});
  to.push_back({"attribute-space", "values of xml:space that libxml2 warns about", d, 0,
                repeat(inForeign(), "<e xml:space=''/>")});
}

void addNames(std::vector<HostileShape> &to) {
  const HostileDocument *d = &dialogInfo;
  to.push_back({"names-long", "names of 40000 bytes", d, 0, repeat(inForeign(), "<" + longName('n') + "/>")});
  to.push_back({"names-long-attributes", "attributes with names of 40000 bytes", d, 0,
                repeat(inForeign(), "<e " + longName('n') + "=''/>")});
  to.push_back({"names-long-prefix", "a prefix of 40000 bytes", d, 0,
                repeat(root(" xmlns:" + longName('p') + "='urn:example'"), "<" + longName('p') + ":e/>")});
  to.push_back({"names-multibyte", "names beyond ASCII", d, 0, repeat(inForeign(), "<\xC3\xA9/>")});
  to.push_back({"names-fresh", "elements, each of another name", d, exceeded,
                numbered(inForeign(), [](unsigned i) { return "<" + shortName(i) + "/>"; })});
  to.push_back({"names-fresh-long", "elements, each of another name of 1000 bytes", d, 0,
                numbered(inForeign(), [](unsigned i) { return "<" + sharing(1000, i) + "/>"; })});
  to.push_back(
      {"names-fresh-attributes", "attributes, each of another name", d, exceeded, numbered(inForeign(), [](unsigned i) {
         return "<e" + attributes(most, [i](unsigned k) { return shortName(most * i + k); }) + "/>";
       })});
  to.push_back({"names-fresh-instructions", "processing instructions, each of another name", d, exceeded,
                numbered(root(), [](unsigned i) { return "<?" + shortName(i) + "?>"; })});
  to.push_back(
      {"names-fresh-prefixes", "elements, each of a prefix of its own", d, exceeded, numbered(root(), [](unsigned i) {
         const std::string prefix = shortName(i);
         return "<" + prefix + ":e xmlns:" + prefix + "='u'/>";
       })});
  to.push_back({"names-in-turn", "4000 names in turn, so that none is at hand", d, 0,
                numbered(inForeign(), [](unsigned i) { return "<" + shortName(i % 4000) + "/>"; })});
}

void addNesting(std::vector<HostileShape> &to) {
  const HostileDocument *d = &dialogInfo;
  to.push_back(
      {"nesting", "elements 250 deep", d, 0, repeat(inForeign(), repeated("<e>", 250) + repeated("</e>", 250))});
  to.push_back({"nesting-endless", "start tags only", d, exceeded, repeat(inForeign(), "<e>")});
  to.push_back({"nesting-declarations", "250 deep, a declaration on each level", d, 0,
                repeat(inForeign(), repeated("<e xmlns='u'>", 250) + repeated("</e>", 250))});
  to.push_back({"nesting-skipped", "elements 250 deep in one that is not allowed", d, STATUS_UNEXPECTED_ELEMENT,
                repeat(root().inside("<state>", "</state>"), repeated("<e>", 250) + repeated("</e>", 250))});
}

void addPrefixes(std::vector<HostileShape> &to) {
  const HostileDocument *d = &dialogInfo;
  const std::string declarations = attributes(
      most - 4, [](unsigned i) { return "xmlns:" + shortName(i); }, "'u'");
  to.push_back({"prefixes-declared", "124 declarations in each foreign tag", d, 0,
                repeat(root(), "<x:e" + declarations + "/>")});
  to.push_back({"prefixes-kept", "124 declarations in each tag whose type keeps them", d, 0,
                repeat(root(), "<dialog id='d'><state" + declarations + "/></dialog>")});
  to.push_back({"prefixes-outermost", "thousands of prefixes at once, the first of them in use", d, 0,
                prefixesAtOnce("<a:e/>")});
  to.push_back(
      {"prefixes-undeclared", "thousands of prefixes at once, another one in use", d, 0, prefixesAtOnce("<x-:e/>")});
  to.push_back({"prefixes-again", "the same prefix declared again 250 deep", d, 0,
                repeat(inForeign(), repeated("<x:f xmlns:x='u'>", 250) + repeated("</x:f>", 250))});
  to.push_back({"prefixes-borrowed", "foreign elements that use 120 prefixes of the root", d, 0, [](size_t bytes) {
                  std::string element = "<x:e>";
                  for (unsigned i = 0; i < outerCount; ++i)
                    element += "<" + outerPrefix(i) + ":f/>";
                  element += "</x:e>";
                  return fill(root(outerDeclarations()), bytes,
                              [&element](unsigned) -> const std::string & { return element; });
                }});
  to.push_back({"borrowed-half", "a namespace name of half the body, which each foreign element declares", d,
                STATUS_NO_MEMORY, borrowing(2, 'u')});
  to.push_back({"borrowed-half-escaped",
                "a namespace name of half the body, of characters to escape, which each foreign element declares", d,
                STATUS_NO_MEMORY, borrowing(2, '"')});
  to.push_back({"borrowed-tenth-escaped",
                "a namespace name of a tenth of the body, of characters to escape, which each foreign element declares",
                d, STATUS_NO_MEMORY, borrowing(10, '"')});
  to.push_back({"borrowed-escaped", "foreign elements of four bytes that declare a name of 8 escaped characters", d, 0,
                repeat(prefixedRoot(" xmlns='" + repeated("\"", 8) + "'"), "<e/>")});
}

void addErrors(std::vector<HostileShape> &to) {
  const HostileDocument *d = &dialogInfo;
  to.push_back(
      {"errors-elements", "elements that are not allowed", d, STATUS_UNEXPECTED_ELEMENT, repeat(root(), "<a/>")});
  to.push_back({"errors-inside", "elements inside one that allows none", d, STATUS_UNEXPECTED_ELEMENT,
                repeat(inText(), "t<a/>")});
  to.push_back({"errors-missing", "records without the attributes and children that they need", d,
                STATUS_MISSING_ATTRIBUTE, repeat(root(), "<dialog/>")});
  to.push_back({"errors-codes", "attributes of an enumeration, whose errors are all recorded", d, STATUS_ENUM_NOT_FOUND,
                repeat(root(), "<dialog id='' direction=''/>")});
  to.push_back({"errors-codes-path",
                "attributes of an enumeration, their errors under a root with a name of 5000 bytes", d,
                STATUS_ENUM_NOT_FOUND,
                repeat(prefixedRoot(" xmlns='" + std::string(dialogUri) + "'", longName('p', 5000)),
                       "<dialog id='' direction=''/>")});
  to.push_back({"errors-codes-lines", "attributes of an enumeration, their errors ten lines apart", d,
                STATUS_ENUM_NOT_FOUND, repeat(root(), "<dialog id='' direction=''/>\n\n\n\n\n\n\n\n\n\n")});
  to.push_back({"errors-texts", "texts that do not convert", d, STATUS_INVALID_CONTENT,
                repeat(root(), "<dialog id='d'><state>s</state><duration>x</duration></dialog>")});
  to.push_back(
      {"errors-long-texts", "texts of 2000 bytes that do not convert", d, STATUS_INVALID_CONTENT,
       repeat(root(), "<dialog id='d'><state>s</state><duration>" + std::string(2000, 'x') + "</duration></dialog>")});
  to.push_back({"errors-backwards", "lines, and behind them errors of children and parents in turn", d,
                STATUS_ROOT_MISMATCH, backwards});
  to.push_back({"errors-far-apart", "a tag of blanks, and behind them 120 errors", d, STATUS_UNKNOWN_ATTRIBUTE,
                once(root(), "<dialog id='d'", ' ', attributes(120, shortName) + "><state>trying</state></dialog>")});
  to.push_back({"errors-last", "lines, and an end tag that does not fit behind them", d, malformed,
                once(root(), "<x:e>", '\n', "</x:f>")});
}

void addText(std::vector<HostileShape> &to) {
  const HostileDocument *d = &dialogInfo;
  to.push_back({"text", "one text", d, 0, once(inText(), "", 't', "")});
  to.push_back({"text-brackets", "one text of \"]\"", d, 0, once(inText(), "", ']', "")});
  to.push_back({"text-blanks", "blanks between elements", d, 0, once(root(), "", ' ', "")});
  to.push_back({"text-lines", "empty lines between elements", d, 0, repeat(root(), "\r\n")});
  to.push_back({"text-returns", "returns without a newline", d, 0, once(inText(), "", '\r', "")});
  to.push_back(
      {"text-newlines", "a line end of two characters behind each character", d, 0, repeat(inText(), "t\r\n")});
  to.push_back({"text-multibyte", "one text of characters of two bytes", d, 0, repeat(inText(), "\xC3\xA9")});
  to.push_back({"text-references", "character references", d, 0, repeat(inText(), "&#9;")});
  to.push_back({"text-entities", "a predefined entity behind each character", d, 0, repeat(inText(), "t&lt;")});
  to.push_back({"text-sections", "CDATA sections of one character", d, 0, repeat(inText(), "<![CDATA[x]]>")});
  to.push_back({"text-section", "one CDATA section of \"]\"", d, 0, once(inText(), "<![CDATA[", ']', " ]]>")});
  to.push_back({"text-comments", "a comment behind each character", d, 0, repeat(inText(), "\xC3\xA9<!---->")});
  to.push_back(
      {"text-instructions", "a processing instruction behind each character", d, 0, repeat(inText(), "t<?p b?>")});
  to.push_back({"text-digits", "a number with leading zeros", d, 0, [](size_t bytes) {
                  return std::string("<dialog-info xmlns='") + dialogUri + "' state='full' entity='e' version='" +
                         std::string(bytes > 120 ? bytes - 120 : 0, '0') + "1'/>";
                }});
}

void addMarkup(std::vector<HostileShape> &to) {
  const HostileDocument *d = &dialogInfo;
  to.push_back({"comments", "empty comments", d, 0, repeat(root(), "<!---->")});
  to.push_back(
      {"comment", "one comment with hyphens, beyond ASCII", d, 0, repeat(root().inside("<!--", "x-->"), "-\xC3\xA9")});
  to.push_back({"instructions-warned", "processing instructions whose names libxml2 warns about", d, 0,
                repeat(root(), "<?xmla?>")});
  to.push_back({"instructions-colon", "processing instructions with a colon in their names", d, STATUS_PARSE_FAILED,
                repeat(root(), "<?a:?>")});
  to.push_back({"tag-blanks", "blanks in a start tag", d, 0, once(root(), "<x:e", ' ', "/>")});
  to.push_back(
      {"prolog", "processing instructions ahead of the root", d, 0,
       repeat({"", "<dialog-info xmlns='" + std::string(dialogUri) + "' version='1' state='full' entity='e'/>"},
              "<?p?>")});
  to.push_back(
      {"prolog-catalogues", "catalogues that the parser would note", d, 0,
       repeat({"", "<dialog-info xmlns='" + std::string(dialogUri) + "' version='1' state='full' entity='e'/>"},
              "<?oasis-xml-catalog catalog='c'?>")});
  to.push_back({"entity-expansion", "entities made of entities", d, malformed, [](size_t bytes) {
                  std::string type = "<!DOCTYPE dialog-info [<!ENTITY a 'aaaaaaaaaa'>";
                  for (char c = 'b'; c <= 'z'; ++c)
                    type +=
                        std::string("<!ENTITY ") + c + " '" + repeated(std::string("&") + char(c - 1) + ";", 10) + "'>";
                  return type + "]>" + fill(inText(), bytes, [](unsigned) { return "&z;"; });
                }});
}

void addForeign(std::vector<HostileShape> &to) {
  const HostileDocument *d = &dialogInfo;
  to.push_back({"foreign", "foreign elements of four bytes, each with a namespace to declare", d, 0,
                repeat(prefixedRoot(" xmlns='u'"), "<e/>")});
  to.push_back(
      {"foreign-undeclared", "foreign elements of four bytes in no namespace", d, 0, repeat(prefixedRoot(), "<e/>")});
  to.push_back({"foreign-actions", "foreign elements of four bytes, the actions of a rule", &ruleset, 0,
                repeat(inActions(), "<e/>")});
  to.push_back({"foreign-inside", "elements inside a foreign one", d, 0, repeat(inForeign(), "<e/>")});
  to.push_back(
      {"foreign-pieces", "elements and characters in turn inside a foreign one", d, 0, repeat(inForeign(), "t<e/>")});
  to.push_back({"foreign-attributes", "elements with an attribute inside a foreign one", d, 0,
                repeat(inForeign(), "<e a=''/>")});
  to.push_back({"foreign-text", "one text in a foreign element", d, 0, once(inForeign(), "", 't', "")});
  to.push_back(
      {"foreign-escaped", "one text of characters that the copy escapes", d, 0, once(inForeign(), "", '>', "")});
  to.push_back({"foreign-entities", "predefined entities in a foreign element", d, 0, repeat(inForeign(), "&lt;")});
  to.push_back({"foreign-multibyte", "one text of characters of two bytes in a foreign element", d, 0,
                repeat(inForeign(), "\xC3\xA9")});
}

void addRecords(std::vector<HostileShape> &to) {
  const HostileDocument *d = &dialogInfo;
  to.push_back({"records", "dialogs with a state", d, 0, repeat(root(), "<dialog id='d'><state>s</state></dialog>")});
  to.push_back({"records-empty", "dialogs without a state", d, 0, repeat(root(), "<dialog id=''/>")});
  to.push_back({"records-texts", "hops of one dialog", d, 0, repeat(inRouteSet(), "<hop/>")});
  to.push_back(
      {"records-parameters", "parameters of one target", d, 0, repeat(inTarget(), "<param pname='' pval=''/>")});
  to.push_back({"records-choices", "conditions of a rule", &ruleset, STATUS_CONSTRAINT_VIOLATION,
                repeat(inRule().inside("<conditions>", "</conditions>"), "<identity/>")});
}

void addEncodings(std::vector<HostileShape> &to) {
  const HostileDocument *d = &dialogInfo;
  to.push_back(
      {"encoding-latin", "one text in ISO-8859-1", d, 0, once(inEncoding("ISO-8859-1", inText()), "", '\xE9', "")});
  to.push_back({"encoding-utf16", "elements inside a foreign one, in UTF-16", d, 0, widening(inForeign(), "<e/>")});
  to.push_back(
      {"encoding-utf16-text", "one text in UTF-16, of characters that become three bytes", d, 0, [](size_t bytes) {
         const Frame frame = inText();
         return fill({utf16(frame.opening), utf16(frame.ending).substr(2)}, bytes,
                     [](unsigned) { return std::string("\0\x4E", 2); });
       }});
  to.push_back({"encoding-unknown", "an encoding that is not converted", d, malformed,
                once(inEncoding("windows-1258", inText()), "", '\xC3', "")});
}

} // namespace

const std::vector<HostileShape> &hostileShapes() {
  static const std::vector<HostileShape> shapes = [] {
    std::vector<HostileShape> all;
    addAttributes(all);
    addNames(all);
    addNesting(all);
    addPrefixes(all);
    addErrors(all);
    addText(all);
    addMarkup(all);
    addForeign(all);
    addRecords(all);
    addEncodings(all);
    return all;
  }();
  return shapes;
}

const std::vector<GreedySpelling> &greedySpellings() {
  static const std::vector<GreedySpelling> spellings = {
      {"dialogs", &dialogInfo, root().opening, "<dialog id='d'/>", root().ending, 100000, STATUS_NO_MEMORY,
       "/dialog-info/dialog"},
      {"dialogs-empty", &dialogInfo, root().opening, "<dialog id=''/>", root().ending, 100000, STATUS_NO_MEMORY,
       "/dialog-info/dialog"},
      {"dialogs-shortest", &dialogInfo, root().opening, "<dialog/>", root().ending, 100000, STATUS_MISSING_ATTRIBUTE,
       nullptr},
      {"hops", &dialogInfo, inRouteSet().opening, "<hop/>", inRouteSet().ending, 2000000, STATUS_NO_MEMORY,
       "/dialog-info/dialog/route-set/hop"},
      {"foreign", &dialogInfo, prefixedRoot().opening, "<e/>", prefixedRoot().ending, 1000000, STATUS_NO_MEMORY,
       "/d:dialog-info/e"},
  };
  return spellings;
}

std::string greedyBody(const GreedySpelling &spelling) {
  std::string body = spelling.opening;
  for (unsigned i = 0; i < spelling.count; ++i)
    body += spelling.element;
  return body + spelling.ending;
}

std::string bodyWithFreshNames(unsigned number) {
  std::string i = std::to_string(number);
  i.insert(0, 10 - i.size(), '0'); // so that all bodies have one length
  const Frame frame = root(" xmlns:p" + i + "='urn:example:" + i + "'");
  return frame.opening + "<?i" + i + "?><p" + i + ":e" + i + " a" + i + "='' p" + i + ":b" + i + "=''/>" + frame.ending;
}

} // namespace bench
