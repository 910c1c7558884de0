#include "sites.h"

#include "Member.h"

#include <algorithm>

using namespace ims;

namespace frame {

namespace {

constexpr File files[] = {File::base, File::encoder, File::decoder, File::handlers, File::validators};

template <class T> bool addNew(std::vector<const T *> &all, const T *one) {
  if (std::find(all.begin(), all.end(), one) != all.end()) return false;
  all.push_back(one);
  return true;
}

bool hasItems(const Field &field) {
  return field.kind == Kind::record || field.kind == Kind::recordList || field.kind == Kind::choice ||
         field.kind == Kind::choiceList;
}

void add(Reachable &found, const TypeSchema &type) {
  if (!addNew(found.types, &type)) return;
  for (const Field &field : fieldsOf(type)) {
    if (hasItems(field)) add(found, *field.type);
    if (field.kind == Kind::enumeration) addNew(found.enumerations, field.enumeration);
  }
}

std::string place(const char *name, int row, int step) {
  return std::string(name) + " row " + std::to_string(row) + " step " + std::to_string(step);
}

} // namespace

Reachable reachable(const std::vector<const DocumentSchema *> &documents) {
  Reachable found;
  for (const DocumentSchema *document : documents) {
    if (document->type) add(found, *document->type);
    if (document->simple && document->simple->enumeration) addNew(found.enumerations, document->simple->enumeration);
  }
  return found;
}

std::vector<Site> sites(const std::vector<const DocumentSchema *> &documents) {
  std::vector<Site> all;
  Reachable found = reachable(documents);
  for (const TypeSchema *type : found.types)
    for (File file : files)
      for (int row = 0; row <= type->fieldCount; ++row)
        for (int step = 1; step < stepsPerRow; ++step)
          all.push_back({place(type->name, row, step), type->module->paths[int(file)],
                         siteLine(*type, file, static_cast<uint8_t>(row), static_cast<uint8_t>(step))});
  for (const EnumSchema *type : found.enumerations)
    for (int step = 1; step < stepsPerRow; ++step)
      all.push_back({place(type->name, 0, step), type->module->paths[int(File::encoder)],
                     siteLine(*type, static_cast<uint8_t>(step))});
  for (const DocumentSchema *document : documents)
    for (File file : files)
      for (int step = 1; step < stepsPerRow; ++step)
        all.push_back({place(document->root, 0, step), document->module->paths[int(file)],
                       siteLine(*document, file, static_cast<uint8_t>(step))});
  return all;
}

} // namespace frame
