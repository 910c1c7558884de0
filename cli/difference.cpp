#include "difference.h"

#include "Member.h"
#include "meaning.h"
#include "schemaName.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <string_view>

namespace cli {

namespace {

using ims::Field;
using ims::Kind;
using ims::TypeSchema;

// What a path calls a member; empty for what has no name of its own, such as a list of elements of several names.
std::string nameOf(const TypeSchema &type, const Field &field) {
  if (field.kind == Kind::choice || field.kind == Kind::choiceList) return {};
  return std::string(schemaName(type, field));
}

// The attribute that tells the items of a list apart, or null: position does.
const Field *identifierOf(const TypeSchema &type) {
  for (const Field &field : ims::attributesOf(type))
    if ((type.requiredAttributes >> field.id & 1u) != 0 && field.kind == Kind::text &&
        std::strcmp(type.attributeNames[field.id], "id") == 0)
      return &field;
  return nullptr;
}

std::vector<const void *> itemsOf(const Field &field, const void *record) {
  std::vector<const void *> items;
  for (const RtxListNode *node = ims::listAt(record, field).head; node; node = node->next)
    items.push_back(node->data);
  return items;
}

// Two items that stand for the same thing; one of them is null if it has no partner.
struct Pair {
  std::string label; // what stands in brackets
  const void *before;
  const void *after;
};

std::vector<Pair> matchedByPosition(const std::vector<const void *> &before, const std::vector<const void *> &after) {
  std::vector<Pair> pairs;
  for (std::size_t i = 0; i < std::max(before.size(), after.size()); ++i)
    pairs.push_back(
        {std::to_string(i), i < before.size() ? before[i] : nullptr, i < after.size() ? after[i] : nullptr});
  return pairs;
}

// Items of one id are matched in their order. The pairs come in the order of the first list; what only the second has
// follows.
std::vector<Pair> matchedByIdentifier(const Field &identifier, const std::vector<const void *> &before,
                                      const std::vector<const void *> &after) {
  const auto labelOf = [&](const void *item) { return "id=" + jsonLine(memberJson(identifier, item)); };
  std::map<std::string, std::vector<std::size_t>> partners; // positions of after, the first one last
  for (std::size_t i = after.size(); i-- > 0;)
    partners[labelOf(after[i])].push_back(i);

  std::vector<Pair> pairs;
  std::vector<bool> matched(after.size());
  for (const void *item : before) {
    Pair pair{labelOf(item), item, nullptr};
    std::vector<std::size_t> &same = partners[pair.label];
    if (!same.empty()) {
      matched[same.back()] = true;
      pair.after = after[same.back()];
      same.pop_back();
    }
    pairs.push_back(std::move(pair));
  }
  for (std::size_t i = 0; i < after.size(); ++i)
    if (!matched[i]) pairs.push_back({labelOf(after[i]), nullptr, after[i]});
  return pairs;
}

bool sameMeaning(const Json &before, const Json &after) {
  if (before == after) return true;
  return before.is_string() && after.is_string() &&
         meaningOf(before.get<std::string>()) == meaningOf(after.get<std::string>());
}

class Comparison {
public:
  std::vector<Difference> found;

  void compareRecords(const std::string &path, const TypeSchema &type, const void *before, const void *after) {
    if (type.content == ims::Content::choice) {
      compareChoices(path, type, before, after);
      return;
    }
    for (const Field &field : ims::fieldsOf(type)) {
      const std::string name = nameOf(type, field);
      const bool hasBefore = hasValue(field, before);
      const bool hasAfter = hasValue(field, after);
      const std::string memberPath = name.empty() ? path : below(path, name);
      if (hasBefore && hasAfter) {
        compareMembers(memberPath, field, before, after);
      } else if (hasBefore || hasAfter) {
        report(memberPath, hasBefore ? memberJson(field, before) : Json(),
               hasAfter ? memberJson(field, after) : Json());
      }
    }
  }

private:
  static std::string below(const std::string &path, const std::string &name) {
    return path.empty() ? name : path + "." + name;
  }

  static bool hasValue(const Field &field, const void *record) {
    return ims::has(field, ims::printedAlways) || ims::isPresent(field, record);
  }

  void report(const std::string &path, Json before, Json after) {
    found.push_back({path, std::move(before), std::move(after)});
  }

  void compareChoices(const std::string &path, const TypeSchema &type, const void *before, const void *after) {
    const Field *alternative = ims::alternativeOf(type, before);
    if (alternative != ims::alternativeOf(type, after)) {
      report(path, recordJson(type, before), recordJson(type, after));
    } else if (alternative) {
      const std::string name = nameOf(type, *alternative);
      compareMembers(name.empty() ? path : below(path, name), *alternative, before, after);
    }
  }

  void compareMembers(const std::string &path, const Field &field, const void *before, const void *after) {
    switch (field.kind) {
    case Kind::record:
    case Kind::choice:
      compareRecords(path, *field.type, static_cast<const char *>(before) + field.offset,
                     static_cast<const char *>(after) + field.offset);
      return;
    case Kind::recordList:
    case Kind::choiceList:
    case Kind::textList:
    case Kind::foreignList: compareLists(path, field, itemsOf(field, before), itemsOf(field, after)); return;
    case Kind::attributeList: compareAttributes(path, itemsOf(field, before), itemsOf(field, after)); return;
    case Kind::namespaceList: return;
    case Kind::foreign: {
      Json old = memberJson(field, before);
      Json now = memberJson(field, after);
      if (!sameMeaning(old, now)) report(below(path, "any"), std::move(old), std::move(now));
      return;
    }
    default: {
      Json old = memberJson(field, before);
      Json now = memberJson(field, after);
      if (old != now) report(path, std::move(old), std::move(now));
    }
    }
  }

  void compareLists(const std::string &path, const Field &field, const std::vector<const void *> &before,
                    const std::vector<const void *> &after) {
    const Field *identifier = field.kind == Kind::recordList ? identifierOf(*field.type) : nullptr;
    const std::string list = field.kind == Kind::foreignList ? below(path, "any") : path;
    for (const Pair &pair :
         identifier ? matchedByIdentifier(*identifier, before, after) : matchedByPosition(before, after)) {
      const std::string item = list + "[" + pair.label + "]";
      if (pair.before && pair.after) {
        compareItems(item, field, pair.before, pair.after);
      } else {
        report(item, pair.before ? itemJson(field, pair.before) : Json(),
               pair.after ? itemJson(field, pair.after) : Json());
      }
    }
  }

  void compareItems(const std::string &path, const Field &field, const void *before, const void *after) {
    if (field.kind == Kind::recordList || field.kind == Kind::choiceList) {
      compareRecords(path, *field.type, before, after);
      return;
    }
    Json old = itemJson(field, before);
    Json now = itemJson(field, after);
    const bool same = field.kind == Kind::foreignList ? sameMeaning(old, now) : old == now;
    if (!same) report(path, std::move(old), std::move(now));
  }

  // Their order means nothing, and no name comes twice.
  void compareAttributes(const std::string &path, const std::vector<const void *> &before,
                         const std::vector<const void *> &after) {
    std::map<std::string, std::pair<Json, Json>> values;
    const auto valueOf = [](const void *item) {
      const char *value = static_cast<const RtxNamePair *>(item)->value;
      return Json(value ? value : "");
    };
    for (const void *item : before)
      values[static_cast<const RtxNamePair *>(item)->name].first = valueOf(item);
    for (const void *item : after)
      values[static_cast<const RtxNamePair *>(item)->name].second = valueOf(item);
    for (auto &[name, pair] : values)
      if (pair.first != pair.second) report(below(path, name), std::move(pair.first), std::move(pair.second));
  }
};

} // namespace

std::vector<Difference> differences(const ims::DocumentSchema &kind, const void *before, const void *after) {
  Comparison comparison;
  if (kind.type) {
    comparison.compareRecords({}, *kind.type, before, after);
    for (Difference &difference : comparison.found)
      if (difference.path.empty()) difference.path = kind.root; // the text of the root itself
    return std::move(comparison.found);
  }
  Json old = documentJson(kind, before);
  Json now = documentJson(kind, after);
  if (old != now) comparison.found.push_back({kind.root, std::move(old), std::move(now)});
  return std::move(comparison.found);
}

} // namespace cli
