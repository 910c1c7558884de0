/*
 * The plain data types that records, the codec and the runtime share. What a decoder has put into them is of the heap
 * of its context, and so is what a release function is to free; texts that are only encoded may lie anywhere.
 */
#ifndef RTX_TYPES_H
#define RTX_TYPES_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

/* Opaque outside the runtime but for the members that rtxContext.h documents. */
typedef struct RuntimeContext RuntimeContext;

/* A text of a record: NUL-terminated UTF-8, or null when it is not set. */
typedef struct RtxXmlString {
  bool cdata;        /* written as a CDATA section */
  const char *value; /* null: not set */
} RtxXmlString;

/* A node of a list, a block of the heap by itself. */
typedef struct RtxListNode {
  void *data;               /* the item, a block of the heap too */
  struct RtxListNode *next; /* null: the last */
  struct RtxListNode *prev; /* null: the first */
} RtxListNode;

/* A doubly linked list. Empty is all zero. */
typedef struct RtxList {
  uint32_t count;    /* of nodes */
  RtxListNode *head; /* the first node; null: none */
  RtxListNode *tail; /* the last one */
} RtxList;

/* Foreign elements. */
typedef struct RtxAnyList {
  RtxList items; /* of RtxXmlString: one whole element as XML text */
} RtxAnyList;

/* A foreign attribute. */
typedef struct RtxNamePair {
  const char *name;  /* with its prefix, as it was written */
  const char *value; /* references resolved */
} RtxNamePair;

/* Foreign attributes. */
typedef struct RtxAttrList {
  RtxList items; /* of RtxNamePair */
} RtxAttrList;

/* A namespace declaration. */
typedef struct RtxNsDecl {
  const char *prefix; /* null: the default namespace */
  const char *uri;    /* empty: no namespace */
} RtxNsDecl;

/* The namespace declarations of one element. */
typedef struct RtxNsDeclList {
  RtxList items; /* of RtxNsDecl */
} RtxNsDeclList;

/* The namespace of a name that is written. */
typedef struct RtxNamespace {
  const char *prefix; /* null: the one that the context binds to uri; empty: none */
  const char *uri;    /* null: no namespace */
} RtxNamespace;

/* Bytes written as hexadecimal text. */
typedef struct RtxHexBinary {
  uint32_t length;      /* of bytes */
  const uint8_t *bytes; /* null: none */
} RtxHexBinary;

/* One row of an enumeration's text table. Rows are sorted by text in ascending byte order. */
typedef struct RtxEnumRow {
  const char *text;   /* a constant */
  uint16_t code;      /* that stands for text in a record */
  uint16_t length;    /* of text, in bytes */
  uint16_t rowOfCode; /* in row i: the position of the row that has code i */
} RtxEnumRow;

/* State of a conversion of hexadecimal text that arrives in pieces. Start with all zero. */
typedef struct RtXmlHexState {
  uint8_t pending; /* 0, or 16 + the first digit of a pair whose second is still to come */
  uint8_t phase;   /* 0 before, 1 inside, 2 behind the digits */
} RtXmlHexState;

#endif
