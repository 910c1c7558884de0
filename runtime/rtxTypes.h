/* The plain data types that records, the codec and the runtime share. */
#ifndef RTX_TYPES_H
#define RTX_TYPES_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

/* Opaque outside the runtime but for the members that rtxContext.h documents. */
typedef struct RuntimeContext RuntimeContext;

/* A text of a record: NUL-terminated UTF-8, or null when it is not set. */
typedef struct RtxXmlString {
  bool cdata; /* written as a CDATA section */
  const char *value;
} RtxXmlString;

/* A node of a list. */
typedef struct RtxListNode {
  void *data;
  struct RtxListNode *next;
  struct RtxListNode *prev;
} RtxListNode;

/* A doubly linked list. Empty is all zero. */
typedef struct RtxList {
  uint32_t count;
  RtxListNode *head;
  RtxListNode *tail;
} RtxList;

/* Foreign elements; each item is an RtxXmlString that holds one whole element as XML text. */
typedef struct RtxAnyList {
  RtxList items;
} RtxAnyList;

/* A foreign attribute. */
typedef struct RtxNamePair {
  const char *name;
  const char *value;
} RtxNamePair;

/* Foreign attributes; each item is an RtxNamePair. */
typedef struct RtxAttrList {
  RtxList items;
} RtxAttrList;

/* A namespace declaration: prefix null is the default namespace. */
typedef struct RtxNsDecl {
  const char *prefix;
  const char *uri;
} RtxNsDecl;

/* The namespace declarations of one element; each item is an RtxNsDecl. */
typedef struct RtxNsDeclList {
  RtxList items;
} RtxNsDeclList;

/* The namespace of a name that is written: prefix null takes the one that the context binds to uri, empty none. */
typedef struct RtxNamespace {
  const char *prefix;
  const char *uri;
} RtxNamespace;

/* Bytes written as hexadecimal text. */
typedef struct RtxHexBinary {
  uint32_t length;
  const uint8_t *bytes;
} RtxHexBinary;

/*
 * One row of an enumeration's text table. Rows are sorted by text in ascending byte order; the last column of
 * row i is the position of the row that carries code i.
 */
typedef struct RtxEnumRow {
  const char *text;
  uint16_t code;
  uint16_t length; /* of the text, in bytes */
  uint16_t rowOfCode;
} RtxEnumRow;

/* State of a conversion of hexadecimal text that arrives in pieces. Start with all zero. */
typedef struct RtXmlHexState {
  uint8_t pending; /* 0, or 16 + the first digit of a pair whose second is still to come */
  uint8_t phase;   /* 0 before, 1 inside, 2 behind the digits */
} RtXmlHexState;

#endif
