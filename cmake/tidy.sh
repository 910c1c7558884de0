#!/bin/bash
# Runs clang-tidy over every source file, as the preset clang compiles it.
#
#   cmake/tidy.sh [FILE_PATTERN]
set -euo pipefail
cd "$(dirname "$0")/.."

build=${IMSCODEC_TIDY_BUILD:-build/clang}
if [ ! -f "$build/compile_commands.json" ]; then
  cmake --preset clang >/dev/null
fi
run-clang-tidy -quiet -p "$build" -j "$(nproc)" "${1:-^$PWD/(runtime|xmlAddOns|cli|examples|bench|tests)/}"
