#!/usr/bin/env bash
# Prints the protections of a program file against exploits, and fails if one is missing.
# Usage: tools/check-binary.sh PROGRAM...
set -euo pipefail

missing=0

# has WHAT PATTERN TEXT: a line of the text must match.
has() {
    if grep -qE -- "$2" <<<"$3"; then
        printf '  %-40s yes\n' "$1"
    else
        printf '  %-40s MISSING\n' "$1"
        missing=$((missing + 1))
    fi
}

# lacks WHAT PATTERN TEXT: no line of the text may match.
lacks() {
    if grep -qE -- "$2" <<<"$3"; then
        printf '  %-40s FOUND\n' "$1"
        missing=$((missing + 1))
    else
        printf '  %-40s none\n' "$1"
    fi
}

(($#)) || {
    echo "usage: $0 PROGRAM..." >&2
    exit 2
}
for program; do
    head=$(readelf --file-header --wide "$program")
    segments=$(readelf --segments --wide "$program")
    dynamic=$(readelf --dynamic --wide "$program")
    imports=$(readelf --dyn-syms --wide "$program" | grep ' UND ')
    echo "$program"
    has "loaded anywhere (PIE)" 'Type: +DYN' "$head"
    has "relocations read-only (GNU_RELRO)" 'GNU_RELRO' "$segments"
    has "and all bound at the start (BIND_NOW)" 'BIND_NOW|Flags:.*NOW' "$dynamic"
    has "stack that cannot be run" 'GNU_STACK .* RW ' "$segments"
    has "stack protector" '__stack_chk_fail' "$imports"
    has "fortified calls" '__[a-z]+_chk@' "$(grep -v __stack_chk_fail <<<"$imports")"
    has "assertions of the standard library" '__glibcxx_assert_fail' "$imports"
    lacks "segments both written and run" ' RWE ' "$segments"
    lacks "code that is patched when loaded" 'TEXTREL' "$dynamic"
    lacks "places of its own to load libraries from" 'R(UN)?PATH' "$dynamic"
done
((missing == 0)) || {
    echo "$missing missing" >&2
    exit 1
}
