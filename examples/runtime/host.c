/* Reads a dialog state, prints it, changes it and writes it again, on a runtime that is not the library's own. */
#include "DialogInfo/QxXmlDialogInfo.h"
#include "rtx.h"

#include <stdio.h>
#include <string.h>

static const char body[] = "<dialog-info xmlns='urn:ietf:params:xml:ns:dialog-info' version='7' state='full' "
                           "entity='sip:anna@home.example'>"
                           "<dialog id='a1' direction='initiator'><state>trying</state><duration>3</duration>"
                           "<remote><identity display-name='Ben &amp; Co'>sip:ben@away.example</identity></remote>"
                           "</dialog></dialog-info>";

static int change(RuntimeContext *ctx, tns__dialog_info *info) {
  tns__dialog *dialog = info->tns_dialog.head->data;
  rtxMemHeapFreePtr(ctx, dialog->tns_state.value.value);
  dialog->tns_state.value.value = rtxUTF8Strdup(ctx, "confirmed");
  info->tns_version++;
  return dialog->tns_state.value.value ? STATUS_OK : STATUS_NO_MEMORY;
}

int main(void) {
  RuntimeContext *ctx = rtxContextCreate(NULL);
  if (!ctx) return 1;

  tns__dialog_info info;
  QxInit_tns__dialog_info(ctx, &info);
  rtxSetInputZ(ctx, body, strlen(body));
  int status = QxXmlD_tns_dialog_info(ctx, &info);
  if (status == 0) {
    QxPrint_tns__dialog_info("received", &info);
    status = info.tns_dialog.count == 1 ? change(ctx, &info) : STATUS_INVALID_CONTENT;
  }
  if (status == 0) {
    rtxSetOutputDynamic(ctx);
    status = QxXmlE_tns_dialog_info(ctx, &info);
  }
  if (status == 0) {
    printf("runtime %s wrote:\n%s\n", rtxVersion(), rtxGetOutput(ctx, NULL));
  } else {
    char line[256];
    rtxErrFormat(ctx, 0, line, sizeof line);
    fprintf(stderr, "%d: %s\n", status, line);
  }
  QxMemFree_tns__dialog_info(ctx, &info);
  rtxContextFree(ctx);
  return status == 0 ? 0 : 1;
}
