// Writes a composing indication from C++.
#include "imscodec.hpp"

#include <cstdio>

int main() {
  imscodec::Context context;
  auto message = context.create<imscodec::iscomposing::isComposing>();
  if (!message->set_state(context, "idle")) return 1;
  const auto written = context.encode(message);
  if (!written) return 1;
  std::fwrite(written->data(), 1, written->size(), stdout);
  return 0;
}
