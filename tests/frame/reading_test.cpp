// What decoders and validators make of documents: the errors of both, and the record.
#include "DebugEvent/QxXmlDebugEventTables.h"
#include "DialogInfo/QxXmlDialogInfoTables.h"
#include "FilterSet/QxXmlFilterSetTables.h"
#include "ImCn/QxXmlImCnTables.h"
#include "PocSettings/QxXmlPocSettingsTables.h"
#include "conditions.h"
#include "context.h"
#include "input.h"
#include "records.h"
#include "rtx.h"

#include <gtest/gtest.h>

using frame::Record;
using support::Context;

namespace {

struct Case {
  const char *name;
  const ims::DocumentSchema &document;
  const char *attributes; // of the root
  const char *content;    // of the root, whose namespace is the default one
  const char *decoding;   // errors
  const char *validating; // errors; null: the same
  const char *record;     // as printed
};

constexpr const char *same = nullptr;

#define XSI " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""

const Case cases[] = {
    // ---- Dialog state --------------------------------------------------------------------------------------------
    {"StateWithAllAttributes", tns_stateDocument, " event=\"local-bye\" code=\"100\" xmlns:q=\"urn:q\"", "confirmed",
     "", same,
     "r = \"confirmed\"\n"
     "r.xmlns = \"urn:ietf:params:xml:ns:dialog-info\"\n"
     "r.xmlns:q = \"urn:q\"\n"
     "r.tns_event = \"local-bye\"\n"
     "r.tns_code = 100\n"},
    {"StateWithTheGreatestCode", tns_stateDocument, " code=\"699\"", "", "", same,
     "r = \"\"\n"
     "r.xmlns = \"urn:ietf:params:xml:ns:dialog-info\"\n"
     "r.tns_code = 699\n"},
    {"StateWithASmallCode", tns_stateDocument, " code=\"99\"", "s", "-16(tns__state.tns_code|uint 99)",
     "-16(code|uint 99)",
     "r = \"s\"\n"
     "r.xmlns = \"urn:ietf:params:xml:ns:dialog-info\"\n"},
    {"StateWithAGreatCode", tns_stateDocument, " code=\"700\" event=\"error\"", "s",
     "-16(tns__state.tns_code|uint 700)", "-16(code|uint 700)",
     "r = \"s\"\n"
     "r.xmlns = \"urn:ietf:params:xml:ns:dialog-info\"\n"
     "r.tns_event = \"error\"\n"},
    {"StateWithACodeThatIsNone", tns_stateDocument, " code=\"abc\"", "s", "-101 -45(tns__state|code)", same,
     "r = \"s\"\n"
     "r.xmlns = \"urn:ietf:params:xml:ns:dialog-info\"\n"
     "r.tns_code = 0\n"},
    {"StateWithAnUnknownEvent", tns_stateDocument, " event=\"Error\"", "s", "-4(Error) -45(tns__state|event)", same,
     "r = \"s\"\n"
     "r.xmlns = \"urn:ietf:params:xml:ns:dialog-info\"\n"
     "r.tns_event = \"cancelled\"\n"},
    {"StateWithUnknownAttributes", tns_stateDocument, XSI " foo=\"1\" xsi:type=\"t\" p:bar=\"2\"", "s",
     "-33(tns__state|foo) -33(tns__state|p:bar)", same,
     "r = \"s\"\n"
     "r.xmlns = \"urn:ietf:params:xml:ns:dialog-info\"\n"
     "r.xmlns:xsi = \"http://www.w3.org/2001/XMLSchema-instance\"\n"},
    {"DialogWithUnknownDirection", tns_dialogDocument, " id=\"i\" direction=\"Initiator\" call-id=\"c\"",
     "<state>s</state>", "-4(Initiator) -45(tns__dialog|direction)", same,
     "r.tns_state = \"s\"\n"
     "r.tns_id = \"i\"\n"
     "r.tns_call_id = \"c\"\n"
     "r.tns_direction = \"initiator\"\n"},
    {"DialogWithoutStateAndId", tns_dialogDocument, "", "", "-103(tns__dialog|id)", same,
     "r.tns_state = <null>\n"
     "r.tns_id = <null>\n"},
    {"DialogWithForeignElementFirst", tns_dialogDocument, " id=\"i\"", "<f:a xmlns:f=\"urn:f\"/><state>s</state>",
     "-41(f:a)", same,
     "r.tns_state = \"s\"\n"
     "r.tns_id = \"i\"\n"},
    {"ReplacesWithoutItsAttributes", tns_dialogDocument, " id=\"i\"",
     "<state/><replaces local-tag=\"l\" what=\"w\"><x/></replaces>",
     "-33(tns__dialog_replaces|what) -103(tns__dialog_replaces|call-id) -103(tns__dialog_replaces|remote-tag) -41(x)",
     same,
     "r.tns_state = \"\"\n"
     "r.tns_replaces = <null>\n"
     "r.tns_replaces.tns_call_id = <null>\n"
     "r.tns_replaces.tns_local_tag = \"l\"\n"
     "r.tns_replaces.tns_remote_tag = <null>\n"
     "r.tns_id = \"i\"\n"},
    {"AttributesOnSimpleChildren", tns_dialogDocument, " id=\"i\"",
     "<state/><duration a=\"1\" xmlns:b=\"urn:b\">5</duration><route-set c=\"1\"><hop d=\"1\">h</hop></route-set>",
     "-33(duration|a) -33(hop|d)", same,
     "r.tns_state = \"\"\n"
     "r.tns_duration = 5\n"
     "r.tns_route_set.tns_hop[0] = \"h\"\n"
     "r.tns_id = \"i\"\n"},
    {"EmbeddedChildKeepsItsBitWhenItFails", tns_dialogDocument, " id=\"i\"",
     "<state/><route-set/><local><session-description>t</session-description></local>",
     "-16(tns__dialog_route_set.count|int 0) -103(tns_sessd|type)", "-103(tns_sessd|type)",
     "r.tns_state = \"\"\n"
     "r.tns_local.tns_session_description = \"t\"\n"
     "r.tns_local.tns_session_description.tns_type = <null>\n"
     "r.tns_id = \"i\"\n"},
    {"FailingItemsStayInTheirList", tns_dialog_infoDocument, " version=\"x\" state=\"some\"",
     "<dialog><state/></dialog><dialog id=\"2\"><bogus/></dialog><f:a xmlns:f=\"urn:f\"/><dialog id=\"3\"/>",
     "-101 -45(tns__dialog_info|version) -4(some) -45(tns__dialog_info|state) -103(tns__dialog_info|entity) "
     "-103(tns__dialog|id) -41(bogus) -41(dialog)",
     same,
     "r.tns_dialog[0].tns_state = \"\"\n"
     "r.tns_dialog[0].tns_id = <null>\n"
     "r.tns_dialog[1].tns_state = <null>\n"
     "r.tns_dialog[1].tns_id = \"2\"\n"
     "r[0] = \"<f:a xmlns:f=\\\"urn:f\\\"/>\"\n"
     "r.tns_version = 0\n"
     "r.tns_state = \"full\"\n"
     "r.tns_entity = <null>\n"},
    // ---- Rules ---------------------------------------------------------------------------------------------------
    {"OneForeignElementIsEnough", cp_rulesetDocument, "",
     "<rule id=\"r\"><conditions><identity><one id=\" a  b \"><f:a xmlns:f=\"urn:f\"/><f:b "
     "xmlns:f=\"urn:f\"/></one></identity></conditions></rule>",
     "-41(f:b)", same,
     "r.cp_rule[0].cp_conditions[0].t = 1\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].t = 1\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].u.cp_one.cp__any = \"<f:a xmlns:f=\\\"urn:f\\\"/>\"\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].u.cp_one.cp_id = \"a b\"\n"
     "r.cp_rule[0].cp_id = \"r\"\n"},
    {"ManyWithoutAndWithout", cp_rulesetDocument, "",
     "<rule id=\"r\"><conditions><identity><many domain=\" a  b \"><except id=\" x \" domain=\" y \"/><f:a "
     "xmlns:f=\"urn:f\"/><f:b xmlns:f=\"urn:f\"/><except "
     "foo=\"1\"><z/></except><bogus/></many></identity></conditions></rule>",
     "-33(cp_exceptType|foo) -41(z) -41(bogus)", same,
     "r.cp_rule[0].cp_conditions[0].t = 1\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].t = 2\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].u.cp_many.cp__choice[0].t = 1\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].u.cp_many.cp__choice[0].u.cp_except = <null>\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].u.cp_many.cp__choice[0].u.cp_except.cp_domain = \" y \"\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].u.cp_many.cp__choice[0].u.cp_except.cp_id = \"x\"\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].u.cp_many.cp__choice[1].t = 2\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].u.cp_many.cp__choice[1].u.cp__any = \"<f:a "
     "xmlns:f=\\\"urn:f\\\"/>\"\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].u.cp_many.cp__choice[2].t = 2\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].u.cp_many.cp__choice[2].u.cp__any = \"<f:b "
     "xmlns:f=\\\"urn:f\\\"/>\"\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].u.cp_many.cp__choice[3].t = 1\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].u.cp_many.cp__choice[3].u.cp_except = <null>\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].u.cp_many.cp_domain = \" a  b \"\n"
     "r.cp_rule[0].cp_id = \"r\"\n"},
    {"ForeignElementAsAnIdentity", cp_rulesetDocument, "",
     "<rule id=\"r\"><conditions><identity><f:a xmlns:f=\"urn:f\"/><f:b "
     "xmlns:f=\"urn:f\">t</f:b><two/></identity></conditions></rule>",
     "-41(two)", same,
     "r.cp_rule[0].cp_conditions[0].t = 1\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].t = 3\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[0].u.cp__any = \"<f:a xmlns:f=\\\"urn:f\\\"/>\"\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[1].t = 3\n"
     "r.cp_rule[0].cp_conditions[0].u.cp_identity[1].u.cp__any = \"<f:b xmlns:f=\\\"urn:f\\\">t</f:b>\"\n"
     "r.cp_rule[0].cp_id = \"r\"\n"},
    {"EmptyIdentity", cp_rulesetDocument, "", "<rule id=\"r\"><conditions><identity/></conditions></rule>",
     "-16(.count|int 0)", "",
     "r.cp_rule[0].cp_conditions[0].t = 1\n"
     "r.cp_rule[0].cp_id = \"r\"\n"},
    {"RunsOfForeignElements", frame::conditionsDocument, "",
     "<identity><one id=\"o\"/></identity><f:a xmlns:f=\"urn:f\"/><f:b xmlns:f=\"urn:f\"/><sphere value=\" v \"/><f:c "
     "xmlns:f=\"urn:f\"/>",
     "", same,
     "r[0].t = 1\n"
     "r[0].u.cp_identity[0].t = 1\n"
     "r[0].u.cp_identity[0].u.cp_one.cp_id = \"o\"\n"
     "r[1].t = 4\n"
     "r[1].u.cp__any[0] = \"<f:a xmlns:f=\\\"urn:f\\\"/>\"\n"
     "r[1].u.cp__any[1] = \"<f:b xmlns:f=\\\"urn:f\\\"/>\"\n"
     "r[2].t = 2\n"
     "r[2].u.cp_sphere = <null>\n"
     "r[2].u.cp_sphere.cp_value = \" v \"\n"
     "r[3].t = 4\n"
     "r[3].u.cp__any[0] = \"<f:c xmlns:f=\\\"urn:f\\\"/>\"\n"},
    {"RunsAreNotBrokenByWhatIsRefused", frame::conditionsDocument, "",
     "<f:a xmlns:f=\"urn:f\"/>text<bogus/><f:b xmlns:f=\"urn:f\"/>", "-41(bogus)", same,
     "r[0].t = 4\n"
     "r[0].u.cp__any[0] = \"<f:a xmlns:f=\\\"urn:f\\\"/>\"\n"
     "r[0].u.cp__any[1] = \"<f:b xmlns:f=\\\"urn:f\\\"/>\"\n"},
    {"ValidityThatIsNoDate", frame::conditionsDocument, "",
     "<validity><from>yesterday</from><until>2024-01-01T00:00:00Z</until></validity>", "",
     "-44(yesterday|cp_validityType|from)",
     "r[0].t = 3\n"
     "r[0].u.cp_validity.cp_from = \"yesterday\"\n"
     "r[0].u.cp_validity.cp_until = \"2024-01-01T00:00:00Z\"\n"},
    {"ValidityWithoutItsEnd", frame::conditionsDocument, "", "<validity><from>2024-01-01T00:00:00Z</from></validity>",
     "", same,
     "r[0].t = 3\n"
     "r[0].u.cp_validity.cp_from = \"2024-01-01T00:00:00Z\"\n"
     "r[0].u.cp_validity.cp_until = <null>\n"},
    {"ValidityFromItsEnd", frame::conditionsDocument, "",
     "<validity><until>2024-01-01T00:00:00Z</until><from>2024-01-01T00:00:00Z</from></validity>", "-41(until)", same,
     "r[0].t = 3\n"
     "r[0].u.cp_validity.cp_from = \"2024-01-01T00:00:00Z\"\n"
     "r[0].u.cp_validity.cp_until = <null>\n"},
    {"RuleOutOfOrder", cp_rulesetDocument, "", "<rule><actions/><conditions/></rule>",
     "-103(cp_ruleType|id) -41(conditions)", same, "r.cp_rule[0].cp_id = <null>\n"},
    {"ActionsTakeEverything", cp_rulesetDocument, "",
     "<rule id=\"r\"><actions><rule a=\"1\"/><f:a xmlns:f=\"urn:f\" b=\"2\"><g/></f:a></actions></rule>", "", same,
     "r.cp_rule[0].cp_actions[0] = \"<rule xmlns=\\\"urn:ietf:params:xml:ns:common-policy\\\" a=\\\"1\\\"/>\"\n"
     "r.cp_rule[0].cp_actions[1] = \"<f:a xmlns=\\\"urn:ietf:params:xml:ns:common-policy\\\" xmlns:f=\\\"urn:f\\\" "
     "b=\\\"2\\\"><g/></f:a>\"\n"
     "r.cp_rule[0].cp_id = \"r\"\n"},
    {"RulesByLocalNameAlone", cp_rulesetDocument, "",
     "<q:rule xmlns:q=\"urn:q\" id=\"r\"/><q:rulex xmlns:q=\"urn:q\"/>", "-3(cp_rule|q:rulex)", same,
     "r.cp_rule[0].cp_id = \"r\"\n"},
    // ---- Filters -------------------------------------------------------------------------------------------------
    {"IncludeOfAnUnknownType", filter_setDocument, "",
     "<filter id=\"f\"><what><include type=\"regex\">v</include><include type=\"namespace\" xmlns:q=\"urn:q\" "
     "foo=\"1\">w</include><exclude/></what></filter>",
     "-4(regex)", same,
     "r.filter[0].what.include[0] = \"v\"\n"
     "r.filter[0].what.include[0].type = \"xpath\"\n"
     "r.filter[0].what.include[1] = \"w\"\n"
     "r.filter[0].what.include[1].xmlns:q = \"urn:q\"\n"
     "r.filter[0].what.include[1].type = \"namespace\"\n"
     "r.filter[0].what.include[1]._anyAttr[0] = foo=\"1\"\n"
     "r.filter[0].what.exclude[0] = \"\"\n"
     "r.filter[0].what.exclude[0].type = \"xpath\"\n"
     "r.filter[0].id = \"f\"\n"
     "r.filter[0].remove_ = false\n"
     "r.filter[0].enabled = true\n"},
    {"ForeignAttributesAreKept", filter_setDocument, XSI " package=\"p\" foo=\"1\" xsi:type=\"t\" q:bar=\"2\"",
     "<filter id=\"f\" own=\"3\"/>", "", same,
     "r.filter[0].id = \"f\"\n"
     "r.filter[0].remove_ = false\n"
     "r.filter[0].enabled = true\n"
     "r.filter[0]._anyAttr[0] = own=\"3\"\n"
     "r.package_ = \"p\"\n"
     "r._anyAttr[0] = foo=\"1\"\n"
     "r._anyAttr[1] = q:bar=\"2\"\n"},
    {"BindingsTakeNoForeignAttributes", filter_setDocument, "",
     "<ns-bindings><ns-binding prefix=\" p \" urn=\" urn:x \" foo=\"1\"><x/></ns-binding><other/><ns-binding "
     "prefix=\"q\"/></ns-bindings>",
     "-33(NSBinding|foo) -41(x) -3(ns_binding|other) -103(NSBinding|urn)", same,
     "r.ns_bindings.ns_binding[0] = <null>\n"
     "r.ns_bindings.ns_binding[0].prefix = \" p \"\n"
     "r.ns_bindings.ns_binding[0].urn = \"urn:x\"\n"
     "r.ns_bindings.ns_binding[1] = <null>\n"
     "r.ns_bindings.ns_binding[1].prefix = \"q\"\n"
     "r.ns_bindings.ns_binding[1].urn = <null>\n"},
    {"EmptyBindings", filter_setDocument, "", "<ns-bindings/><filter id=\"f\"/>", "-16(NSBindings.count|int 0)", "",
     "r.filter[0].id = \"f\"\n"
     "r.filter[0].remove_ = false\n"
     "r.filter[0].enabled = true\n"},
    {"FilterIgnoresWhatItCannotRead", filter_setDocument, "", "<filter uri=\"  a  b \" remove=\"maybe\" enabled=\"\"/>",
     "-103(FilterType|id)", same,
     "r.filter[0].id = <null>\n"
     "r.filter[0].uri = \"a b\"\n"
     "r.filter[0].remove_ = false\n"
     "r.filter[0].enabled = true\n"},
    {"FilterReadsItsFlags", filter_setDocument, "",
     "<filter id=\"f\" remove=\" 1 \" enabled=\"false\" domain=\" d \"/>", "", same,
     "r.filter[0].id = \"f\"\n"
     "r.filter[0].domain = \" d \"\n"
     "r.filter[0].remove_ = true\n"
     "r.filter[0].enabled = false\n"},
    {"ChangedByNothing", filter_setDocument, "",
     "<filter id=\"f\"><trigger><changed from=\"a\" by=\"x\" foo=\"1\" xmlns:q=\"urn:q\">v</changed><changed "
     "by=\"-2.50\"/><added>1</added><removed>2</removed><added>3</added></trigger></filter>",
     "-41(added)", same,
     "r.filter[0].trigger[0].changed[0] = \"v\"\n"
     "r.filter[0].trigger[0].changed[0].xmlns:q = \"urn:q\"\n"
     "r.filter[0].trigger[0].changed[0].from = \"a\"\n"
     "r.filter[0].trigger[0].changed[0].by = 0\n"
     "r.filter[0].trigger[0].changed[0]._anyAttr[0] = foo=\"1\"\n"
     "r.filter[0].trigger[0].changed[1] = \"\"\n"
     "r.filter[0].trigger[0].changed[1].by = -2.5\n"
     "r.filter[0].trigger[0].added[0] = \"1\"\n"
     "r.filter[0].trigger[0].removed[0] = \"2\"\n"
     "r.filter[0].id = \"f\"\n"
     "r.filter[0].remove_ = false\n"
     "r.filter[0].enabled = true\n"},
    {"WhatOutOfOrder", filter_setDocument, "",
     "<filter id=\"f\"><what><exclude>a</exclude><include>b</include></what></filter>", "-41(include)", same,
     "r.filter[0].what.exclude[0] = \"a\"\n"
     "r.filter[0].what.exclude[0].type = \"xpath\"\n"
     "r.filter[0].id = \"f\"\n"
     "r.filter[0].remove_ = false\n"
     "r.filter[0].enabled = true\n"},
    {"TextsTakeNoChildren", filter_setDocument, "", "<filter id=\"f\"><what><include>a<b/>c</include></what></filter>",
     "-41(b)", same,
     "r.filter[0].what.include[0] = \"ac\"\n"
     "r.filter[0].what.include[0].type = \"xpath\"\n"
     "r.filter[0].id = \"f\"\n"
     "r.filter[0].remove_ = false\n"
     "r.filter[0].enabled = true\n"},
    // ---- Settings ------------------------------------------------------------------------------------------------
    {"EntityKeepsForeignAttributes", poc_settingsDocument, " foo=\"0\"",
     "<entity id=\"e\" foo=\"1\" xmlns:q=\"urn:q\"><isb-settings foo=\"2\"><incoming-session-barring "
     "active=\"true\"/></isb-settings></entity>",
     "", same,
     "r.entity[0].isb_settings.incoming_session_barring = <null>\n"
     "r.entity[0].isb_settings.incoming_session_barring.active = true\n"
     "r.entity[0].isb_settings._anyAttr[0] = foo=\"2\"\n"
     "r.entity[0].id = \"e\"\n"
     "r.entity[0]._anyAttr[0] = foo=\"1\"\n"
     "r._anyAttr[0] = foo=\"0\"\n"},
    {"EntityWithoutId", poc_settingsDocument, "", "<entity/>", "-103(entityType|id)", same,
     "r.entity[0].id = <null>\n"},
    {"SettingsOutOfOrder", poc_settingsDocument, "",
     "<entity id=\"e\"><am-settings><answer-mode>manual</answer-mode></am-settings><isb-settings/></entity>",
     "-41(isb-settings)", same,
     "r.entity[0].am_settings.answer_mode = \"manual\"\n"
     "r.entity[0].id = \"e\"\n"},
    {"AnswerModeThatIsNone", poc_settingsDocument, "",
     "<entity id=\"e\"><am-settings><answer-mode a=\"1\"/></am-settings></entity>",
     "-33(answer-mode|a) -4() -44(|amSettingType|answer-mode)", same,
     "r.entity[0].am_settings.answer_mode = \"automatic\"\n"
     "r.entity[0].id = \"e\"\n"},
    {"BarringWithWhatItMayNotHave", poc_settingsDocument, "",
     "<entity id=\"e\"><isb-settings><incoming-session-barring active=\"maybe\" "
     "foo=\"1\">text<x/></incoming-session-barring></isb-settings></entity>",
     "-101 -45(isbSettingType_incoming_session_barring|active) -33(isbSettingType_incoming_session_barring|foo) -41(x)",
     same,
     "r.entity[0].isb_settings.incoming_session_barring = <null>\n"
     "r.entity[0].isb_settings.incoming_session_barring.active = false\n"
     "r.entity[0].id = \"e\"\n"},
    {"BarringWithoutActive", poc_settingsDocument, "",
     "<entity id=\"e\"><isb-settings><incoming-session-barring/></isb-settings></entity>",
     "-103(isbSettingType_incoming_session_barring|active)", same,
     "r.entity[0].isb_settings.incoming_session_barring = <null>\n"
     "r.entity[0].isb_settings.incoming_session_barring.active = false\n"
     "r.entity[0].id = \"e\"\n"},
    {"ForeignElementWithAttributes", poc_settingsDocument, "", "<f:a xmlns:f=\"urn:f\" b=\"1\"/>", "", "-33(|b)",
     "r[0] = \"<f:a xmlns:f=\\\"urn:f\\\" b=\\\"1\\\"/>\"\n"},
    {"ForeignElementBeforeTheSetting", poc_settingsDocument, "",
     "<entity id=\"e\"><am-settings><f:a xmlns:f=\"urn:f\"/></am-settings></entity>", "-41(f:a)", same,
     "r.entity[0].am_settings.answer_mode = \"automatic\"\n"
     "r.entity[0].id = \"e\"\n"},
    // ---- Without a namespace -------------------------------------------------------------------------------------
    {"ServiceInformation", ims_3gppDocument, " version=\"1.50\" foo=\"1\"",
     "<service-info>i</service-info><f:a xmlns:f=\"urn:f\"/><b/>", "", same,
     "r._choice1.t = 2\n"
     "r._choice1.u.service_info = \"i\"\n"
     "r[0] = \"<f:a xmlns:f=\\\"urn:f\\\"/>\"\n"
     "r[1] = \"<b/>\"\n"
     "r.version = 1.5\n"
     "r._anyAttr[0] = foo=\"1\"\n"},
    {"AlternativeService", ims_3gppDocument, " version=\"1\"",
     "<alternative-service foo=\"1\"><type>t</type><reason>r</reason><x/></alternative-service>", "", same,
     "r._choice1.t = 1\n"
     "r._choice1.u.alternative_service.type = \"t\"\n"
     "r._choice1.u.alternative_service.reason = \"r\"\n"
     "r._choice1.u.alternative_service[0] = \"<x/>\"\n"
     "r._choice1.u.alternative_service._anyAttr[0] = foo=\"1\"\n"
     "r.version = 1\n"},
    {"VersionThatIsNone", ims_3gppDocument, " version=\"abc\"", "<service-info/>", "", same,
     "r._choice1.t = 2\n"
     "r._choice1.u.service_info = \"\"\n"
     "r.version = 0\n"},
    {"VersionMissing", ims_3gppDocument, "", "<service-info/>", "-103(tIMS3GPP|version)", same,
     "r._choice1.t = 2\n"
     "r._choice1.u.service_info = \"\"\n"
     "r.version = 0\n"},
    {"ForeignElementBeforeTheChoice", ims_3gppDocument, " version=\"1\"", "<x/><service-info>i</service-info>",
     "-41(x)", same,
     "r._choice1.t = 2\n"
     "r._choice1.u.service_info = \"i\"\n"
     "r.version = 1\n"},
    {"OneChoiceOnly", ims_3gppDocument, " version=\"1\"",
     "<alternative-service><reason>r</reason><type>t</type></alternative-service><service-info>i</service-info>",
     "-41(reason) -41(service-info)", same,
     "r._choice1.t = 1\n"
     "r._choice1.u.alternative_service.type = \"t\"\n"
     "r._choice1.u.alternative_service.reason = <null>\n"
     "r.version = 1\n"},
    // ---- Debug configuration -------------------------------------------------------------------------------------
    {"AttributesOfBothSpellings", tns_debuginfoDocument,
     " xmlns:d=\"urn:ietf:params:xml:ns:debuginfo\" d:version=\"7\" state=\"partial\"",
     "<debugconfig d:aor=\"a\"><session id=\"s\"><start-trigger/><stop-trigger/><control/></session></debugconfig>", "",
     same,
     "r.tns_debugconfig[0].tns_session[0].tns_control.tns_interface = <null>\n"
     "r.tns_debugconfig[0].tns_session[0].tns_id = \"s\"\n"
     "r.tns_debugconfig[0].tns_aor = \"a\"\n"
     "r.tns_version = 7\n"
     "r.tns_state = \"partial\"\n"},
    {"AttributeTwiceInTwoSpellings", tns_debuginfoDocument,
     " xmlns:d=\"urn:ietf:params:xml:ns:debuginfo\" version=\"7\" d:version=\"8\" d:state=\"full\" e:state=\"full\"",
     "", "-33(tns__debuginfo|d:version) -33(tns__debuginfo|e:state)", same,
     "r.tns_version = 7\n"
     "r.tns_state = \"full\"\n"},
    {"AttributesThatDoNotConvert", tns_debuginfoDocument, " version=\"x\" state=\"y\" z=\"1\"", "",
     "-101 -45(tns__debuginfo|version) -4(y) -45(tns__debuginfo|state) -33(tns__debuginfo|z)", same,
     "r.tns_version = 0\n"
     "r.tns_state = \"full\"\n"},
    {"SessionWithoutControl", tns_sessionDocument, "",
     "<start-trigger/><stop-trigger><reason>session-end</reason></stop-trigger>",
     "-103(tns__session|id) -4(session-end) -44(session-end|tns__stop_trigger|reason)", same,
     "r.tns_control.tns_interface = <null>\n"
     "r.tns_id = <null>\n"},
    {"ControlOutOfOrder", tns_controlDocument, "",
     "<depth>maximum</depth><interface>i</interface><debug-id>0aFF</debug-id><depth>minimum</depth>",
     "-41(depth) -41(depth)", same,
     "r.tns_interface = \"i\"\n"
     "r.tns_debug_id = 0AFF\n"},
    {"TimesAreCollapsed", tns_start_triggerDocument, "", "<from> a  b </from><time> a  b </time><debug-id/>", "", same,
     "r.tns_from = \" a  b \"\n"
     "r.tns_time = \"a b\"\n"
     "r.tns_debug_id = \n"},
    {"HexWithAnOddDigit", tns_start_triggerDocument, "", "<debug-id>0AF</debug-id>",
     "-44(0AF|tns__start_trigger|debug-id)", same, ""},
    {"HexWithABadDigit", tns_start_triggerDocument, "", "<debug-id>0AxF</debug-id><from>f</from>", "-101 -41(from)",
     same, ""},
    {"HexWithAnElementInside", tns_start_triggerDocument, "", "<debug-id>0A<b>zz</b>0B</debug-id>", "-101", same, ""},
    {"HexWithDigitsInAnElementInside", tns_start_triggerDocument, "", "<debug-id>0<b>A0</b>B</debug-id>", "", same,
     "r.tns_debug_id = 0A0B\n"},
    {"HexWithWhiteSpaceAround", tns_start_triggerDocument, "", "<debug-id> 0A0B\n</debug-id>", "", same,
     "r.tns_debug_id = 0A0B\n"},
    {"NothingAfterTheLast", tns_start_triggerDocument, "", "<debug-id>00</debug-id><from>f</from>", "-41(from)", same,
     "r.tns_debug_id = 00\n"},
    {"ForeignElementBesideConfigurations", tns_debuginfoDocument, " version=\"1\" state=\"full\"",
     "<f:a xmlns:f=\"urn:f\" b=\"1\">t</f:a>", "", "-33(|b)",
     "r[0] = \"<f:a xmlns:f=\\\"urn:f\\\" b=\\\"1\\\">t</f:a>\"\n"
     "r.tns_version = 1\n"
     "r.tns_state = \"full\"\n"},
};

std::string textOf(const Case &tested) {
  const char *uri = tested.document.module->uri;
  std::string ns = *uri ? " xmlns=\"" + std::string(uri) + "\"" : std::string();
  std::string root = tested.document.root;
  return "<" + root + ns + tested.attributes + ">" + tested.content + "</" + root + ">";
}

// The status that goes with a list of errors: the first one's.
int statusOf(const std::string &errors) { return errors.empty() ? 0 : std::stoi(errors); }

class Reading : public testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(Frame, Reading, testing::ValuesIn(cases),
                         [](const auto &tested) { return std::string(tested.param.name); });

TEST_P(Reading, DecodesWhatIsRightAndNamesWhatIsWrong) {
  const Case &expected = GetParam();
  Context ctx;
  support::HeapBalance balance(ctx);
  Record record(ctx, *expected.document.type);
  support::setInput(ctx, textOf(expected));
  EXPECT_EQ(ims::decodeDocument(ctx, expected.document, record.data()), statusOf(expected.decoding));
  EXPECT_EQ(frame::briefErrors(ctx), expected.decoding);
  EXPECT_EQ(frame::printed(*expected.document.type, record.data()), expected.record);
}

TEST_P(Reading, ValidatesWithoutARecord) {
  const Case &expected = GetParam();
  const char *errors = expected.validating ? expected.validating : expected.decoding;
  Context ctx;
  support::HeapBalance balance(ctx);
  support::setInput(ctx, textOf(expected));
  EXPECT_EQ(ims::validateDocument(ctx, expected.document), statusOf(errors));
  EXPECT_EQ(frame::briefErrors(ctx), errors);
}

// Every error of a document may be the one at which the recording stops.
TEST_P(Reading, RecordsNoMoreThanTheLimit) {
  const Case &expected = GetParam();
  for (uint32_t limit : {1u, 0u}) {
    Context ctx([limit](RuntimeOptions &options) { options.errorLimit = limit; });
    Record record(ctx, *expected.document.type);
    support::setInput(ctx, textOf(expected));
    ims::decodeDocument(ctx, expected.document, record.data());
    EXPECT_EQ(frame::printed(*expected.document.type, record.data()), expected.record) << "limit " << limit;
    support::setInput(ctx, textOf(expected));
    ims::validateDocument(ctx, expected.document);
  }
}

// ---- When an item enters its list -----------------------------------------------------------------------------

struct CutOff {
  const char *name;
  const ims::DocumentSchema &document;
  const char *text;
  const char *record;
};

const CutOff cutOffs[] = {
    {"DialogAtItsStart", tns_dialog_infoDocument,
     "<dialog-info version='1' state='full' entity='e'><dialog id='1'/><dialog id='2'>",
     "r.tns_dialog[0].tns_state = <null>\n"
     "r.tns_dialog[0].tns_id = \"1\"\n"
     "r.tns_dialog[1].tns_state = <null>\n"
     "r.tns_dialog[1].tns_id = \"2\"\n"
     "r.tns_version = 1\n"
     "r.tns_state = \"full\"\n"
     "r.tns_entity = \"e\"\n"},
    {"RuleAtItsEnd", cp_rulesetDocument, "<ruleset><rule id='1'/><rule id='2'><conditions><identity><one id='o'>",
     "r.cp_rule[0].cp_id = \"1\"\n"},
    {"ActionAtItsEnd", cp_rulesetDocument,
     "<ruleset><rule id='1'><actions><f:a xmlns:f='urn:f'/></actions></rule><rule><actions><b>",
     "r.cp_rule[0].cp_actions[0] = \"<f:a xmlns:f=\\\"urn:f\\\"/>\"\n"
     "r.cp_rule[0].cp_id = \"1\"\n"},
    {"BindingAtItsEnd", filter_setDocument,
     "<filter-set><ns-bindings><ns-binding prefix='p' urn='u'/><ns-binding prefix='q' urn='v'>",
     "r.ns_bindings.ns_binding[0] = <null>\n"
     "r.ns_bindings.ns_binding[0].prefix = \"p\"\n"
     "r.ns_bindings.ns_binding[0].urn = \"u\"\n"},
    {"TextAtItsEnd", tns_dialogDocument, "<dialog id='d'><state/><route-set><hop>a</hop><hop>b",
     "r.tns_state = \"\"\n"
     "r.tns_route_set.tns_hop[0] = \"a\"\n"
     "r.tns_id = \"d\"\n"},
    {"ConditionAtItsStart", frame::conditionsDocument, "<conditions><sphere value='v'>",
     "r[0].t = 2\n"
     "r[0].u.cp_sphere = <null>\n"
     "r[0].u.cp_sphere.cp_value = \"v\"\n"},
};

class EntersItsList : public testing::TestWithParam<CutOff> {};

INSTANTIATE_TEST_SUITE_P(Frame, EntersItsList, testing::ValuesIn(cutOffs),
                         [](const auto &tested) { return std::string(tested.param.name); });

TEST_P(EntersItsList, AsADocumentCutOffShows) {
  const CutOff &expected = GetParam();
  Context ctx;
  support::HeapBalance balance(ctx);
  Record record(ctx, *expected.document.type);
  support::setInput(ctx, expected.text);
  EXPECT_EQ(ims::decodeDocument(ctx, expected.document, record.data()), STATUS_PARSE_FAILED);
  EXPECT_EQ(frame::printed(*expected.document.type, record.data()), expected.record);
}

} // namespace
