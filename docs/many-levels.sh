#!/bin/bash
# Solves many levels, several at once, and goes on where an earlier run was ended.
#
#   many-levels.sh RUN LEVEL...       on this machine, with GNU parallel
#   many-levels.sh --gather RUN       only puts the answers together
#
# RUN is a folder for the list of levels, the log and the answers; answers.jsonl in it has one line
# for each level, in the order of the list. LEVEL is what kavit-solve takes: files, collections,
# folders. Started again with the same RUN, it solves what has no answer yet; levels that were being
# solved when it was killed are solved again.
#
#   JOBS=4                            levels at a time; all cores when not set
#   OPTIONS='--opt-level 3 --memory 20%'   for kavit-solve; each level gets one thread
#
# On a cluster with Slurm, list the levels first, then let each task of an array take its share:
#
#   mkdir run && kavit-solve --list albums/ > run/levels
#   sbatch --array=1-50 --cpus-per-task=4 many-levels.sh run
#   many-levels.sh --gather run       # when all tasks are done
set -euo pipefail

solve=${KAVIT_SOLVE:-kavit-solve}

gather() {
    find "$1/results" -name stdout | sort --version-sort | xargs --no-run-if-empty cat \
        >"$1/answers.new"
    mv "$1/answers.new" "$1/answers.jsonl"
    echo "many-levels: $(wc -l <"$1/answers.jsonl") of $(wc -l <"$1/levels") levels have an answer" >&2
}

if [[ ${1-} == --gather && $# == 2 ]]; then
    gather "$2"
    exit
fi
if (($# == 0)) || { (($# == 1)) && [[ ! -s $1/levels ]]; }; then
    echo "usage: many-levels.sh RUN LEVEL... | many-levels.sh --gather RUN" >&2
    exit 1
fi
run=$1
shift
mkdir -p "$run"
if [[ ! -s $run/levels ]]; then
    # A list that was cut short would hide levels for ever.
    "$solve" --list "$@" >"$run/levels.new" || (($? == 5))
    mv "$run/levels.new" "$run/levels"
fi

# Every level in its own file, so that lines stay whole however a run ends. A status other than 0 is
# an answer, too: --resume does not solve such a level again.
part=${SLURM_ARRAY_TASK_ID:-1}
parts=${SLURM_ARRAY_TASK_COUNT:-1}
awk -v part="$part" -v parts="$parts" 'NR % parts == part % parts' "$run/levels" |
    parallel --will-cite --resume --joblog "$run/joblog.$part" --results "$run/results/$part/{#}/" \
        --jobs "${JOBS:-${SLURM_CPUS_PER_TASK:-100%}}" \
        "$solve" --json --threads 1 ${OPTIONS-} {} >/dev/null 2>&1 || true
if ((parts == 1)); then
    gather "$run"
fi
