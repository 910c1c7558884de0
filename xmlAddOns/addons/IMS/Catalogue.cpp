#include "Catalogue.h"

#include "DialogInfo/QxXmlDialogInfoTables.h"
#include "FilterSet/QxXmlFilterSetTables.h"
#include "IsComposing/QxXmlIsComposingTables.h"
#include "RuleSet/QxXmlRuleSetTables.h"

namespace ims {

namespace {

constexpr const DocumentSchema *documents[] = {
    &tns_isComposingDocument, &tns_dialog_infoDocument, &tns_dialogDocument,
    &tns_stateDocument,       &cp_rulesetDocument,      &filter_setDocument,
};

} // namespace

DocumentRange allDocuments() { return {documents, documents + sizeof(documents) / sizeof(documents[0])}; }

} // namespace ims
