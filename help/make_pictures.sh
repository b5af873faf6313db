#!/usr/bin/env bash
# Takes the pictures of the help pages from the program itself, in each language that they speak:
#   help/make_pictures.sh [en|de|ja ...]
# They are committed; run it after a change that they show.
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/environment.sh

languages=("$@")
((${#languages[@]})) || languages=(en de ja)
need xvfb xdotool imagemagick
choose_flavour
display_pid=""
trap 'end_wine; stop_display' EXIT

settings='HKCU\Software\VB and VBA Program Settings\Tessaly GWX 1.0'
profile='HKCU\Software\Zelmor Software\Zelmor User Profiles\Profiles\Office'
set_text() { wine reg add "$1" /v "$2" /d "$3" /f >/dev/null; }

# picture NAME WINDOW: few colours, so that the help stays small.
picture() {
  xdotool mousemove --window "$2" 3 3 # where no tool tip comes
  sleep 1                             # the last drawing
  import -window "$2" png:- | convert png:- -strip -colors 200 "png8:$folder/$1.png"
}

windows() { xdotool search --onlyvisible --name '.+' 2>/dev/null | sort; }

# dialog NAME KEYS...: the window that the last of these keys opens, from the main window; commas stand between the keys
# of a way through a menu.
dialog() {
  local name=$1 key before opened=""
  shift
  for key in "$@"; do
    before=$(windows)
    # shellcheck disable=SC2086
    xdotool key --clearmodifiers --delay 500 ${key//,/ }
    for _ in $(seq 50); do
      opened=$(comm -13 <(echo "$before") <(windows) | tail -n 1)
      [[ -z $opened ]] || break
      sleep 0.2
    done
  done
  picture "$name" "$opened"
  for key in "$@"; do
    xdotool key Escape
    sleep 1
  done
}

# The setup is built before a new language has pictures of its own.
for language in "${languages[@]}"; do
  mkdir -p "help/pictures/$language"
  cp -n help/pictures/en/*.png "help/pictures/$language/" 2>/dev/null || true
done

for language in "${languages[@]}"; do
  folder=$PWD/help/pictures/$language
  end_wine
  ./run.sh --screenshot build/help.png --language "$language"
  [[ -n $display_pid ]] || start_display
  use_prefix "$PWD/build/wine"
  set_text "$settings\\Profiles" FirstRun 0
  set_text "$settings\\Profiles" DefaultProfile Office
  for field in FirstName=Anna LastName=Keller 'Title=Office Manager' 'CompanyName=Keller & Sons' 'AddressLine1=12 High Street' City=Springfield EmailAddress=anna@example.com; do
    set_text "$profile" "${field%%=*}" "${field#*=}"
  done
  set_text "$settings\\Browser" LastFolderBrowsed 'Business Letters'
  # The caption is written when the window is loaded; until then the start-up picture has the same title.
  wine reg delete "$settings\\Customization" /v ApplicationName /f >/dev/null 2>&1 || true
  wine 'C:\Program Files\Tessaly Desk\TSBrowser.exe' >/dev/null 2>&1 &
  until wine reg query "$settings\\Customization" /v ApplicationName >/dev/null 2>&1; do
    kill -0 $! 2>/dev/null || { say "The browser ended before its window was there."; exit 1; }
    sleep 0.5
  done
  main=$(xdotool search --onlyvisible --name '^Tessaly Desk$' | tail -n 1)
  sleep 2
  xdotool key Tab Down # a template, so that the preview shows something
  picture main-window "$main"
  dialog preview "$([[ $language == de ]] && echo alt+d || echo alt+f),Down,Down,Return"
  dialog profile-editor ctrl+e
  dialog manage-profiles ctrl+m
  dialog import-export ctrl+i
  dialog profile-pictures ctrl+e "$([[ $language == de ]] && echo alt+l || echo alt+s)"
  xdotool key --clearmodifiers ctrl+f
  xdotool type --delay 200 invoice
  sleep 2
  picture find "$main"
  xdotool key --clearmodifiers --delay 500 Escape Escape alt+F4
  wineserver -w
done
