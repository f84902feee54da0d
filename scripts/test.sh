#!/usr/bin/env bash
# Builds Tillery if needed and runs every test; fails when any test fails.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
cd "$tillery_build"
ctest -j2 --output-on-failure --timeout 900 "$@"
