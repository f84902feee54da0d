#!/usr/bin/env bash
# Builds Tillery if needed and starts it on two sample repositories of its
# own (--demo), leaving your own list alone. Without a display it writes
# screenshots of their Changes pages instead, saying where. Extra arguments
# go to Tillery.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
exec "$tillery_build/tillery" --demo "$@"
