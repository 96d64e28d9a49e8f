# The sum of each point over all sweeps of a recording, in the order in which the hops first came.
{
    if (!($3 in first)) {
        first[$3] = points - 6
        points += NF - 6
    }
    base = first[$3]
    for (i = 7; i <= NF; ++i)
        sum[base + i] += $i
}
END {
    for (i = 1; i <= points; ++i)
        print i, sum[i]
}
