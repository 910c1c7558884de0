// The encoders of debug information.
#include "Functions.h"
#include "QxXmlDebugEventTables.h"

QX_ENCODE_TYPE(tns__start_trigger)
QX_ENCODE_TYPE(tns__stop_trigger)
QX_ENCODE_TYPE(tns__control)
QX_ENCODE_TYPE(tns__session)
QX_ENCODE_TYPE(tns__debugconfig)
QX_ENCODE_TYPE(tns__debuginfo)

QX_ENCODE_ATTRIBUTES(tns__session)
QX_ENCODE_ATTRIBUTES(tns__debugconfig)
QX_ENCODE_ATTRIBUTES(tns__debuginfo)

QX_ENCODE_ENUM(tns__reason)
QX_ENCODE_ENUM(tns__depth)
QX_ENCODE_ENUM_AS(QxXmlDbET, tns__state)

QX_ENCODE_DOCUMENT(tns_time, RtxXmlString)
QX_ENCODE_DOCUMENT(tns_from, RtxXmlString)
QX_ENCODE_DOCUMENT(tns_to, RtxXmlString)
QX_ENCODE_DOCUMENT(tns_method, RtxXmlString)
QX_ENCODE_DOCUMENT(tns_icsi, RtxXmlString)
QX_ENCODE_DOCUMENT(tns_iari, RtxXmlString)
QX_ENCODE_DOCUMENT(tns_debug_id, RtxHexBinary)
QX_ENCODE_DOCUMENT(tns_time_period, RtxXmlString)
QX_ENCODE_CODE_DOCUMENT(tns_reason)
QX_ENCODE_DOCUMENT(tns_interface, RtxXmlString)
QX_ENCODE_CODE_DOCUMENT(tns_depth)
QX_ENCODE_DOCUMENT(tns_start_trigger, tns__start_trigger)
QX_ENCODE_DOCUMENT(tns_stop_trigger, tns__stop_trigger)
QX_ENCODE_DOCUMENT(tns_control, tns__control)
QX_ENCODE_DOCUMENT(tns_session, tns__session)
QX_ENCODE_DOCUMENT(tns_debugconfig, tns__debugconfig)
QX_ENCODE_DOCUMENT(tns_debuginfo, tns__debuginfo)
