// The validating handlers and the document validators of dialog state.
#include "Functions.h"
#include "QxXmlDialogInfoTables.h"

QX_VSAX_HANDLER(tns__state)
QX_VSAX_HANDLER(tns__dialog_replaces)
QX_VSAX_HANDLER(tns_nameaddr)
QX_VSAX_HANDLER(tns__dialog_route_set)
QX_VSAX_HANDLER(tns_participant_target_param)
QX_VSAX_HANDLER(tns_participant_target)
QX_VSAX_HANDLER(tns_sessd)
QX_VSAX_HANDLER(tns_participant)
QX_VSAX_HANDLER(tns__dialog)
QX_VSAX_HANDLER(tns__dialog_info)

QX_VALIDATE_DOCUMENT(tns_dialog_info)
QX_VALIDATE_DOCUMENT(tns_dialog)
QX_VALIDATE_DOCUMENT(tns_state)
