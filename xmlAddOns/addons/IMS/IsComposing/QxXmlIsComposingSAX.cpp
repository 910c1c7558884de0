// The decoding handlers of the composing indication.
#include "Functions.h"
#include "QxXmlIsComposingTables.h"

QX_SAX_HANDLER(tns__isComposing)
