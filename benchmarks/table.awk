# SPDX-License-Identifier: MIT
# Compares the figures (first file) with the limits (second file): one row for each limit whose figure was measured.

function shown(value, measure) {
    if (measure != "time") return sprintf("%.4g %s", value, measure)
    if (value < 1e3) return sprintf("%.3g ns", value)
    if (value < 1e6) return sprintf("%.3g us", value / 1e3)
    if (value < 1e9) return sprintf("%.4g ms", value / 1e6)
    return sprintf("%.4g s", value / 1e9)
}

function row(name, ours, other, theirs, relation, limit, verdict) {
    printf "%-26s %12s   %-28s %12s %11s  %-12s %s\n", name, ours, other, theirs, relation, limit, verdict
}

FILENAME == ARGV[1] { figure[$1, $2] = $3; next }
/^#/ || NF == 0 { next }
!(($1, $2) in figure) { if (!told[$1]++) missing = missing " " $1; next }
{
    if (!heading++) row("", "ours", "held against", "", "", "at most", "")
    ours = figure[$1, $2]
    other = $5 == "-" ? "" : $5
    if (other != "" && !((other, $2) in figure)) {
        row($1, shown(ours, $2), other, "not measured", "", $3 " " $4, "?")
        next
    }
    theirs = figure[other, $2]
    measured = $3 == "x" ? ours / theirs : $3 == "+" ? ours - theirs : ours
    relation = $3 == "=" ? "" : sprintf("%s %.3g", $3, measured)
    met = measured <= $4
    missed += !met
    row($1, shown(ours, $2), other, other == "" ? "" : shown(theirs, $2), relation, $3 " " $4, met ? "met" : "MISSED")
}
END {
    if (missing != "" && filter == "") print "\nNot measured in this run:" missing
    if (missed) print "\n" missed " missed"
}
