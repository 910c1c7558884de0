/* One body for each document of the library. Only C, so that programs in C can include it. */
#ifndef BODIES_H
#define BODIES_H

#define DIALOG_STATE(element, rest) "<" element " xmlns='urn:ietf:params:xml:ns:dialog-info'" rest "</" element ">"
#define DEBUG_INFO(element, rest) "<" element " xmlns='urn:ietf:params:xml:ns:debuginfo'" rest "</" element ">"

#define DIALOG_CONTENT                                                                                                 \
  "<state event='timeout' code='487'>terminated</state><duration>9</duration>"                                         \
  "<replaces call-id='c' local-tag='l' remote-tag='r'/><referred-by display-name='D'>sip:d@example.net</referred-by>"  \
  "<route-set><hop>sip:p@example.net</hop></route-set>"                                                                \
  "<local><identity>sip:a@example.net</identity><target uri='sip:a@192.0.2.1'><param pname='p' pval='v'/></target>"    \
  "<session-description type='application/sdp'>v=0</session-description><cseq>4</cseq></local>"                        \
  "<remote><x:y xmlns:x='urn:example:x'/></remote>"

#define SESSION_CONTENT                                                                                                \
  "<start-trigger><from>sip:a@example.net</from><method>INVITE</method><debug-id>0a1B</debug-id></start-trigger>"      \
  "<stop-trigger><time-period>PT7M</time-period><reason>session_end</reason></stop-trigger>"                           \
  "<control><interface>Gm</interface><depth>minimum</depth></control>"

static const char bodyOf_tns_isComposing[] =
    "<isComposing xmlns='urn:ietf:params:xml:ns:im-iscomposing'><state>active</state>"
    "<contenttype>text/plain</contenttype><refresh>60</refresh><e:x xmlns:e='urn:example:e'/></isComposing>";
static const char bodyOf_tns_dialog_info[] =
    DIALOG_STATE("dialog-info", " version='1' state='partial' entity='sip:a@example.net'><dialog id='d' call-id='c' "
                                "direction='recipient'>" DIALOG_CONTENT "</dialog><z xmlns='urn:example:z'>z</z>");
static const char bodyOf_tns_dialog[] = DIALOG_STATE("dialog", " id='d' remote-tag='t'>" DIALOG_CONTENT);
static const char bodyOf_tns_state[] = DIALOG_STATE("state", " event='error' code='500'>terminated");
static const char bodyOf_cp_ruleset[] =
    "<cp:ruleset xmlns:cp='urn:ietf:params:xml:ns:common-policy' xmlns:o='urn:example:o'><cp:rule id='r'>"
    "<cp:conditions><cp:identity><cp:one id='sip:a@example.net'/><cp:many domain='example.net'><cp:except id='b'/>"
    "</cp:many></cp:identity><o:a/><o:b/><cp:sphere value='work'/><cp:validity><cp:from>2026-01-01T00:00:00Z</cp:from>"
    "<cp:until>2026-02-01T00:00:00Z</cp:until></cp:validity></cp:conditions><cp:actions><o:allow>true</o:allow>"
    "</cp:actions><cp:transformations><o:hide/></cp:transformations></cp:rule></cp:ruleset>";
static const char bodyOf_filter_set[] =
    "<filter-set xmlns='urn:ietf:params:xml:ns:simple-filter' package='presence'><ns-bindings>"
    "<ns-binding prefix='p' urn='urn:example:p'/></ns-bindings><filter id='f' uri='sip:a@example.net' enabled='true'>"
    "<what><include type='namespace'>urn:example:p</include><exclude>//p:note</exclude></what>"
    "<trigger><changed from='open' to='closed' by='1.5'>//p:basic</changed><added>//p:a</added>"
    "<removed>//p:r</removed></trigger></filter></filter-set>";
static const char bodyOf_poc_settings[] =
    "<poc-settings xmlns='urn:oma:params:xml:ns:poc:poc-settings'><entity id='e'>"
    "<isb-settings><incoming-session-barring active='true'/></isb-settings>"
    "<am-settings><answer-mode>manual</answer-mode></am-settings>"
    "<ipab-settings><incoming-personal-alert-barring active='false'/></ipab-settings>"
    "<sss-settings><simultaneous-sessions-support active='true'/></sss-settings></entity></poc-settings>";
static const char bodyOf_ims_3gpp[] =
    "<ims-3gpp version='1.5'><alternative-service><type>emergency</type><reason>call</reason></alternative-service>"
    "<o:x xmlns:o='urn:example:o'/></ims-3gpp>";
static const char bodyOf_type[] = "<type>emergency</type>";
static const char bodyOf_action[] = "<action>emergency-registration</action>";
static const char bodyOf_tns_time[] = DEBUG_INFO("time", "> 2026-01-01T00:00:00Z ");
static const char bodyOf_tns_from[] = DEBUG_INFO("from", ">sip:a@example.net");
static const char bodyOf_tns_to[] = DEBUG_INFO("to", ">sip:b@example.net");
static const char bodyOf_tns_method[] = DEBUG_INFO("method", ">INVITE");
static const char bodyOf_tns_icsi[] = DEBUG_INFO("icsi", ">urn:example:icsi");
static const char bodyOf_tns_iari[] = DEBUG_INFO("iari", ">urn:example:iari");
static const char bodyOf_tns_debug_id[] = DEBUG_INFO("debug-id", ">00ff7E");
static const char bodyOf_tns_time_period[] = DEBUG_INFO("time-period", ">PT7M");
static const char bodyOf_tns_reason[] = DEBUG_INFO("reason", ">session_end");
static const char bodyOf_tns_interface[] = DEBUG_INFO("interface", ">Gm Cr");
static const char bodyOf_tns_depth[] = DEBUG_INFO("depth", ">minimum");
static const char bodyOf_tns_start_trigger[] =
    DEBUG_INFO("start-trigger", "><to>sip:b@example.net</to><time>2026-01-01T00:00:00Z</time><debug-id>01</debug-id>");
static const char bodyOf_tns_stop_trigger[] =
    DEBUG_INFO("stop-trigger", "><time>2026-01-01T00:00:00Z</time><reason>dialog_established</reason>");
static const char bodyOf_tns_control[] = DEBUG_INFO("control", "><interface>Gm</interface><debug-id>02</debug-id>");
static const char bodyOf_tns_session[] = DEBUG_INFO("session", " id='s'>" SESSION_CONTENT);
static const char bodyOf_tns_debugconfig[] =
    DEBUG_INFO("debugconfig", " aor='sip:a@example.net'><session id='s'>" SESSION_CONTENT "</session>");
static const char bodyOf_tns_debuginfo[] =
    DEBUG_INFO("debuginfo", " version='3' state='partial'><debugconfig aor='sip:a@example.net'/>"
                            "<x xmlns='urn:example:x'>y</x>");

/* Calls RECORD(element, type), TEXT(element), BYTES(element) or CODE(element) for each document of a family. */
#define IMS_DOCUMENTS(RECORD, TEXT)                                                                                    \
  RECORD(tns_isComposing, tns__isComposing)                                                                            \
  RECORD(tns_dialog_info, tns__dialog_info)                                                                            \
  RECORD(tns_dialog, tns__dialog)                                                                                      \
  RECORD(tns_state, tns__state)                                                                                        \
  RECORD(cp_ruleset, cp__ruleset)                                                                                      \
  RECORD(filter_set, FilterSetType)                                                                                    \
  RECORD(poc_settings, poc_settingsType)                                                                               \
  RECORD(ims_3gpp, tIMS3GPP)                                                                                           \
  TEXT(type)                                                                                                           \
  TEXT(action)

#define DEBUG_DOCUMENTS(RECORD, TEXT, BYTES, CODE)                                                                     \
  RECORD(tns_debuginfo, tns__debuginfo)                                                                                \
  RECORD(tns_debugconfig, tns__debugconfig)                                                                            \
  RECORD(tns_session, tns__session)                                                                                    \
  RECORD(tns_start_trigger, tns__start_trigger)                                                                        \
  RECORD(tns_stop_trigger, tns__stop_trigger)                                                                          \
  RECORD(tns_control, tns__control)                                                                                    \
  TEXT(tns_time)                                                                                                       \
  TEXT(tns_from)                                                                                                       \
  TEXT(tns_to)                                                                                                         \
  TEXT(tns_method)                                                                                                     \
  TEXT(tns_icsi)                                                                                                       \
  TEXT(tns_iari)                                                                                                       \
  TEXT(tns_time_period)                                                                                                \
  TEXT(tns_interface)                                                                                                  \
  BYTES(tns_debug_id)                                                                                                  \
  CODE(tns_reason)                                                                                                     \
  CODE(tns_depth)

#endif
