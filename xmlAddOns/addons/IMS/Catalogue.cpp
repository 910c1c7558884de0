#include "Catalogue.h"

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
};

} // namespace

DocumentRange allDocuments() { return {documents, documents + sizeof(documents) / sizeof(documents[0])}; }

} // namespace ims
