// The decoding handlers of debug information.
#include "Functions.h"
#include "QxXmlDebugEventTables.h"

QX_SAX_HANDLER(tns__start_trigger)
QX_SAX_HANDLER(tns__stop_trigger)
QX_SAX_HANDLER(tns__control)
QX_SAX_HANDLER(tns__session)
QX_SAX_HANDLER(tns__debugconfig)
QX_SAX_HANDLER(tns__debuginfo)
