#include "Catalogue.h"

#include "DebugEvent/QxXmlDebugEventTables.h"
#include "DialogInfo/QxXmlDialogInfoTables.h"
#include "FilterSet/QxXmlFilterSetTables.h"
#include "ImCn/QxXmlImCnTables.h"
#include "IsComposing/QxXmlIsComposingTables.h"
#include "PocSettings/QxXmlPocSettingsTables.h"
#include "RuleSet/QxXmlRuleSetTables.h"

namespace ims {

namespace {

constexpr const DocumentSchema *documents[] = {
    &tns_isComposingDocument, // composing indications
    &tns_dialog_infoDocument, // dialog state
    &tns_dialogDocument,
    &tns_stateDocument,
    &cp_rulesetDocument,   // rule sets
    &filter_setDocument,   // notification filters
    &poc_settingsDocument, // push-to-talk settings
    &ims_3gppDocument,     // the 3GPP IMS body
    &typeDocument,
    &actionDocument,
    &tns_debuginfoDocument, // debug information
    &tns_debugconfigDocument,
    &tns_sessionDocument,
    &tns_start_triggerDocument,
    &tns_stop_triggerDocument,
    &tns_controlDocument,
    &tns_timeDocument,
    &tns_fromDocument,
    &tns_toDocument,
    &tns_methodDocument,
    &tns_icsiDocument,
    &tns_iariDocument,
    &tns_debug_idDocument,
    &tns_time_periodDocument,
    &tns_reasonDocument,
    &tns_interfaceDocument,
    &tns_depthDocument,
};

} // namespace

DocumentRange allDocuments() { return {documents, documents + sizeof(documents) / sizeof(documents[0])}; }

} // namespace ims
