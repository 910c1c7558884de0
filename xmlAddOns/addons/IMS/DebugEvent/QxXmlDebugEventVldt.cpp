// The validating handlers and the document validators of debug information.
#include "Functions.h"
#include "QxXmlDebugEventTables.h"

QX_VSAX_HANDLER(tns__start_trigger)
QX_VSAX_HANDLER(tns__stop_trigger)
QX_VSAX_HANDLER(tns__control)
QX_VSAX_HANDLER(tns__session)
QX_VSAX_HANDLER(tns__debugconfig)
QX_VSAX_HANDLER(tns__debuginfo)

QX_VALIDATE_DOCUMENT(tns_time)
QX_VALIDATE_DOCUMENT(tns_from)
QX_VALIDATE_DOCUMENT(tns_to)
QX_VALIDATE_DOCUMENT(tns_method)
QX_VALIDATE_DOCUMENT(tns_icsi)
QX_VALIDATE_DOCUMENT(tns_iari)
QX_VALIDATE_DOCUMENT(tns_debug_id)
QX_VALIDATE_DOCUMENT(tns_time_period)
QX_VALIDATE_DOCUMENT(tns_reason)
QX_VALIDATE_DOCUMENT(tns_interface)
QX_VALIDATE_DOCUMENT(tns_depth)
QX_VALIDATE_DOCUMENT(tns_start_trigger)
QX_VALIDATE_DOCUMENT(tns_stop_trigger)
QX_VALIDATE_DOCUMENT(tns_control)
QX_VALIDATE_DOCUMENT(tns_session)
QX_VALIDATE_DOCUMENT(tns_debugconfig)
QX_VALIDATE_DOCUMENT(tns_debuginfo)
