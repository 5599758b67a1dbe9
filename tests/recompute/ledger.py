"""The consent ledger, reckoned straight from the database's tables."""

from data_file import begun_months, date, differences, era_month, western

HEADER = (
    "枠線描画 何月分 検索名称 種別 No 患者ID 患者名 同意日 同意書期限 新同意日 経過 担当者 依頼日 予備1 予備2 受取日 担当者2 担当者3 "
    "担当者4 担当者5 同意種別 同意種別タイトル 出力対象月From 出力対象月To 医師ID 医師名 機関名 機関ID 病院別依頼方法 個別依頼方法"
).split(" ")


class Ledger:
    def __init__(self, tables, today, period, search, methods):
        self.tables, self.today, self.period, self.search, self.methods = tables, today, period, search, methods

    def of_rows(self, keys):
        """Keys of consents: patient, nDate, iHenkeiFlg, nHenkeiDouiDate."""
        found = {key: self.tables.one("RIYOUSHA_DOUI_REC", nIDNo=key[0], nDate=key[1], iHenkeiFlg=key[2],
                                      nHenkeiDouiDate=key[3], iNewestFlg=1) for key in keys}
        return [Line(self, key[0], found[key]) for key in keys if found[key]]

    def of_patients(self, numbers):
        lines = []
        for number in numbers:
            rows = [self.newest(number, kind) for kind in (0, 1)]
            rows = [row for row in rows if row] or [None]
            lines += [Line(self, number, row) for row in rows]
        return lines

    def newest(self, number, kind):
        rows = self.tables.all("RIYOUSHA_DOUI_REC", nIDNo=number, iHenkeiFlg=kind, iNewestFlg=1)
        return max(rows, key=lambda row: (row["nDate"], row["nHenkeiDouiDate"]), default=None)

    def records(self, pattern, lines):
        lines = [line for line in lines if line.belongs()]
        if pattern == 3:
            lines.sort(key=Line.by_institution)
        if pattern == 4:
            lines.sort(key=Line.by_staff)
        kinds = "・".join(kind for kind in ("マッサージ", "針灸", "変形徒手") if kind in {line.kind for line in lines})
        return [line.record(number, kinds) for number, line in enumerate(lines, 1)]

    def differences(self, path, pattern, lines):
        return differences(path, HEADER, self.records(pattern, lines))


class Line:
    def __init__(self, ledger, number, consent):
        self.ledger, self.number, self.has_consent = ledger, number, consent is not None
        tables = ledger.tables
        self.consent = consent or {}
        self.patient = tables.one("RIYOUSHA", nIDNo=number)
        code = consent["cIsiCd"] if consent else self.patient["nDouiIsiCd"] and str(self.patient["nDouiIsiCd"])
        doctor = (code and tables.one("DOCTOR", cIDNo=code)) or {}
        institution = tables.one("SISETSU", nIDNo=doctor.get("iSisetsuCode")) or {}
        self.deformity = self.consent.get("iHenkeiFlg") == 1
        self.kind = "変形徒手" if self.deformity else "針灸" if self.patient["iSejutsuKubun"] else "マッサージ"
        self.doctor = (consent["cIsiCd"] if consent else doctor.get("cIDNo")) or ""
        self.doctor_name = filled(doctor.get("cName"), self.consent.get("cDouiIsiName"))
        self.institution = doctor.get("iSisetsuCode") or 0
        self.institution_name = filled(doctor.get("cKikan"), institution.get("cShamei1"), self.consent.get("cDouiIsiKikan"))
        self.institution_method = institution.get("cDouiIrai") or ""
        self.staff = [(tables.one("STAFF", nIDNo=self.patient[column]) or {}).get("cName") or ""
                      for column in ("nTantou", "nTantou2", "nTantou3", "nTantou4", "nTantou5")]

    def day(self, column):
        return date(self.consent.get(column))

    def treated(self):
        corrected = self.day("tHenkeSday"), self.day("tHenKeEday")
        return corrected if self.deformity and any(corrected) else (self.day("tDouiKaryoS"), self.day("tDouiKaryoE"))

    def belongs(self):
        start, end = self.treated()
        if self.deformity and not (start and end):
            return False
        if start and end and end < start:
            start, end = end, start
        asked_start, asked_end = self.ledger.period
        return not (asked_start and end and end < asked_start) and not (asked_end and start and start > asked_end)

    def by_institution(self):
        return (self.institution == 0, self.institution, self.institution_name, not self.doctor, len(self.doctor),
                self.doctor, self.doctor_name)

    def by_staff(self):
        return not self.staff[0], self.patient["nTantou"] or 0

    def mark(self, column, done, absent):
        return done if self.consent.get(column) else absent

    def method(self):
        number = self.consent.get("iDouiIraiType") or 0
        chosen = self.ledger.methods[number - 1] if 0 < number <= len(self.ledger.methods) else ""
        return self.consent.get("cKobetuDouiIrai") or chosen

    def record(self, number, kinds):
        ledger, own = self.ledger, "Henkei" if self.deformity else ""
        consented = self.day("tDouiDay")
        again = (self.deformity and self.day("tDouiDayTempHenkei")) or self.day("tSaiDouiDay")
        elapsed = begun_months(consented, ledger.today) if consented else 0
        oral = "口頭" if self.consent.get("iDouiShubetsu") == 1 else "書面"
        return [1, era_month(ledger.period[0] or ledger.today), ledger.search, oral if self.has_consent else "", number,
                self.number, self.patient["cName"] or "", western(consented) or "同意日無", western(self.day("tDouiKaryoE")),
                western(again), f"{elapsed}か月目" if elapsed else "", self.staff[0],
                self.mark("iOutputFlg" + own, "依頼済", "依頼日無"), self.mark("iRenrakuFlg", "連絡済", "予備１無"),
                self.mark("iSendFlg", "送信済", "予備２無"), self.mark("iGetFlg" + own, "受取済", "受け取り日無"),
                *self.staff[1:], self.kind, kinds, era_month(ledger.period[0]), era_month(ledger.period[1]), self.doctor,
                self.doctor_name, self.institution_name, str(self.institution or ""), self.institution_method, self.method()]


def filled(*texts):
    return next((text.strip() for text in texts if text and text.strip()), "")
