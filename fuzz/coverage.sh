#!/usr/bin/env bash
# How much of the sources that each fuzz target is meant for its inputs reach, the kept and the grown ones, each run once:
#   fuzz/coverage.sh [TARGET...]      (default: all of them)
# A row for each target, and one for each of its sources. What no line of it reaches is shown by
# `llvm-cov-19 show build/coverage/fuzz/TARGET -instr-profile=build/coverage/TARGET.profdata SOURCE`.
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/environment.sh

# The sources that a target is meant for.
sources_of() {
  local office=(ArchiveReader XmlFacts XmlScanner Dates TextOf)
  case $1 in
  RtfFuzz) documents RtfReader ;;
  ArchiveFuzz) documents Zip Inflater "${office[@]}" ;;
  OfficeFuzz | OpenXmlFuzz) documents "${office[@]}" ;;
  CompoundFuzz) documents CompoundFile PropertySetReader TextOf ;;
  PropertySetFuzz) documents PropertySetReader TextOf ;;
  PdfFuzz) documents PdfFile PdfReader PdfSyntax Inflater XmlFacts XmlScanner Dates TextOf ;;
  InflaterFuzz) documents Inflater ;;
  TextFuzz) echo platform/Text.cpp platform/CommandLine.cpp ;;
  PathFuzz) echo platform/Path.cpp ;;
  PageFuzz) echo online/{BannerPage,Html,PageText}.cpp platform/WebAddress.cpp ;; # and the page of BugReport.cpp
  ReplyFuzz) echo online/{UpdateNotification,frmNotifyMessage,PageText}.cpp platform/WebAddress.cpp ;;
  PhoneFuzz) echo profiles/PhoneFormatter.cpp ;;
  RegistryTextFuzz) echo profiles/RegistryText.cpp ;;
  VersionFuzz) echo packs/VersionResource.cpp ;;
  SettingsFuzz) echo app/base/Settings.cpp app/shell/{Browser,PaneLayout,WindowPlacement,WindowValues,frmMain}.cpp ;;
  LibraryFuzz) echo library/{Catalog,CategoryPath,FolderTable,FolderTree,FolderWalk,TemplateLibrary}.cpp ;;
  *) say "fuzz/coverage.sh does not know what $1 is meant for."; return 1 ;;
  esac
}
documents() { printf 'documents/%s.cpp ' "$@"; }

mapfile -t targets < <(sed -n 's/^fuzz_target(\([A-Za-z]*\) .*/\1/p' fuzz/CMakeLists.txt)
(($#)) && targets=("$@")
need cmake make ccache libgtest-dev googletest zlib1g-dev clang-19 libclang-rt-19-dev llvm-19
build=build/coverage
mkdir -p $build
say "Building ($build) ..."
{ cmake -S . -B $build -DCMAKE_C_COMPILER=clang-19 -DCMAKE_CXX_COMPILER=clang++-19 -DTS_FUZZ=ON \
  -DCMAKE_CXX_FLAGS='-O1 -fprofile-instr-generate -fcoverage-mapping' &&
  cmake --build $build --parallel "$(nproc)" --target "${targets[@]}"; } >build/coverage.log 2>&1 ||
  { tail -n 40 build/coverage.log >&2; exit 2; }

printf '| %-16s | %-26s | %5s | %7s |\n' target source lines reached
printf '| --- | --- | --: | --: |\n'
for target in "${targets[@]}"; do
  read -ra sources <<<"$(sources_of "$target")"
  folders=()
  for folder in "fuzz/corpus/$target" "build/fuzz/corpus/$target"; do
    [[ ! -d $folder ]] || folders+=("$folder")
  done
  LLVM_PROFILE_FILE=$build/$target.profraw "$build/fuzz/$target" -runs=0 -max_len=1048576 "${folders[@]}" \
    >"$build/$target.log" 2>&1 || { tail -n 20 "$build/$target.log" >&2; exit 1; }
  llvm-profdata-19 merge -o "$build/$target.profdata" "$build/$target.profraw"
  llvm-cov-19 report -show-region-summary=false -show-branch-summary=false -instr-profile="$build/$target.profdata" \
    "$build/fuzz/$target" "${sources[@]}" | awk -v target="$target" '$7 ~ /%$/ {
      sub(/.*\//, "", $1)
      row = sprintf("| %-16s | %-26s | %5d | %7s |\n", $1 == "TOTAL" ? target : "", $1 == "TOTAL" ? "" : $1, $5, $7)
      if ($1 == "TOTAL") printf "%s%s", row, rows; else rows = rows row }'
done
