/* Status numbers of the codec and of the runtime beneath it. A number keeps its meaning; further ones may come. */
#ifndef RTX_STATUS_H
#define RTX_STATUS_H

#if defined(__GNUC__)
#define RTX_API __attribute__((visibility("default")))
#define RTX_MAY_ALIAS __attribute__((may_alias))
#else
#define RTX_API
#define RTX_MAY_ALIAS
#endif

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Every function that returns an int returns 0 for success and one of these negative numbers otherwise,
 * unless its own comment says something else. The names in brackets are the parameters that the error
 * record carries, in order.
 */
enum RtxStatus {
  STATUS_OK = 0,

  /* Found by the codec. */
  STATUS_BUFFER_OVERFLOW = -1,       /* the output cannot take another byte */
  STATUS_ROOT_MISMATCH = -3,         /* an element has another name [expected, found] */
  STATUS_ENUM_NOT_FOUND = -4,        /* a text is no value of its enumeration [text] */
  STATUS_INVALID_CHOICE = -9,        /* a selector names no alternative [selector] */
  STATUS_NO_MEMORY = -10,            /* the heap or the system has no more storage */
  STATUS_CONSTRAINT_VIOLATION = -16, /* a value breaks a facet of the schema [field, value] */
  STATUS_READER_FAILED = -26,        /* no reader could be created, most often for lack of input */
  STATUS_UNKNOWN_ATTRIBUTE = -33,    /* an attribute that the type does not have [type, attribute] */
  STATUS_UNEXPECTED_ELEMENT = -41,   /* an element that is not allowed where it stands [element] */
  STATUS_INVALID_CONTENT = -44,      /* a child's text does not convert [text, type, element] */
  STATUS_INVALID_ATTRIBUTE = -45,    /* an attribute's value does not convert [type, attribute] */
  STATUS_NOT_SUPPORTED = -60,        /* validation is not offered for this document */

  /* Found by the runtime. */
  STATUS_INVALID_LEXICAL_FORM = -101, /* a text is not in the lexical space of its datatype */
  STATUS_INVALID_UTF8 = -102,         /* a text is not UTF-8, or holds a character or value XML cannot carry */
  STATUS_MISSING_ATTRIBUTE = -103,    /* a required attribute is absent [type, attribute] */
  STATUS_PARSE_FAILED = -104,         /* the document is not well-formed [reason] */
  STATUS_BAD_CONTEXT = -105,          /* the context is null, freed or was never created */
  STATUS_WRITE_FAILED = -106,         /* an encoder primitive was called where it cannot write */
  STATUS_LIMIT_EXCEEDED = -107        /* a limit of the context was passed [limit, its value] */
};

/*
 * The fixed English text of a status, for people: wordings may change. Never null; "unknown status" for a number that
 * is none. Needs no context.
 */
RTX_API const char *rtxStatusText(int status);

#ifdef __cplusplus
}
#endif

#endif
