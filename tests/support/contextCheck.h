// A check of the context that fails on demand. With a sound runtime only a context that cannot record anything fails
// it. Executables that use this are linked with imscodec_wrap_context_check.
#pragma once

namespace support {

// As long as it lives, the codec's rtxCheckContext gives a status instead of the answer.
class FailingCheck {
public:
  explicit FailingCheck(int status);
  ~FailingCheck();
  FailingCheck(const FailingCheck &) = delete;
  FailingCheck &operator=(const FailingCheck &) = delete;
};

} // namespace support
