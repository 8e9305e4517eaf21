#!/usr/bin/env python3
"""The texts that the program passes to Translate, as its source has them.

  list_phrases.py                     prints them, one a line, as a language file would hold them
  list_phrases.py --check FILE...     fails where a language file lacks one or says one twice, and
                                      where the source asks for a text that this tool cannot find;
                                      names those that nobody asks for
                                      In windows (ui folders): also where words reach a person
                                      without Translate
  list_phrases.py --self-test         checks the tool itself
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = ["app", "common", "compare", "find", "folders", "load", "options", "reports"]
READERS = ["load/readers", "redline"]

# Calls whose text stands elsewhere: what is passed, and where its literals are found. Group 1 is
# the stretch of source that holds them; all its literals are phrases.
INDIRECT = {
    "what": [r'\bShow\(("[^"]*")', r'\bLogTarget\(\w+, ("[^"]*")'],
    "words": [r'\bshow\([^,]*, ("[^"]*")'],
    "row.words": [r"kResults\[\] = \{(.*?)\n\};"],
    "kCheckPath": [r'kCheckPath = ("[^"]*")'],
    "row.title": [r"kFooters\[\] = \{(.*?)\n\};"],
    "row.none": [],
    "row.words.one": [r'\bWords\{("[^"]*",\s*"[^"]*")\}'],
    "row.words.many": [],
    "row.some": [],
    "FilterWords(filter)": [r"FilterWords\([^)]*\) \{(.*?)\n\}"],
    "RowOf(kind).words": [r"\{ViewerKind::\w+, \"\w+\", \"\w+\", \d+, (\"[^\"]+\"),\s"],
    "row->front": [r"StepRow kSteps\[\] = \{(.*?)\n\};"],
    "row->back": [],
    "question": [r"const char\* question = (.*?);", r"\n    Advise\((.*?)\);"],
    "done_text": [],
    "*known": [r"k(?:Expression|Reading)Faults\[\] = \{(.*?)\n\};"],
    "row.text": [r"\{ReadError::\w+,\s*((?:\"[^\"]*\"\s*)+)"],
    "kPasswordWanted": [],
    "text": [r"\bkUnable =(.*?);", r"show_message_\((\"[^\"]*\")", r"\bFail\([^;]*?, *((?:\"(?:[^\"\\]|\\.)*\"\s*)+)\)"],
    "ReportTrellisPortError(code)": [r"ReportTrellisPortError\([^)]*\) \{(.*?)\n\}", r"kChangePassword =(.*?);"],
    "ReportBCLError(error)": [r"kTexts\[\] = \{(.*?)\n\};", r"ReportBCLError\([^)]*\) \{(.*?)\n\}"],
}
# The declarations of Translate itself, and calls that hand on what another call was given.
HANDED_ON = {"std::string_view sEnglish", "std::string_view english", "const char* english",
             "english", "sEnglish", "sEnglish.substr(0, end)", "translate",
             "std::move(translate)"}
# Made of a literal and a blank.
MADE = {'frame + " "': "{} ", '" " + frame': " {}"}

LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
ESCAPES = {"n": "\n", "r": "\r", "t": "\t", '"': '"', "\\": "\\", "'": "'", "0": "\0"}


def without_comments(source):
    pattern = re.compile(r'"(?:[^"\\\n]|\\.)*"|\'(?:[^\'\\\n]|\\.)+\'|//[^\n]*|/\*.*?\*/', re.S)
    return pattern.sub(lambda m: m[0] if m[0][0] in "\"'" else " ", source)


def unescaped(text):
    return re.sub(r"\\(.)", lambda m: ESCAPES.get(m[1], m[0]), text, flags=re.S)


def literals(source):
    """The literals of a stretch of source, neighbours joined as the compiler joins them."""
    return [text for _, text in placed_literals(source)]


def placed_literals(source):
    """(place, text) of each literal, neighbours joined."""
    found, end = [], None
    for match in LITERAL.finditer(source):
        if end is not None and not source[end:match.start()].strip():
            found[-1] = (found[-1][0], found[-1][1] + unescaped(match[1]))
        else:
            found.append((match.start(), unescaped(match[1])))
        end = match.end()
    return found


def first_argument(source, start):
    depth, place = 0, start
    while place < len(source):
        character = source[place]
        if character == '"':
            place = LITERAL.match(source, place).end()
            continue
        if character in "([{":
            depth += 1
        elif character in ")]}":
            if depth == 0:
                break
            depth -= 1
        elif character == "," and depth == 0:
            break
        place += 1
    return source[start:place]


def lines_of(text):
    """A text of several lines is asked for line by line."""
    return [line for line in re.split(r"[\r\n]+", text) if line.strip()]


def phrases_of(files):
    """From name to source: the phrases, and what could not be resolved."""
    phrases, unknown, asked = {}, [], set()
    whole = "\n".join(files.values())

    def add(text, name):
        for line in lines_of(text):
            phrases.setdefault(line, name)

    for name, source in files.items():
        for call in re.finditer(r"(?:\bTranslate(?:Lines)?|(?<![.>\w])translate_?)\(", source):
            whole_argument = first_argument(source, call.end())
            argument = " ".join(whole_argument.split())
            if argument in MADE:
                for region in re.finditer(INDIRECT["row.title"][0], whole, re.S):
                    frames = [text for text in literals(region[1]) if not re.search(r"\w", text)]
                    for frame in frames:
                        add(MADE[argument].format(frame), name)
                continue
            own = literals(whole_argument)
            for text in own:
                add(text, name)
            asked.add(argument)
            if argument not in INDIRECT and not own and argument not in HANDED_ON:
                unknown.append(f"{name}: Translate({argument})")
    for argument in sorted(asked & INDIRECT.keys()):
        patterns = INDIRECT[argument]
        regions = [region for pattern in patterns for region in re.finditer(pattern, whole, re.S)]
        if patterns and not regions:
            unknown.append(f"nothing is found for Translate({argument})")
        for region in regions:
            for text in literals(region[1]):
                if re.search(r"\w", text):
                    add(text, argument)
    return phrases, unknown


# ---- windows ----
# There every text passes `UiText`, often from a table, so every literal that reads as words is a
# phrase; what is made a QString at once, or given to a widget as it stands, passes nobody.

# No window: what they say goes to programs.
WITHOUT_WORDS = {"app/ui/automation_service.cpp", "app/ui/automation_service.h", "app/ui/window_main.cpp",
                 "common/ui/announce.cpp"}
# Names, and texts that stand for missing ones in pictures and tests.
NO_PHRASES = re.compile(
    r"( – )?Zorvane( %1\n)?|Fusion|Uninitialized|Courier|TranslateFalse|[a-z_]+(\.[a-z_]+)+|"
    r"((Ctrl|Shift|Alt|Meta)\+)*(Tab|Return|Enter|Del|Esc|Space|PgUp|PgDown|F\d+|[A-Z0-9,+-])(; .*)?|(Ctrl|Shift|Alt)\+.*|[A-Z]\w*::\w+")
WORDS = re.compile(r"(?<![<&#\w-])&?[A-Z](?=[\w& ]*[a-z])|[a-z]&?[a-z]+,? (%\d|&?[A-Za-z]{2,})|%\d [a-z]{2,}")
PASSED = re.compile(r"(?:\btext_?|(?<![.>\w])translate_?|\bTranslate|\bnamed)\($")
UNSEEN = re.compile(r"(?:\bIgnoreFailure|\bassert|\bQ_ASSERT_X|\bQ_CLASSINFO|\bfind|\bqputenv|\bqgetenv)\(")
STRAIGHT = re.compile(
    r"(?:QStringLiteral|QString::fromLatin1|QLatin1String|QString|QObject::tr|"
    r"set(?:Text|ToolTip|StatusTip|WindowTitle|PlaceholderText|AccessibleName|AccessibleDescription|Title)|"
    r"new Q(?:Label|PushButton|CheckBox|RadioButton|GroupBox|Action)|add(?:Item|Action|Menu|Tab))\($")


# Of the core, translated by a window.
OF_WINDOWS = [r"\{BesideKind::\w+, \"\w+\", (\"[^\"]+\")", r"VerbOf\(BesideKind kind[^;{]*\{(.*?)\n\}",
              r"looks \? (\"formatting\")", r"ExpressionSigns\(\) \{(.*?)\n\}", r"ViewButtonCaption\([^)]*\) \{(.*?)\n\}"]


def statement_before(source, place):
    """The code in front of a literal, back to the statement's begin."""
    begin = max(source.rfind(sign, 0, place) for sign in ";{}")
    return source[begin + 1:place]


def window_phrases(name, source):
    """(phrases, bypassing) of a file of a ui folder."""
    phrases, bypassing = [], []
    if name in WITHOUT_WORDS:
        return phrases, bypassing
    source = re.sub(r'R"(\w*)\(.*?\)\1"', '""', source, flags=re.S)
    source = re.sub(r"#\s*include[^\n]*", "", source)
    source = re.sub(r'PaneTexts PaneTexts::English\(\) \{.*?\n\}', "", source, flags=re.S)
    for start, text in placed_literals(source):
        code = source[:start].rstrip()
        before = statement_before(source, start)
        passed = bool(PASSED.search(code)) or re.search(
            r"(?:\btext_?|(?<![.>\w])translate_?|\bTranslate)\([^()]*(?:\([^()]*\)[^()]*)*$", before)
        if NO_PHRASES.fullmatch(text) or not re.search(r"[A-Za-z]{2}", text):
            continue
        if not passed and (not WORDS.search(text) or UNSEEN.search(before)):
            continue
        if not passed and (STRAIGHT.search(code) or code.endswith(" u")):
            bypassing.append(f"{name}: {text!r} does not pass the translator")
        else:  # "&File|&New" is a path of menus
            phrases += text.split("|") if re.fullmatch(r"&\w+(\|[\w& ]+)+", text) else [text]
    return phrases, bypassing


def source_files():
    files = {}
    for folder in FOLDERS:
        for path in sorted((ROOT / folder).rglob("*")):
            if path.suffix in (".cpp", ".h"):
                name = str(path.relative_to(ROOT))
                files[name] = without_comments(path.read_text(encoding="utf-8"))
    return files


def table_of(text):
    """The entries of a language file, as the program reads them; and keys that stand twice."""
    table, twice = {}, []
    for line in text.splitlines():
        if not line.strip() or line.startswith('"!'):
            continue
        if line.startswith('"****'):
            break
        key, between, rest = line.partition('","')
        english = key[1:] if between else line[1:-1]
        if english in table:
            twice.append(english)
        table.setdefault(english, rest[:-1] if between else english)
    return table, twice


def check(path, phrases):
    table, twice = table_of(path.read_text(encoding="utf-8-sig"))
    problems = [f"stands twice: {text!r}" for text in twice]
    problems += [f"missing: {text!r} ({where})" for text, where in phrases.items() if text not in table]
    unused = [f"nobody asks for (no failure): {text!r}" for text in table if text not in phrases]
    for problem in problems + unused:
        print(f"{path.name}: {problem}")
    return not problems


def untold_faults(phrases):
    """What a reader says of a file in fixed words, which `ReadingFault` has to know. A missing password is told
    without a reader's words."""
    pattern = re.compile(r'ReadError::(?!PasswordNeeded)\w+,\s*((?:"(?:[^"\\\n]|\\.)*"\s*)+)\)')
    for folder in READERS:
        for path in sorted((ROOT / folder).rglob("*.cpp")):
            for match in pattern.finditer(without_comments(path.read_text(encoding="utf-8"))):
                for text in literals(match[1]):
                    if text not in phrases:
                        yield f"{path.relative_to(ROOT)}: not in load/reading_faults.cpp: {text!r}"


def self_test():
    files = {"a.cpp": without_comments('''
        Translate("one"); // Translate("never")
        process.Translate(many ? "two\\" quoted" : "thr"
                          "ee") + Translate("last\\n\\nlines");
        Translate(mystery); Translate(words); show(f(1), "four");
    ''')}
    phrases, unknown = phrases_of(files)
    assert set(phrases) == {"one", 'two" quoted', "three", "last", "lines", "four"}, phrases
    assert "a.cpp: Translate(mystery)" in unknown, unknown
    assert not any("never" in text for text in phrases)
    found, bypassing = window_phrases("x/ui/a.cpp", '''
        text_("case"); {"view.fold", "Fold &It", "&View|Zoo&m", "Ctrl+U", "fold", "Hide what is"}
        label->setText("Not told"); setObjectName(QStringLiteral("edge")); QStringLiteral("Also not");
        IgnoreFailure(Close(), "nobody waits for it"); R"(QWidget { color: Red; })" "joined " "words";
    ''')
    assert found == ["case", "Fold &It", "&View", "Zoo&m", "Hide what is", "joined words"], found
    assert [text.split("'")[1] for text in bypassing] == ["Not told", "Also not"], bypassing
    table, twice = table_of('"! a"\n"x","y"\n"x","z"\n"lone"\n"k","a","b"\n"****"\n"behind"\n')
    assert table == {"x": "y", "lone": "lone", "k": 'a","b'} and twice == ["x"], table
    print("list_phrases.py: all well")


def main(arguments):
    if arguments == ["--self-test"]:
        self_test()
        return 0
    files = source_files()
    phrases, unknown = phrases_of({name: text for name, text in files.items() if "/ui/" not in name})
    bypassing = []
    for name, source in files.items():
        if "/ui/" in name:
            found, beside = window_phrases(name, source)
            bypassing += beside
            for text in found:
                for line in lines_of(text):
                    phrases.setdefault(line, name)
    for pattern in OF_WINDOWS:
        regions = re.findall(pattern, "\n".join(files.values()), re.S)
        unknown += [] if regions else [f"nothing is found for {pattern}"]
        for region in regions:
            phrases |= {text: pattern for text in literals(region)
                        if text not in phrases and re.search(r"\w", text)}
    bypassing += untold_faults(phrases)
    for problem in bypassing:
        print(problem, file=sys.stderr)
    for problem in unknown:
        print(f"cannot tell what is asked for: {problem}", file=sys.stderr)
    if arguments[:1] == ["--check"]:
        good = [check(pathlib.Path(name), phrases) for name in arguments[1:]]
        return 0 if all(good) and not unknown and not bypassing else 1
    for text in phrases:
        print(f'"{text}"')
    return 1 if unknown or bypassing else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
