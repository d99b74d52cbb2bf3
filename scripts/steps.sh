# To be sourced:  cv_step "what is done" LOG COMMAND...  runs the command with its output in LOG, says what is done and how long
# it took, and while it lasts, every few seconds, how far a build is. Where it fails, shows the end of LOG and returns 1.
cv_step() {
    local what=$1 log=$2 start=$SECONDS shown=$SECONDS program
    shift 2
    printf '   %s ...\n' "$what"
    "$@" > "$log" 2>&1 &
    program=$!
    while kill -0 "$program" 2> /dev/null; do
        sleep 0.2
        if [ $((SECONDS - shown)) -ge 5 ]; then
            shown=$SECONDS
            printf '   %s, %d s%s\n' "$what" $((SECONDS - start)) "$(cv_progress "$log")"
        fi
    done
    if wait "$program"; then
        printf '   %s: done, %d s\n' "$what" $((SECONDS - start))
    else
        tail -n 40 "$log"
        return 1
    fi
}

# ", 62 of 203" of the last line "[62/203] ..." in a log of a build.
cv_progress() { sed -nE 's/^\[([0-9]+)\/([0-9]+)\].*/, \1 of \2/p' "$1" 2> /dev/null | tail -n 1; }
