#include "print/set_print/set_print_job.h"

#include "app/base/environment.h"
#include "app/base/folders.h"
#include "print/consent_form/form_batch.h"

#include <QDir>
#include <algorithm>
#include <tuple>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString dataName = u"同意依頼書"_s;

} // namespace

short SetPrintJob::iGather(const std::vector<LetterOrder> &rows, const SetPrintChoice &choice,
                           const QDate &today) {
    m_rows = rows;
    m_choice = choice;
    if (m_letters.iRead(rows) != 0) {
        m_error = m_letters.sErrMsg();
        return -1;
    }
    for (const LetterRow &row : m_letters.source().rows)
        setOf(row);
    if (choice.requestLetters)
        addLetters();
    if (choice.envelopes)
        addEnvelopes();
    if (choice.consentForms) {
        for (const LetterOrder &row : rows)
            m_choice.form.rows.push_back({row.row, m_choice.form.style});
        m_choice.form.master = FormMaster::Practice;
        Result<GatheredForms> forms = gatherConsentForms(m_db, m_choice.form, today);
        if (!forms) {
            m_error = forms.reason();
            return -1;
        }
        m_forms = std::move(*forms);
        addForms();
    }
    std::ranges::stable_sort(m_items, {}, [](const Item &item) { return std::tuple(item.set, item.kind); });
    return 0;
}

/// The number of the row's set; a new one for a new addressee. Rows without an address share none.
size_t SetPrintJob::setOf(const LetterRow &row) {
    const Envelope envelope = envelopeTo(letterAddressee(m_rows[row.order], row, m_letters.source()));
    const QString key = envelope.isAddressed()
                            ? QStringList{envelope.zip, envelope.institution, envelope.addressee,
                                          envelope.address1, envelope.address2}
                                  .join(u'\n')
                            : QString::number(row.key.patient.nIDNo);
    const auto [place, isNew] = m_sets.try_emplace(key, m_envelopes.size());
    if (isNew)
        m_envelopes.push_back(envelope);
    return place->second;
}

void SetPrintJob::addLetters() {
    const LetterSource &source = m_letters.source();
    m_arranged = arrangeLetters(m_rows, source, m_choice.letter.grouped);
    for (size_t i = 0; i < m_arranged.size(); ++i)
        m_items.push_back({setOf(source.rows[m_arranged[i].rows.front()]), Kind::Letter, i});
    m_hasLetters = !m_arranged.empty();
}

void SetPrintJob::addEnvelopes() {
    for (size_t i = 0; i < m_envelopes.size(); ++i)
        if (m_envelopes[i].isAddressed())
            m_items.push_back({i, Kind::Envelope, i});
    for (const LetterRow &row : m_letters.source().rows)
        if (!m_envelopes[setOf(row)].isAddressed())
            m_withoutAddress += letterWho(row);
    m_withoutAddress.removeDuplicates();
}

void SetPrintJob::addForms() {
    std::map<size_t, size_t> sets; // by order
    for (const LetterRow &row : m_letters.source().rows)
        sets.try_emplace(row.order, setOf(row));
    for (size_t i = 0; i < m_forms.forms.size(); ++i) {
        const auto set = sets.find(m_forms.forms[i].rows.front());
        m_items.push_back({set == sets.end() ? m_envelopes.size() : set->second, Kind::Form, i});
    }
}

BatchDocument SetPrintJob::document() {
    return {count(), [this](int position, PrintFiles &files) { return makeReport(position, files); }};
}

Result<BatchReport> SetPrintJob::makeReport(int position, PrintFiles &files) {
    const Item &item = m_items[size_t(position)];
    if (item.kind == Kind::Form)
        return makeFormReport(m_environment.folders, m_forms.forms[item.index], files, m_touched);
    BatchReport report;
    if (item.kind == Kind::Letter) {
        const LetterSource &source = m_letters.source();
        const Letter &letter = m_arranged[item.index];
        const LetterRow &row = source.rows[letter.rows.front()];
        DataFile data(letterColumns());
        data.add(letterRecord(letter, m_rows, source, m_choice.letter));
        report.subject = letterWho(row);
        report.name = dataName;
        report.layout = m_rows[row.order].layout;
        return write(data, u"依頼書%1.csv"_s.arg(position + 1), std::move(report), files);
    }
    const Envelope &envelope = m_envelopes[item.index];
    DataFile data(envelopeColumns());
    data.add(envelopeRecord(envelope));
    report.subject = envelope.institution;
    report.name = u"封筒"_s;
    report.layout = envelopeLayout(m_choice.envelope);
    return write(data, u"封筒%1.csv"_s.arg(position + 1), std::move(report), files);
}

Result<BatchReport> SetPrintJob::write(const DataFile &data, const QString &file, BatchReport report,
                                       PrintFiles &files) {
    report.dataName = dataName;
    report.layout = QDir::toNativeSeparators(Folders::file(m_environment.folders.system(), report.layout));
    const Result<QString> path = files.write(file, data.bytes());
    if (!path)
        return Failure{path.reason()};
    report.dataFile = *path;
    m_touched += data.touched();
    return report;
}

short SetPrintJob::iMark(QStringList *overtaken) {
    if (m_letters.iMark(overtaken) == 0)
        return 0;
    m_error = m_letters.sErrMsg();
    return -1;
}
