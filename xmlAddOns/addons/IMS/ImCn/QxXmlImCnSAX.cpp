// The decoding handlers of the 3GPP IMS body.
#include "Functions.h"
#include "QxXmlImCnTables.h"

QX_SAX_HANDLER(tAlternativeService)
QX_SAX_HANDLER(tIMS3GPP)
