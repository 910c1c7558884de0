// A runtime for tests that does little but what it is told. It offers every operation that the codec imports, works
// for well-behaved calls on one context at a time, writes down every error call, and makes any call fail on demand:
// so that places which no input reaches with a sound runtime are reached all the same.
#pragma once

#include "rtx.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace recording {

// One event of a scripted document.
struct Event {
  enum Kind {
    start,
    text,
    end
  } kind;
  std::string name;                                            // or the text
  std::vector<std::pair<std::string, std::string>> attributes; // of a start tag
};

Event startTag(std::string name, std::vector<std::pair<std::string, std::string>> attributes = {});
Event characters(std::string text);
Event endTag(std::string name);

// Forgets everything: calls, failures, errors, document, storage.
void reset();

// A usable context whose output has room for so many bytes.
RuntimeContext *newContext(size_t room = 10000);

// What the reader will deliver. Without a document no reader can be created.
void setDocument(std::vector<Event> events);

// The nth call of function from now on (from 1) fails: it returns status, or null if it returns a pointer; a lookup of
// an element returns RTSAX_NO_ELEMENT, having recorded status.
void fail(const std::string &function, unsigned nth, int status);

// How often each function that can fail was called.
const std::map<std::string, unsigned> &calls();

// "new -16(field,0u)@path:line" for a record started, "set -101@path:line" for a place added.
const std::vector<std::string> &errorCalls();

// The lines printed, "name=value".
const std::vector<std::string> &printed();

std::string output();
size_t blocksAlive();

} // namespace recording
