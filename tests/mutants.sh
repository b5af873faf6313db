#!/usr/bin/env bash
# Breaks the product in one place after the other, in a copy of it, and expects the faults' tests to notice: at least one
# break for each of the ten invariants (tests/support/Invariants.h). Prints one line a break, "not noticed" for one that
# no longer fits the source, does not build, or fails no test; then it fails.
#     tests/mutants.sh [INVARIANT...]     only those of these
set -euo pipefail
cd "$(dirname "$0")/.."

copy=$(mktemp -d /tmp/mutants.XXXXXX)
trap 'rm -rf "$copy"' EXIT
git ls-files -z --cached --others --exclude-standard | xargs -0 cp -P --parents -t "$copy" 2>/dev/null || true
log=$PWD/build/mutants.log
mkdir -p build
: >"$log"
build() { nice cmake --build "$copy/build/dev" -j"$(nproc)" --target faults_tests >>"$log" 2>&1; }
cmake -S "$copy" -B "$copy/build/dev" -DCMAKE_C_COMPILER=clang-19 -DCMAKE_CXX_COMPILER=clang++-19 -DCMAKE_BUILD_TYPE= \
  -DCMAKE_CXX_FLAGS="-O0 -g0" >>"$log"
build

wanted=" $* "
failed=0
# mutant INVARIANT WHAT FILE SED SCENARIO: the scenario's tests must fail once the file is edited so.
mutant() {
  [[ $wanted == "  " || $wanted == *" $1 "* ]] || return 0
  local file=$copy/$3 result="not noticed"
  cp -p "$file" "$copy/kept"
  sed -i "$4" "$file"
  echo "== $1 $2" >>"$log"
  if cmp -s "$file" "$copy/kept"; then
    result="not noticed: it no longer fits"
  elif ! build; then
    result="not noticed: it does not build"
  elif ! timeout 120 "$copy/build/dev/tests/faults/faults_tests" --gtest_brief=1 --gtest_fail_fast \
    --gtest_filter="*/$5_*" >>"$log" 2>&1; then
    result="noticed by $5"
  fi
  [[ $result == noticed* ]] || failed=1
  printf '| %2s | %-50s | %s |\n' "$1" "$2" "$result"
  cp "$copy/kept" "$file" # newer than what was built of it
}

mutant 1 "a profile goes before its new name has everything" profiles/ProfileOperations.cpp \
  's|^    if (!profiles.CopyProfileValues(oldName, newName))$|    profiles.LoadProfile(oldName);\n    (void)profiles.SaveProfileText(newName);\n    (void)DeleteTree(registry, ProfileKey(oldName));\n    if (false)|' \
  ProfileRename
mutant 1 "a picture goes before the new one is in its place" profiles/ProfileImages.cpp \
  's|^            batch.DeleteAtEnd(\*existing);|            (void)files.DeleteFile(*existing);|' ProfilePictures
mutant 2 "an export is cut before it is replaced" profiles/FileBatch.cpp \
  's|^    const auto old = files.Stat(item.target);$|    (void)files.Write(item.target, "");\n&|' ProfileExport
mutant 2 "temporary files stay after a failure" profiles/FileBatch.cpp 's|^        if (!item.placed)$|        if (false)|' \
  ProfileExport
mutant 3 "a deletion follows links" library/FolderRemoval.cpp \
  's|entry->IsLink(), false, false|false, false, false|; s|^\( *\)entry.IsLink(),$|\1false,|; s|if (!IsOwnFolder(files, templatesPath, folder.isLink.*|if (false)|' \
  DeleteFolder
mutant 3 "a folder that has become a link is emptied" library/FolderRemoval.cpp \
  's|if (!IsOwnFolder(files, templatesPath, folder.isLink.*|if (false)|' DeleteFolder
mutant 3 "a pack takes what is another one's" packs/PackRemoval.cpp \
  's|other != nullptr && other->Has|other == \&claim \&\& other->Has|; s|if (other == nullptr) {|{|' PackDelete
mutant 3 "folders are pruned through links" library/FolderTable.cpp \
  's|if (listing->empty() && !node.behindLink)|if (listing->empty())|; s|if (IsOwnFolder(files, templatesPath, path))|if (true)|' \
  LoadWithPruning
mutant 4 "a folder that could not be renamed is not told of" library/FolderOperations.cpp \
  's|^    if (!isMoved)$|    if (false)|' RenameFolder
mutant 4 "the tree is not loaded after a rename" library/FolderOperations.cpp '/^    ReloadAt(to);$/d' RenameFolder
mutant 5 "what the mail client's editor was is not noted" online/BugReport.cpp \
  's|^    (void)registry.Set(Hive::CurrentUser, EditorKey, .*|    (void)program.settings.Delete("Options", EditorBefore);\n&|' \
  BugReport
mutant 6 "an update opens whatever the reply names" online/frmNotifyMessage.cpp \
  's|!= platform::OpenGate::Verdict::Opens)|== platform::OpenGate::Verdict::NotThere)|' Update
mutant 7 "a favourite is forgotten before it is stored anew" library/Favorites.cpp \
  's|moved \&\& !SaveFavorite(\*moved)|moved \&\& (!settings.Delete(Section, favorite) \|\| !SaveFavorite(*moved))|' RenameFolder
mutant 7 "a recent file stands there twice" browser/RecentFiles.cpp '/std::erase_if(files, /d' LaunchTemplate
mutant 8 "the templates path is emptied before it is stored" app/shell/frmTemplatesPath.cpp \
  's|^    if (!program.settings.Save("Browser", state.AccessHdd|    (void)program.settings.Save("Browser", "HDD Templates Path", "");\n&|' \
  TemplatesPath
mutant 9 "a failure is told twice" app/base/Messages.cpp \
  's|^    Put({std::move(text), state.ProductCaption, icon, .*|    Put({text, state.ProductCaption, icon});\n&|' RenameFolder
mutant 10 "a folder that was listed is listed again" library/FolderListings.cpp \
  's|^        return known->second;|        return (void)files.List(DiskPath(templatesPath, folder)), known->second;|' Refresh
exit $failed
