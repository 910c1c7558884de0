// The validating handlers and the document validator of the composing indication.
#include "Functions.h"
#include "QxXmlIsComposingTables.h"

QX_VSAX_HANDLER(tns__isComposing)

QX_VALIDATE_DOCUMENT(tns_isComposing)
