"""Data files of the report engine and what their texts are made of, read and reckoned without the program."""

import datetime

NEAR = {"𠮷": "吉", "〜": "～", "−": "－", "—": "―", "‖": "∥"}
ERAS = ((datetime.date(2019, 5, 1), "令和"), (datetime.date(1989, 1, 8), "平成"), (datetime.date(1926, 12, 25), "昭和"))


def records(path):
    """The header and the records of a data file; a number stays bare, so that it differs from its text."""
    with open(path, "rb") as file:
        text = file.read().decode("cp932")
    lines = text.split("\r\n")
    assert lines.pop() == "", path
    return [fields(line) for line in lines]


def fields(line):
    result, at = [], 0
    while at <= len(line):
        if line[at : at + 1] == '"':
            end = line.index('"', at + 1)
            result.append(line[at + 1 : end])
            at = end + 2
        else:
            end = line.find(",", at)
            end = len(line) if end < 0 else end
            result.append(int(line[at:end]))
            at = end + 1
    return result


def printed(value):
    """A value as a data file can carry it: a blank for a line break, ＂ for a quote, code page 932."""
    if not isinstance(value, str):
        return value
    text = "".join(" " if ord(c) < 32 else "＂" if c == '"' else NEAR.get(c, c) for c in value.replace("\r\n", "\n"))
    return "".join(c if encodable(c) else "〓" for c in text)


def encodable(character):
    try:
        return bool(character.encode("cp932"))
    except UnicodeEncodeError:
        return False


def date(text):
    """A stored date; None for none and for what is no date."""
    try:
        year, month, day = (text or "").split(" ")[0].replace("-", "/").split("/")
        return datetime.date(int(year), int(month), int(day))
    except ValueError:
        return None


def western(day):
    return day.strftime("%Y/%m/%d") if day else ""


def era_month(day):
    if not day:
        return ""
    start, name = next(era for era in ERAS if era[0] <= day)
    return f"{name}{day.year - start.year + 1:02}年{day.month:02}月"


def begun_months(first, today):
    """Months from a day on, the begun one counted."""
    months = 0
    while plus_months(first, months) <= today:
        months += 1
    return months


def plus_months(day, months):
    year, month = divmod(day.year * 12 + day.month - 1 + months, 12)
    last = (datetime.date(year + month // 11, (month + 1) % 12 + 1, 1) - datetime.timedelta(1)).day
    return datetime.date(year, month + 1, min(day.day, last))


def differences(path, header, expected):
    """What a data file has that was not reckoned so, as lines to read."""
    found = records(path)
    told = []
    if found[0] != header:
        told.append(f"{path}: header {found[0]}")
    if len(found) - 1 != len(expected):
        told.append(f"{path}: {len(found) - 1} records, reckoned {len(expected)}")
    for place, (record, wanted) in enumerate(zip(found[1:], expected), 1):
        for column, is_, should in zip(header, record, wanted):
            if is_ != printed(should):
                told.append(f"{path}: record {place}, {column}: {is_!r}, reckoned {should!r}")
    return told
