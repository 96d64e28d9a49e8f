# Shared by the installation tests: strict mode and the check of an example's output.
set -euo pipefail

expect_output() { # program, example
    diff "$(dirname "$0")/../../examples/$2/expected.txt" <("$1")
}
