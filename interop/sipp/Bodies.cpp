#include "Bodies.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace carrier {

namespace {

using namespace imscodec;

constexpr Kind table[] = {
    {"isComposing", "MESSAGE", "application/im-iscomposing+xml", "",
     R"(<isComposing xmlns="urn:ietf:params:xml:ns:im-iscomposing"><state>active</state>)"
     R"(<contenttype>text/plain; charset=utf-8</contenttype><refresh>6@</refresh>)",
     R"(<n:note xmlns:n="urn:example:notes" n:kind="draft @">~</n:note>)", R"(</isComposing>)"},
    {"dialog-info", "NOTIFY", "application/dialog-info+xml", "dialog",
     R"(<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" version="@" state="full")"
     R"( entity="sip:anna-@@home.example">)",
     R"(<dialog id="d@" call-id="c@@10.0.0.1" local-tag="l@" remote-tag="r@" direction="recipient"><state)"
     R"( event="local-bye" code="200">terminated</state><duration>@</duration><local>)"
     R"(<identity display-name="~">sip:anna@home.example)"
     R"(</identity><target uri="sip:anna@10.0.0.2;ob"><param pname="audio" pval="true"/></target></local><remote>)"
     R"(<identity display-name="~">sip:ben-@@away.example</identity><cseq>@</cseq></remote></dialog>)",
     R"(</dialog-info>)"},
    {"ruleset", "INFO", "application/auth-policy+xml", "",
     R"(<ruleset xmlns="urn:ietf:params:xml:ns:common-policy" xmlns:pr="urn:ietf:params:xml:ns:pres-rules">)",
     R"(<rule id="r@"><conditions><identity><one id="sip:ben-@@away.example"/><many domain="home.example">)"
     R"(<except id="sip:chief-@@home.example"/></many></identity><sphere value="~"/><validity>)"
     R"(<from>2026-01-01T00:00:00Z</from><until>2027-01-01T00:00:00Z</until></validity></conditions><actions>)"
     R"(<pr:sub-handling>allow</pr:sub-handling></actions><transformations><pr:provide-note>~</pr:provide-note>)"
     R"(</transformations></rule>)",
     R"(</ruleset>)"},
    {"filter-set", "SUBSCRIBE", "application/simple-filter+xml", "presence",
     R"(<filter-set xmlns="urn:ietf:params:xml:ns:simple-filter" package="presence"><ns-bindings>)"
     R"(<ns-binding prefix="pidf" urn="urn:ietf:params:xml:ns:pidf"/></ns-bindings>)",
     R"(<filter id="f@" uri="sip:mira-@@home.example" enabled="true"><what><include type="xpath">)"
     R"(/pidf:presence/pidf:tuple[@]/pidf:status</include><exclude>//pidf:note</exclude></what><trigger>)"
     R"(<changed from="~" to="closed" by="1.5">//pidf:basic</changed><added>//pidf:tuple</added></trigger></filter>)",
     R"(</filter-set>)"},
    {"poc-settings", "PUBLISH", "application/poc-settings+xml", "poc-settings",
     R"(<poc-settings xmlns="urn:oma:params:xml:ns:poc:poc-settings">)",
     R"(<entity id="phone-@"><isb-settings><incoming-session-barring active="true"/></isb-settings><am-settings>)"
     R"(<answer-mode>manual</answer-mode></am-settings><ipab-settings>)"
     R"(<incoming-personal-alert-barring active="false"/></ipab-settings><sss-settings>)"
     R"(<simultaneous-sessions-support active="true"/></sss-settings></entity>)",
     R"(<n:note xmlns:n="urn:example:notes">~</n:note></poc-settings>)"},
    {"ims-3gpp", "INFO", "application/3gpp-ims+xml", "",
     R"(<ims-3gpp version="1"><alternative-service><type>emergency</type><reason>call @: ~</reason><action>)"
     R"(emergency-registration</action></alternative-service>)",
     R"(<n:note xmlns:n="urn:example:notes" number="@">~</n:note>)", R"(</ims-3gpp>)"},
    {"debuginfo", "NOTIFY", "application/debuginfo+xml", "debug",
     R"(<debuginfo xmlns="urn:ietf:params:xml:ns:debuginfo" version="@" state="full">)",
     R"(<debugconfig aor="sip:anna-@@home.example"><session id="s@"><start-trigger><from>sip:anna@home.example</from>)"
     R"(<method>INVITE</method><debug-id>1a00A8</debug-id></start-trigger><stop-trigger>)"
     R"(<time-period>PT2H</time-period><reason>session_end</reason></stop-trigger><control>)"
     R"(<interface>Gm</interface><depth>maximum</depth></control>)"
     R"(</session></debugconfig>)",
     R"(<n:note xmlns:n="urn:example:notes">~</n:note></debuginfo>)"},
};

// As they stand in a document.
constexpr std::string_view texts[] = {
    "Ben",           "&quot;Ben&quot; &amp; 'Co' &lt;ben&gt;", "]]&gt; &amp;amp; [field0] [$body] %41",
    "Zoë Бен 貝恩",  "&#x1F600; &#x202E;neB&#x202C;",          "one&#9;two&#10;three&#13;four",
    "a; b, c=d\\n #"};

// "@" stands for the number where it is no part of an address.
std::string filled(std::string_view pattern, std::size_t number) {
  std::string text;
  for (std::size_t at = 0; at < pattern.size(); ++at) {
    const bool isAddress = pattern[at] == '@' && at + 1 < pattern.size() &&
                           (pattern.substr(at + 1).starts_with("home.") ||
                            pattern.substr(at + 1).starts_with("away.") || pattern.substr(at + 1).starts_with("10."));
    if (pattern[at] == '@' && !isAddress) {
      text += std::to_string(number);
    } else if (pattern[at] == '~') {
      text += texts[number % std::size(texts)];
    } else {
      text += pattern[at];
    }
  }
  return text;
}

std::string source(const Kind &kind, std::size_t number, std::size_t size) {
  std::string text = filled(kind.head, number);
  for (std::size_t item = 0; item == 0 || text.size() + kind.tail.size() < size; ++item)
    text += filled(kind.item, number + item);
  return text + filled(kind.tail, number);
}

std::string problemOf(std::string_view what, const Outcome &outcome) {
  std::string all(what);
  for (const Error error : outcome.errors()) {
    char line[256];
    all.append(": ").append(error.format(line));
  }
  return all;
}

template <class T> Codec::Passed passed(Context &context, std::string_view document, std::string_view other) {
  context.reset();
  const auto meant = context.decode<T>(other);
  if (!meant) return {"", problemOf("what was meant cannot be read", meant)};
  const auto read = context.decode<T>(document);
  if (!read) return {"", problemOf("it cannot be read", read)};
  if (!equal(*read, *meant)) return {"", "it does not say what was meant"};
  const auto written = context.encode(*read);
  if (!written) return {"", problemOf("it cannot be written", written)};
  return {std::string(*written), ""};
}

} // namespace

std::string Kind::fileName() const {
  std::string file(name);
  std::ranges::replace(file, '-', '_'); // SIPp takes what follows for a number
  return file;
}

std::span<const Kind> kinds() { return table; }

Codec::Passed Codec::pass(const Kind &kind, std::string_view document, std::string_view other) {
  if (kind.name == "isComposing") return passed<iscomposing::isComposing>(context, document, other);
  if (kind.name == "dialog-info") return passed<dialoginfo::dialog_info>(context, document, other);
  if (kind.name == "ruleset") return passed<ruleset::ruleset>(context, document, other);
  if (kind.name == "filter-set") return passed<filterset::FilterSetType>(context, document, other);
  if (kind.name == "poc-settings") return passed<pocsettings::poc_settingsType>(context, document, other);
  if (kind.name == "ims-3gpp") return passed<imcn::tIMS3GPP>(context, document, other);
  return passed<debugevent::debuginfo>(debugContext, document, other);
}

Bodies::Bodies(std::size_t count, std::size_t smallest, std::size_t greatest) {
  Codec codec;
  const auto write = [&codec](const Kind &kind, std::size_t number, std::size_t size) {
    Body body{&kind, source(kind, number, size), ""};
    Codec::Passed written = codec.pass(kind, body.source, body.source);
    if (!written.problem.empty()) throw std::runtime_error(written.problem + "\n" + body.source);
    body.text = std::move(written.text);
    return body;
  };
  for (std::size_t number = 0; number < count; ++number) {
    const std::size_t size = greatest - (greatest - smallest) * number / (count - 1);
    for (const Kind &kind : kinds()) {
      Body body = write(kind, number, size);
      // Prefixes make it longer than it was.
      if (body.text.size() > size) body = write(kind, number, size * body.source.size() / body.text.size());
      all.push_back(std::move(body));
    }
  }
}

const Body *Bodies::find(const Kind &kind, std::size_t number) const {
  return number < count() ? &all[number * kinds().size() + static_cast<std::size_t>(&kind - table)] : nullptr;
}

void Bodies::save(const std::filesystem::path &folder) const {
  for (std::size_t at = 0; at < all.size(); ++at) {
    const std::string number = std::to_string(at / kinds().size());
    std::ofstream file(folder / (all[at].kind->fileName() + "." + number), std::ios::binary);
    file << all[at].text;
    if (!file.flush()) throw std::runtime_error("a body cannot be written to " + folder.string());
  }
}

} // namespace carrier
