"""Every text that the handbook quotes in 「」 is in the program: handbook.py TOP

A quote may leave out what varies: ○ stands for one value, … for whatever follows.
"""
import re
import sys
from pathlib import Path

top = Path(sys.argv[1])
rooms = ["app", "archive", "backup", "check", "consent", "db", "export", "fees", "history", "import", "masters", "print", "sample", "search", "setup", "viewer", "widgets"]


def plain(text):
    """Without mnemonics, line breaks and blanks, which a reader does not see."""
    text = re.sub(r"\((&amp;|&)\w\)|\\[rn]|&amp;|&(?=\w)", "", text)
    text = text.replace('\\"', '"').replace("&lt;b&gt;", "").replace("&lt;/b&gt;", "").replace("&lt;", "<").replace("&gt;", ">")
    return re.sub(r"\s", "", re.sub(r"%L?\d", "○", text))


def texts(path):
    source = path.read_text(encoding="utf-8")
    if path.suffix == ".ui":
        return re.findall(r"<string>([^<]*)</string>", source)
    source = re.sub(r"^\s*//.*$", "", source, flags=re.M)
    joined = re.sub(r'"(?:_s)?\s*\n\s*u?"', "", source)
    return re.findall(r'"((?:[^"\\\n]|\\.)*)"', joined)


def quotes(markdown):
    """What stands in the outermost 「」 of each line."""
    for line in markdown.splitlines():
        depth, start = 0, 0
        for at, sign in enumerate(line):
            if sign == "「":
                depth += 1
                start = at + 1 if depth == 1 else start
            elif sign == "」" and depth:
                depth -= 1
                if depth == 0:
                    yield line[start:at]


files = [path for room in rooms for path in (top / room).rglob("*") if path.suffix in (".cpp", ".h", ".ui")]
program = "\n".join(plain(text) for path in files for text in texts(path))
chapters = sorted((top / "docs/handbook").glob("[0-9]*.md"))
handbook = {path: path.read_text(encoding="utf-8") for path in chapters + [top / "README.ja.md"]}
program += "".join(re.findall(r"^# .*$", markdown, flags=re.M)[0] for markdown in handbook.values())

wrong = [f"{path.name}: 「{quote}」" for path, markdown in handbook.items() for quote in quotes(markdown)
         for part in plain(re.sub(r"\[([^]]*)\]\([^)]*\)", r"\1", quote)).split("…") if part not in program]
wrong += [f"{path.name}: {picture} is missing" for path, markdown in handbook.items()
          for picture in re.findall(r"!\[[^]]*\]\(([^)]*)\)", markdown) if not (path.parent / picture).exists()]
print(*wrong, sep="\n")
sys.exit(bool(wrong) or len(chapters) < 10)
