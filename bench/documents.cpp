#include "documents.h"

#include "DebugEvent/QxXmlDebugEventTables.h"
#include "DialogInfo/QxXmlDialogInfoTables.h"
#include "FilterSet/QxXmlFilterSetTables.h"
#include "ImCn/QxXmlImCnTables.h"
#include "IsComposing/QxXmlIsComposingTables.h"
#include "PocSettings/QxXmlPocSettingsTables.h"
#include "RuleSet/QxXmlRuleSetTables.h"

namespace bench {

namespace {

// A composing indication of 335 bytes, as a chat client sends it.
constexpr std::string_view composing = R"(<?xml version="1.0" encoding="UTF-8"?>
<isComposing xmlns="urn:ietf:params:xml:ns:im-iscomposing"
  xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"
  xsi:schemaLocation="urn:ietf:params:xml:ns:im-iscomposing composing.xsd">
  <state>active</state>
  <contenttype>text/plain</contenttype>
  <refresh>1200</refresh>
</isComposing>
)";

constexpr std::string_view dialogInfoStart = R"(<?xml version="1.0" encoding="UTF-8"?>
<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info"
  version="17" state="full" entity="sip:reception@office.example.org">
)";
constexpr std::string_view dialogInfoEnd = "</dialog-info>\n";

// A dialog with all that it can have. Every #### becomes its number.
constexpr std::string_view dialogStart = R"(<dialog id="d####" call-id="b7c2f094e1d3####@pbx.office.example.org"
    local-tag="lt-5c1e90####" remote-tag="rt-a83d27####" direction="recipient">
  <state event="replaced" code="200">confirmed</state>
  <duration>####</duration>
  <replaces call-id="e19a60b7####@pbx.office.example.org" local-tag="lt-77f0####" remote-tag="rt-e2d4####"/>
  <referred-by display-name="Front desk">sip:desk####@office.example.org</referred-by>
  <route-set>
    <hop>sip:edge1.example.org;lr</hop>
    <hop>sip:core.example.org;lr</hop>
  </route-set>
  <local>
    <identity display-name="Reception">sip:reception@office.example.org</identity>
    <target uri="sip:phone####@192.0.2.17">
      <param pname="audio" pval="true"/>
      <param pname="video" pval="false"/>
    </target>
)";
constexpr std::string_view sessionDescription =
    R"(    <session-description type="application/sdp">v=0
o=reception 2890844526 2890844526 IN IP4 192.0.2.17
s=Call
c=IN IP4 192.0.2.17
t=0 0
m=audio 49172 RTP/AVP 8 0 101
a=rtpmap:8 PCMA/8000
a=rtpmap:0 PCMU/8000
a=rtpmap:101 telephone-event/8000
a=fmtp:101 0-15
a=ptime:20
a=sendrecv
    </session-description>
)";
constexpr std::string_view dialogEnd = R"(    <cseq>####</cseq>
  </local>
  <remote>
    <identity display-name="Caller ####">sip:caller####@customer.example.net</identity>
    <target uri="sip:caller####@198.51.100.7"/>
  </remote>
</dialog>
)";

constexpr std::string_view smallDialog = R"(<dialog id="d####" call-id="b7c2f094e1d3####@pbx.office.example.org">
  <state>confirmed</state>
  <duration>####</duration>
</dialog>
)";

// A rule set of 1,360 bytes with prefixed names, as a presence client keeps it.
constexpr std::string_view ruleset = R"(<?xml version="1.0" encoding="UTF-8"?>
<cr:ruleset xmlns:cr="urn:ietf:params:xml:ns:common-policy" xmlns:pr="urn:ietf:params:xml:ns:pres-rules">
  <cr:rule id="friends">
    <cr:conditions>
      <cr:identity>
        <cr:one id="sip:carla@example.org"/>
        <cr:one id="tel:+4930555017"/>
        <cr:one id="sip:dora.the.second@mobile.example.net"/>
        <cr:many domain="work.example.org">
          <cr:except id="sip:chief@work.example.org"/>
          <cr:except domain="guests.work.example.org"/>
        </cr:many>
      </cr:identity>
      <cr:sphere value="home"/>
      <cr:validity>
        <cr:from>2026-01-01T08:00:00+01:00</cr:from>
        <cr:until>2026-12-31T18:00:00+01:00</cr:until>
      </cr:validity>
    </cr:conditions>
    <cr:actions>
      <pr:sub-handling>allow</pr:sub-handling>
    </cr:actions>
    <cr:transformations>
      <pr:provide-services>
        <pr:service-uri-scheme>sip</pr:service-uri-scheme>
      </pr:provide-services>
      <pr:provide-activities>true</pr:provide-activities>
      <pr:provide-mood>true</pr:provide-mood>
    </cr:transformations>
  </cr:rule>
  <cr:rule id="others">
    <cr:conditions>
      <cr:identity>
        <cr:many/>
      </cr:identity>
    </cr:conditions>
    <cr:actions>
      <pr:sub-handling>polite-block</pr:sub-handling>
    </cr:actions>
  </cr:rule>
</cr:ruleset>
)";

// A filter set, as a watcher sends it with its subscription.
constexpr std::string_view filterSet = R"(<?xml version="1.0" encoding="UTF-8"?>
<filter-set xmlns="urn:ietf:params:xml:ns:simple-filter" package="presence">
  <ns-bindings>
    <ns-binding prefix="p" urn="urn:ietf:params:xml:ns:pidf"/>
    <ns-binding prefix="r" urn="urn:ietf:params:xml:ns:pidf:rpid"/>
  </ns-bindings>
  <filter id="online" uri="sip:carla@example.org">
    <what>
      <include type="xpath">/p:presence/p:tuple/p:status/p:basic</include>
      <include type="namespace">urn:ietf:params:xml:ns:pidf:rpid</include>
      <exclude>//r:mood</exclude>
    </what>
    <trigger>
      <changed from="closed" to="open">/p:presence/p:tuple/p:status/p:basic</changed>
      <changed by="0.25">/p:presence/p:tuple/p:contact/@priority</changed>
      <added>/p:presence/p:note</added>
      <removed>/p:presence/p:tuple</removed>
    </trigger>
  </filter>
  <filter id="quiet" domain="work.example.org" enabled="false"/>
</filter-set>
)";

// Push-to-talk settings of a phone.
constexpr std::string_view settings = R"(<?xml version="1.0" encoding="UTF-8"?>
<poc-settings xmlns="urn:oma:params:xml:ns:poc:poc-settings">
  <entity id="do39s8zksn2d98x">
    <isb-settings>
      <incoming-session-barring active="false"/>
    </isb-settings>
    <am-settings>
      <answer-mode>automatic</answer-mode>
    </am-settings>
    <ipab-settings>
      <incoming-personal-alert-barring active="false"/>
    </ipab-settings>
    <sss-settings>
      <simultaneous-sessions-support active="true"/>
    </sss-settings>
  </entity>
</poc-settings>
)";

// An indication that another service stands in.
constexpr std::string_view alternative = R"(<?xml version="1.0" encoding="UTF-8"?>
<ims-3gpp version="1">
  <alternative-service>
    <type>emergency</type>
    <reason>emergency calls use the circuit-switched domain</reason>
    <action>emergency-registration</action>
  </alternative-service>
</ims-3gpp>
)";

// The debug configuration of a user with one session.
constexpr std::string_view debugInfo = R"(<?xml version="1.0" encoding="UTF-8"?>
<debuginfo xmlns="urn:ietf:params:xml:ns:debuginfo" version="4" state="full">
  <debugconfig aor="sip:carla@example.org">
    <session id="s-20260417">
      <start-trigger>
        <from>sip:carla@example.org</from>
        <to>sip:support@example.org</to>
        <method>INVITE</method>
        <time>2026-04-17T09:30:00Z</time>
        <debug-id>1a00a84f</debug-id>
      </start-trigger>
      <stop-trigger>
        <time-period>PT2H</time-period>
        <reason>session_end</reason>
      </stop-trigger>
      <control>
        <interface>Gm Mw ISC</interface>
        <depth>maximum</depth>
        <debug-id>1a00a84f</debug-id>
      </control>
    </session>
  </debugconfig>
</debuginfo>
)";

std::string numbered(std::string_view text, unsigned number) {
  std::string digits = std::to_string(10000 + number % 10000).substr(1);
  std::string result(text);
  for (size_t at = 0; (at = result.find("####", at)) != std::string::npos;)
    result.replace(at, digits.size(), digits);
  return result;
}

std::string dialogInfo(unsigned dialogs, std::string_view description) {
  std::string body(dialogInfoStart);
  for (unsigned i = 1; i <= dialogs; ++i)
    body.append(numbered(dialogStart, i)).append(description).append(numbered(dialogEnd, i));
  return body.append(dialogInfoEnd);
}

template <class Record, int (*Decode)(RuntimeContext *, Record *), int (*Validate)(RuntimeContext *),
          int (*Encode)(RuntimeContext *, const Record *), int (*Release)(RuntimeContext *, Record *)>
Document document(std::string_view name, std::string body, unsigned elements) {
  return {name,
          std::move(body),
          elements,
          ims::SchemaOf<Record>::schema,
          sizeof(Record),
          [](RuntimeContext *ctx, void *record) { return Decode(ctx, static_cast<Record *>(record)); },
          Validate,
          [](RuntimeContext *ctx, const void *record) { return Encode(ctx, static_cast<const Record *>(record)); },
          [](RuntimeContext *ctx, void *record) { return Release(ctx, static_cast<Record *>(record)); }};
}

} // namespace

std::string fullDialogs(unsigned dialogs) { return dialogInfo(dialogs, ""); }

std::string smallDialogs(unsigned dialogs) {
  std::string body(dialogInfoStart);
  for (unsigned i = 1; i <= dialogs; ++i)
    body.append(numbered(smallDialog, i));
  return body.append(dialogInfoEnd);
}

#define DOCUMENT(name, T, root, body, elements)                                                                        \
  document<T, QxXmlD_##root, QxXmlV_##root, QxXmlE_##root, QxMemFree_##T>(name, std::string(body), elements)

const std::vector<Document> &allDocuments() {
  static const std::vector<Document> documents = {
      DOCUMENT("a", tns__isComposing, tns_isComposing, composing, 4),
      DOCUMENT("b", tns__dialog_info, tns_dialog_info, dialogInfo(1, sessionDescription), 19),
      DOCUMENT("c", cp__ruleset, cp_ruleset, ruleset, 27),
      DOCUMENT("d", tns__dialog_info, tns_dialog_info, fullDialogs(1000), 17001),
      DOCUMENT("e", poc_settingsType, poc_settings, settings, 10),
      DOCUMENT("f", FilterSetType, filter_set, filterSet, 15),
      DOCUMENT("g", tIMS3GPP, ims_3gpp, alternative, 5),
      DOCUMENT("h", tns__debuginfo, tns_debuginfo, debugInfo, 16),
  };
  return documents;
}

} // namespace bench
