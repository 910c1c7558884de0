#!/bin/bash
# Checks that every source file is as clang-format would write it; --fix writes it so.
set -euo pipefail
cd "$(dirname "$0")/.."

find runtime xmlAddOns bindings cli examples bench fuzz interop tests -type f \
  \( -name '*.h' -o -name '*.hpp' -o -name '*.c' -o -name '*.cpp' \) -print0 |
  if [ "${1:-}" = --fix ]; then
    xargs -0 -r clang-format -i
  else
    xargs -0 -r clang-format --dry-run -Werror
  fi
