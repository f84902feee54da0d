#!/usr/bin/env bash
# Builds Tillery if needed and starts it. Without a display it renders the
# main window offscreen and writes a screenshot, saying where.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
exec "$tillery_build/tillery" "$@"
