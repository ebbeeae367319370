# Sourced by ./test and ./demo, with $root set to the top of the tree, which is the current folder.
mkdir -p build/log
exec 8>build/.lock
if ! flock -n 8; then
  echo "waiting for another ./test or ./demo of this tree"
  flock 8
fi

# release_tree: lets others build in this tree again.
release_tree() { exec 8>&-; }

say() { echo "[kitbay] $*"; }

# Every step that ran: its name, its elapsed seconds and its processor time.
steps=build/log/steps.tsv
: >"$steps"

# step NAME COMMAND...: runs a program with its output in build/log/, reports its elapsed and its
# processor time, and shows the relevant output if it failed. A program that ends with 77 cannot run
# here; the last line of its output says why.
step() {
  local name=$1 log=build/log/${1//[^a-zA-Z0-9_-]/_}.log code=0 seconds cpu
  shift
  tools/measure "$name" "$log" "$@" 8>&- || code=$?
  read -r seconds cpu <"$log.times"
  printf '%s\t%s\t%s\n' "$name" "$seconds" "$cpu" >>"$steps"
  if [ $code -eq 0 ]; then
    say "$name: $seconds s (processor: $cpu s)"
  elif [ $code -eq 77 ]; then
    say "$name: skipped: $(tail -n 1 "$log")"
  else
    say "$name: FAILED after $seconds s (exit code $code); from $log:"
    grep -E 'error:|CMake Error|undefined reference|^FAILED|\*\*\*' "$log" | cut -c 1-300 | head -n 40
    echo '…'
    tail -n 25 "$log" | cut -c 1-300
  fi
  return $code
}

# print_steps SECONDS: the steps as a table, with the sum of their processor time and the total elapsed
# time.
print_steps() {
  awk -F '\t' -v seconds="$1" '
    BEGIN { row = "%-40s %8s %14s\n"; printf row, "step", "seconds", "processor" }
    { printf row, $1, $2, $3; cpu += $3 }
    END { printf row, "total", seconds, cpu + 0 }' "$steps"
}

# build_preset PRESET TARGET...: configures once and when the presets change; the build itself notices
# all other changes. With with_tests=false, a new build folder gets no tests; they are added once they
# are wanted.
with_tests=true
build_preset() {
  local preset=$1 cache=build/$1/CMakeCache.txt options=()
  shift
  if $with_tests; then
    ! grep -qs '^KITBAY_TESTS:BOOL=OFF' "$cache" || options=(-DKITBAY_TESTS=ON)
  elif [ ! -f "$cache" ]; then
    options=(-DKITBAY_TESTS=OFF)
  fi
  if [ ! "build/$preset/build.ninja" -nt CMakePresets.json ] || [ ${#options[@]} -gt 0 ]; then
    step "$preset: configure" cmake --preset "$preset" "${options[@]}" || return
  fi
  step "$preset: build" cmake --build --preset "$preset" -j "$(nproc)" --target "$@" \
    -- -k 0
}

# build_windows TRIPLET PRESET TARGET...
build_windows() {
  local triplet=$1 preset=$2 options=()
  shift 2
  # A build folder with tests keeps them, and so needs their library.
  $with_tests || grep -qs '^KITBAY_TESTS:BOOL=ON' "build/$preset/CMakeCache.txt" || options=(--without-tests)
  step "$preset: libraries" tools/build_windows_dependencies "$triplet" "${options[@]}" &&
    build_preset "$preset" "$@"
}
