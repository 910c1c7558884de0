// The encoders of the 3GPP IMS body.
#include "Functions.h"
#include "QxXmlImCnTables.h"

QX_ENCODE_TYPE(tAlternativeService)
QX_ENCODE_TYPE(tIMS3GPP_1)
QX_ENCODE_TYPE(tIMS3GPP)

QX_ENCODE_ATTRIBUTES(tAlternativeService)
QX_ENCODE_ATTRIBUTES(tIMS3GPP)

QX_ENCODE_DOCUMENT(ims_3gpp, tIMS3GPP)
QX_ENCODE_DOCUMENT(type, RtxXmlString)
QX_ENCODE_DOCUMENT(action, RtxXmlString)
