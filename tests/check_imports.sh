#!/usr/bin/env bash
# check_imports.sh PROGRAM: fails when the program loads a library that is not one of the system's: such a library is
# looked for beside the program first, where anybody may have put a copy.
set -euo pipefail

imports=$(objdump -p "$1" | sed -nE 's/^[[:space:]]*DLL Name: (.*)/\U\1/p')
grep -qx KERNEL32.DLL <<<"$imports" || { echo "no imports found in $1"; exit 1; }
if grep -vxE '(ADVAPI32|COMCTL32|COMDLG32|GDI32|KERNEL32|MSVCRT|OLE32|OLEAUT32|SHELL32|SHLWAPI|USER32)\.DLL' <<<"$imports"; then
  exit 1
fi
