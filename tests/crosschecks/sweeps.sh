#!/usr/bin/env bash
# Compares maximum, average, minimum, count and count above a limit of every point of a recording between
# `rfutils trace` and a few lines of awk.
#
# usage: sweeps.sh RFUTILS SAMPLES AWK
set -euo pipefail

rfutils=$1
samples=$2
awk=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

readonly limit=-60

# date, time, Hz low, Hz high, Hz step, samples, dB, dB, ... -> Hz count average maximum minimum above,
# over the last `keep` sweeps. A sweep begins where a hop comes again.
by_awk() { # keep, recording
    LC_ALL=C "$awk" -F ', *' -v keep="$1" -v limit="$limit" '
        FNR == 1 { delete seen; sweeps = sweep; sweep = 0 }
        sweep == 0 || $3 in seen { delete seen; sweep++ }
        { seen[$3] }
        NR == FNR || sweep <= sweeps - keep { next }
        {
            for (i = 7; i <= NF; i++) {
                hz = $3 + (i - 7) * $5
                if (hz >= $4 || $i !~ /[0-9]/ || $i == -999)
                    continue
                hz = sprintf("%.2f", hz)
                if (!(hz in count) || $i + 0 > most[hz]) most[hz] = $i + 0
                if (!(hz in count) || $i + 0 < least[hz]) least[hz] = $i + 0
                count[hz]++
                sum[hz] += $i
                above[hz] += $i > limit
            }
        }
        END {
            for (hz in count)
                printf "%s %d %.17g %.17g %.17g %d\n",
                    hz, count[hz], sum[hz] / count[hz], most[hz], least[hz], above[hz]
        }' "$2" "$2" | LC_ALL=C sort -n
}

# The same columns. Points that were never measured have no levels.
by_rfutils() { # keep, recording
    "$rfutils" trace "$2" --keep "$1" --all-points --limit "$limit" --format csv |
        LC_ALL=C "$awk" -F , 'NR > 1 && $3 > 0 {
            printf "%.2f %d %.17g %.17g %.17g %d\n", $2 * 1e6, $3, $4, $5, $6, $8
        }' | LC_ALL=C sort -n
}

# All numbers must be equal, averages included: both sum in order.
expect_alike() { # keep, recording
    by_awk "$@" >"$folder/awk"
    by_rfutils "$@" >"$folder/rfutils"
    if ! diff "$folder/awk" "$folder/rfutils" >"$folder/differences" || [ ! -s "$folder/awk" ]; then
        echo "${2##*/}, the last $1 sweeps: awk (<) and rfutils (>) differ"
        head -n 20 "$folder/differences"
        exit 1
    fi
    LC_ALL=C "$awk" -v of="${2##*/}, the last $1 sweeps" \
        '{ levels += $2 } END { print of ": " NR " points, " levels " levels" }' "$folder/awk"
}

# Sums over all sweeps are those over as many sweeps as are there.
expect_all_alike() { # recording
    if ! cmp <(by_rfutils all "$1") <(by_rfutils 1000000 "$1"); then
        echo "${1##*/}: --keep all and --keep 1000000 differ"
        exit 1
    fi
}

# 600 sweeps of three hops, some of them missing, with levels of every kind; each line repeats its last
# level as rtl_power does.
made_recording() {
    LC_ALL=C "$awk" '
        function below(bound) { state = (state * 16807) % 2147483647; return state % bound }
        function level(kind) {
            kind = below(40)
            if (kind == 0) return "nan"
            if (kind == 1) return "-inf"
            if (kind == 2) return "-999"
            if (kind == 3) return ""
            if (kind == 4) return "-1.5e1"
            return sprintf("%.2f", -20 - below(10000) / 100)
        }
        BEGIN {
            state = 20241121
            for (sweep = 0; sweep < 600; sweep++)
                for (hop = 0; hop < 3; hop++) {
                    if (sweep > 4 && hop > 0 && below(15) == 0)
                        continue
                    low = 430000000 + hop * 2000000
                    line = sprintf("2024-05-04, %02d:%02d:00, %d, %d, 250000.00, 16",
                                   sweep / 60, sweep % 60, low, low + 2000000)
                    for (i = 0; i < 8; i++)
                        line = line ", " (last = level())
                    print line ", " last
                }
        }'
}

made_recording >"$folder/made.csv"
for recording in "$samples/fm_band.csv" "$samples/wifi_band.csv" "$folder/made.csv"; do
    for keep in 1 17 1000000; do
        expect_alike "$keep" "$recording"
    done
    expect_all_alike "$recording"
done
