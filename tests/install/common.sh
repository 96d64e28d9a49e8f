# Shared by the installation tests: strict mode and the check of the example's output.
set -euo pipefail

expect_levels() { # program
    local expected
    expected=$'-30.0 dBm = 77.0 dBuV\n0.0 dBm = 107.0 dBuV\n20.0 dBm = 127.0 dBuV'
    local got
    got=$("$1")
    if [ "$got" != "$expected" ]; then
        printf 'expected:\n%s\ngot:\n%s\n' "$expected" "$got" >&2
        exit 1
    fi
}
