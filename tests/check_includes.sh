#!/usr/bin/env bash
# Fails on an #include that goes against the direction of the dependencies (docs/ARCHITECTURE.md), and on a Windows
# header outside the three folders that may see one. Prints one line a fault.
set -euo pipefail
cd "$(dirname "$0")/.."

declare -A allowed=(
  [platform]="platform"
  [platform/memory]="platform platform/memory"
  [platform/win32]="platform platform/win32"
  [ui]="platform ui"
  [ui/headless]="platform ui ui/headless"
  [ui/win32]="platform platform/win32 ui ui/win32"
  [app/base]="platform ui app/base"
  [library]="platform ui app/base library"
  [browser]="platform ui app/base library browser"
  [profiles]="platform ui app/base profiles"
  [app/shell]="platform ui app/base library browser profiles app/shell"
  [automation]="platform platform/win32 ui ui/win32 app/shell automation"
)

faults=0
fault() {
  printf '%s\n' "$*"
  faults=$((faults + 1))
}

for folder in "${!allowed[@]}"; do
  [[ -d $folder ]] || continue
  while IFS= read -r file; do
    while IFS= read -r included; do
      from=$(dirname "$included")
      [[ $from == . ]] && continue
      [[ " ${allowed[$folder]} " == *" $from "* ]] || fault "$file includes $included: $folder must not know $from"
    done < <(sed -nE 's/^[[:space:]]*#[[:space:]]*include[[:space:]]*"([^"]+)".*/\1/p' "$file")
    case $folder in
    platform/win32 | ui/win32 | automation) ;;
    *)
      if grep -qiE '^[[:space:]]*#[[:space:]]*include[[:space:]]*<(windows|win|comm|shl|shell|ole|obj|oaidl|wincodec|uxtheme)[a-z0-9]*\.h>' "$file"; then
        fault "$file includes a Windows header"
      fi
      ;;
    esac
  done < <(find "$folder" -maxdepth 1 -name '*.h' -o -maxdepth 1 -name '*.cpp' 2>/dev/null)
done
exit $((faults > 0))
