#!/bin/sh
# Writes registrations of programs that open the sample templates, as a file that the registry editor merges:
#   register-viewers.sh PROGRAM_FOLDER > viewers.reg
# Machine-wide, because Wine's shell reads no others: text documents open in Wine's word processor, the rest in the
# sample viewer, which stands in for the spreadsheet, too.
set -eu

doubled() { printf '%s' "$1" | sed -e 's/\\/\\\\/g'; }
viewer="$(doubled "$1")\\\\SampleViewer.exe"
classes='HKEY_LOCAL_MACHINE\Software\Classes'

type() { # ENDING CLASS NAME COMMAND
    printf '[%s\\%s]\r\n@="%s"\r\n\r\n' "$classes" "$1" "$2"
    printf '[%s\\%s]\r\n@="%s"\r\n\r\n' "$classes" "$2" "$3"
    printf '[%s\\%s\\shell\\open\\command]\r\n@="%s"\r\n\r\n' "$classes" "$2" "$4"
}

{
    printf 'Windows Registry Editor Version 5.00\r\n\r\n'
    type .swt TSSample.Document "Word processor template" \
        'C:\\Program Files\\Windows NT\\Accessories\\wordpad.exe \"%1\"'
    for kind in ccw:Spreadsheet prt:Presentation pdf:PDF mst:Photo; do
        type ".${kind%%:*}" "TSSample.${kind##*:}" "${kind##*:} template" "\\\"$viewer\\\" \\\"%1\\\""
    done
    printf '[HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\CLC.EXE]\r\n@="%s"\r\n' "$viewer"
} | { printf '\377\376'; iconv -f UTF-8 -t UTF-16LE; }
