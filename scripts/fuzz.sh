#!/usr/bin/env bash
# Builds the fuzz targets and runs them, as many at a time as there are cores; prints a table in
# Markdown. Fails on any finding, and says where its input is kept.
#
#   scripts/fuzz.sh [--save] [--coverage] [SECONDS [REGEX]]
#   scripts/fuzz.sh --corpus
#
#   SECONDS     for each target; 20 if not given
#   REGEX       only the targets whose names match
#   --save      puts what was found on the way into fuzz/corpus, with all that is there made as few
#               inputs as reach the same; else fuzz/corpus stays as it is
#   --corpus    only what is in fuzz/corpus, which is the same in each run
#   --coverage  also prints how many lines of the readers, writers and tables the corpus reaches
#
# A finding is run again by `build/fuzz/bin/NAME_fuzz FILE`, and made smaller by the same with
# `-minimize_crash=1 -runs=100000`.
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
save=no coverage=no
runs=-1
while [[ ${1:-} == --* ]]; do
  case $1 in
    --save) save=yes ;;
    --coverage) coverage=yes ;;
    --corpus) runs=0 ;;
    *)
      sed -n '2,18s/^# \{0,1\}//p' "${BASH_SOURCE[0]}" >&2
      exit 2
      ;;
  esac
  shift
done
seconds=${1:-20} regex=${2:-.}

"$top/scripts/install-packages.sh" fuzz >&2
cd "$top"
{
  cmake --preset fuzz
  cmake --build --preset fuzz --target fuzz_targets
} >&2

# Targets write small files over and over: in memory, where the system has such a place.
work=$(mktemp -d "$([ -w /dev/shm ] && echo /dev/shm || echo "${TMPDIR:-/tmp}")/rws-fuzz.XXXXXX")
trap 'rm -rf "$work"' EXIT
findings=$top/build/fuzz/findings
mkdir -p "$work/tmp" "$findings"
export work findings seconds runs TMPDIR="$work/tmp"
# Without long stacks of each allocation a run takes half the time; a finding shows its own.
export ASAN_OPTIONS=malloc_context_size=1:quarantine_size_mb=8

things=()
for program in build/fuzz/bin/*_fuzz; do
  thing=$(basename "$program" _fuzz)
  if [[ $thing =~ $regex ]]; then things+=("$thing"); fi
done
if [ ${#things[@]} -eq 0 ]; then
  echo "fuzz.sh: no target matches \"$regex\"." >&2
  exit 1
fi

fuzz_one() {
  local thing=$1 words=fuzz/$1.dict result=0
  [ -f "$words" ] || words=fuzz/mission.dict
  mkdir -p "$work/corpus/$thing" "fuzz/corpus/$thing"
  cp -r "fuzz/corpus/$thing/." "$work/corpus/$thing/"
  "build/fuzz/bin/${thing}_fuzz" -max_total_time="$seconds" -runs="$runs" -max_len=4096 -timeout=5 \
    -rss_limit_mb=2048 -malloc_limit_mb=512 -report_slow_units=5 -entropic=0 -dict="$words" \
    -print_final_stats=1 -artifact_prefix="$findings/$thing-" "$work/corpus/$thing" \
    >"$work/$thing.log" 2>&1 </dev/null || result=$?
  echo "$result" >"$work/$thing.rc"
}
export -f fuzz_one
printf '%s\n' "${things[@]}" | xargs -P "$(nproc)" -I{} bash -c 'fuzz_one {}'

stat() { sed -n "s/^stat::$2: *//p" "$work/$1.log" | tail -1; }

failed=no
echo "| target | runs | runs/s | edges | peak MB | findings |"
echo "|---|--:|--:|--:|--:|---|"
for thing in "${things[@]}"; do
  found=-
  if [ "$(cat "$work/$thing.rc")" -ne 0 ]; then
    failed=yes
    found=$(sed -n 's/.*Test unit written to //p' "$work/$thing.log" | tail -1)
    cp "$work/$thing.log" "$findings/$thing.log"
    found=${found:-it ended}
  fi
  edges=$(sed -n 's/.*cov: \([0-9]*\).*/\1/p' "$work/$thing.log" | tail -1)
  echo "| $thing | $(stat "$thing" number_of_executed_units) | $(stat "$thing" average_exec_per_sec) |" \
    "$edges | $(stat "$thing" peak_rss_mb) | ${found#"$top/"} |"
done

if [ "$save" = yes ]; then
  for thing in "${things[@]}"; do
    mkdir -p "$work/fewer/$thing"
    "build/fuzz/bin/${thing}_fuzz" -set_cover_merge=1 -use_counters=0 -max_len=1024 "$work/fewer/$thing" \
      "$work/corpus/$thing" >"$work/$thing.merge" 2>&1 </dev/null
    rm -rf "fuzz/corpus/$thing"
    cp -r "$work/fewer/$thing" "fuzz/corpus/$thing"
  done
fi

if [ "$coverage" = yes ]; then
  {
    cmake --preset fuzz-coverage
    cmake --build --preset fuzz-coverage --target fuzz_targets
  } >&2
  objects=()
  for thing in "${things[@]}"; do
    program=build/fuzz-coverage/bin/${thing}_fuzz
    LLVM_PROFILE_FILE=$work/$thing.profraw "$program" -runs=0 "fuzz/corpus/$thing" >/dev/null 2>&1 </dev/null
    objects+=(-object "$program")
  done
  llvm-profdata-14 merge -sparse "$work"/*.profraw -o "$work/all.profdata"
  echo
  # Which files these are is asked here: a filter of llvm-cov fits the paths of one build alone.
  wanted='/mission/(reader|section_readers|line_ends|line_values|route_line|kept_reader|kept_text'
  wanted+='|line_array|writer|section_writers|kept_merge|kept_proof|kept_flights|kept_bases'
  wanted+='|kept_keys|line_patch)[.]cpp$|/catalogues/(table|table_text|aircraft|weapons|squadrons'
  wanted+='|countries|dogfight|maps)[.]cpp$'
  echo "| file | lines | reached | % |"
  echo "|---|--:|--:|--:|"
  llvm-cov-14 export "${objects[@]:1}" -instr-profile="$work/all.profdata" -format=lcov \
    -summary-only 2>/dev/null | awk -F: -v wanted="$wanted" '
      function row(name, all, hit) {
        printf "| %s | %d | %d | %.1f |\n", name, all, hit, all ? 100 * hit / all : 0
      }
      $1 == "SF" { file = $2 }
      $1 == "LF" { all = $2 }
      $1 == "LH" { hit = $2 }
      $1 == "end_of_record" && file ~ wanted {
        sub(/.*\/(mission|catalogues)\//, "", file)
        row(file, all, hit)
        sum += all
        reached += hit
      }
      END { row("together", sum, reached) }'
fi

if [ "$failed" = yes ]; then
  echo "fuzz.sh: there are findings, each with its log, in ${findings#"$top/"}." >&2
  exit 1
fi
