# What run.sh and test.sh share: installing what is missing, the kind of Wine there is, a display, a prefix.
# Sourced, never run; expects `set -euo pipefail` and to be in the project's root.

unset WINEPREFIX # the user's own is none of ours

say() { printf '%s\n' "$*" >&2; }

as_root() {
  if [[ $(id -u) == 0 ]]; then "$@"; else sudo "$@"; fi
}

apt_updated=""
apt_install() {
  if [[ -z $apt_updated ]]; then
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 update -qq || say "apt-get update failed; going on with the lists there are."
    apt_updated=yes
  fi
  as_root env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 install -y -qq --no-install-recommends "$@" >&2
}

# Installs those of the packages that are not there.
need() {
  local missing=() package
  for package in "$@"; do
    [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || missing+=("$package")
  done
  if ((${#missing[@]})); then
    say "Installing ${missing[*]} ..."
    apt_install "${missing[@]}"
  fi
}

# Sets `flavour` to win32 or win64: the build that the Wine of this machine can run. 32-bit Wine is the product's own
# ground; where it cannot be had without downgrading what the user has installed, the 64-bit build runs instead.
choose_flavour() {
  need wine wine64
  flavour=win32
  have_wine32 && return
  say "Trying to install 32-bit Wine ..."
  if [[ " $(dpkg --print-foreign-architectures) " != *i386* ]]; then
    as_root dpkg --add-architecture i386 || { flavour=win64; return 0; }
    apt_updated=""
  fi
  apt_install wine32:i386 >/dev/null 2>&1 || true
  have_wine32 && return
  flavour=win64
  say "32-bit Wine cannot be installed here without changing other packages: running the 64-bit build in 64-bit Wine."
}

have_wine32() {
  [[ $(dpkg-query -W -f '${db:Status-Status}' wine32:i386 2>/dev/null) == installed ]]
}

compiler_packages() {
  if [[ $1 == win32 ]]; then echo g++-mingw-w64-i686-posix; else echo g++-mingw-w64-x86-64-posix; fi
}

# Whether the preset's folder was configured to its end, and for this checkout: a copied or moved one builds elsewhere.
is_configured() {
  [[ -f build/$1/Makefile && $(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "build/$1/CMakeCache.txt") -ef . ]]
}

# build PRESET [TARGET...]: quiet, unless it fails.
build() {
  local preset=$1 log=build/$1.log
  shift
  mkdir -p build
  say "Building ($preset) ..."
  if ! { { is_configured "$preset" || { rm -rf "build/$preset" && cmake --preset "$preset"; }; } &&
    cmake --build --preset "$preset" --parallel "$(nproc)" ${1:+--target "$@"}; } >"$log" 2>&1; then
    tail -n 60 "$log" >&2
    return 1
  fi
}

# A display of our own, on the first number that is free; ended by stop_display.
start_display() {
  local number
  for number in $(seq 90 190); do
    [[ -e /tmp/.X11-unix/X$number || -e /tmp/.X$number-lock ]] && continue
    Xvfb ":$number" -screen 0 1280x900x24 -nolisten tcp >/dev/null 2>&1 &
    display_pid=$!
    for _ in $(seq 100); do
      if [[ -e /tmp/.X11-unix/X$number ]]; then
        # Another program may have taken the number in between.
        kill -0 "$display_pid" 2>/dev/null || break
        export DISPLAY=:$number
        return
      fi
      kill -0 "$display_pid" 2>/dev/null || break
      sleep 0.1
    done
    kill "$display_pid" 2>/dev/null || true
    display_pid=""
  done
  say "No X display could be started."
  return 1
}

stop_display() {
  if [[ -n ${display_pid:-} ]]; then
    kill "$display_pid" 2>/dev/null || true
    wait "$display_pid" 2>/dev/null || true
    display_pid=""
  fi
}

# A Wine prefix of our own at $1, for the chosen flavour; made when it is not there yet. Needs a display.
use_prefix() {
  export WINEPREFIX=$1 WINEDEBUG=${WINEDEBUG:--all}
  # No offer to download an HTML engine or a .NET run-time.
  export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
  unset WINEARCH
  if [[ ! -f $WINEPREFIX/flavour || $(cat "$WINEPREFIX/flavour") != "$flavour" ]]; then
    rm -rf "$WINEPREFIX"
    mkdir -p "$WINEPREFIX"
    [[ $flavour == win64 ]] && export WINEARCH=win64
    say "Making a Wine prefix in $WINEPREFIX ..."
    wineboot -i >/dev/null 2>&1
    wineserver -w
    echo "$flavour" >"$WINEPREFIX/flavour"
    return 10
  fi
}

# As use_prefix, for tests. Windows live in a desktop of Wine's own: it draws their frames, and closing one does not wait
# for a window manager. A program that crashes ends: nobody is there to close the system's box.
use_test_prefix() {
  use_prefix "$1" || [[ $? == 10 ]]
  wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Tests /f >/dev/null
  wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Tests /d 1280x900 /f >/dev/null
  wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null
  wineserver -w
}

# The program asks a new user for a profile. Where nobody is there to answer, the question is kept away, and given back
# afterwards to whoever has not answered it yet.
profile_settings='HKCU\Software\VB and VBA Program Settings\Tessaly GWX 1.0\Profiles'
question_kept_away=""
keep_question_away() {
  wine reg query "$profile_settings" /v FirstRun >/dev/null 2>&1 && return
  wine reg add "$profile_settings" /v FirstRun /d 0 /f >/dev/null
  question_kept_away=yes
}
give_question_back() {
  [[ -z $question_kept_away ]] || wine reg delete "$profile_settings" /v FirstRun /f >/dev/null 2>&1 || true
}

windows_path() {
  # Drive Z: is the root of the file system.
  printf 'Z:%s' "${1//\//\\}"
}

end_wine() {
  if [[ -n ${WINEPREFIX:-} && -d $WINEPREFIX ]]; then
    wineserver -k 2>/dev/null || true
    wineserver -w 2>/dev/null || true
  fi
}
