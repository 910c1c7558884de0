/*
 * Composing indications on both sides of several conversations: knows who is typing, and tells the others when the
 * user is. Time is in seconds and comes as an argument, so that any event loop can drive it; no time is 0.
 */
#include "IsComposing/QxXmlIsComposing.h"
#include "rtx.h"

#include <stdio.h>
#include <string.h>

enum {
  defaultRefresh = 120, /* an indication that does not say how long it holds holds so long */
  ownRefresh = 60,      /* ours say so */
  ownRepeat = 50,       /* and are repeated while the user types, soon enough to be there in time */
  idleAfter = 15        /* without a key so long the user has stopped */
};

typedef struct Conversation {
  const char *peer;
  uint64_t peerTypesUntil; /* 0: the peer is idle */
  uint64_t idleAt;         /* 0: the user is idle here */
  uint64_t refreshAt;
} Conversation;

static void report(uint64_t now, const char *peer, const char *what) {
  printf("%3u s  %-4s  %s\n", (unsigned)now, peer, what);
}

static void complain(RuntimeContext *ctx, const Conversation *conversation, uint64_t now) {
  char line[256];
  rtxErrFormat(ctx, 0, line, sizeof line);
  report(now, conversation->peer, line);
}

/* ---- The peer types --------------------------------------------------------------------------------------- */

static void peerTypes(Conversation *conversation, uint64_t until, uint64_t now) {
  if ((until != 0) != (conversation->peerTypesUntil != 0)) {
    report(now, conversation->peer, until != 0 ? "is typing ..." : "has stopped");
  }
  conversation->peerTypesUntil = until;
}

/* Takes the body of an indication. One that cannot be read changes nothing. */
static int received(RuntimeContext *ctx, Conversation *conversation, const char *body, size_t length, uint64_t now) {
  tns__isComposing indication;
  int status = rtxSetInput(ctx, body, length);
  if (status == STATUS_OK) status = QxXmlD_tns_isComposing(ctx, &indication);
  if (status != STATUS_OK) {
    complain(ctx, conversation, now);
  } else if (rtxUTF8StrEqual(indication.tns_state.value, "active")) {
    const int told = (indication.m & tns__isComposing_has_refresh) != 0;
    peerTypes(conversation, now + (told ? indication.tns_refresh : defaultRefresh), now);
  } else {
    peerTypes(conversation, 0, now); /* "idle", and any state that we do not know */
  }
  rtxContextReset(ctx); /* frees what the record holds, and more: it is good for the next message */
  return status;
}

/* ---- The user types --------------------------------------------------------------------------------------- */

static int sendState(RuntimeContext *ctx, const Conversation *conversation, const char *state, uint32_t refresh,
                     uint64_t now) {
  tns__isComposing indication;
  int status = QxInit_tns__isComposing(ctx, &indication);
  if (status == STATUS_OK) {
    indication.tns_state.value = state; /* only encoded and never freed, so it need not come from the heap */
    if (refresh != 0) {
      indication.tns_refresh = refresh;
      indication.m |= tns__isComposing_has_refresh;
    }
    status = rtxSetOutputDynamic(ctx);
  }
  if (status == STATUS_OK) status = QxXmlE_tns_isComposing(ctx, &indication);
  if (status == STATUS_OK) {
    report(now, conversation->peer, rtxGetOutput(ctx, NULL)); /* a host hands it to its transport */
  } else {
    complain(ctx, conversation, now);
  }
  rtxContextReset(ctx);
  return status;
}

/* The user has pressed a key. */
static int keyPressed(RuntimeContext *ctx, Conversation *conversation, uint64_t now) {
  const int first = conversation->idleAt == 0;
  conversation->idleAt = now + idleAfter;
  if (!first) return STATUS_OK;
  conversation->refreshAt = now + ownRepeat;
  return sendState(ctx, conversation, "active", ownRefresh, now);
}

/* The message itself goes out, which says that the user is idle again. */
static void messageSent(Conversation *conversation) { conversation->idleAt = 0; }

/* What only the passing of time brings about; to be called once a second or so. */
static int timePassed(RuntimeContext *ctx, Conversation *conversation, uint64_t now) {
  if (conversation->peerTypesUntil != 0 && now >= conversation->peerTypesUntil) peerTypes(conversation, 0, now);
  if (conversation->idleAt == 0) return STATUS_OK;
  if (now >= conversation->idleAt) {
    conversation->idleAt = 0;
    return sendState(ctx, conversation, "idle", 0, now);
  }
  if (now < conversation->refreshAt) return STATUS_OK;
  conversation->refreshAt = now + ownRepeat;
  return sendState(ctx, conversation, "active", ownRefresh, now);
}

/* ---- An evening ------------------------------------------------------------------------------------------- */

typedef enum Kind {
  indication, /* of the peer, with a body */
  message,    /* of the peer, the one that was being typed */
  key,        /* of the user */
  send        /* of the user's message */
} Kind;

enum {
  ben,
  cleo,
  conversations
};

typedef struct Event {
  uint64_t from; /* happens in each second of these */
  uint64_t to;
  int with;
  Kind kind;
  const char *body;
} Event;

#define INDICATION(content) "<isComposing xmlns='urn:ietf:params:xml:ns:im-iscomposing'>" content "</isComposing>"

static const Event events[] = {
    {3, 3, ben, indication, INDICATION("<state>active</state><refresh>60</refresh>")},
    {5, 5, cleo, indication, INDICATION("<state>active</state>")},
    {10, 90, ben, key, NULL}, /* the user types for long */
    {20, 20, ben, indication, INDICATION("<state>idle</state>")},
    {30, 30, ben, indication, INDICATION("<state>active</state><refresh>0</refresh>")}, /* cannot be */
    {95, 95, ben, send, NULL},
    {140, 140, ben, indication, INDICATION("<state>active</state>")},
    {150, 150, ben, message, NULL},
    {200, 203, cleo, key, NULL}, /* the user begins, and thinks better of it */
    {230, 230, cleo, indication, INDICATION("<state>active</state><refresh>90</refresh>")},
    {240, 240, cleo, indication, INDICATION("<state>dreaming</state>")}};

int main(void) {
  RuntimeContext *ctx = rtxContextCreate(NULL);
  if (!ctx) return 1;
  Conversation all[conversations] = {{.peer = "ben"}, {.peer = "cleo"}};
  int unreadable = 0;
  int status = STATUS_OK;

  for (uint64_t now = 1; status == STATUS_OK && now <= 300; ++now) {
    for (size_t i = 0; status == STATUS_OK && i < sizeof events / sizeof *events; ++i) {
      const Event *event = &events[i];
      Conversation *conversation = &all[event->with];
      if (now < event->from || now > event->to) continue;
      switch (event->kind) {
      case indication:
        if (received(ctx, conversation, event->body, strlen(event->body), now) != STATUS_OK) ++unreadable;
        break;
      case message: peerTypes(conversation, 0, now); break;
      case key: status = keyPressed(ctx, conversation, now); break;
      case send: messageSent(conversation); break;
      }
    }
    for (int i = 0; status == STATUS_OK && i < conversations; ++i)
      status = timePassed(ctx, &all[i], now);
  }
  rtxContextFree(ctx);
  return status == STATUS_OK && unreadable == 1 ? 0 : 1;
}
