// only a 16-bit number can be a code
struct RtxEnumRow;
namespace ims {
struct EnumSchema;
}
extern const ims::EnumSchema someCodes;
#define AGE_BIT .bit = 1, .enumeration = &someCodes
#include "base.h"
