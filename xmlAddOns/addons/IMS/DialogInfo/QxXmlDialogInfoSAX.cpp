// The decoding handlers of dialog state.
#include "Functions.h"
#include "QxXmlDialogInfoTables.h"

QX_SAX_HANDLER(tns__state)
QX_SAX_HANDLER(tns__dialog_replaces)
QX_SAX_HANDLER(tns_nameaddr)
QX_SAX_HANDLER(tns__dialog_route_set)
QX_SAX_HANDLER(tns_participant_target_param)
QX_SAX_HANDLER(tns_participant_target)
QX_SAX_HANDLER(tns_sessd)
QX_SAX_HANDLER(tns_participant)
QX_SAX_HANDLER(tns__dialog)
QX_SAX_HANDLER(tns__dialog_info)
