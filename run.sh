#!/usr/bin/env bash
# Builds the template browser, installs it with its own setup program and opens it on the sample library.
#   ./run.sh                    in a window; without a display, leaves a picture in build/screenshot.png instead
#   ./run.sh --screenshot FILE  opens it unseen, saves a picture (PNG), closes it again
#   ./run.sh --dpi 144 ...      at another screen resolution (96 is 100 %)
#   ./run.sh --language de ...  in German; ja: in Japanese
#   ./run.sh --with-pack ...    with the sample solution pack installed
set -euo pipefail
cd "$(dirname "$0")"
. tools/environment.sh

screenshot=""
dpi=96
language=en
with_pack=""
while (($#)); do
  case $1 in
  --screenshot) screenshot=${2:?"--screenshot needs a file"}; shift 2 ;;
  --dpi) dpi=${2:?"--dpi needs a number"}; shift 2 ;;
  --language) language=${2:?"--language needs en, de or ja"}; shift 2 ;;
  --with-pack) with_pack=yes; shift ;;
  *) say "usage: ./run.sh [--screenshot FILE] [--dpi NUMBER] [--language en|de|ja] [--with-pack]"; exit 2 ;;
  esac
done
[[ $dpi =~ ^[0-9]+$ ]] || { say "--dpi needs a number"; exit 2; }
if [[ -z $screenshot && -z ${DISPLAY:-} ]]; then
  screenshot=build/screenshot.png
  say "No display: a picture goes to $screenshot."
fi

need cmake make ccache mingw-w64-tools libwine-dev nsis cmark-gfm python3 imagemagick fontconfig fonts-dejavu-core x11-utils
[[ -z $screenshot ]] || need xvfb xdotool
choose_flavour
need "$(compiler_packages "$flavour")"

[[ $language != ja ]] || need fonts-ipafont-gothic
build "$flavour" setup SampleViewer
installer=$PWD/build/$flavour/TSBrowser-Setup.exe

display_pid=""
trap 'end_wine; stop_display' EXIT
[[ -z $screenshot ]] || start_display
use_prefix "$PWD/build/wine" || [[ $? == 10 ]]

settings='HKCU\Software\VB and VBA Program Settings\Tessaly GWX 1.0'
folder='C:\Program Files\Tessaly Desk'
installed="$(cksum <"$installer") $language $PWD"
if [[ $(cat "$WINEPREFIX/installed" 2>/dev/null) != "$installed" ]]; then
  say "Installing ..."
  # For all users, because Wine shows hosts no other registration. /D is the one switch that is never quoted.
  wine "$installer" /S /ALLUSERS /LANGUAGE="$language" '/D=C:\Program' 'Files\Tessaly' Desk || {
    say "The setup failed with $? (docs/ADMINS.md has the numbers)."
    exit 1
  }
  sh tools/register-viewers.sh "$(windows_path "$PWD/build/$flavour")" >build/viewers.reg
  wine regedit /s "$(windows_path "$PWD/build/viewers.reg")"
  wineserver -w
  echo "$installed" >"$WINEPREFIX/installed"
fi
if [[ -n $with_pack ]]; then
  samples/pack/build.sh build/GardenPack.exe "$([[ $flavour == win32 ]] || echo amd64-unicode)"
  wine build/GardenPack.exe /S || { say "The pack's installer failed with $?."; exit 1; }
fi
wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dpi" /f >/dev/null
# Wine's own fonts have no Japanese letters.
for font in Tahoma 'MS Shell Dlg' 'MS UI Gothic'; do
  if [[ $language == ja ]]; then
    wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$font" /d IPAPGothic /f >/dev/null
  else
    wine reg delete 'HKCU\Software\Wine\Fonts\Replacements' /v "$font" /f >/dev/null 2>&1 || true
  fi
done
wineserver -w # the next start reads it

if [[ -z $screenshot ]]; then
  wine "$folder\TSBrowser.exe"
  wineserver -w
  exit 0
fi

keep_question_away
# The caption is written when the start-up sequence is through: that is when the window is loaded.
wine reg delete "$settings\\Customization" /v ApplicationName /f >/dev/null 2>&1 || true
wine explorer /desktop=TSBrowser,1280x900 "$folder\TSBrowser.exe" >/dev/null 2>&1 &
browser_pid=$!
for _ in $(seq 240); do
  wine reg query "$settings\\Customization" /v ApplicationName >/dev/null 2>&1 && break
  kill -0 "$browser_pid" 2>/dev/null || { say "The browser ended before its window was there."; exit 1; }
  sleep 0.25
done
sleep 1 # the last drawing
mkdir -p "$(dirname "$screenshot")"
import -window root "$screenshot"
xdotool key --clearmodifiers alt+F4
for _ in $(seq 80); do
  kill -0 "$browser_pid" 2>/dev/null || break
  sleep 0.1
done
give_question_back
say "Saved $screenshot ($flavour, $dpi dpi)."
