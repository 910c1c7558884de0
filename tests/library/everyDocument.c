/* Reads, checks, writes and reads again one document of each kind, through the functions that a host calls. */
#include "DebugEvent/QxXmlDebugEvent.h"
#include "DialogInfo/QxXmlDialogInfo.h"
#include "FilterSet/QxXmlFilterSet.h"
#include "ImCn/QxXmlImCn.h"
#include "IsComposing/QxXmlIsComposing.h"
#include "PocSettings/QxXmlPocSettings.h"
#include "RuleSet/QxXmlRuleSet.h"
#include "bodies.h"
#include "rtx.h"

#include <stdio.h>
#include <string.h>

static int failures = 0;
static int documents = 0;

static void expect(RuntimeContext *ctx, const char *element, const char *step, int status, int expected) {
  if (status == expected) return;
  char line[256] = "";
  rtxErrFormat(ctx, 0, line, sizeof line);
  printf("%s: %s gave %d instead of %d: %s\n", element, step, status, expected, line);
  ++failures;
}

/* Reads again what was written, from a copy, since the output's buffer is the context's. */
static void useOutputAsInput(RuntimeContext *ctx, char *copy, size_t size) {
  size_t length = 0;
  const char *text = rtxGetOutput(ctx, &length);
  if (length >= size) length = size - 1;
  memcpy(copy, text, length);
  copy[length] = '\0';
  rtxSetInputZ(ctx, copy, length);
}

#define BEGIN(element)                                                                                                 \
  RuntimeContext *ctx = rtxContextCreate(NULL);                                                                        \
  char copy[4096];                                                                                                     \
  ++documents;                                                                                                         \
  if (!ctx) {                                                                                                          \
    ++failures;                                                                                                        \
    return;                                                                                                            \
  }                                                                                                                    \
  rtxSetInputZ(ctx, bodyOf_##element, strlen(bodyOf_##element))

#define END rtxContextFree(ctx)

#define RECORD(element, type)                                                                                          \
  static void run_##element(void) {                                                                                    \
    BEGIN(element);                                                                                                    \
    type first, second;                                                                                                \
    expect(ctx, #element, "decoding", QxXmlD_##element(ctx, &first), 0);                                               \
    rtxSetInputZ(ctx, bodyOf_##element, strlen(bodyOf_##element));                                                     \
    expect(ctx, #element, "validating", QxXmlV_##element(ctx), 0);                                                     \
    rtxSetOutputDynamic(ctx);                                                                                          \
    expect(ctx, #element, "encoding", QxXmlE_##element(ctx, &first), 0);                                               \
    useOutputAsInput(ctx, copy, sizeof copy);                                                                          \
    expect(ctx, #element, "decoding what was encoded", QxXmlD_##element(ctx, &second), 0);                             \
    QxMemFree_##type(ctx, &first);                                                                                     \
    QxMemFree_##type(ctx, &second);                                                                                    \
    END;                                                                                                               \
  }

#define SIMPLE(element, type, initial, argument, same, release)                                                        \
  static void run_##element(void) {                                                                                    \
    BEGIN(element);                                                                                                    \
    type first = initial, second = initial;                                                                            \
    expect(ctx, #element, "decoding", QxXmlD_##element(ctx, &first), 0);                                               \
    expect(ctx, #element, "validating", QxXmlV_##element(ctx), STATUS_NOT_SUPPORTED);                                  \
    rtxSetOutputDynamic(ctx);                                                                                          \
    expect(ctx, #element, "encoding", QxXmlE_##element(ctx, argument), 0);                                             \
    useOutputAsInput(ctx, copy, sizeof copy);                                                                          \
    expect(ctx, #element, "decoding what was encoded", QxXmlD_##element(ctx, &second), 0);                             \
    expect(ctx, #element, "comparing", (same) ? 0 : 1, 0);                                                             \
    release;                                                                                                           \
    END;                                                                                                               \
  }

static const RtxXmlString noText = {false, NULL};
static const RtxHexBinary noBytes = {0, NULL};

#define TEXT(element)                                                                                                  \
  SIMPLE(element, RtxXmlString, noText, &first, first.value &&second.value &&strcmp(first.value, second.value) == 0,   \
         (rtxMemHeapFreePtr(ctx, first.value), rtxMemHeapFreePtr(ctx, second.value)))
#define BYTES(element)                                                                                                 \
  SIMPLE(element, RtxHexBinary, noBytes, &first,                                                                       \
         first.length == second.length && memcmp(first.bytes, second.bytes, first.length) == 0,                        \
         (rtxMemHeapFreePtr(ctx, first.bytes), rtxMemHeapFreePtr(ctx, second.bytes)))
#define CODE(element) SIMPLE(element, uint16_t, 0, first, first == 1 && second == 1, (void)0)

IMS_DOCUMENTS(RECORD, TEXT)
DEBUG_DOCUMENTS(RECORD, TEXT, BYTES, CODE)

#define RUN_RECORD(element, type) run_##element();
#define RUN(element) run_##element();

int main(void) {
  IMS_DOCUMENTS(RUN_RECORD, RUN)
  DEBUG_DOCUMENTS(RUN_RECORD, RUN, RUN, RUN)
  printf("%d documents, %d failures\n", documents, failures);
  return failures == 0 && documents == 27 ? 0 : 1;
}
