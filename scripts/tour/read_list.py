"""Reads the saved list back and compares it with the database: read_list.py FILE DATABASE FROM [TO]

FROM is the first day of the range, yyyymmdd; the range ends as the list's first one does. With TO it ends there, and
the rows must come in the order of their ends.
"""
import csv
import datetime
import sqlite3
import sys
from collections import Counter

path, database, first, *to = sys.argv[1:]
today = datetime.date.today()
month = today.month + 6 - 1
last = datetime.date(today.year + month // 12, month % 12 + 1, 1) - datetime.timedelta(days=1)
if to:
    last = datetime.datetime.strptime(to[0], "%Y%m%d")

with open(path, encoding="utf-8-sig", newline="") as file:
    heading, *rows = csv.reader(file, strict=True)
columns = {name: place for place, name in enumerate(heading)}
saved = Counter((int(row[columns["IDNo."]]), row[columns["利用者名"]], row[columns["要加療期間"]],
                 row[columns["受領"]]) for row in rows)

stored = Counter(sqlite3.connect(database).execute(
    """SELECT P.nIDNo, P.cName, C.tDouiKaryoS || '～' || C.tDouiKaryoE,
       CASE WHEN IFNULL(CASE C.iHenkeiFlg WHEN 1 THEN C.iGetFlgHenkei ELSE C.iGetFlg END, 0) <> 0
       THEN '○' ELSE '' END
       FROM RIYOUSHA P JOIN RIYOUSHA_DOUI_REC C
       ON C.iKyotenCd = P.iKyotenCd AND C.iKyotenEb = P.iKyotenEb AND C.nIDNo = P.nIDNo
       WHERE P.iKyotenCd = 1 AND P.iKyotenEb = 1 AND C.iNewestFlg = 1 AND P.tExpireDay IS NULL
       AND IFNULL(P.iTenki, 0) NOT IN (1, 3, 15) AND C.tDouiKaryoE BETWEEN ? AND ?""",
    (datetime.datetime.strptime(first, "%Y%m%d").strftime("%Y/%m/%d"), last.strftime("%Y/%m/%d"))))

for row in (saved - stored):
    print("only in the file:", *row)
for row in (stored - saved):
    print("only in the database:", *row)
ends = [row[columns["要加療期間"]][-10:] for row in rows]
if to and ends != sorted(ends):
    print("not in the order of their ends:", *ends)
    saved = None
print(f"{len(rows)} rows of {len(heading)} columns read back")
sys.exit(saved != stored or not rows)
