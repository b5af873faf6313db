#!/bin/sh
# Writes the default settings as a file that the registry editor merges:
#   write-default-settings.sh TEMPLATES_PATH INSTALLED_PATH > settings.reg
# Both are Windows paths, for example 'Z:\home\ann\samples'. The result is UTF-16, so any name survives.
set -eu

if [ $# -ne 2 ]; then
    echo "usage: $0 TEMPLATES_PATH INSTALLED_PATH > settings.reg" >&2
    exit 2
fi

# The registry file doubles backslashes; the same and & are special to sed's replacement.
quoted() {
    printf '%s' "$1" | sed -e 's/\\/\\\\/g' -e 's/[\\&|]/\\&/g'
}

printf '\377\376'
sed -e "s|@TEMPLATES_PATH@|$(quoted "$1")|" -e "s|@INSTALLED_PATH@|$(quoted "$2")|" -e 's/$/\r/' \
    "$(dirname "$0")/default-settings.reg.in" | iconv -f UTF-8 -t UTF-16LE
