#include "examples.h"

#include <array>

namespace differential {

namespace {

#define COMPOSING "urn:ietf:params:xml:ns:im-iscomposing"
#define DIALOG "urn:ietf:params:xml:ns:dialog-info"
#define POLICY "urn:ietf:params:xml:ns:common-policy"
#define DEBUG "urn:ietf:params:xml:ns:debuginfo"
#define FOREIGN " xmlns:f=\"urn:example:foreign\""
#define INSTANCE " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""

std::string composing(const std::string &content, const std::string &attributes = {}) {
  return "<isComposing xmlns=\"" COMPOSING "\"" FOREIGN + attributes + ">" + content + "</isComposing>";
}

std::string dialogs(const std::string &content, const std::string &version = "7") {
  return "<dialog-info xmlns=\"" DIALOG "\"" FOREIGN " version=\"" + version +
         "\" state=\"full\" entity=\"sip:a@b.c\">" + content + "</dialog-info>";
}

std::string dialog(const std::string &content) { return dialogs("<dialog id=\"d\">" + content + "</dialog>"); }

std::string rules(const std::string &content) {
  return "<ruleset xmlns=\"" POLICY "\"" FOREIGN ">" + content + "</ruleset>";
}

std::string conditions(const std::string &content) {
  return rules("<rule id=\"r\"><conditions>" + content + "</conditions></rule>");
}

std::string debugging(const std::string &root, const std::string &content, const std::string &attributes = {}) {
  return "<" + root + " xmlns=\"" DEBUG "\" xmlns:p=\"" DEBUG "\"" + attributes + ">" + content + "</" + root + ">";
}

std::string manyDeclarations() {
  std::string all;
  for (int i = 0; i < 128; ++i)
    all += " xmlns:n" + std::to_string(i) + "=\"urn:example:n\"";
  return all;
}

const std::array all = {
    // Accepted by the library alone.
    Example{"root-namespace", COMPOSING, "isComposing", "<isComposing><state>idle</state></isComposing>"},
    Example{"root-namespace", POLICY, "ruleset", "<f:ruleset" FOREIGN "/>"},
    Example{"child-namespace", COMPOSING, "isComposing", composing("<f:state>idle</f:state>")},
    Example{"child-namespace", POLICY, "ruleset", rules("<f:rule id=\"r\"/>")},
    Example{"foreign-without-namespace", COMPOSING, "isComposing", composing("<state>idle</state><x xmlns=\"\"/>")},
    Example{"foreign-without-namespace", POLICY, "ruleset",
            conditions("<identity><one id=\"sip:a@b.c\"><rule xmlns=\"\"/></one></identity>")},
    Example{"extension-namespace", POLICY, "ruleset", rules("<rule id=\"r\"><actions><rule/></actions></rule>")},
    Example{"foreign-content", DIALOG, "dialog-info", dialogs("<f:x><dialog id=\"d\"><cseq/></dialog></f:x>")},
    Example{"missing-child", COMPOSING, "isComposing", composing("")},
    Example{"missing-child", DEBUG, "session", debugging("session", "<start-trigger/>", " id=\"s\"")},
    Example{"empty-list", DIALOG, "dialog-info", dialog("<state/><route-set/>")},
    Example{"empty-list", POLICY, "ruleset", conditions("<identity/>")},
    Example{"text-between-elements", COMPOSING, "isComposing", composing("text<state>idle</state>")},
    Example{"element-in-text", COMPOSING, "isComposing", composing("<state>id<f:x/>le</state>")},
    Example{"attribute-of-a-type-without", COMPOSING, "isComposing", composing("<state/>", " foo=\"1\"")},
    Example{"attribute-like-a-declaration", DIALOG, "dialog-info", dialog("<state xmlnsfoo=\"urn:example:x\"/>")},
    Example{"attribute-like-a-declaration", COMPOSING, "isComposing",
            composing("<state/><refresh xmlnsfoo=\"urn:example:x\">soon</refresh>")},
    Example{"display-name", DIALOG, "dialog-info",
            dialog("<state/><referred-by display-name=\"A\">sip:a@b.c</referred-by>")},
    Example{"qualified-attribute", DEBUG, "debugconfig", debugging("debugconfig", "", " p:aor=\"sip:a@b.c\"")},
    Example{"instance-attribute", COMPOSING, "isComposing", composing("<state xsi:nil=\"false\"/>", INSTANCE)},
    Example{"uri", DIALOG, "dialog-info", dialog("<state/><referred-by>http://[</referred-by>")},
    Example{"rule-id", POLICY, "ruleset", rules("<rule id=\"1st\"/>")},
    Example{"rule-id", POLICY, "ruleset", rules("<rule id=\"r\"/><rule id=\"r\"/>")},
    Example{"debug-time", DEBUG, "start-trigger", debugging("start-trigger", "<time>noon</time>")},
    Example{"debug-time", DEBUG, "stop-trigger", debugging("stop-trigger", "<time-period>long</time-period>")},
    Example{"time-with-space", COMPOSING, "isComposing",
            composing("<state/><lastactive> 2026-01-31T23:59:59Z\n</lastactive>")},

    // Accepted by the schema alone.
    Example{"other-root", DIALOG, "dialog", dialogs("")},
    Example{"no-validator", DEBUG, "from", debugging("from", "text")},
    Example{"foreign-attribute", COMPOSING, "isComposing", composing("<state/><f:x a=\"1\"/>")},
    Example{"display", DIALOG, "dialog-info", dialog("<state/><referred-by display=\"A\">sip:a@b.c</referred-by>")},
    Example{"great-number", DIALOG, "dialog-info", dialogs("", "4294967296")},
    Example{"great-number", COMPOSING, "isComposing", composing("<state/><refresh>4294967296</refresh>")},
    Example{"great-year", COMPOSING, "isComposing",
            composing("<state/><lastactive>2147483648-01-31T00:00:00Z</lastactive>")},
    Example{"debug-id", DEBUG, "start-trigger", debugging("start-trigger", "<debug-id>name</debug-id>")},
    Example{"debug-id", DEBUG, "start-trigger", debugging("start-trigger", "<debug-id>abc</debug-id>")},
    Example{"repeated-validity", POLICY, "ruleset",
            conditions("<validity><from>2026-01-31T00:00:00Z</from><until>2026-02-01T00:00:00Z</until>"
                       "<from>2026-03-01T00:00:00Z</from><until>2026-03-02T00:00:00Z</until></validity>")},
    Example{"order-behind-foreign", DIALOG, "dialog-info", dialogs("<f:x/><dialog id=\"d\"><state/></dialog>")},
    Example{"namespace-constraint", COMPOSING, "isComposing", composing("<state/><f:x><a:b:c/></f:x>")},
    Example{"namespace-constraint", COMPOSING, "isComposing", composing("<state/>", " xmlns:g=\"\"")},
    Example{"attribute-limit", COMPOSING, "isComposing", composing("<state/>", manyDeclarations())},
};

} // namespace

std::span<const Example> examples() { return all; }

} // namespace differential
