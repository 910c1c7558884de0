// What a host does with a message: takes it, looks at all that it may say, and writes it again. Once through the C
// interface and once through the C++ layer, line by line alike, so that the difference is what the layer costs.
#include "workloads.h"

#include "imscodec.hpp"

#include <cstring>
#include <stdexcept>

namespace bench {

namespace {

using namespace imscodec;

void require(bool condition, const char *what) {
  if (!condition) throw std::runtime_error(what);
}

// What came of a message.
struct Seen {
  uint64_t count = 0;
  const char *written = nullptr;
  size_t length = 0;

  void text(const char *bytes, size_t size) {
    count = count * 31 + size + static_cast<unsigned char>(size ? *bytes : 0);
  }
  void text(const char *text) { this->text(text, strlen(text)); }
  void text(std::string_view text) { this->text(text.data(), text.size()); }
  void number(uint64_t value) { count = count * 31 + value; }
};

// ---- In C -----------------------------------------------------------------------------------------------------

void look(const tns__isComposing &message, Seen &seen) {
  seen.text(message.tns_state.value);
  if (message.m & tns__isComposing_has_lastactive) seen.text(message.tns_lastactive.value);
  if (message.m & tns__isComposing_has_contenttype) seen.text(message.tns_contenttype.value);
  if (message.m & tns__isComposing_has_refresh) seen.number(message.tns_refresh);
}

void look(const tns_nameaddr &address, Seen &seen) {
  seen.text(address.value.value);
  if (address.m & tns_nameaddr_has_display_name) seen.text(address.tns_display_name.value);
}

void look(const tns_participant &participant, Seen &seen) {
  if (participant.m & tns_participant_has_identity) look(participant.tns_identity, seen);
  if (participant.m & tns_participant_has_target) {
    seen.text(participant.tns_target.tns_uri.value);
    for (const RtxListNode *node = participant.tns_target.tns_param.head; node; node = node->next) {
      const auto *parameter = static_cast<const tns_participant_target_param *>(node->data);
      seen.text(parameter->tns_pname.value);
      seen.text(parameter->tns_pval.value);
    }
  }
  if (participant.m & tns_participant_has_cseq) seen.number(participant.tns_cseq);
}

void look(const tns__dialog &dialog, Seen &seen) {
  seen.text(dialog.tns_id.value);
  if (dialog.m & tns__dialog_has_call_id) seen.text(dialog.tns_call_id.value);
  if (dialog.m & tns__dialog_has_direction) seen.number(dialog.tns_direction);
  seen.text(dialog.tns_state.value.value);
  if (dialog.tns_state.m & tns__state_has_event) seen.number(dialog.tns_state.tns_event);
  if (dialog.tns_state.m & tns__state_has_code) seen.number(dialog.tns_state.tns_code);
  if (dialog.m & tns__dialog_has_duration) seen.number(dialog.tns_duration);
  if (dialog.m & tns__dialog_has_route_set) {
    for (const RtxListNode *node = dialog.tns_route_set.tns_hop.head; node; node = node->next)
      seen.text(static_cast<const RtxXmlString *>(node->data)->value);
  }
  if (dialog.m & tns__dialog_has_local) look(dialog.tns_local, seen);
  if (dialog.m & tns__dialog_has_remote) look(dialog.tns_remote, seen);
}

void look(const tns__dialog_info &info, Seen &seen) {
  seen.text(info.tns_entity.value);
  seen.number(info.tns_version);
  seen.number(info.tns_state);
  for (const RtxListNode *node = info.tns_dialog.head; node; node = node->next)
    look(*static_cast<const tns__dialog *>(node->data), seen);
}

template <class Record, int (*decode)(RuntimeContext *, Record *), int (*encode)(RuntimeContext *, const Record *)>
Seen handle(RuntimeContext *ctx, const std::string &body) {
  Seen seen;
  Record record;
  require(rtxSetInputZ(ctx, body.data(), body.size()) == 0 && decode(ctx, &record) == 0, "decoding in C failed");
  look(record, seen);
  require(rtxSetOutputDynamic(ctx) == 0 && encode(ctx, &record) == 0, "encoding in C failed");
  seen.written = rtxGetOutput(ctx, &seen.length);
  rtxContextReset(ctx);
  return seen;
}

// ---- In C++ ---------------------------------------------------------------------------------------------------

void look(iscomposing::isComposing message, Seen &seen) {
  seen.text(message.state());
  if (const auto since = message.lastactive()) seen.text(*since);
  if (const auto type = message.contenttype()) seen.text(*type);
  if (const auto seconds = message.refresh()) seen.number(*seconds);
}

void look(dialoginfo::nameaddr address, Seen &seen) {
  seen.text(address.value());
  if (const auto name = address.display_name()) seen.text(*name);
}

void look(dialoginfo::participant participant, Seen &seen) {
  if (const auto identity = participant.identity()) look(*identity, seen);
  if (const auto target = participant.target()) {
    seen.text(target->uri());
    for (const auto parameter : target->param()) {
      seen.text(parameter.pname());
      seen.text(parameter.pval());
    }
  }
  if (const auto number = participant.cseq()) seen.number(*number);
}

void look(dialoginfo::dialog dialog, Seen &seen) {
  seen.text(dialog.id());
  if (const auto call = dialog.call_id()) seen.text(*call);
  if (const auto direction = dialog.direction()) seen.number(static_cast<uint64_t>(*direction));
  const auto state = dialog.state();
  seen.text(state.value());
  if (const auto event = state.event()) seen.number(static_cast<uint64_t>(*event));
  if (const auto code = state.code()) seen.number(*code);
  if (const auto seconds = dialog.duration()) seen.number(*seconds);
  if (const auto route = dialog.route_set()) {
    for (const auto hop : route->hop())
      seen.text(hop);
  }
  if (const auto local = dialog.local()) look(*local, seen);
  if (const auto remote = dialog.remote()) look(*remote, seen);
}

void look(dialoginfo::dialog_info info, Seen &seen) {
  seen.text(info.entity());
  seen.number(info.version());
  seen.number(static_cast<uint64_t>(info.state()));
  for (const auto dialog : info.dialog())
    look(dialog, seen);
}

template <class View> Seen handle(Context &context, const std::string &body) {
  Seen seen;
  auto record = context.decodeInPlace<View>(body.data(), body.size());
  require(record.has_value(), "decoding in C++ failed");
  look(*record, seen);
  const auto written = context.encode(*record);
  require(written.has_value(), "encoding in C++ failed");
  seen.written = written->data();
  seen.length = written->size();
  (*record).release();
  context.reset();
  return seen;
}

// ---- Workloads ------------------------------------------------------------------------------------------------

enum class Language : bool {
  c,
  cpp
};

template <Language language, class View, auto decode, auto encode> class Host : public Workload {
public:
  explicit Host(const Document &measured) : document(measured) {
    require(bool(context), "no context");
    const Seen inC = handle<typename View::Raw, decode, encode>(context.get(), document.body);
    const std::string written(inC.written, inC.length);
    const Seen inCpp = handle<View>(context, document.body);
    require(inC.count == inCpp.count && written == std::string_view(inCpp.written, inCpp.length),
            "C and C++ do not see the same");
  }

  void run() override {
    if constexpr (language == Language::c) {
      seen = handle<typename View::Raw, decode, encode>(context.get(), document.body);
    } else {
      seen = handle<View>(context, document.body);
    }
  }

  size_t bytes() const override { return document.body.size(); }

  Storage storage() override {
    RtxHeapStats stats = {};
    rtxHeapStats(context.get(), &stats);
    return {.systemCalls = stats.systemCalls, .peak = stats.peakUsed, .result = 0};
  }

private:
  const Document &document;
  Context context;
  Seen seen; // kept, so that nothing of it is left out
};

template <Language language> std::unique_ptr<Workload> make(const Document &document) {
  if (document.name == "a")
    return std::make_unique<Host<language, iscomposing::isComposing, QxXmlD_tns_isComposing, QxXmlE_tns_isComposing>>(
        document);
  return std::make_unique<Host<language, dialoginfo::dialog_info, QxXmlD_tns_dialog_info, QxXmlE_tns_dialog_info>>(
      document);
}

} // namespace

std::unique_ptr<Workload> makeHostInC(const Document &document) { return make<Language::c>(document); }
std::unique_ptr<Workload> makeHostInCpp(const Document &document) { return make<Language::cpp>(document); }

} // namespace bench
