/*
 * Bodies in, bodies out: worker threads that serve connections by an event loop, each with a context of its own. A body
 * comes behind its length in four bytes, the highest first, and so does the answer to it.
 *
 * The workers stand between a notifier and strangers: they pass on which dialogs there are, but not with whom.
 */
#define _POSIX_C_SOURCE 200809L
#include "DialogInfo/QxXmlDialogInfo.h"
#include "rtx.h"

#include <errno.h>
#include <poll.h>
#include <pthread.h>
#include <stdio.h>
#include <string.h>
#include <sys/socket.h>
#include <unistd.h>

enum {
  workerCount = 3,
  connectionCount = 2, /* of each worker */
  headSize = 4,
  bodyLimit = 64 * 1024,
  heapLimit = 256 * 1024 /* a body may want many times its bytes: 16 of them make a dialog */
};

typedef struct Connection {
  int socket;   /* -1: closed */
  size_t have;  /* bytes of in */
  size_t write; /* bytes of out */
  size_t written;
  char in[headSize + bodyLimit];
  char out[headSize + bodyLimit];
} Connection;

/* All that a worker touches. Workers share nothing, so there is nothing to lock. */
typedef struct Worker {
  pthread_t thread;
  RuntimeContext *ctx;
  Connection connections[connectionCount];
} Worker;

static void putLength(char *head, size_t length) {
  for (int i = 0; i < headSize; ++i)
    head[i] = (char)(length >> (8 * (headSize - 1 - i)) & 0xFF);
}

static size_t getLength(const char *head) {
  size_t length = 0;
  for (int i = 0; i < headSize; ++i)
    length = length << 8 | (unsigned char)head[i];
  return length;
}

/* ---- A message -------------------------------------------------------------------------------------------- */

/* Answers with what strangers may know, or with what is wrong with the body. The length of the answer. */
static size_t answer(RuntimeContext *ctx, const char *body, size_t length, char *buffer, size_t size) {
  tns__dialog_info info;
  int status = rtxSetInput(ctx, body, length);
  if (status == STATUS_OK) status = QxXmlD_tns_dialog_info(ctx, &info);
  if (status == STATUS_OK) {
    for (RtxListNode *node = info.tns_dialog.head; node; node = node->next) {
      tns__dialog *dialog = node->data;
      dialog->m &= ~(uint32_t)tns__dialog_has_remote;
    }
    status = rtxSetOutput(ctx, buffer, size);
  }
  if (status == STATUS_OK) status = QxXmlE_tns_dialog_info(ctx, &info);
  size_t answered = 0;
  if (status == STATUS_OK) {
    rtxGetOutput(ctx, &answered);
  } else {
    answered = (size_t)snprintf(buffer, size, "refused: %s", rtxStatusText(status));
  }
  rtxContextReset(ctx); /* records, errors, input and output go; the storage stays for the next message */
  return answered;
}

/* ---- A connection ----------------------------------------------------------------------------------------- */

/* Answers the next body if all of it is there and the answer before is on its way. False: hang up. */
static bool advance(RuntimeContext *ctx, Connection *connection) {
  if (connection->write > 0 || connection->have < headSize) return true;
  const size_t length = getLength(connection->in);
  if (length > bodyLimit) return false; /* before any of it is stored */
  const size_t whole = headSize + length;
  if (connection->have < whole) return true;
  const size_t answered = answer(ctx, connection->in + headSize, length, connection->out + headSize, bodyLimit);
  putLength(connection->out, answered);
  connection->write = headSize + answered;
  connection->have -= whole;
  memmove(connection->in, connection->in + whole, connection->have);
  return true;
}

static bool later(ssize_t result) { return result < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR); }

/* Receives, or sends while there is an answer to be sent: who does not fetch answers is not heard. False: hang up. */
static bool transfer(Connection *connection) {
  if (connection->write > 0) {
    const ssize_t sent = send(connection->socket, connection->out + connection->written,
                              connection->write - connection->written, MSG_DONTWAIT | MSG_NOSIGNAL);
    if (sent < 0) return later(sent);
    connection->written += (size_t)sent;
    if (connection->written == connection->write) connection->write = connection->written = 0;
    return true;
  }
  const ssize_t got = recv(connection->socket, connection->in + connection->have,
                           sizeof connection->in - connection->have, MSG_DONTWAIT);
  if (got <= 0) return later(got);
  connection->have += (size_t)got;
  return true;
}

static void hangUp(Connection *connection) {
  if (connection->socket >= 0) close(connection->socket);
  connection->socket = -1;
}

/* Ends when all connections have. Null, or the worker if it had to give up. */
static void *serve(void *argument) {
  Worker *worker = argument;
  for (;;) {
    struct pollfd waiting[connectionCount];
    int open = 0;
    for (int i = 0; i < connectionCount; ++i) {
      const Connection *connection = &worker->connections[i];
      waiting[i] = (struct pollfd){connection->socket, connection->write > 0 ? POLLOUT : POLLIN, 0};
      open += connection->socket >= 0;
    }
    if (open == 0) return NULL;
    if (poll(waiting, connectionCount, -1) < 0 && errno != EINTR) {
      for (int i = 0; i < connectionCount; ++i)
        hangUp(&worker->connections[i]);
      return worker;
    }
    for (int i = 0; i < connectionCount; ++i) {
      Connection *connection = &worker->connections[i];
      if (waiting[i].revents == 0) continue;
      if (!transfer(connection) || !advance(worker->ctx, connection)) hangUp(connection);
    }
  }
}

/* ---- Those who ask ---------------------------------------------------------------------------------------- */

static bool sendAll(int socket, const char *bytes, size_t length) {
  while (length > 0) {
    const ssize_t sent = send(socket, bytes, length, MSG_NOSIGNAL);
    if (sent < 0 && errno != EINTR) return false;
    if (sent < 0) continue;
    bytes += sent;
    length -= (size_t)sent;
  }
  return true;
}

static bool receiveAll(int socket, char *bytes, size_t length) {
  while (length > 0) {
    const ssize_t got = recv(socket, bytes, length, 0);
    if (got == 0 || (got < 0 && errno != EINTR)) return false;
    if (got < 0) continue;
    bytes += got;
    length -= (size_t)got;
  }
  return true;
}

static bool ask(int socket, const char *body, size_t length) {
  char head[headSize];
  putLength(head, length);
  return sendAll(socket, head, sizeof head) && (length > bodyLimit || sendAll(socket, body, length));
}

/* Prints the answer. False if there is none. */
static bool printAnswer(int socket) {
  static char text[bodyLimit + 1];
  char head[headSize];
  if (!receiveAll(socket, head, sizeof head)) return false;
  const size_t length = getLength(head);
  if (length > bodyLimit || !receiveAll(socket, text, length)) return false;
  text[length] = '\0';
  puts(text);
  return true;
}

#define DIALOG_INFO "<dialog-info xmlns='urn:ietf:params:xml:ns:dialog-info' version='1' state='full' entity='sip:a@b'>"

static const char honest[] =
    DIALOG_INFO "<dialog id='a1'><state>confirmed</state><remote><identity>sip:ben@away.example"
                "</identity></remote></dialog></dialog-info>";

/* What a stranger sends to each of the workers. A length without a body is only announced. */
typedef struct Attack {
  const char *name;
  const char *body;
  size_t length;
} Attack;

static char manyDialogs[bodyLimit];

static size_t fillManyDialogs(void) {
  static const char item[] = "<dialog id='1'/>", end[] = "</dialog-info>";
  size_t length = strlen(DIALOG_INFO);
  memcpy(manyDialogs, DIALOG_INFO, length);
  for (; length + strlen(item) + strlen(end) <= sizeof manyDialogs; length += strlen(item))
    memcpy(manyDialogs + length, item, strlen(item));
  memcpy(manyDialogs + length, end, strlen(end));
  return length + strlen(end);
}

static Worker crew[workerCount];

int main(void) {
  static const char broken[] = DIALOG_INFO "<dialog id='a1'></dialog-info>";
  const Attack attacks[workerCount] = {
      {"broken", broken, strlen(broken)}, {"swelling", manyDialogs, fillManyDialogs()}, {"endless", NULL, UINT32_MAX}};
  RuntimeOptions options;
  rtxOptionsInit(&options);
  options.heapLimit = heapLimit;
  options.inputLimit = bodyLimit;
  options.errorLimit = options.errorsKept = 1; /* that a body is bad is enough; with 0 some would pass for good */

  int sockets[workerCount][connectionCount];
  for (int i = 0; i < workerCount; ++i) {
    Worker *worker = &crew[i];
    worker->ctx = rtxContextCreate(&options);
    if (!worker->ctx) return 1;
    for (int k = 0; k < connectionCount; ++k) {
      int pair[2];
      if (socketpair(AF_UNIX, SOCK_STREAM, 0, pair) != 0) return 1;
      worker->connections[k].socket = pair[0];
      sockets[i][k] = pair[1];
    }
    if (pthread_create(&worker->thread, NULL, serve, worker) != 0) return 1;
  }

  /* All workers are attacked at a time; those who mean well must not notice. */
  bool good = true;
  for (int i = 0; i < workerCount; ++i)
    good = ask(sockets[i][0], attacks[i].body, attacks[i].length) && good;
  for (int i = 0; i < workerCount; ++i) {
    printf("%s: ", attacks[i].name);
    if (!printAnswer(sockets[i][0])) puts("no answer");
  }
  for (int i = 0; i < workerCount; ++i)
    good = ask(sockets[i][1], honest, strlen(honest)) && good;
  for (int i = 0; i < workerCount; ++i)
    good = printAnswer(sockets[i][1]) && good;

  for (int i = 0; i < workerCount; ++i) {
    for (int k = 0; k < connectionCount; ++k)
      close(sockets[i][k]);
    void *failed = NULL;
    good = pthread_join(crew[i].thread, &failed) == 0 && !failed && good;
    rtxContextFree(crew[i].ctx);
  }
  return good ? 0 : 1;
}
