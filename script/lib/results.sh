# Sums up what ctest and the GoogleTest programs have written.

# summarise FOLDER VARIANT: prints a line "passed|failed|skipped VARIANT PROGRAM [TEST]" for each
# test. FOLDER has ctest's tests.json (what there is) and junit.xml (how it ended), and for each
# GoogleTest program that reached its end PROGRAM.json. A program without it crashed or was ended:
# one failure, as is one whose tests passed and which failed nevertheless.
summarise() {
    local name kind status
    if [ ! -f "$1/junit.xml" ]; then
        printf 'failed %s (ctest did not run)\n' "$2"
        return
    fi
    while IFS=$'\t' read -r name kind; do
        status=$(junit_status "$1/junit.xml" "$name")
        [ "$status" != absent ] || continue
        if [ "$kind" = gtest ] && [ "$status" != disabled ]; then
            summarise_program "$1/$name.json" "$2 $name" "$status"
        else
            case $status in
            run) printf 'passed %s\n' "$2 $name" ;;
            disabled) printf 'skipped %s\n' "$2 $name" ;;
            *) printf 'failed %s\n' "$2 $name" ;;
            esac
        fi
    done < <(jq -r '.tests[] | [.name, (if any(.properties[];
        .name == "LABELS" and (.value | index("gtest"))) then "gtest" else "plain" end)] | @tsv' \
        "$1/tests.json")
}

# junit_status FILE NAME: run, fail, disabled, notrun, or absent where ctest did not select it.
junit_status() {
    local line
    line=$(grep -F "<testcase name=\"$2\" " "$1" || true)
    case $line in
    '') printf 'absent\n' ;;
    *) sed -n 's/.* status="\([a-z]*\)".*/\1/p' <<<"$line" ;;
    esac
}

# summarise_program FILE LABEL STATUS
summarise_program() {
    if ! jq empty "$1" 2>/dev/null; then
        printf 'failed %s (no results: it crashed, was ended or did not run)\n' "$2"
        return
    fi
    jq -r --arg program "$2" '.testsuites[] | .name as $suite | .testsuite[] |
        (if (.failures // []) != [] then "failed"
         elif .result == "COMPLETED" then "passed" else "skipped" end)
        + " \($program) \($suite).\(.name)"' "$1" || printf 'failed %s (unreadable results)\n' "$2"
    if [ "$3" != run ] && [ "$(jq .failures "$1")" = 0 ]; then
        printf 'failed %s (its tests passed, but it failed when it ended)\n' "$2"
    fi
}
