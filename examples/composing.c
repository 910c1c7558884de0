/* Reads a composing indication, prints it, changes it and writes it again. */
#include "IsComposing/QxXmlIsComposing.h"
#include "rtx.h"

#include <stdio.h>
#include <string.h>

static const char body[] = "<isComposing xmlns='urn:ietf:params:xml:ns:im-iscomposing'>"
                           "<state>active</state><refresh>60</refresh>"
                           "</isComposing>";

int main(void) {
  RuntimeContext *ctx = rtxContextCreate(NULL);
  if (!ctx) return 1;

  tns__isComposing message;
  QxInit_tns__isComposing(ctx, &message);
  rtxSetInputZ(ctx, body, strlen(body));
  int status = QxXmlD_tns_isComposing(ctx, &message);
  if (status == 0) {
    QxPrint_tns__isComposing("received", &message);

    /* The peer stops typing. Texts of a record come from the heap of its context. */
    status = rtxSetText(ctx, &message.tns_state, "idle", strlen("idle"));
    message.m &= ~(uint32_t)tns__isComposing_has_refresh;
    rtxSetOutputDynamic(ctx);
  }
  if (status == 0) status = QxXmlE_tns_isComposing(ctx, &message);
  if (status == 0) {
    puts(rtxGetOutput(ctx, NULL));
  } else {
    char line[256];
    rtxErrFormat(ctx, 0, line, sizeof line);
    fprintf(stderr, "%s\n", line);
  }
  QxMemFree_tns__isComposing(ctx, &message);
  rtxContextFree(ctx);
  return status == 0 ? 0 : 1;
}
