// The encoders of the composing indication.
#include "Functions.h"
#include "QxXmlIsComposingTables.h"

QX_ENCODE_TYPE(tns__isComposing)

QX_ENCODE_DOCUMENT(tns_isComposing, tns__isComposing)
