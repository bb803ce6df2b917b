"""What a document tells its reader to do: its code blocks, the marks on them, and the commands that
stand in the text. Markdown and manual pages are both read.

A mark stands above a block of the language "sh": `<!-- not run: WHY -->`, `<!-- run by FILE -->`
where another file of the tree runs the very commands, or `<!-- until Ctrl-C -->` for a command that
ends by nothing else.
"""
import os
import re
import subprocess
import textwrap
from typing import NamedTuple

PROGRAMS = ("orxctl", "orxdef", "orxsim")
FILE = re.compile(
    r"((?:client|cmake|definitions|docs|fuzz|packaging|src|tests|tools)/[\w./-]+)$")
SCRIPT = re.compile(r"(?:\./)?((?:scripts|\.ci)/[\w-]+)$")
OPTION = re.compile(r"(?<![\w-])--?[A-Za-z][\w-]*")


class Block(NamedTuple):
    line: int
    language: str
    file: str
    content: str
    mark: str


def _blocks_of_markdown(text):
    pattern = re.compile(r"^(?P<mark> *<!-- [^\n]* -->\n\n?)?"
                         r"^(?P<indent> *)```(?P<language>\w*) ?(?P<file>\S*)\n"
                         r"(?P<content>.*?)^(?P=indent)```$", re.MULTILINE | re.DOTALL)
    for match in pattern.finditer(text):
        mark = re.fullmatch(r" *<!-- (.*) -->\s*", match["mark"] or "")
        yield Block(text.count("\n", 0, match.start("content")), match["language"], match["file"],
                    textwrap.dedent(match["content"]), mark[1] if mark else "")


def _plain(source):
    r"""Text of a manual page as it is shown: \e is a backslash."""
    for escape, shown in ((r"\-", "-"), (r"\(aq", "'"), (r"\&", ""), (r"\e", "\\")):
        source = source.replace(escape, shown)
    return textwrap.dedent(source)


def _blocks_of_manual(text):
    """What is shown, and what stands in comments, with four blanks ahead."""
    pattern = re.compile(r'^(?:\.\\" (?P<language>\w+) ?(?P<file>\S*)\n)?'
                         r'(?:\.EX\n(?P<shown>.*?)^\.EE$|(?P<hidden>(?:^\.\\"    [^\n]*\n)+))',
                         re.MULTILINE | re.DOTALL)
    for match in pattern.finditer(text):
        content = match["shown"] or re.sub(r'^\.\\"', "", match["hidden"], flags=re.MULTILINE)
        yield Block(text.count("\n", 0, match.start()) + 1, match["language"] or "",
                    match["file"] or "", _plain(content), "")


def is_manual(path):
    return path.suffix[1:].isdigit()


def blocks(path):
    text = path.read_text()
    return list(_blocks_of_manual(text) if is_manual(path) else _blocks_of_markdown(text))


def counted(path):
    """How many blocks of commands there must be, by their first lines alone."""
    return len(re.findall(r'^(?: *```|\.\\" )(?:console|sh)$', path.read_text(), re.MULTILINE))


def commands(session):
    """The commands of a session, and what must come out of it. A command goes on in the lines right
    behind it that begin with "> "."""
    wanted, expected = [], []
    goes_on = False
    for line in session.splitlines():
        goes_on = line.startswith("$ ") or (goes_on and line.startswith("> "))
        if goes_on:
            wanted.append(line[2:])
        else:
            expected.append(line)
    return wanted, expected


def first_words(content):
    """The programs that a block of shell commands calls."""
    found = []
    for line in content.replace("\\\n", " ").splitlines():
        for command in re.split(r"&&|\|\|?|;", line.split("#")[0]):
            words = [word for word in command.split() if not re.match(r"\w+=", word)]
            while words and words[0] in ("sudo", "cd", "export"):
                words = words[1:] if words[0] == "sudo" else []
            found += words[:1]
    return found


def scripts_in(block):
    """The scripts of the tree that a block calls. They build, install and take their time, so no
    block with one is run unless its mark says by whom."""
    return [word for word in first_words(block.content) if SCRIPT.match(word)]


def misplaced(path):
    """Commands that stand where none are looked for: they belong into a block of their own."""
    command = re.compile(r"(?:\$ |sudo |\./|cmake |ctest |apt |systemctl |scripts/)(?!.*\[)")
    if is_manual(path):
        yield from ((block.line, line) for block in blocks(path) if block.language != "console"
                    for line in block.content.splitlines() if command.match(line))
        return
    fenced = ""
    for number, line in enumerate(path.read_text().splitlines(), 1):
        if fence := re.match(r" *```(\w*)", line):
            fenced = "" if fenced else fence[1] or "text"
        elif fenced and fenced not in ("console", "sh", "bash") and command.match(line):
            yield number, line
        elif not fenced and line.startswith("    ") and command.match(line.strip()):
            yield number, line


def broken_spans(path):
    """Lines in which `code` does not end, as what reads them goes by lines."""
    inside = False
    for number, line in enumerate(path.read_text().splitlines(), 1):
        if line.lstrip().startswith("```"):
            inside = not inside
        elif not inside and line.count("`") % 2:
            yield number, "code that does not end in its line"


def _options_of(program):
    help_text = subprocess.run([program, "--help"], text=True, capture_output=True,
                               check=True).stdout
    words = re.findall(r"^  (\w+) ", help_text.partition("Subcommands:")[2], re.MULTILINE)
    for word in words:
        help_text += subprocess.run([program, word, "--help"], text=True, capture_output=True,
                                    check=True).stdout
    return {option for head in re.findall(r"^ +(-[^ ]*)", help_text, re.MULTILINE)
            for option in OPTION.findall(head)}


def wrong_in_text(path, source, programs):
    """Commands within a line of text (`orxctl status --json`) that name a script, a preset or an
    option that there is not, and files of the tree that there are not."""
    presets = (source / "CMakePresets.json").read_text()
    text = path.read_text()
    known = {}
    for match in re.finditer(r"`([^`\n]+)`", text):
        words = match[1].split()
        line = text.count("\n", 0, match.start()) + 1
        program = words[0] if words else ""
        if script := SCRIPT.match(program):
            if not os.access(source / script[1], os.X_OK):
                yield line, f"there is no {script[1]}"
        elif len(words) == 1 and (file := FILE.match(program)):
            if not (source / file[1]).exists() and not re.search(r"/[A-Z]+$", program):
                yield line, f"there is no {file[1]}"
        elif program in PROGRAMS:
            options = known.setdefault(program, _options_of(programs / program))
            yield from ((line, f"{program} has no option {option}")
                        for option in OPTION.findall(" ".join(words[1:])) if option not in options
                        and not re.fullmatch(r"-H|--", option))
        elif program in ("ctest", "cmake") and "--preset" in words:
            preset = words[words.index("--preset") + 1]
            if f'"{preset}"' not in presets:
                yield line, f"there is no preset {preset}"


def _anchors(text):
    """What the headings of a page are called in links."""
    headings = re.findall(r"^#+ (.*)$", text, re.MULTILINE)
    return {re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-") for heading in headings}


def broken_links(path):
    """Links to files or headings that there are not. Those to other sites are not followed."""
    text = path.read_text()
    for match in re.finditer(r"\]\((?!https?:)([^)#\s]*)(?:#([^)\s]*))?\)", text):
        target = path.parent / match[1] if match[1] else path
        line = text.count("\n", 0, match.start()) + 1
        if not target.exists():
            yield line, f"{match[1]} does not exist"
        elif match[2] and match[2] not in _anchors(target.read_text()):
            yield line, f"{target.name} has no heading {match[2]}"
