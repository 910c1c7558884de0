// The document decoder of the composing indication.
#include "Functions.h"
#include "QxXmlIsComposingTables.h"

QX_DECODE_DOCUMENT(tns_isComposing, tns__isComposing)
