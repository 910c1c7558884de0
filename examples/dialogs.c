/* Builds the dialog state of a user with one call and writes it, as a notifier does. */
#include "DialogInfo/QxXmlDialogInfo.h"
#include "rtx.h"

#include <stdio.h>
#include <string.h>

/* Texts and items of a record come from the heap of its context. */
static int setText(RuntimeContext *ctx, RtxXmlString *member, const char *value) {
  return rtxSetText(ctx, member, value, strlen(value));
}

static int addCall(RuntimeContext *ctx, tns__dialog_info *info) {
  tns__dialog *dialog = rtxAppendItem(ctx, &info->tns_dialog, sizeof *dialog);
  if (!dialog) return STATUS_NO_MEMORY;
  QxInit_tns__dialog(ctx, dialog);
  tns_nameaddr *remote = &dialog->tns_remote.tns_identity;
  dialog->tns_direction = tns__dialog_direction_recipient;
  dialog->m |= tns__dialog_has_direction | tns__dialog_has_remote;
  dialog->tns_remote.m |= tns_participant_has_identity;
  remote->m |= tns_nameaddr_has_display_name;

  int status = setText(ctx, &dialog->tns_id, "a1");
  if (status == 0) status = setText(ctx, &dialog->tns_state.value, "confirmed");
  if (status == 0) status = setText(ctx, &remote->value, "sip:ben@away.example");
  if (status == 0) status = setText(ctx, &remote->tns_display_name, "Ben \"<B>\" & Co");
  return status;
}

int main(void) {
  RuntimeContext *ctx = rtxContextCreate(NULL);
  if (!ctx) return 1;

  tns__dialog_info info;
  QxInit_tns__dialog_info(ctx, &info);
  info.tns_version = 0;
  info.tns_state = tns__dialog_info_state_full;

  int status = setText(ctx, &info.tns_entity, "sip:anna@home.example");
  if (status == 0) status = addCall(ctx, &info);
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
