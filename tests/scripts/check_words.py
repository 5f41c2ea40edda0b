#!/usr/bin/env python3
"""What the command and the judge of files tell stands in both languages.

The English sentences are the keys of the German tables (words/german_*.cpp). Told is: what is an argument of
words::say, words::tr and words::retold, what a finding or a mend is put together from, the rules' texts, and the
help of options and commands. Each must have its German row, with the same gaps; a row that nobody uses is one too
many, except those of the sentences of others (german_host.cpp).
"""
import pathlib
import re
import sys

root = pathlib.Path(__file__).resolve().parents[2]
LITERAL = r'"(?:[^"\\\n]|\\.)*"'
STRINGS = re.compile(rf'{LITERAL}(?:\s*{LITERAL})*')
KEYS = re.compile(rf'\b(?:word|dataFile)\([^()]*\)|\[{LITERAL}\]|"Standard"|"ObjectDBX Classes"|" Binary DXF[^"]*"')  # words of files, not of people
problems = []


def text_of(literals):
    joined = "".join(part[1:-1] for part in re.findall(LITERAL, literals))
    return joined.replace('\\"', '"').replace("\\n", "\n").replace("\\\\", "\\")


def without_comments(source):
    return re.sub(rf'({LITERAL})|//[^\n]*', lambda m: m.group(1) or "", source)


def arguments(source, call):
    """The texts between the brackets of each call."""
    for match in re.finditer(call + r"\s*\(", source):
        depth, at, quoted = 1, match.end(), False
        while depth and at < len(source):
            c = source[at]
            if c == "\\" and quoted:
                at += 1
            elif c == '"':
                quoted = not quoted
            elif not quoted:
                depth += (c == "(") - (c == ")")
            at += 1
        yield source[match.end():at - 1]


def is_sentence(text):
    """Words of people; names of groups, kinds and files are the same in each language."""
    return re.search(r"[a-z]{2}", text) is not None


def told_in(path):
    source = KEYS.sub("", without_comments(path.read_text()))
    judge = path.parent.name in ("validate", "repair")
    calls = [r"\bsay", r"\btr"] + ([r"\badd", r"\baddAs", r"\baddAt", r"\brow"] if judge else [])
    for call in calls:
        for inside in arguments(source, call):
            yield from (text_of(found) for found in STRINGS.findall(inside))
    if judge:  # names of what is counted or named, handed on as pieces
        yield from (text for text in map(text_of, STRINGS.findall(source)) if " " in text)
    if path.name == "main.cpp":
        for inside in arguments(source, r"\badd\w*"):
            yield from (text for text in map(text_of, STRINGS.findall(inside)) if " " in text)
    if path.name in ("usage.cpp", "file_kind.cpp"):
        for inside in re.findall(rf'(?:Example|Mark|Ending)\{{((?:{LITERAL}|[^"}}])*)\}}', source):
            found = STRINGS.findall(inside)
            if found:
                yield text_of(found[-1])


def rows():
    for path in sorted((root / "words").glob("german_*.cpp")):
        source = without_comments(path.read_text())
        for english, german in re.findall(rf"\{{({LITERAL}(?:\s*{LITERAL})*),\s*({LITERAL}(?:\s*{LITERAL})*)\}}",
                                          source):
            yield path.name, text_of(english), text_of(german)


german = {}
for name, english, translated in rows():
    if english in german:
        problems.append(f"{name}: stands twice: {english}")
    german[english] = name
    gaps = lambda text: len(re.findall(r"\{\d?\}", text))
    if gaps(english) != gaps(translated):
        problems.append(f"{name}: other gaps in German: {english}")

told = {}
for folder in ("tool", "tool/validate", "tool/repair"):
    for path in sorted((root / folder).glob("*.[ch]*")):
        for text in told_in(path):
            if is_sentence(text):
                told.setdefault(text, path.relative_to(root))
problems += [f"{path}: no German for: {text}" for text, path in told.items() if text not in german]
everything = "".join(text_of(found) + "\0" for folder in ("tool", "tool/validate", "tool/repair")
                     for path in (root / folder).glob("*.[ch]*")
                     for found in STRINGS.findall(without_comments(path.read_text())))
problems += [f"{name}: nobody says: {english}" for english, name in german.items()
             if name != "german_host.cpp" and english + "\0" not in everything]
print(f"{len(told)} sentences, {len(german)} German rows")
print("\n".join(problems))
sys.exit(1 if problems else 0)
