// The dialogs of one entity, kept from the notifications of a subscription.
#pragma once

#include "imscodec.hpp"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace agent {

// What a document says in spite of elements that have no place where they stand; they are not in it. Servers send such
// documents: some put the remote side of a dialog before the local one. Nothing if the document has other faults, and
// valid as long as the result is.
std::optional<imscodec::dialoginfo::dialog_info>
usable(const imscodec::Result<imscodec::Record<imscodec::dialoginfo::dialog_info>> &result);

struct DialogState {
  std::string state; // trying, proceeding, early, confirmed or terminated
  std::string event; // what brought it about; empty if that is not said
  std::string with;  // the other side, by its name or else its URI; empty if that is not said

  friend bool operator==(const DialogState &, const DialogState &) = default;
};

class DialogStates {
public:
  enum class News {
    applied,
    gap, // applied, but something was missed: only full state makes the dialogs right again
    old, // not newer than what is known, and ignored
  };

  // What a document has changed.
  struct Change {
    std::string id;
    std::optional<DialogState> state; // none: the dialog is no longer there
  };

  News take(const imscodec::dialoginfo::dialog_info &info);

  const std::vector<Change> &changes() const { return newest; } // by the newest document
  const std::map<std::string, DialogState> &dialogs() const { return known; }

private:
  std::optional<std::uint32_t> version; // of the newest document; none before the first
  std::map<std::string, DialogState> known;
  std::map<std::string, DialogState> ended; // with the newest document
  std::vector<Change> newest;
};

} // namespace agent
