#!/usr/bin/env bash
# Compares the differences of all points of two recordings between `rfutils compare` and a few lines of awk.
#
# usage: compare.sh RFUTILS SAMPLES AWK
set -euo pipefail

rfutils=$1
samples=$2
awk=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# date, time, Hz low, Hz high, Hz step, samples, dB, dB, ... -> Hz level, a line for each level that was measured, sorted
levels_of() { # recording
    LC_ALL=C "$awk" -F ', *' '{
        for (i = 0; $3 + i * $5 < $4; i++)
            if ($(7 + i) ~ /[0-9]/) printf "%.2f %s\n", $3 + i * $5, $(7 + i)
    }' "$1" | LC_ALL=C sort -k 1,1n -k 2,2n
}

# Hz level -> Hz statistic
statistic_of() { # statistic
    LC_ALL=C "$awk" -v of="$1" '
        function answer() {
            if (count == 0) return
            if (of == "average") value = sum / count
            if (of == "minimum") value = level[1]
            if (of == "maximum") value = level[count]
            if (of == "median") value = (level[int((count + 1) / 2)] + level[int(count / 2) + 1]) / 2
            printf "%s %.17g\n", hz, value
        }
        $1 != hz { answer(); hz = $1; count = 0; sum = 0 }
        { level[++count] = $2; sum += $2 }
        END { answer() }'
}

for statistic in average maximum minimum median; do
    for day in fm_band fm_next_day; do
        levels_of "$samples/$day.csv" | statistic_of "$statistic" >"$folder/$day"
    done
    paste -d ' ' "$folder/fm_band" "$folder/fm_next_day" |
        LC_ALL=C "$awk" '$1 != $3 { exit 1 } { printf "%s %.17g\n", $1, $4 - $2 }' >"$folder/awk"
    "$rfutils" compare "$samples/fm_band.csv" "$samples/fm_next_day.csv" --of "$statistic" --format csv |
        LC_ALL=C "$awk" -F , 'NR > 1 { printf "%.2f %s\n", $2 * 1e6, $5 }' >"$folder/rfutils"
    if [ ! -s "$folder/awk" ] || ! paste -d ' ' "$folder/awk" "$folder/rfutils" | LC_ALL=C "$awk" '
        { apart = $4 - $2 }
        $1 != $3 || apart > 1e-9 || apart < -1e-9 { print "awk: " $1, $2 ", rfutils: " $3, $4; bad = 1 }
        END { exit bad }' >"$folder/differences"; then
        echo "$statistic: awk and rfutils differ"
        head -n 20 "$folder/differences"
        exit 1
    fi
    echo "$statistic: $(wc -l <"$folder/awk") points"
done
