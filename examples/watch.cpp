// The C++ layer: shows who is on the phone, then writes the same document with one call more.
#include "imscodec.hpp"

#include <cstdio>

using namespace imscodec;
using namespace imscodec::dialoginfo;

namespace {

constexpr std::string_view body = R"(<dialog-info xmlns="urn:ietf:params:xml:ns:dialog-info" version="4" state="partial"
  entity="sip:anna@home.example"><dialog id="a1" direction="recipient"><state code="200">confirmed</state>
  <remote><identity display-name="Ben">sip:ben@away.example</identity></remote></dialog></dialog-info>)";

void show(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

int complain(const Outcome &outcome) {
  for (const Error error : outcome.errors()) {
    char line[256];
    std::fprintf(stderr, "%s\n", error.format(line).data());
  }
  return 1;
}

bool addCall(Context &context, dialog_info info) {
  auto call = info.add_dialog(context);
  if (!call) return false;
  call->set_direction(dialog_direction::initiator);
  return call->set_id(context, "a2") && call->state().set_value(context, "trying");
}

} // namespace

int main() {
  Context context;
  auto info = context.decode<dialog_info>(body);
  if (!info) return complain(info);

  for (const dialog call : info->dialog()) {
    show(call.id());
    show(" is ");
    show(call.state().value());
    if (const auto remote = call.remote()) {
      if (const auto identity = remote->identity()) {
        show(" with ");
        show(identity->display_name().value_or(identity->value()));
      }
    }
    if (const auto direction = call.direction()) {
      show(", as ");
      show(text(*direction));
    }
    show("\n");
  }

  if (!addCall(context, *info)) return 1;
  const auto written = context.encode(*info);
  if (!written) return complain(written);
  show(*written);
  show("\n");
  return 0;
}
