#!/usr/bin/env bash
# test.sh [--long]   checks everything, from the layout of the sources to real windows on a virtual display, and ends
# with a line "N passed, N failed". Goes on after a failure; ends with 1 if there was one. With --long the tests that
# try many cases try all of them, for hours if need be.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

fuzz_seconds=20
test_seconds=300
case "${1:-}" in
    "") unset KPX_LONG ;;
    --long) export KPX_LONG=1 fuzz_seconds=600 test_seconds=14400 ;;
    *) sed -n 's/^# \(test.sh .*\)/\1/p' "${BASH_SOURCE[0]}" >&2; exit 2 ;;
esac
jobs="$(nproc)"
passed=0
failed=0
failures=()

# The outcome must not hang on who runs this: a neutral region, a throw-away home, no desktop.
throw_away="$(mktemp -d)"
trap 'rm -rf "$throw_away"' EXIT
mkdir -m 700 "$throw_away"/{home,data,config,cache,state,runtime}
unset DISPLAY WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS LANG LANGUAGE
export CCACHE_DIR="${CCACHE_DIR:-${XDG_CACHE_HOME:-$HOME/.cache}/ccache}" CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1
export LC_ALL=C.UTF-8 TZ=UTC HOME="$throw_away/home"
export XDG_DATA_HOME="$throw_away/data" XDG_CONFIG_HOME="$throw_away/config" XDG_CACHE_HOME="$throw_away/cache"
export XDG_STATE_HOME="$throw_away/state" XDG_RUNTIME_DIR="$throw_away/runtime"
export ASAN_OPTIONS=detect_stack_use_after_return=1:strict_string_checks=1 UBSAN_OPTIONS=print_stacktrace=1

heading() {
    printf '\n== %s (%s s)\n' "$1" "$SECONDS"
}

# count NAME COMMAND…   one check: passed when the command ends with 0
count() {
    local name="$1"
    shift
    if "$@"; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        failures+=("$name")
    fi
}

# configure PRESET OPTION…   warnings are errors here, with the compiler that we know
configure() {
    local log="build/configure-$1.log"
    cmake --preset "$1" -DKPX_WARNINGS_AS_ERRORS=ON "${@:2}" >"$log" 2>&1 && return
    cat "$log"
    return 1
}

# build PRESET OPTION…   counts only a failure
build() {
    if configure "$@" && cmake --build --preset "$1" --parallel "$jobs"; then
        return 0
    fi
    failed=$((failed + 1))
    failures+=("build of $1")
    return 1
}

# run_ctest PRESET   counts each test that ctest knows; one skipped or disabled has proved nothing and counts
# as failed
run_ctest() {
    local log="build/ctest-$1.log" status=0 lost
    ctest --preset "$1" ${KPX_LONG:+--build-config Long} --parallel "$jobs" --timeout "$test_seconds" --no-tests=error 2>&1 | tee "$log" || status=1
    mapfile -t lost < <(sed -nE 's/^\s+[0-9]+ - (.* \(.*\)).*$/\1/p' "$log")
    if [[ $status -ne 0 && ${#lost[@]} -eq 0 ]]; then
        lost=("ctest itself")
    fi
    passed=$((passed + $(grep -cE '^ *[0-9]+/[0-9]+ Test +#.* Passed +[0-9.]+ sec' "$log" || true)))
    failed=$((failed + ${#lost[@]}))
    failures+=("${lost[@]/#/$1: }")
}

# The other presets: all that they name has its rules and its sources. The same sources are compiled by the presets
# above, and here those that read how they are compiled.
check_preset() {
    configure "$1" && ninja -C "build/$1" -t commands all >"build/commands-$1.log" || return 1
    local names objects
    names="$(grep -rlE '\bNDEBUG\b' src --include='*.cpp' | xargs -r -n 1 basename | paste -sd '|')"
    mapfile -t objects < <(grep -oE "[^ ]+/($names)\.o" "build/commands-$1.log" | sort -u)
    [[ ${#objects[@]} -eq 0 ]] || cmake --build --preset "$1" --target "${objects[@]}"
}

check_format() {
    git ls-files -z --cached --others --exclude-standard -- '*.cpp' '*.h' |
        xargs -0 -r clang-format-16 --dry-run -Werror
}

# Of the logic; the toolkit's headers would take as long again as everything else.
check_lint() {
    git ls-files -z --cached --others --exclude-standard -- 'src/*.cpp' ':!src/ui' ':!src/agent' ':!src/decoding/program' ':!src/main.cpp' |
        xargs -0 -r -n 4 -P "$jobs" clang-tidy-16 --quiet -p build/asan 2>build/lint.log && return
    cat build/lint.log
    return 1
}

# fuzz TARGET   the corpus in the repository is read, new inputs go to a throw-away folder
fuzz() {
    local target="$1" name log options=()
    name="$(basename "$target")"
    log="build/$name.log"
    if [[ -f fuzz/dictionaries/${name#fuzz_}.dict ]]; then
        options+=("-dict=fuzz/dictionaries/${name#fuzz_}.dict")
    fi
    mkdir -p "$throw_away/$name"
    if "$target" "${options[@]}" -seed=1 -max_total_time="$fuzz_seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
        -artifact_prefix="build/$name-" "$throw_away/$name" "fuzz/corpus/${name#fuzz_}" >"$log" 2>&1; then
        echo "$name: $(sed -n 's/^stat::number_of_executed_units: *//p' "$log") inputs"
    else
        tail -n 40 "$log"
        return 1
    fi
}

fuzz_all() {
    local targets=(build/fuzz/bin/fuzz_*) running=() names=() index
    while [[ ${#targets[@]} -gt 0 ]]; do
        running=() names=()
        for target in "${targets[@]:0:jobs}"; do
            fuzz "$target" &
            running+=("$!") names+=("$(basename "$target")")
        done
        targets=("${targets[@]:jobs}")
        for index in "${!running[@]}"; do
            count "${names[index]}" wait "${running[index]}"
        done
    done
}

mkdir -p build

heading "Packages"
packaging/install-missing.sh build window display parts pages check fuzz bench
heading "Arrows and files"
count "arrows" tests/architecture/check_arrows.py
count "files" tests/architecture/check_files.py
heading "Layout of the sources"
count "clang-format" check_format
heading "Logic and scenarios, under the sanitizers"
if build asan; then run_ctest asan; fi
heading "Windows and the agent, with real parts"
# As it is shipped, but that the toolkit checks itself; the tests of the logic ran above, the scenarios run once more.
if build release -DKPX_LOGIC_TESTS=OFF -DCMAKE_CXX_FLAGS=-DQT_FORCE_ASSERTS; then run_ctest release; fi
heading "The other presets"
for preset in headless dev; do
    count "preset $preset" check_preset "$preset"
done
heading "Lint"
count "clang-tidy" check_lint
heading "Fuzzing"
if build fuzz; then fuzz_all; fi

if [[ -n ${KPX_LONG:-} ]]; then
    heading "The package, and a life with it"
    count "package" tests/packaging/build_package.sh "$throw_away/package"
    count "life with the package" tests/packaging/clean_root/live.sh "$throw_away"/package/*.deb
    heading "Everything with another compiler"
    unset KPX_LONG # all cases were tried with the first one
    if build clang; then run_ctest clang; fi
fi

heading "Outcome"
[[ ${#failures[@]} -eq 0 ]] || printf 'failed: %s\n' "${failures[@]}"
echo "$passed passed, $failed failed"
[[ $failed -eq 0 ]]
