// no element or attribute has a value of this kind
#define SAMPLE_ROWS CONTENT(Sample, t_age),
#include "base.h"
