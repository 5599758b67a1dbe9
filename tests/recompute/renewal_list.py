"""The renewal list, reckoned straight from the database's tables."""

import datetime
import unicodedata

from data_file import date, differences, era_month, western

HEADER = (
    "枠線描画 何月分 検索内容 改ページ条件 改ページID 主担当施術者ID 主担当施術者名 相談員ID 相談員名 明細No 利用者ID 利用者名 利用者カナ 施術区分 "
    "施術区分表示 変形徒手有無 要加療期間自 要加療期間至 変形徒手期間自 変形徒手期間至 同意日 診察日 初療日 初療日からの経過月 医師ID 医師名 "
    "医療機関ID 医療機関名 医療機関住所 病院別依頼方法 個別依頼方法"
).split(" ")
SHEETS = (("なし", None), ("主担当施術者", "staff"), ("相談員", "counsellor"))


class RenewalList:
    """@param choices range, page break and order, each its position in the screen's list"""

    def __init__(self, tables, today, month, choices, methods):
        self.tables, self.today, self.month, self.methods = tables, today, month, methods
        self.range, self.sheets, self.order = choices

    def end(self):
        """The day on which a consent must not end any more, and how the list says so."""
        after, later = next_month(self.month), next_month(next_month(self.month))
        return (
            (datetime.date.max, ""),
            (after, f"（{era_month(self.month)}末日まで）"),
            (later, f"（{era_month(after)}末日まで）"),
            (self.today, "（作成日の前日まで）"),
        )[self.range]

    def records(self, numbers):
        lines = [line for number in numbers for line in self.lines(number)]
        lines.sort(key=self.place)
        counted, records = {}, []
        for line in lines:
            sheet = self.sheet(line)
            counted[sheet] = counted.get(sheet, 0) + 1
            records.append(self.record(line, sheet, counted[sheet]))
        return records

    def lines(self, number):
        patient = self.tables.one("RIYOUSHA", nIDNo=number)
        if patient["tExpireDay"] or patient["iTenki"] in (1, 3, 15):
            return []
        due = [Line(self, patient, row) for row in self.due(number)]
        if len(due) == 2 and due[0].asked() == due[1].asked():
            due[0].corrected, due[0].first_end = due[1].corrected, min(line.first_end for line in due)
            due.pop()
        return due

    def due(self, number):
        for kind in (0, 1):
            rows = self.tables.all("RIYOUSHA_DOUI_REC", nIDNo=number, iHenkeiFlg=kind, iNewestFlg=1)
            row = max(rows, key=lambda row: (row["nDate"], row["nHenkeiDouiDate"]), default={})
            if row and date(row["tDouiKaryoE"]) and self.month <= date(row["tDouiKaryoE"]) < self.end()[0]:
                yield row

    def sheet(self, line):
        who = SHEETS[self.sheets][1]
        return getattr(line, who) if who else None

    def place(self, line):
        """Nobody before somebody, no code before any."""
        staff, number = (line.patient["nTantou"] is not None, line.staff), line.patient["nIDNo"]
        sub = line.counsellor_column
        order = ((staff, (sub is not None, sub or 0), kana(line.patient["cNameKana"])), (), staff, line.first_end, (line.institution or -1, line.doctor is not None, line.doctor or ""))
        return self.sheet(line) or 0, order[self.order], number, line.row["iHenkeiFlg"]

    def record(self, line, sheet, number):
        patient, row = line.patient, line.row
        first = date(patient["tSyoryoDay"])
        months = months_counted(first, self.month) if first else 0
        acupuncture = bool(patient["iSejutsuKubun"])
        return [1, era_month(self.month), era_month(self.month) + "以降に同意期間が切れている利用者" + self.end()[1],
                SHEETS[self.sheets][0], sheet or "", line.staff or "", line.name("STAFF", line.staff), line.counsellor or "",
                line.name("SOUDAN", line.counsellor), number, patient["nIDNo"], patient["cName"] or "", patient["cNameKana"] or "",
                int(acupuncture), "鍼灸" if acupuncture else "マッサージ", "有" if any(line.corrected) else "無",
                western(date(row["tDouiKaryoS"])), western(date(row["tDouiKaryoE"])), *map(western, line.corrected),
                western(date(row["tDouiDay"])), western(date(row["tShinsatsuDay"])), western(first), months or "",
                line.doctor or "", line.doctor_name, line.institution or "", line.institution_name, line.address,
                line.institution_method, line.method()]

    def differences(self, path, numbers):
        return differences(path, HEADER, self.records(numbers))


class Line:
    def __init__(self, renewals, patient, row):
        tables = renewals.tables
        self.tables, self.methods, self.patient, self.row = tables, renewals.methods, patient, row
        self.staff = patient["nTantou"] or 0
        self.counsellor_column = (tables.one("RIYOUSHA_SUB", nIDNo=patient["nIDNo"]) or {}).get("iSoudaninId")
        self.counsellor = self.counsellor_column or 0
        self.first_end = date(row["tDouiKaryoE"])
        self.doctor = row["cIsiCd"]
        doctor = (self.doctor and tables.one("DOCTOR", cIDNo=self.doctor)) or {}
        self.institution = doctor.get("iSisetsuCode") or 0
        institution = tables.one("SISETSU", nIDNo=self.institution) or {}
        self.doctor_name = filled(doctor.get("cName"), row["cDouiIsiName"])
        self.institution_name = filled(doctor.get("cKikan"), institution.get("cShamei1"), row["cDouiIsiKikan"])
        self.address = filled(two_lines(doctor), two_lines(institution), divided(row["cDouiIsiAdd"] or ""))
        self.institution_method = institution.get("cDouiIrai") or ""
        corrected = date(row["tHenkeSday"]), date(row["tHenKeEday"])
        own = date(row["tDouiKaryoS"]), date(row["tDouiKaryoE"])
        self.corrected = own if row["iHenkeiFlg"] == 1 and not any(corrected) else corrected

    def asked(self):
        return self.doctor, self.doctor_name, self.institution_name, self.address

    def name(self, table, number):
        return (self.tables.one(table, nIDNo=number) or {}).get("cName") or ""

    def method(self):
        number = self.row["iDouiIraiType"] or 0
        return self.row["cKobetuDouiIrai"] or (self.methods[number - 1] if 0 < number <= len(self.methods) else "")


def kana(text):
    """Readings sort by their letters, voiced marks after them; width and kana kind do not count."""
    letters = unicodedata.normalize("NFD", unicodedata.normalize("NFKC", text or ""))
    letters = "".join(chr(ord(c) + 96) if "ぁ" <= c <= "ゖ" else c for c in letters)
    return text is not None, "".join(c for c in letters if c not in "\u3099\u309a"), letters


def next_month(day):
    return (day.replace(day=1) + datetime.timedelta(31)).replace(day=1)


def months_counted(first, month):
    months = 0
    while first.replace(day=1) <= month:
        first, months = next_month(first), months + 1
    return months


def filled(*texts):
    return next((text.strip() for text in texts if text and text.strip()), "")


def two_lines(place):
    return "　".join(text.strip() for text in (place.get("cAddress1"), place.get("cAddress2")) if text and text.strip())


def divided(address):
    """An address in one line: the building stands behind the first blank that follows a number."""
    digits = [at for at, c in enumerate(address.strip()) if c.isdigit()]
    blanks = [at for at, c in enumerate(address.strip()) if c.isspace() and digits and at > digits[0]]
    if not blanks:
        return address.strip()
    return "　".join(part.strip() for part in (address.strip()[: blanks[0]], address.strip()[blanks[0] :]) if part.strip())
