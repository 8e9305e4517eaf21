#!/usr/bin/env python3
"""Makes the completions of bash, zsh and fish, and the options of the man page, from --help.

  make_completions.py <zorvane>            writes them
  make_completions.py --check <zorvane>    fails where one is not what --help says
"""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
TARGET = ROOT / "packaging" / "completions"
MAN_PAGE = ROOT / "docs" / "zorvane.1"
BEGIN, END = '.\\" Begin of the options, made of --help by tools/make_completions.py\n', '.\\" End of the options\n'
OPTION = re.compile(r"^  (?:(-\w),)?(--[\w-]+)(?: (?!Excludes|REQUIRED)([A-Z]\S*))?(?: Excludes:.*?)?(?: \.\.\.)?"
                    r"(?:  +(.*))?$")
COMMAND = re.compile(r"^  ([a-z][\w-]*)  +(\S.*)$")
# What an option of a fixed choice takes, where --help tells it in words.
CHOICES = {"--color": "auto always never", "--view": "side-by-side all-in-one", "--unchanged": "all folded none"}


def help_of(program, *words):
    done = subprocess.run([program, *words, "--help"], capture_output=True, text=True, check=True)
    return done.stdout.split("\nExamples:")[0]


def options_of(text):
    """(short, long, argument, choices, words) of each option."""
    found = []
    for line in text.split("\n"):
        match = OPTION.match(line)
        if match:
            short, long, argument, words = match.groups()
            choices = re.search(r":?\{(.*)\}", argument or "")
            found.append([short, long, re.sub(r":?\{.*", "", argument or ""),
                          choices[1].replace(",", " ") if choices else CHOICES.get(long, ""), words or ""])
        elif found and not found[-1][4] and line.startswith(" " * 20):
            found[-1][4] = line.strip()
    return found


def commands_of(program):
    section = help_of(program).split("Subcommands:\n")[1]
    commands = {match[1]: match[2] for match in map(COMMAND.match, section.split("\n")) if match}
    return {name: (words, options_of(help_of(program, name))) for name, words in commands.items()}


def bash(commands):
    cases, values = "", ""
    for name, (_, options) in commands.items():
        words = " ".join(word for option in options for word in option[:2] if word)
        cases += f"        {name}) words='{words}' ;;\n"
    seen = {}
    for _, options in commands.values():
        for short, long, argument, choices, _ in options:
            if argument:
                seen[long] = (f"{short}|{long}" if short else long, argument, choices)
    for names, argument, choices in seen.values():
        if choices:
            values += f"        {names}) COMPREPLY=($(compgen -W '{choices}' -- \"$current\")); return ;;\n"
        elif argument == "FILE":
            values += f"        {names}) IFS=$'\\n'; COMPREPLY=($(compgen -f -- \"$current\")); return ;;\n"
        else:
            values += f"        {names}) return ;;\n"
    return f"""# Completion of zorvane for bash; made by tools/make_completions.py.
_zorvane() {{
    local current=${{COMP_WORDS[COMP_CWORD]}} before=${{COMP_WORDS[COMP_CWORD - 1]}} words=''
    local IFS=$' \\t\\n'
    compopt -o filenames 2>/dev/null
    case $before in
{values}    esac
    case ${{COMP_WORDS[1]}} in
{cases}        *) words='{" ".join(commands)} --help --version' ;;
    esac
    if [[ $current == -* || $COMP_CWORD -eq 1 ]]; then
        IFS=$' \\t\\n' COMPREPLY=($(compgen -W "$words" -- "$current"))
    fi
    if [[ $current != -* ]]; then
        local IFS=$'\\n'
        COMPREPLY+=($(compgen -f -- "$current"))
    fi
}}
complete -F _zorvane zorvane
"""


def quoted(text, signs):
    for sign in signs:
        text = text.replace(sign, "\\" + sign)
    return text.replace("'", "'\\''")


def zsh(commands):
    out = "#compdef zorvane\n# Completion of zorvane for zsh; made by tools/make_completions.py.\n"
    out += "local -a commands\ncommands=(\n"
    for name, (words, _) in commands.items():
        out += f"    '{name}:{quoted(words, ':')}'\n"
    out += ")\nif (( CURRENT == 2 )); then\n    _describe command commands\n    _files\n    return\nfi\n"
    out += "case $words[2] in\n"
    for name, (_, options) in commands.items():
        out += f"    {name})\n        _arguments \\\n"
        for short, long, argument, choices, words in options:
            told = quoted(words, "[]:")
            action = f":{argument.lower()}:" if argument else ""
            if choices:
                action += f"({choices})"
            elif argument == "FILE":
                action += "_files"
            for word in (short, long):
                if word:
                    out += f"            '*{word}[{told}]{action}' \\\n"
        out += "            '*:file:_files' ;;\n"
    return out + "    *) _files ;;\nesac\n"


def fish(commands):
    names = " ".join(commands)
    out = "# Completion of zorvane for fish; made by tools/make_completions.py.\n"
    for name, (words, _) in commands.items():
        out += (f"complete -c zorvane -n 'not __fish_seen_subcommand_from {names}' -a {name} "
                f"-d '{quoted(words, '')}'\n")
    for name, (_, options) in commands.items():
        for short, long, argument, choices, words in options:
            line = f"complete -c zorvane -n '__fish_seen_subcommand_from {name}' -l {long[2:]}"
            line += f" -s {short[1:]}" if short else ""
            if choices:
                line += f" -x -a '{choices}'"
            elif argument == "FILE":
                line += " -r"
            elif argument:
                line += " -x"
            out += line + " -d '" + words.replace("\\", "\\\\").replace("'", "\\'") + "'\n"
    return out


def roff(text):
    text = text.replace("\\", "\\e").replace("-", "\\-")
    return "\\&" + text if text[:1] in ".'" else text


def man_options(commands):
    out = BEGIN + ".SH OPTIONS\n"
    told = {}
    for name, (words, options) in commands.items():
        out += f".SS zorvane {roff(name)}\n"
        same = []
        for short, long, argument, choices, words in options:
            if long in ("--help", "--version"):
                continue
            if told.get(long) == (argument, words):
                same.append(long)
                continue
            told[long] = (argument, words)
            names = f"\\fB{roff(short)}\\fR, " if short else ""
            out += f".TP\n{names}\\fB{roff(long)}\\fR" + (f" \\fI{argument}\\fR" if argument else "") + "\n"
            out += roff(words) + (f" ({choices.replace(' ', ', ')})" if choices and long not in CHOICES else "")
            out += "\n"
        if same:
            out += ".PP\nAs above: " + ", ".join(f"\\fB{roff(long)}\\fR" for long in same) + ".\n"
    return out + END


def with_options(page, options):
    if BEGIN in page:
        head, rest = page.split(BEGIN)
        return head + options + rest.split(END)[1]
    head, rest = page.split(".SH EXIT STATUS\n")
    return head + options + ".SH EXIT STATUS\n" + rest


def main(arguments):
    check = arguments[:1] == ["--check"]
    commands = commands_of(str(pathlib.Path(arguments[-1]).resolve()))
    made = {TARGET / "zorvane.bash": bash(commands), TARGET / "_zorvane": zsh(commands),
            TARGET / "zorvane.fish": fish(commands),
            MAN_PAGE: with_options(MAN_PAGE.read_text(encoding="utf-8"), man_options(commands))}
    stale = []
    for path, text in made.items():
        if not check:
            path.write_text(text, encoding="utf-8")
        elif not path.exists() or path.read_text(encoding="utf-8") != text:
            stale.append(path.name)
    for name in stale:
        print(f"{name} is not what --help says; run tools/make_completions.py")
    return 1 if stale or not all(options for _, options in commands.values()) else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
