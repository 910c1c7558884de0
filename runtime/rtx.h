/* The whole runtime. */
#ifndef RTX_H
#define RTX_H

#include "rtSax.h"
#include "rtXmlDecode.h"
#include "rtXmlEncode.h"
#include "rtXmlNamespace.h"
#include "rtxContext.h"
#include "rtxError.h"
#include "rtxMemory.h"
#include "rtxPrint.h"
#include "rtxRecord.h"
#include "rtxStatus.h"
#include "rtxText.h"
#include "rtxTypes.h"

#endif
