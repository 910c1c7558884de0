// A locale that writes numbers with a decimal comma, in force as long as the object lives.
#pragma once

#include <clocale>
#include <initializer_list>

namespace support {

class CommaLocale {
public:
  CommaLocale() {
    for (const char *name :
         {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8", "de_DE", "fr_FR", "nl_NL.UTF-8"}) {
      found = std::setlocale(LC_ALL, name) != nullptr && *std::localeconv()->decimal_point == ',';
      if (found) return;
    }
  }
  ~CommaLocale() { std::setlocale(LC_ALL, "C"); }
  CommaLocale(const CommaLocale &) = delete;
  CommaLocale &operator=(const CommaLocale &) = delete;

  bool found = false;
};

} // namespace support
