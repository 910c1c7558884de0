// The document decoders of dialog state.
#include "Functions.h"
#include "QxXmlDialogInfoTables.h"

QX_DECODE_DOCUMENT(tns_dialog_info, tns__dialog_info)
QX_DECODE_DOCUMENT(tns_dialog, tns__dialog)
QX_DECODE_DOCUMENT(tns_state, tns__state)
