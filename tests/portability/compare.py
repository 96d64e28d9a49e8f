#!/usr/bin/env python3
"""Compares the output of two builds of tests/portability/portability.

usage: compare.py COMMAND COMMAND      each the program, or a command line that runs it

Lines of the kind "same" have to be equal, numbers in lines of the kind "libm" may be 1 ulp apart. Prints the first
differences and fails if there are any.
"""
import subprocess
import sys


def ordered(bits, text):
    """The rank of a number, given by its bits, among all of its width; both zeros have rank 0."""
    sign = 1 << (4 * len(text) - 1)
    return bits if bits < sign else sign - bits


def ulps(a, b):
    """The distance of two numbers in ulp; None if they cannot be compared."""
    if a == b:
        return 0
    if "nan" in (a, b) or len(a) != len(b):
        return None
    return abs(ordered(int(a, 16), a) - ordered(int(b, 16), b))


def call_and_results(line):
    """KIND, the call, and the words of the result."""
    kind, rest = line.split(" ", 1)
    call, results = rest.rsplit(")", 1) if kind == "libm" else (rest, "")
    return kind, call, results.split()


def differences(reference, other):
    """The lines that differ by more than allowed, and how many differ by 1 ulp."""
    found, apart = [], 0
    if len(reference) != len(other):
        found.append(f"{len(reference)} and {len(other)} lines")
    for line, again in zip(reference, other):
        if line == again:
            continue
        kind, call, results = call_and_results(line)
        again_kind, again_call, again_results = call_and_results(again)
        distances = [ulps(a, b) for a, b in zip(results, again_results)]
        if (kind, call) != (again_kind, again_call) or kind != "libm" or None in distances \
                or len(results) != len(again_results) or max(distances) > 1:
            found.append(f"{line}\n    elsewhere {again}   {distances}")
        else:
            apart += 1
    return found, apart


def output_of(command):
    text = subprocess.run(command.split(), check=True, stdout=subprocess.PIPE).stdout.decode("utf-8")
    return text.splitlines()


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    reference, other = (output_of(command) for command in sys.argv[1:])
    found, apart = differences(reference, other)
    print(f"portability: {len(reference)} results, {apart} 1 ulp apart, "
          f"{len(found)} different")
    for difference in found[:20]:
        print(difference)
    return 1 if found or not reference else 0


if __name__ == "__main__":
    sys.exit(main())
