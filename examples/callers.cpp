// As small as a host in C++ can be: says of each call whether the user called or was called.
#include "imscodec.hpp"

#include <cstdio>
#include <string>

namespace {

constexpr std::string_view body = R"(<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" version="4" state="full"
  entity="sip:anna@home.example"><dialog id="a1" direction="recipient"><state>confirmed</state></dialog>
  <dialog id="a2" direction="initiator"><state>trying</state></dialog></dialog-info>)";

void show(std::string_view id, std::string_view direction) {
  std::printf("%s: %s\n", std::string(id).c_str(), std::string(direction).c_str());
}

int complain(const imscodec::Errors &errors) {
  for (const imscodec::Error error : errors) {
    char line[256];
    std::fprintf(stderr, "%s\n", error.format(line).data());
  }
  return 1;
}

} // namespace

int main() {
  imscodec::Context context;
  auto info = context.decode<imscodec::dialoginfo::dialog_info>(body);
  if (!info) return complain(info.errors());
  for (const auto call : info->dialog())
    if (const auto direction = call.direction()) show(call.id(), text(*direction));
  return 0;
}
