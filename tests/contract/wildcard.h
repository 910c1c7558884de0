// A handler whose root takes any child and keeps each as XML text.
#pragma once

#include "contract.h"

namespace contract {

class WildcardHost {
public:
  explicit WildcardHost(RuntimeContext *ctx);
  ~WildcardHost();
  WildcardHost(const WildcardHost &) = delete;
  WildcardHost &operator=(const WildcardHost &) = delete;

  RtSaxHandler handler{}; // first: the address is what the reader passes around
  std::vector<std::unique_ptr<RtxXmlString>> entries;
  bool open = false;         // the newest entry's element has not ended
  int initStatus = 0;        // of the newest SAXAnyInit
  int callbackStatus = 0;    // the first that a callback of the capture returned
  bool stateTouched = false; // the capture changed the state byte
  bool entryTouched = false; // the capture wrote its entry before its end tag

  // The texts captured, one a line; "(none)" for an entry that was never written.
  std::string captured() const;

private:
  RtSaxHandler *delegate() { return reinterpret_cast<RtSaxHandler *>(block); }
  void dropDelegate();
  void check(int status);
  static int start(void *self, const char *local, const char *qualified, const char *const *attributes);
  static int end(void *self, const char *local, const char *qualified);
  static int text(void *self, const char *bytes, size_t length);

  RuntimeContext *ctx;
  int level = 0;
  alignas(8) unsigned char block[RTSAX_DELEGATE_SIZE];
};

int read(RuntimeContext *ctx, std::string_view document, WildcardHost &host);

} // namespace contract
