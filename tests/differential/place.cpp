#include "place.h"

#include <algorithm>

namespace differential {

namespace {

struct Open {
  Place place;
  std::vector<std::string> children;
};

} // namespace

Place placeAt(const std::string &body, size_t offset) {
  static const std::string section = "<![CDATA[";
  std::vector<Open> open(1); // the first stands for the document
  size_t wanted = 0;         // how many are open at the place; 0 while it is not reached
  for (size_t start = 0, end; start < body.size(); start = end) {
    bool closes = false;
    if (body.compare(start, section.size(), section) == 0) {
      end = body.find("]]>", start) + 3;
      open.back().place.text += body.substr(start + section.size(), end - 3 - start - section.size());
    } else if (body[start] == '<') {
      end = body.find('>', start) + 1;
      closes = body[start + 1] == '/' || body[end - 2] == '/';
      if (body[start + 1] != '/') {
        const std::vector<std::string> before = open.back().children;
        open.back().children.push_back(body.substr(start, end - start));
        const auto stop = body.begin() + static_cast<std::ptrdiff_t>(std::clamp(offset, start, end));
        const auto quotes = std::count(body.begin() + static_cast<std::ptrdiff_t>(start), stop, '"');
        open.push_back({{before, static_cast<size_t>(quotes) / 2, {}}, {}});
      }
    } else {
      end = std::min(body.find('<', start), body.size());
      open.back().place.text += body.substr(start, end - start);
    }
    if (wanted == 0 && offset < end) wanted = open.size();
    if (closes) {
      if (wanted == open.size()) break;
      open.pop_back();
    }
  }
  return open.back().place;
}

} // namespace differential
