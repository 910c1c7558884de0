// the rows are not in the record's order
#define NAME_ELEMENT "age"
#define SAMPLE_ROWS ELEMENT(Sample, t_age, .bit = 1), ELEMENT(Sample, t_name),
#include "base.h"
