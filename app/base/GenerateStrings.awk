# Turns strings.txt into the rows of a C++ table. Raw string literals spare every escape.
/^[0-9]+ ".*"$/ {
    id = $1
    printf "{%d, R\"~(%s)~\"},\n", id, substr($0, length(id) + 3, length($0) - length(id) - 3)
    next
}
/^#/ { next }
{ printf "strings.txt:%d: not a row: %s\n", NR, $0 > "/dev/stderr"; exit 1 }
