// The document decoders of notification filters.
#include "Functions.h"
#include "QxXmlFilterSetTables.h"

QX_DECODE_DOCUMENT(filter_set, FilterSetType)
