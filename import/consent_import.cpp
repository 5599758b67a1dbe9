#include "import/consent_import.h"

#include "app/base/codepage932.h"
#include "app/base/dates.h"
#include "app/base/settings.h"
#include "app/base/text.h"
#include "consent/entry/draft_check.h"
#include "consent/entry/entry_period.h"
#include "consent/record/drafts_save.h"
#include "db/adodb.h"
#include "db/tables/patient/acupuncture_diseases.h"
#include "import/import_values.h"

#include <algorithm>
#include <numeric>
#include <set>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString partsItem = u"施術部位"_s;
// The list's, which entry leaves alone.
const QString remarkColumn = u"cItiranBikou"_s;

constexpr QStringView contentFlags[] = {u"iSejutuBui1", u"iSejutuBui2", u"iSejutuBui3", u"iSejutuBui4",
                                        u"iSejutuBui5", u"iOnan",       u"iDenki",      u"iHKHariUmu",
                                        u"iHKKyuUmu",   u"iHKDekiUmu"};

bool saysContent(const QHash<QString, QString> &values) {
    return values.contains(partsItem) || std::ranges::any_of(contentFlags, [&](QStringView flag) {
               return values.contains(flag.toString());
           });
}

struct Part {
    QStringView word;
    QList<int> parts; ///< of bodyParts
};

/// 体幹、右上肢 … in one cell: the parts, or what is none.
const std::vector<Part> &partWords() {
    static const std::vector<Part> words{
        {u"体幹", {0}},    {u"躯幹", {0}},    {u"右上肢", {1}},        {u"左上肢", {2}},
        {u"右下肢", {3}},  {u"左下肢", {4}},  {u"両上肢", {1, 2}},     {u"両下肢", {3, 4}},
        {u"上肢", {1, 2}}, {u"下肢", {3, 4}}, {u"四肢", {1, 2, 3, 4}}, {u"全身", {0, 1, 2, 3, 4}}};
    return words;
}

QString enterParts(ConsentDraft &draft, QString text) {
    for (const QChar separator : u"・,，/／+＋ 　\n"_s)
        text.replace(separator, u'、');
    for (const QString &word : text.split(u'、', Qt::SkipEmptyParts)) {
        const auto found = std::ranges::find(partWords(), QStringView(word), &Part::word);
        if (found == partWords().end())
            return word;
        for (const int part : found->parts)
            draft.*bodyParts[size_t(part)] = short(1);
    }
    return {};
}

// Acupuncture's diagnosis is ticked: what is no disease of the form's is the other one.
void tickDiseases(ConsentDraft &draft) {
    for (const auto disease : acupunctureDiseases)
        draft.*disease = short(0);
    draft.cSyoujyouSonotaStr = QString();
    QStringList others;
    QString names = draft.cDouiByoumei;
    for (const QString &name : names.replace(u'・', u'、').split(u'、', Qt::SkipEmptyParts)) {
        const auto known = std::ranges::find(acupunctureDiseaseNames, QStringView(name).trimmed());
        if (known == acupunctureDiseaseNames.end())
            others += name.trimmed();
        else
            draft.*acupunctureDiseases[size_t(known - acupunctureDiseaseNames.begin())] = short(1);
    }
    draft.iHKSyobyou07Flg = short(!others.isEmpty());
    if (!others.isEmpty())
        draft.cSyoujyouSonotaStr = others.join(u'、');
}

// Treatments that are given run as long as the consent.
void runTreatments(ConsentDraft &draft) {
    for (const Treatment &treatment : treatments()) {
        const bool given = treatment.flag ? draft.*treatment.flag != 0 : isDeformity(draft);
        if (given && !(draft.*treatment.start).isValid() && !(draft.*treatment.end).isValid()) {
            draft.*treatment.start = draft.tDouiKaryoS;
            draft.*treatment.end = draft.tDouiKaryoE;
        }
    }
}

/// Whether the texts that a file holds of a consent were kept as they were meant.
bool sameTexts(const ConsentDraft &kept, const ConsentDraft &meant) {
    return std::ranges::all_of(std::array{&ConsentDraft::cDouiIsiName, &ConsentDraft::cDouiIsiKikan,
                                          &ConsentDraft::cDouiIsiAdd, &ConsentDraft::cDouiByoumei,
                                          &ConsentDraft::cSyoujyouSonotaStr},
                               [&](auto text) { return trimRight(kept.*text) == trimRight(meant.*text); });
}

QString textOf(const ConsentDraft &draft, const ImportField &field) {
    const QVariant value = columnValue(draft, field.column);
    return field.kind == ImportField::Date ? dateText(value.toDate()) : value.toString();
}

} // namespace

int ConsentImport::findPatient(FileRow &row) const {
    const ImportDescription &patients = describeImport(ImportKind::Patients);
    const StoredRows &stored = m_references.at(ImportKind::Patients);
    const QString code = row.values.take(u"nIDNo"_s), name = row.values.take(u"cName"_s);
    const QString kana = comparedName(row.values.take(u"cNameKana"_s)),
                  birthday = row.values.take(u"tBirthday"_s);
    if (!code.isEmpty()) {
        const int found = stored.ofCode(code);
        if (found < 0)
            row.faults += u"利用者の番号 %1 は登録されていません"_s.arg(code);
        else if (!name.isEmpty() &&
                 comparedName(name) != comparedName(stored.value(found, patients.nameColumn())))
            row.faults += u"番号 %1 は「%2」です（ファイルでは「%3」）"_s.arg(
                code, stored.value(found, patients.nameColumn()), name);
        return row.faults.isEmpty() ? found : -1;
    }
    QList<int> found = stored.named(comparedName(name));
    found.removeIf([&](int at) {
        const QString there = comparedName(stored.value(at, u"cNameKana"_s)),
                      born = stored.value(at, u"tBirthday"_s);
        return (!kana.isEmpty() && !there.isEmpty() && kana != there) ||
               (!birthday.isEmpty() && !born.isEmpty() && birthday != born);
    });
    if (name.isEmpty())
        row.faults += u"利用者がありません"_s;
    else if (found.isEmpty())
        row.faults += u"利用者「%1」は登録されていません"_s.arg(name);
    else if (found.size() > 1)
        row.faults += u"利用者「%1」が%L2人います（番号 %3、%4）。番号で指定してください"_s.arg(name)
                          .arg(found.size())
                          .arg(stored.code(found[0]), stored.code(found[1]));
    return found.size() == 1 ? found.front() : -1;
}

Result<> ConsentImport::readBasis(const std::vector<Row> &rows) {
    std::set<qint32> patients;
    for (const Row &row : rows)
        if (row.patient > 0) {
            patients.insert(row.patient);
            m_consents[row.patient];
        }
    Result<std::vector<ConsentDraft>> consents = readConsents(m_db, m_job.branch, patients);
    if (!consents)
        return Failure{consents.reason()};
    for (ConsentDraft &consent : *consents)
        m_consents[consent.nIDNo].push_back(std::move(consent));
    const Settings settings(m_folders);
    if (const Result<> readable = settings.readable(Setting::祝日考慮); !readable)
        return readable;
    m_reader.emplace(m_folders, m_job.branch, m_db);
    if (const Result<> prepared = m_reader->prepare({patients.begin(), patients.end()}); !prepared)
        return prepared;
    for (const qint32 patient : patients) {
        const Result<PeriodBasis> basis = m_reader->of(patient, settings.isOn(Setting::祝日考慮));
        if (!basis)
            return Failure{basis.reason()};
        m_basis[patient] = *basis;
    }
    return {};
}

Result<ImportPlan> ConsentImport::plan() {
    Result<ReferenceRows> references = readReferenceRows(m_db, ImportKind::Consents, m_job.branch);
    if (!references)
        return Failure{references.reason()};
    m_references = std::move(*references);
    m_planned.clear();
    m_targets.clear();
    m_consents.clear();

    ImportPlan plan;
    std::vector<Row> rows;
    const FileRows fileRows(m_job.description(), m_job.file, m_job.columns);
    for (int at = fileRows.first(); at < m_job.file.rowCount(); ++at) {
        const CsvFile::Cells cells = m_job.file.cells(at);
        if (fileRows.isHeading(cells)) {
            ++plan.repeatedHeadings;
            continue;
        }
        Row row{fileRows.read(cells)};
        PlannedRow planned;
        planned.row = at;
        planned.name = row.read.values.value(u"cName"_s);
        if (const int found = findPatient(row.read); found >= 0) {
            const StoredRows &patients = m_references.at(ImportKind::Patients);
            row.patient = patients.code(found).toInt();
            planned.code = patients.code(found);
            planned.name = patients.value(found, u"cName"_s);
        }
        for (const ImportField &field : m_job.description().fields)
            if (field.kind == ImportField::Reference)
                resolveReference(field, describeImport(field.target), m_references.at(field.target),
                                 m_job.unknown, row.read);
        rows.push_back(std::move(row));
        plan.rows.push_back(std::move(planned));
    }
    if (const Result<> read = readBasis(rows); !read)
        return Failure{read.reason()};

    // A consent leans on those before it, wherever they stand in the file.
    std::vector<size_t> order(rows.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::ranges::stable_sort(order, {}, [&](size_t at) { return rows[at].read.values.value(u"tDouiDay"_s); });
    for (const size_t at : order)
        planRow(rows[at], plan.rows[at]);
    return plan;
}

const ConsentDraft *ConsentImport::consentBefore(qint32 patient, const QDate &day) const {
    const ConsentDraft *before = nullptr;
    for (const ConsentDraft &other : m_consents.at(patient))
        if (!isDeformity(other) && other.tDouiDay.isValid() && other.tDouiDay < day &&
            (!before || other.tDouiDay > before->tDouiDay))
            before = &other;
    return before;
}

bool ConsentImport::isAcupuncture(qint32 patient) const {
    const StoredRows &patients = m_references.at(ImportKind::Patients);
    return patients.value(patients.ofCode(QString::number(patient)), u"iSejutsuKubun"_s).toInt() != 0;
}

void ConsentImport::planRow(Row &row, PlannedRow &planned) {
    planned.faults = row.read.faults;
    planned.notes = row.read.notes;
    planned.values = row.read.values;
    planned.state = PlannedRow::Refused;
    if (!planned.faults.isEmpty())
        return;
    std::vector<ConsentDraft> &others = m_consents[row.patient];
    DraftSave save;
    save.draft = newOne(row, planned);
    const ConsentRowKey target = draftKey(save.draft, nullptr);
    const auto there = std::ranges::find_if(
        others, [&](const ConsentDraft &other) { return sameRecordDate(other.key(), target); });
    const std::array<qint32, 4> key{row.patient, target.nDate, target.iHenkeiFlg, target.nHenkeiDouiDate};
    if (m_targets.contains(key)) {
        planned.faults += u"ファイルの中に、同じ利用者の同じ日付の同意があります"_s;
        return;
    }
    if (there != others.end()) {
        save.stored = save.draft = *there;
        planned.notes = row.read.notes;
        others.erase(there);
    }
    place(save, row, planned);
    if (planned.faults.isEmpty())
        m_targets.insert(key);
    if (planned.faults.isEmpty() || save.stored)
        others.push_back(planned.faults.isEmpty() ? save.draft : *save.stored);
    if (planned.faults.isEmpty())
        m_planned.emplace(planned.row, std::move(save));
    else
        planned.state = PlannedRow::Refused;
}

void ConsentImport::place(DraftSave &save, const Row &row, PlannedRow &planned) const {
    const bool acupuncture = isAcupuncture(row.patient);
    const std::vector<ConsentDraft> &others = m_consents.at(row.patient);
    if (const QString fault = enter(save.draft, row.read.values, acupuncture); !fault.isEmpty())
        planned.faults += fault;
    proposePeriod(save.draft, others, planned);
    std::vector<ConsentRowKey> keys;
    for (const ConsentDraft &other : others)
        keys.push_back(other.key());
    const ConsentRowKey target = draftKey(save.draft, save.stored ? &*save.stored : nullptr);
    if (const auto problem = checkDraft(save.draft, acupuncture, target, keys))
        planned.faults += QString(problem->text).replace(u"\r\n"_s, u" "_s);
    save.draft.nDate = target.nDate;
    save.draft.nHenkeiDouiDate = target.nHenkeiDouiDate;
    planned.state = PlannedRow::New;
    if (save.stored)
        compare(save, row, planned);
}

// What the file says nothing of is that of the consent before, as the entry form proposes it.
ConsentDraft ConsentImport::newOne(const Row &row, PlannedRow &planned) const {
    const auto &values = row.read.values;
    const QDate day = dateFromDatabase(values.value(u"tDouiDay"_s));
    const ConsentDraft *before = consentBefore(row.patient, day);
    ConsentDraft draft = newDraft({m_job.branch.iKyotenCd, m_job.branch.iKyotenEb, row.patient}, before);
    draft.iHenkeiFlg = values.value(u"iHenkeiFlg"_s).toShort();
    draft.tDouiDay = day;
    draft.tShinsatsuDay = dateFromDatabase(values.value(u"tShinsatsuDay"_s));
    draft.nDouiUpMonth.setNull();
    QStringList taken;
    if (!saysContent(values))
        taken += u"施術内容"_s;
    if (!values.contains(u"cDouiByoumei"_s))
        taken += u"傷病名"_s;
    if (!values.contains(u"cIsiCd"_s))
        taken += u"医師"_s;
    if (before && !taken.isEmpty())
        planned.notes +=
            u"%1は前の同意（%2）と同じにします"_s.arg(taken.join(u"・"), dateText(before->tDouiDay));
    return draft;
}

QString ConsentImport::enter(ConsentDraft &draft, const QHash<QString, QString> &values,
                             bool acupuncture) const {
    if (saysContent(values))
        for (const QStringView flag : contentFlags)
            setColumnValue(draft, flag, short(0));
    for (const auto &[column, value] : values.asKeyValueRange())
        if (isColumn(column))
            setColumnValue(draft, column,
                           column.startsWith(u't') ? QVariant(dateFromDatabase(value)) : QVariant(value));
    if (const QString wrong = enterParts(draft, values.value(partsItem)); !wrong.isEmpty())
        return u"施術部位「%1」が分かりません（体幹、右上肢、左上肢、右下肢、左下肢）"_s.arg(wrong);
    if (isDeformity(draft))
        draft.iSejutuBui1 = short(0);
    if (!values.contains(u"cDouiByoumei"_s))
        return {};
    if (acupuncture) {
        draft.cByoumeiH = draft.cDouiByoumei;
        if (!isDeformity(draft))
            tickDiseases(draft);
    } else {
        draft.cByoumeiM = draft.cMasByoumei = draft.cDouiByoumei;
    }
    return {};
}

void ConsentImport::proposePeriod(ConsentDraft &draft, const std::vector<ConsentDraft> &others,
                                  PlannedRow &planned) const {
    const PeriodBasis &basis = m_basis.at(draft.nIDNo);
    if (draft.nDouiUpMonth <= 0)
        draft.nDouiUpMonth = ruledMonths(basis, draft);
    const Period before{draft.tDouiKaryoS, draft.tDouiKaryoE};
    if (!before.start.isValid()) {
        const Period ruled = reckonDraft(basis, draft, others).period;
        draft.tDouiKaryoS = ruled.start;
        if (!before.end.isValid())
            draft.tDouiKaryoE = ruled.end;
    } else if (!before.end.isValid()) {
        draft.tDouiKaryoE = endFromStart(basis, draft);
    }
    if (before != Period{draft.tDouiKaryoS, draft.tDouiKaryoE})
        planned.notes +=
            u"要加療期間 %1 ～ %2"_s.arg(dateText(draft.tDouiKaryoS), dateText(draft.tDouiKaryoE));
    runTreatments(draft);
}

void ConsentImport::compare(const DraftSave &save, const Row &row, PlannedRow &planned) const {
    for (const ImportField &field : m_job.description().fields) {
        const QString before = textOf(*save.stored, field), now = textOf(save.draft, field);
        if (field.column == remarkColumn && before != row.read.values.value(remarkColumn, before))
            planned.notes += u"一覧備考は変えません"_s;
        else if (isColumn(field.column) && before != now && !(now == u"0" && before.isEmpty()))
            planned.changes.push_back({field.caption, shownValue(field, before), shownValue(field, now)});
    }
    planned.state =
        sameValues(save.draft, *save.stored, Compared::Entered) ? PlannedRow::Same : PlannedRow::Changed;
}

std::vector<PatientKey> ConsentImport::patients(const ImportPlan &plan) const {
    std::vector<PatientKey> patients;
    for (const PlannedRow &row : plan.rows)
        if (row.state != PlannedRow::Refused)
            patients.push_back({m_job.branch.iKyotenCd, m_job.branch.iKyotenEb, row.code.toInt()});
    return patients;
}

Result<> ConsentImport::write(RecordWrite &write, const ImportPlan &plan,
                              const ImportProgress &progress) const {
    std::vector<const DraftSave *> saves;
    for (const PlannedRow &row : plan.rows)
        if (row.state == PlannedRow::New || row.state == PlannedRow::Changed)
            saves.push_back(&m_planned.at(row.row));
    std::ranges::sort(saves, [](const DraftSave *left, const DraftSave *right) {
        return isBefore(left->draft.key(), right->draft.key());
    });
    // All consents of a patient together: their newest marks follow.
    constexpr size_t some = 50;
    for (size_t at = 0, end = 0; at < saves.size(); at = end) {
        for (end = std::min(saves.size(), at + some);
             end < saves.size() && saves[end]->draft.nIDNo == saves[end - 1]->draft.nIDNo;)
            ++end;
        if (const Result<> done = registerDrafts(write, std::span(saves).subspan(at, end - at)); !done)
            return done;
        if (progress && !progress(int(end), int(saves.size())))
            return Failure{importStopped()};
    }
    return {};
}

Result<int> ConsentImport::refuseLost(ImportPlan &plan) const {
    std::map<qint32, std::vector<PlannedRow *>> doubtful;
    for (PlannedRow &row : plan.rows)
        if (row.state == PlannedRow::New || row.state == PlannedRow::Changed)
            if (std::ranges::any_of(row.values, [](const QString &value) { return !fits932(value); }))
                doubtful[row.code.toInt()].push_back(&row);
    int lost = 0;
    for (const auto &[patient, rows] : doubtful) {
        const Result<std::vector<ConsentDraft>> stored = readConsents(m_db, m_job.branch, {patient});
        if (!stored)
            return Failure{stored.reason()};
        for (PlannedRow *row : rows) {
            const ConsentDraft &meant = m_planned.at(row->row).draft;
            const auto kept = std::ranges::find_if(
                *stored, [&](const ConsentDraft &each) { return sameRecordDate(each.key(), meant.key()); });
            if (kept != stored->end() && sameTexts(*kept, meant))
                continue;
            row->state = PlannedRow::Refused;
            row->faults += u"データベースに保存できない文字があります"_s;
            ++lost;
        }
    }
    return lost;
}
