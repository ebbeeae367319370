# report.awk TIMES MEMORY
# TIMES is the CSV of kitbay_bench with every repetition ("kind/step/entries"), MEMORY one line of
# kitbay_bench_memory per kind and size. Prints the report. The exit code is 2 if something grows by more than
# allowed when the entries grow by 10, takes too long, or was not measured, and 1 if only a goal was missed.
#
# The report judges the time and the memory of loading and listing. They may grow by a factor of 11 if the XML
# library alone, parsing the same bytes in the same run, stays within a factor of 10. A tree of 10 000 entries
# is larger than the processor's cache and one of 1 000 is not, so the cost of memory depends on the machine
# and on what else it does. If the library's own time grows by more, the allowance grows in proportion. A whole
# refresh, once the sources have answered, may take 3 times as long as parsing each of its files once, and grow by
# a third more than that: it looks up every offer in a table that competes with the tree for the cache. The goal
# is 1.5 times.

BEGIN {
  FS = ","
  allowed = 11
  goal_ratio = 1.5
  allowed_ratio = 3
  allowed_growth = 4 / 3   # of the refresh, as a multiple of the growth of the parsing
  split("980 9800", refresh_entries, " ")
  count = split("addons transports channels", kinds, " ")
  steps = split("parse load list", step_names, " ")
  sizes = split("100 1000 10000", entries, " ")
  label["parse"] = "pugixml parses the bytes"
  label["load"] = "the datastore is loaded"
  label["list"] = "it is loaded and listed"
}

# The fastest repetition is the time of the work if nothing else on the machine disturbs it.
FILENAME == ARGV[1] {
  name = $1
  gsub(/"/, "", name)
  if (name ~ /^[a-z]+\/[a-z_]+(\/[0-9]+)+$/ && (!(name in time) || $4 < time[name])) {
    time[name] = $4   # processor time, in microseconds
  }
  next
}

FILENAME == ARGV[2] {
  bytes[$1 "/" $2] = $3
  heap[$1 "/" $2] = $4
  process[$1 "/" $2] = $5
}

# The growth allowed up to the size of index i, given the bare parsing, `parse`, of the same bytes.
function allowance(parse, i, factor) {
  if (time[parse "/" entries[i - 1]] <= 0) return allowed
  factor = time[parse "/" entries[i]] / time[parse "/" entries[i - 1]]
  return allowed * (factor > 10 ? factor / 10 : 1)
}

# The factor by which `values` grow up to the size of index i; a failure if it exceeds `limit`.
function growth(values, what, i, limit, larger, smaller, factor) {
  larger = values[what "/" entries[i]]
  smaller = values[what "/" entries[i - 1]]
  if (smaller <= 0 || larger <= 0) {
    failures[++failed] = what " was not measured"
    return "-"
  }
  factor = larger / smaller
  if (factor > limit) {
    failures[++failed] = sprintf("%s grew by %.1f from %d to %d entries, %.1f is allowed", what,
                                 factor, entries[i - 1], entries[i], limit)
  }
  return sprintf("x%.1f", factor)
}

# The two sizes of a list with one update source, their growth, and how much longer it takes than
# parsing both files with the XML library alone.
function compare(kind, step, text, what, parse, i, ratio) {
  what = kind "/" step
  parse = what "_parse"
  printf "  %-43s %8.0f %10.0f %5s\n", kind ": both files parsed by pugixml", time[parse "/1000"],
         time[parse "/10000"], growth(time, parse, 3, 1000)
  printf "  %-43s %8.0f %10.0f %5s", kind ": " text, time[what "/1000"], time[what "/10000"],
         growth(time, what, 3, allowance(parse, 3))
  for (i = 2; i <= sizes; ++i) {
    ratio = time[parse "/" entries[i]] > 0 ? time[what "/" entries[i]] / time[parse "/" entries[i]] : 0
    printf " %5.2f", ratio
  }
  printf "\n"
}

# A whole refresh with this many sources, compared with parsing each of its files once.
function refresh(sources, i, size, ratio) {
  printf "  %2d %-8s", sources, sources == 1 ? "source" : "sources"
  for (i = 1; i <= 2; ++i) {
    size = sources "/" refresh_entries[i]
    if (time["refresh/parse/" size] <= 0 || time["refresh/lists/" size] <= 0) {
      failures[++failed] = "a refresh of " size " was not measured"
      continue
    }
    ratio[i] = time["refresh/lists/" size] / time["refresh/parse/" size]
    printf " %10.0f %10.0f %5.2f", time["refresh/parse/" size], time["refresh/lists/" size], ratio[i]
    if (ratio[i] > allowed_ratio) {
      failures[++failed] = sprintf("a refresh of %s takes %.2f times as long as parsing, %.1f is allowed",
                                   size, ratio[i], allowed_ratio)
    }
    if (ratio[i] > worst_ratio) worst_ratio = ratio[i]
  }
  if (ratio[2] > ratio[1] * allowed_growth) {
    failures[++failed] = "a refresh with " sources " sources grows faster than parsing its files"
  }
  printf "\n"
}

END {
  printf "Processor time of the fastest repetition, in microseconds\n"
  for (k = 1; k <= count; ++k) {
    printf "\n%-32s %10s %10s %14s\n", kinds[k], "100", "1000 (growth)", "10000 (growth)"
    for (s = 1; s <= steps; ++s) {
      what = kinds[k] "/" step_names[s]
      printf "  %-30s %10.0f", label[step_names[s]], time[what "/100"]
      for (i = 2; i <= sizes; ++i) {
        printf " %10.0f %5s", time[what "/" entries[i]],
               growth(time, what, i,
                      step_names[s] == "list" ? allowance(kinds[k] "/parse", i) : 1000)
      }
      printf "\n"
    }
    printf "  %-30s", "share of Kitbay's own code"
    for (i = 1; i <= sizes; ++i) {
      total = time[kinds[k] "/list/" entries[i]]
      own = total - time[kinds[k] "/parse/" entries[i]]
      printf(" %9.0f%%%s", total > 0 ? 100 * own / total : 0, i == 1 ? "" : "      ")
    }
    printf "\n"
  }
  printf "\n%-45s %8s %16s  %s\n", "With one update source", "1000", "10000 (growth)", "of parsing"
  for (k = 1; k <= count; ++k) {
    compare(kinds[k], "check", "what is installed is checked")
    compare(kinds[k], "new", "what is new is listed")
  }
  printf "\nA whole refresh: files parsed in place by pugixml, six lists filled, and the ratio of the two\n"
  printf "\n  %-11s %27s %27s\n", "", "980 entries in each file", "9800 in each"
  count_of_sources = split("1 3 10", source_counts, " ")
  for (k = 1; k <= count_of_sources; ++k) refresh(source_counts[k])
  printf "\nMemory while a list is written, in kilobytes\n"
  printf "\n%-12s %8s %10s %12s %8s %8s %14s\n", "", "entries", "datastore", "peak heap",
         "growth", "per byte", "process grew"
  for (k = 1; k <= count; ++k) {
    for (i = 1; i <= sizes; ++i) {
      key = kinds[k] "/" entries[i]
      printf("%-12s %8d %10.0f %12.0f %8s %8.1f %14.0f\n", kinds[k], entries[i],
             bytes[key] / 1024, heap[key] / 1024, i == 1 ? "" : growth(heap, kinds[k], i, allowed),
             bytes[key] > 0 ? heap[key] / bytes[key] : 0, process[key] / 1024)
    }
  }
  printf "\n"
  for (i = 1; i <= failed; ++i) {
    printf "TOO MUCH: %s\n", failures[i]
  }
  missed = worst_ratio > goal_ratio
  if (missed) {
    printf "GOAL MISSED: a refresh takes up to %.2f times as long as parsing, %.1f is the goal\n", worst_ratio,
           goal_ratio
  }
  if (!failed) printf "Time and memory grow no faster than allowed.\n"
  exit failed ? 2 : missed
}
