#!/usr/bin/env bash
# Fails on an #include that goes against the direction of the dependencies (docs/ARCHITECTURE.md), on a header of the
# system outside the folders that may see one, and on a folder that the table does not have. Prints one line a fault.
set -euo pipefail
cd "$(dirname "$0")/.."

# A folder, and what its files may include besides the standard library and their own folder. "product" is every folder
# that is neither a test nor a tool; "system" is any other header in angle brackets, which is to say Windows'.
table='
platform
platform/memory     platform
platform/win32      platform system
documents           platform
pictures            platform
pictures/memory     platform pictures
pictures/win32      platform platform/win32 pictures system
ui                  platform pictures
ui/headless         platform pictures ui
ui/win32            platform platform/win32 pictures pictures/win32 ui system
app/base            platform pictures ui
library             platform ui app/base documents
browser             platform pictures ui app/base library documents
packs               platform ui app/base library
search              platform ui app/base library browser documents
profiles            platform pictures ui app/base
online              platform ui app/base
app/shell           platform pictures ui app/base library browser packs profiles documents online search
automation          platform platform/win32 ui ui/win32 app/shell system

bench               product system
bench/program       product gtest tests/endtoend tests/prove tests/support/win32 system
fuzz                product fuzzer tests/documents system
samples/hosts        system
tools/viewer        product
tests/support        product gtest
tests/support/win32  product gtest system
tests/app            product gtest tests/support
tests/automation     product gtest tests/support/win32 system
tests/browser        product gtest tests/support
tests/documents      product gtest tests/support zlib
tests/faults         product gtest tests/support tests/packs
tests/endtoend       product gtest tests/support/win32 system
tests/library        product gtest tests/support
tests/online         product gtest tests/support
tests/packs          product gtest tests/support
tests/pictures       product gtest tests/support
tests/pictures/win32 product gtest tests/pictures tests/support/win32 system
tests/platform       product gtest tests/support/win32 system
tests/prove          product gtest tests/endtoend tests/pictures tests/support/win32 system
tests/profiles       product gtest tests/support
tests/profiles/win32 product gtest tests/support tests/support/win32 system
tests/search         product gtest tests/support
tests/ui             product gtest tests/support
tests/ui/win32       product gtest tests/ui tests/pictures/win32 tests/support/win32 system
'

declare -A allowed=()
while read -r folder names; do
  [[ -z $folder ]] || allowed[$folder]=" $names $folder "
done <<<"$table"

faults=0
fault() {
  printf '%s\n' "$*"
  faults=$((faults + 1))
}

is_product() {
  [[ $1 != @(bench|fuzz|samples|tools|tests)* && -n ${allowed[$1]:-} ]]
}

# Sets `kind` to what the include of a header needs to be allowed.
kind_of() {
  case $1 in
  '<gtest/'* | '<gmock/'*) kind=gtest ;;
  '<fuzzer/'*) kind=fuzzer ;;
  '<zlib.h>') kind=zlib ;;
  '<'*.*) kind=system ;; # those of the standard library have no dot
  '<'*) kind=standard ;;
  '"'*/*) kind=${1#\"} kind=${kind%/*} ;;
  *) kind=own ;;
  esac
}

# Every file that git knows or would take, and whether it is told about.
declare -A unknown=()
files=()
while IFS= read -r file; do
  folder=${file%/*}
  if [[ -z ${allowed[$folder]:-} ]]; then
    [[ -n ${unknown[$folder]:-} ]] || fault "$folder is in no row of $0"
    unknown[$folder]=yes
  elif [[ -f $file ]]; then
    files+=("$file")
  fi
done < <(git ls-files --cached --others --exclude-standard '*.h' '*.cpp')

while IFS=: read -r file line; do
  [[ $line =~ (\<[^\>]+\>|\"[^\"]+\") ]] || continue
  folder=${file%/*} included=${BASH_REMATCH[1]}
  kind_of "$included"
  case $kind in
  standard) ;;
  # By its bare name: a file beside it, or one that the build makes.
  own)
    [[ -f $folder/${included//\"/} || $included == @(\"StringRows.inc\"|\"TSBrowser.h\") ]] ||
      fault "$file includes $included, which is not beside it"
    ;;
  *)
    [[ ${allowed[$folder]} == *" $kind "* ]] || { [[ ${allowed[$folder]} == *" product "* ]] && is_product "$kind"; } ||
      fault "$file includes $included: $folder must not know $kind"
    ;;
  esac
done < <(grep -HE '^[[:space:]]*#[[:space:]]*include' "${files[@]}")
exit $((faults > 0))
