// The encoders of dialog state.
#include "Functions.h"
#include "QxXmlDialogInfoTables.h"

QX_ENCODE_TYPE(tns__state)
QX_ENCODE_TYPE(tns__dialog_replaces)
QX_ENCODE_TYPE(tns_nameaddr)
QX_ENCODE_TYPE(tns__dialog_route_set)
QX_ENCODE_TYPE(tns_participant_target_param)
QX_ENCODE_TYPE(tns_participant_target)
QX_ENCODE_TYPE(tns_sessd)
QX_ENCODE_TYPE(tns_participant)
QX_ENCODE_TYPE(tns__dialog)
QX_ENCODE_TYPE(tns__dialog_info)

QX_ENCODE_ATTRIBUTES(tns__state)
QX_ENCODE_ATTRIBUTES(tns__dialog_replaces)
QX_ENCODE_ATTRIBUTES(tns_nameaddr)
QX_ENCODE_ATTRIBUTES(tns_participant_target_param)
QX_ENCODE_ATTRIBUTES(tns_participant_target)
QX_ENCODE_ATTRIBUTES(tns_sessd)
QX_ENCODE_ATTRIBUTES(tns__dialog)
QX_ENCODE_ATTRIBUTES(tns__dialog_info)

QX_ENCODE_ENUM(tns__dialog_info_state)
QX_ENCODE_ENUM(tns__state_event)
QX_ENCODE_ENUM(tns__dialog_direction)

QX_ENCODE_DOCUMENT(tns_dialog_info, tns__dialog_info)
QX_ENCODE_DOCUMENT(tns_dialog, tns__dialog)
QX_ENCODE_DOCUMENT(tns_state, tns__state)
