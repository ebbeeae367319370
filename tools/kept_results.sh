# Sourced by ./test, with $root set to the top of the tree. Decides which groups of tests run, and which
# passed before and are kept because nothing that they depend on has changed. Each group has a folder
# below $results:
#   expected   the reports that must be in its folder, one per line
#   code       the exit code of its runner, if that failed
#   key        a hash of everything that it depends on
#   green      the date of its last run without a failure or a skip, written by tools/tally
#   kept       exists if that run stands for this one
# $results/groups lists the groups of this run, one per line.

# tree_key EXCLUDED...: a hash of all files of the tree, except documents and what lies below these
# folders.
tree_key() {
  local folder excluded=(':!docs' ':!*.md' ':!LICENSE')
  for folder in "$@"; do excluded+=(":!$folder"); done
  git ls-files -z --cached --others --exclude-standard -- . "${excluded[@]}" |
    LC_ALL=C sort -zu | xargs -0 sha256sum 2>/dev/null | sha256sum
}

# machine_key: the versions of everything that the tests run on, and the settings that they read.
machine_key() {
  dpkg-query -W -f '${Package} ${Version} ${Architecture}\n'
  node --version 2>/dev/null
  cat "$root/build/deps/wine32/.stamp" 2>/dev/null
  env | grep '^KITBAY_' | LC_ALL=C sort
}

# programs_key [FOLDER...]: size and time of all programs below these folders; nothing for none.
programs_key() {
  [ $# -eq 0 ] || find "$@" -type f \( -perm -u+x -o -name '*.dll' -o -name '*.zip' \) -printf '%p %s %T@\n' 2>/dev/null |
    LC_ALL=C sort
}

# begin_group GROUP KEY REPORT...: prepares the group's folder for these reports; fails if the last
# run's reports stand for this run.
begin_group() {
  local group=$1 folder=$results/$1 key
  key=$(sha256sum <<<"$2")
  shift 2
  echo "$group" >>"$results/groups"
  if ! $again && [ -f "$folder/green" ] && [ "$(cat "$folder/key")" = "$key" ] &&
    [ "$(cat "$folder/expected")" = "$(printf '%s\n' "$@")" ]; then
    touch "$folder/kept"
    say "$group: unchanged since $(cat "$folder/green"), not run again"
    return 1
  fi
  rm -rf "$folder"
  mkdir -p "$folder"
  echo "$key" >"$folder/key"
  printf '%s\n' "$@" >"$folder/expected"
}
