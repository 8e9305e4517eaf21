# Completion of zorvane for bash; made by tools/make_completions.py.
_zorvane() {
    local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} words=''
    local IFS=$' \t\n'
    compopt -o filenames 2>/dev/null
    case $before in
        -o|--report) IFS=$'\n'; COMPREPLY=($(compgen -f -- "$current")); return ;;
        --report-type) return ;;
        --json) IFS=$'\n'; COMPREPLY=($(compgen -f -- "$current")); return ;;
        --color) COMPREPLY=($(compgen -W 'auto always never' -- "$current")); return ;;
        -C|--context) return ;;
        --view) COMPREPLY=($(compgen -W 'side-by-side all-in-one' -- "$current")); return ;;
        --unchanged) COMPREPLY=($(compgen -W 'all folded none' -- "$current")); return ;;
        --title) return ;;
        --original-label) return ;;
        --modified-label) return ;;
        --author) return ;;
        --revision-date) return ;;
        --revision-ids) return ;;
        --ignore-regex) return ;;
        --also) return ;;
        --bracket) return ;;
        --pairs) return ;;
        -j|--jobs) return ;;
        --password) return ;;
        --original-password) return ;;
        --modified-password) return ;;
        --password-file) IFS=$'\n'; COMPREPLY=($(compgen -f -- "$current")); return ;;
        --sheets) return ;;
        --rows) return ;;
        --columns) return ;;
        --pages) return ;;
        --slides) return ;;
        --set) return ;;
        --settings) IFS=$'\n'; COMPREPLY=($(compgen -f -- "$current")); return ;;
        --log) IFS=$'\n'; COMPREPLY=($(compgen -f -- "$current")); return ;;
        -o|--output) IFS=$'\n'; COMPREPLY=($(compgen -f -- "$current")); return ;;
        --types) return ;;
        --only) return ;;
        --reports) return ;;
        -j|--threads) return ;;
    esac
    case ${COMP_WORDS[1]} in
        compare) words='-h --help -V --version -o --report --report-type --json --stat -q --quiet --color --no-pager -U --context --open --view --unchanged --title --original-label --modified-label --author --revision-date --revision-ids --track-formatting --keep-tracked --no-verify -i --ignore-case -w --ignore-whitespace -B --ignore-blank-lines --ignore-regex --letters --faster --larger-sections --no-moves --also --bracket --pairs -j --jobs --fail-fast --plain --remove-blank-lines --password --original-password --modified-password --password-file --ask-password --sheets --rows --columns --formulas --source --pages --pdf-quick --slides --notes --set --settings --no-sandbox --log' ;;
        text) words='-h --help -V --version --rtf -o --output --plain --remove-blank-lines --password --original-password --modified-password --password-file --ask-password --sheets --rows --columns --formulas --source --pages --pdf-quick --slides --notes --set --settings --no-sandbox --log' ;;
        install-git) words='-h --help --local --global --remove' ;;
        folders) words='-h --help -V --version -r --recursive --types --dates --quick --no-hidden --follow --no-renames -j --jobs -o --output --json --only --stat -q --quiet --color --text --reports --report-type --no-cache -i --ignore-case -w --ignore-whitespace -B --ignore-blank-lines --plain --remove-blank-lines --password --original-password --modified-password --password-file --ask-password --sheets --rows --columns --formulas --source --pages --pdf-quick --slides --notes --set --settings --no-sandbox --log' ;;
        find) words='-h --help -V --version -e --regexp -i --ignore-case -w --word-regexp -r --recursive --types --office --no-hidden -j --threads --password --password-file --ask-password --no-cache --no-sandbox -C --context -l --files-with-matches -c --count --json --stats -q --quiet --color' ;;
        cache) words='-h --help -V --version --clear' ;;
        *) words='compare text install-git folders find cache --help --version' ;;
    esac
    if [[ $current == -* || $COMP_CWORD -eq 1 ]]; then
        IFS=$' \t\n' COMPREPLY=($(compgen -W "$words" -- "$current"))
    fi
    if [[ $current != -* ]]; then
        local IFS=$'\n'
        COMPREPLY+=($(compgen -f -- "$current"))
    fi
}
complete -F _zorvane zorvane
