// The document decoders of the 3GPP IMS body.
#include "Functions.h"
#include "QxXmlImCnTables.h"

QX_DECODE_DOCUMENT(ims_3gpp, tIMS3GPP)
QX_DECODE_DOCUMENT(type, RtxXmlString)
QX_DECODE_DOCUMENT(action, RtxXmlString)
