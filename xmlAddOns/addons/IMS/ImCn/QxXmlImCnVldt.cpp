// The validating handlers and the document validators of the 3GPP IMS body.
#include "Functions.h"
#include "QxXmlImCnTables.h"

QX_VSAX_HANDLER(tAlternativeService)
QX_VSAX_HANDLER(tIMS3GPP)

QX_VALIDATE_DOCUMENT(ims_3gpp)
QX_VALIDATE_DOCUMENT(type)
QX_VALIDATE_DOCUMENT(action)
