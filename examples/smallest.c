/* As small as a host can be: says what a body says. */
#include "IsComposing/QxXmlIsComposing.h"
#include "rtx.h"

#include <stdio.h>
#include <string.h>

static const char body[] =
    "<isComposing xmlns='urn:ietf:params:xml:ns:im-iscomposing'><state>active</state></isComposing>";

int main(void) {
  RuntimeContext *ctx = rtxContextCreate(NULL); /* without storage for one, what follows fails by its status */
  tns__isComposing message;
  rtxSetInput(ctx, body, strlen(body));
  const int status = QxXmlD_tns_isComposing(ctx, &message);
  if (status == STATUS_OK) {
    puts(message.tns_state.value ? message.tns_state.value : "no state"); /* texts that were not there are null */
  } else {
    fputs(rtxStatusText(status), stderr);
  }
  rtxContextFree(ctx); /* and with it what the record holds */
  return status == STATUS_OK ? 0 : 1;
}
