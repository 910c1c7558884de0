#include "schemaName.h"

namespace cli {

std::string_view schemaName(const ims::TypeSchema &type, const ims::Field &field) {
  switch (field.part) {
  case ims::Part::element: return type.elements[field.id].name;
  case ims::Part::attribute: return type.attributeNames[field.id];
  case ims::Part::content:
  case ims::Part::carried: break;
  }
  return {};
}

} // namespace cli
