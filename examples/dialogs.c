/* Builds the dialog state of a user with one call and writes it, as a notifier does. */
#include "DialogInfo/QxXmlDialogInfo.h"
#include "rtx.h"

#include <stdio.h>

/* Texts and items of a record come from the heap of its context. */
static RtxXmlString text(RuntimeContext *ctx, const char *value) {
  RtxXmlString string = {false, rtxUTF8Strdup(ctx, value)};
  return string;
}

static int addCall(RuntimeContext *ctx, tns__dialog_info *info) {
  tns__dialog *dialog = rtxMemHeapAlloc(ctx, sizeof *dialog);
  if (!dialog) return STATUS_NO_MEMORY;
  QxInit_tns__dialog(ctx, dialog);
  if (!rtxDListAppend(ctx, &info->tns_dialog, dialog)) {
    rtxMemHeapFreePtr(ctx, dialog);
    return STATUS_NO_MEMORY;
  }
  dialog->tns_id = text(ctx, "a1");
  dialog->tns_state.value = text(ctx, "confirmed");
  dialog->tns_direction = tns__dialog_direction_recipient;
  dialog->tns_remote.tns_identity.value = text(ctx, "sip:ben@away.example");
  dialog->tns_remote.tns_identity.tns_display_name = text(ctx, "Ben \"<B>\" & Co");
  dialog->tns_remote.tns_identity.m |= tns_nameaddr_has_display_name;
  dialog->tns_remote.m |= tns_participant_has_identity;
  dialog->m |= tns__dialog_has_direction | tns__dialog_has_remote;
  return 0;
}

int main(void) {
  RuntimeContext *ctx = rtxContextCreate(NULL);
  if (!ctx) return 1;

  tns__dialog_info info;
  QxInit_tns__dialog_info(ctx, &info);
  info.tns_version = 0;
  info.tns_state = tns__dialog_info_state_full;
  info.tns_entity = text(ctx, "sip:anna@home.example");

  int status = addCall(ctx, &info);
  if (status == 0) {
    rtxSetOutputDynamic(ctx);
    status = QxXmlE_tns_dialog_info(ctx, &info);
  }
  if (status == 0) {
    puts(rtxGetOutput(ctx, NULL));
  } else {
    char line[256];
    rtxErrFormat(ctx, 0, line, sizeof line);
    fprintf(stderr, "%s\n", line);
  }
  QxMemFree_tns__dialog_info(ctx, &info);
  rtxContextFree(ctx);
  return status == 0 ? 0 : 1;
}
