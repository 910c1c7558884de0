#include "DialogStates.h"

#include <utility>

namespace agent {

using imscodec::dialoginfo::dialog;
using imscodec::dialoginfo::dialog_info;
using imscodec::dialoginfo::dialog_info_state;

namespace {

DialogState stateOf(const dialog &read) {
  DialogState state;
  state.state = read.state().value();
  if (const auto event = read.state().event()) state.event = text(*event);
  if (const auto remote = read.remote()) {
    if (const auto identity = remote->identity()) state.with = identity->display_name().value_or(identity->value());
  }
  return state;
}

} // namespace

std::optional<dialog_info> usable(const imscodec::Result<imscodec::Record<dialog_info>> &result) {
  if (!result.partial()) return std::nullopt;
  for (const imscodec::Error error : result.errors())
    if (error.status() != STATUS_UNEXPECTED_ELEMENT) return std::nullopt;
  return result.partial()->view();
}

DialogStates::News DialogStates::take(const dialog_info &info) {
  newest.clear();
  if (version && info.version() <= *version) return News::old;
  const bool full = info.state() == dialog_info_state::full;
  const bool next = version && info.version() - *version == 1;
  version = info.version();

  // Nothing need name a dialog again that has ended. If the next document does, that is no change.
  const std::map<std::string, DialogState> before = full ? std::exchange(known, {}) : known;
  const std::map<std::string, DialogState> endedBefore = std::exchange(ended, {});
  for (const dialog read : info.dialog()) {
    const std::string id(read.id());
    DialogState state = stateOf(read);
    const bool isOver = state.state == "terminated";
    const auto &others = isOver && !before.contains(id) ? endedBefore : before;
    const auto found = others.find(id);
    if (found == others.end() || found->second != state) newest.push_back({id, state});
    if (isOver) known.erase(id);
    (isOver ? ended : known).insert_or_assign(id, std::move(state));
  }
  // What full state does not name is no longer there.
  if (full) {
    for (const auto &[id, state] : before)
      if (!known.contains(id) && !ended.contains(id)) newest.push_back({id, std::nullopt});
  }
  return full || next ? News::applied : News::gap;
}

} // namespace agent
