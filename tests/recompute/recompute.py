"""Recomputes documents of the sample from its tables and compares every column with what the program writes.

Usage: recompute.py DOUISHO-SAMPLE RECOMPUTE-DOCUMENTS
"""

import configparser
import datetime
import itertools
import os
import random
import sqlite3
import subprocess
import sys
import tempfile

import ledger
import renewal_list
from data_file import western

TODAY = datetime.date(2026, 11, 21)
PATIENTS = 100
MAIN = "iKyotenCd = 1 AND iKyotenEb = 1"

# What the sample lacks: values that are missing, out of order or of nobody.
ODD = (
    "UPDATE RIYOUSHA_DOUI_REC SET tDouiKaryoS = NULL, cIsiCd = '999', cDouiIsiName = '　' WHERE nIDNo = 3",
    "UPDATE RIYOUSHA_DOUI_REC SET tDouiKaryoE = '2026/05/01', tDouiDay = NULL WHERE nIDNo = 5",
    "UPDATE RIYOUSHA_DOUI_REC SET tDouiDay = '2027/02/30', cIsiCd = NULL WHERE nIDNo = 7",
    "UPDATE RIYOUSHA_DOUI_REC SET cKobetuDouiIrai = 'a,\"b\"' || char(13) || char(10) || '𠮷〜', iSendFlg = 1 WHERE nIDNo = 9",
    "UPDATE RIYOUSHA_DOUI_REC SET tHenkeSday = NULL, tHenKeEday = NULL WHERE iHenkeiFlg = 1 AND nIDNo % 3 = 0",
    "UPDATE RIYOUSHA_DOUI_REC SET tDouiKaryoS = NULL, tHenkeSday = NULL, tHenKeEday = NULL WHERE iHenkeiFlg = 1 AND nIDNo % 5 = 0",
    "UPDATE RIYOUSHA_DOUI_REC SET iOutputFlg = 1 - coalesce(iOutputFlg, 0), tSaiDouiDay = '2026/11/30' WHERE iHenkeiFlg = 1",
    "UPDATE RIYOUSHA SET nTantou = 99, nTantou2 = NULL WHERE nIDNo % 11 = 0",
    "UPDATE RIYOUSHA SET nTantou3 = 1, nTantou4 = 2, nTantou5 = 3, iSejutsuKubun = NULL WHERE nIDNo % 13 = 0",
    "DELETE FROM RIYOUSHA_SUB WHERE nIDNo % 7 = 0",
    "DELETE FROM DOCTOR WHERE cIDNo = '2'",
    "UPDATE DOCTOR SET cKikan = NULL WHERE cIDNo IN ('3', '4')",
    "DELETE FROM SISETSU WHERE nIDNo = 4",
    f"DELETE FROM RIYOUSHA_DOUI_REC WHERE {MAIN} AND nIDNo % 17 = 0",
)


class Tables:
    """Rows of the main branch as dictionaries."""

    def __init__(self, path):
        self.database = sqlite3.connect(path)
        self.database.row_factory = sqlite3.Row

    def all(self, table, **where):
        conditions = [f"{name} IS ?" for name in where] + ([] if table in ("DOCTOR", "SISETSU") else [MAIN])
        rows = self.database.execute(f"SELECT * FROM {table} WHERE " + " AND ".join(conditions), tuple(where.values()))
        return [dict(row) for row in rows]

    def one(self, table, **where):
        return next(iter(self.all(table, **where)), None)


def methods(path):
    ini = configparser.RawConfigParser()
    ini.read(path, encoding="cp932")
    section = ini["依頼方法リスト"]
    return [section[f"LIST{number:03}"] for number in range(1, int(section["NUM"]) + 1)]


def main(sample, documents):
    with tempfile.TemporaryDirectory() as folder:
        installation = os.path.join(folder, "installation")
        subprocess.run([sample, "--folder", installation, "--day", TODAY.isoformat()], check=True, stdout=subprocess.DEVNULL)
        tables = Tables(os.path.join(installation, "DATA", "douisho.db"))
        for sql in ODD:
            tables.database.execute(sql)
        tables.database.commit()
        told = ledgers(documents, installation, folder, tables)
        told += renewal_lists(documents, installation, folder, tables)
    print("\n".join(told[:40]) or "no difference")
    return 1 if told else 0


def ledgers(documents, installation, folder, tables):
    numbers = [row["nIDNo"] for row in tables.all("RIYOUSHA")][:PATIENTS]
    assert len(numbers) == PATIENTS
    rows = [row for number in numbers for row in tables.all("RIYOUSHA_DOUI_REC", nIDNo=number, iNewestFlg=1)]
    keys = [(row["nIDNo"], row["nDate"], row["iHenkeiFlg"], row["nHenkeiDouiDate"]) for row in rows]
    random.Random(12).shuffle(keys)
    random.Random(12).shuffle(numbers)
    told = []
    period = datetime.date(2026, 12, 1), datetime.date(2027, 1, 31)
    for name, asked, wanted in (("rows", keys, (None, None)), ("period", keys, period),
                                ("patients", [(number,) for number in numbers], (None, None))):
        orders = os.path.join(folder, "orders")
        with open(orders, "w", encoding="ascii") as file:
            file.writelines(" ".join(map(str, key)) + "\n" for key in asked)
        search = "医師：山口　誠　　施設：中央病院"
        subprocess.run([documents, installation, orders, folder, TODAY.isoformat(), search,
                        *(day.isoformat() if day else "" for day in wanted)], check=True)
        reckoned = ledger.Ledger(tables, TODAY, wanted, search,
                                 methods(os.path.join(installation, "DATA", "同意依頼方法list.ini")))
        lines = reckoned.of_patients(numbers) if name == "patients" else reckoned.of_rows(keys)
        for pattern in range(1, 5):
            path = os.path.join(folder, f"ledger{pattern}.csv")
            told += [f"{name}: {line}" for line in reckoned.differences(path, pattern, lines)]
        assert len(reckoned.records(1, lines)) > 20, name
    return told


def renewal_lists(documents, installation, folder, tables):
    numbers = [row["nIDNo"] for row in tables.all("RIYOUSHA")][: 2 * PATIENTS]
    orders, path = os.path.join(folder, "orders"), os.path.join(folder, "renewals.csv")
    with open(orders, "w", encoding="ascii") as file:
        file.writelines(f"{number}\n" for number in numbers)
    told = []
    for choices in itertools.product(range(4), range(3), range(5)):
        month = datetime.date(2026, 5 if choices[0] == 3 else 11, 1)
        subprocess.run([documents, installation, orders, folder, TODAY.isoformat(), month.isoformat(), *map(str, choices)],
                       check=True)
        reckoned = renewal_list.RenewalList(tables, TODAY, month, choices,
                                            methods(os.path.join(installation, "DATA", "同意依頼方法list.ini")))
        told += [f"{choices}: {line}" for line in reckoned.differences(path, numbers)]
        assert len(reckoned.records(numbers)) >= (PATIENTS if choices[0] == 0 else 1), choices
    return told


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
