// Records as the codec's tables describe them, which the C++ layer does not look at: filled with all that a type can
// hold, shown, and changed in every place.
#pragma once

#include "Schema.h"

#include <functional>
#include <set>
#include <string>

namespace tables {

// The type of a document that is a record.
const ims::TypeSchema &typeOf(const char *root);

// Gives every member of an empty record a value that is nowhere else in it, with two items in each list and, in a list
// of choices, one for each alternative. variant selects the alternatives of other choices. False without storage.
bool fill(RuntimeContext *ctx, const ims::TypeSchema &type, void *record, unsigned variant = 0);

// All that is present, members in the order of the tables, CDATA flags and texts that are not set included.
std::string show(const ims::TypeSchema &type, const void *record);

// Changes a record in one place and calls changed with the name of that place, and puts it back, for every place that
// is present: values, presence bits, selectors, the lengths and the order of lists. Returns the kinds of members that
// were among them.
std::set<ims::Kind> changeEach(const ims::TypeSchema &type, void *record,
                               const std::function<void(const std::string &place)> &changed);

} // namespace tables
