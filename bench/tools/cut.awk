# The sweeps from one time to another and the bins of one band, as a recording.
# Variables: from and to, times of day; low and high, in Hz.
BEGIN { FS = ", " }

$2 >= from && $2 <= to && $4 > low && $3 < high {
    first = 0
    for (i = 7; i <= NF; ++i) {
        middle = $3 + (i - 6.5) * $5
        if (middle >= low && middle < high) {
            if (!first) {
                first = i
            }
            last = i
        }
    }
    if (!first) {
        next
    }
    printf "%s, %s, %d, %d, %s, %s", $1, $2, $3 + (first - 7) * $5, $3 + (last - 6) * $5, $5, $6
    for (i = first; i <= last; ++i) {
        printf ", %s", $i
    }
    printf "\n"
}
