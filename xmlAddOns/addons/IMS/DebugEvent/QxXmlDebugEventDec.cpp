// The document decoders of debug information.
#include "Functions.h"
#include "QxXmlDebugEventTables.h"

QX_DECODE_DOCUMENT(tns_time, RtxXmlString)
QX_DECODE_DOCUMENT(tns_from, RtxXmlString)
QX_DECODE_DOCUMENT(tns_to, RtxXmlString)
QX_DECODE_DOCUMENT(tns_method, RtxXmlString)
QX_DECODE_DOCUMENT(tns_icsi, RtxXmlString)
QX_DECODE_DOCUMENT(tns_iari, RtxXmlString)
QX_DECODE_DOCUMENT(tns_debug_id, RtxHexBinary)
QX_DECODE_DOCUMENT(tns_time_period, RtxXmlString)
QX_DECODE_DOCUMENT(tns_reason, uint16_t)
QX_DECODE_DOCUMENT(tns_interface, RtxXmlString)
QX_DECODE_DOCUMENT(tns_depth, uint16_t)
QX_DECODE_DOCUMENT(tns_start_trigger, tns__start_trigger)
QX_DECODE_DOCUMENT(tns_stop_trigger, tns__stop_trigger)
QX_DECODE_DOCUMENT(tns_control, tns__control)
QX_DECODE_DOCUMENT(tns_session, tns__session)
QX_DECODE_DOCUMENT(tns_debugconfig, tns__debugconfig)
QX_DECODE_DOCUMENT(tns_debuginfo, tns__debuginfo)
