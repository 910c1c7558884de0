// elements or content come first, then attributes, then what is carried
#define ATTRIBUTES "age"
#define SAMPLE_ROWS ELEMENT(Sample, t_name), ATTRIBUTE(Sample, t_age), ELEMENT(Sample, t_nick),
#include "base.h"
