#!/usr/bin/env bash
# types.sh QMLPLUGINDUMP FOLDER FILE: whether FILE describes the types of the module in FOLDER, but for the line with the
# paths of the run. With UPDATE=1, writes FILE.
set -euo pipefail

written=$("$1" -nonrelocatable RfUtils 1.0 "$2" | sed "s/^\/\/ 'qmlplugindump .*/\/\/ 'qmlplugindump -nonrelocatable RfUtils 1.0'/")
if [ "${UPDATE:-}" = 1 ]; then
    echo "$written" >"$3"
fi
diff "$3" <(echo "$written")
