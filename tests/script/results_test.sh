#!/usr/bin/env bash
# How script/test counts: every way that a test program can end.

here=$(cd "${BASH_SOURCE[0]%/*}" && pwd)
source "$here/expect.sh"
source "$here/../../script/lib/results.sh"

label='"properties":[{"name":"LABELS","value":["gtest"]}]'
cat >"$scratch/tests.json" <<END
{"tests":[{"name":"good",$label},{"name":"bad",$label},{"name":"crashed",$label},
{"name":"half",$label},{"name":"dies_at_end",$label},{"name":"not_chosen",$label},
{"name":"plain","properties":[]},{"name":"plain_bad","properties":[]}]}
END
{
    echo '<testsuite>'
    for name in good plain; do
        printf '\t<testcase name="%s" classname="%s" time="1" status="run">\n' $name $name
    done
    for name in bad crashed half dies_at_end plain_bad; do
        printf '\t<testcase name="%s" classname="%s" time="1" status="fail">\n' $name $name
    done
} >"$scratch/junit.xml"

# program NAME FAILURES TEST...: what a GoogleTest program writes when it reaches its end.
program() {
    local name=$1 failures=$2
    shift 2
    printf '{"failures":%s,"testsuites":[{"name":"Suite","testsuite":[%s]}]}' "$failures" \
        "$(IFS=, && printf '%s' "$*")" >"$scratch/$name.json"
}
passed='{"name":"Passes","status":"RUN","result":"COMPLETED"}'
failed='{"name":"Fails","status":"RUN","result":"COMPLETED","failures":[{"failure":"x"}]}'
skipped='{"name":"Skips","status":"RUN","result":"SKIPPED"}'
program good 0 "$passed" "$skipped"
program bad 1 "$passed" "$failed"
program dies_at_end 0 "$passed"
printf '{"failures":0,"testsuites":[{"na' >"$scratch/half.json"

expect "every ending counts" "passed v good Suite.Passes
skipped v good Suite.Skips
passed v bad Suite.Passes
failed v bad Suite.Fails
failed v crashed (no results: it crashed, was ended or did not run)
failed v half (no results: it crashed, was ended or did not run)
passed v dies_at_end Suite.Passes
failed v dies_at_end (its tests passed, but it failed when it ended)
passed v plain
failed v plain_bad" "$(summarise "$scratch" v)"

rm "$scratch/junit.xml"
expect "a run without a protocol is a failure" "failed v (ctest did not run)" \
    "$(summarise "$scratch" v)"
finish
