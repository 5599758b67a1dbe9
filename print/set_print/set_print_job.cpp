#include "print/set_print/set_print_job.h"

#include "app/base/environment.h"
#include "app/base/folders.h"
#include "print/batch/print_messages.h"
#include "print/consent_form/form_files.h"
#include "print/consent_form/form_messages.h"
#include "print/documents/lost_texts.h"

#include <QDir>
#include <algorithm>
#include <tuple>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString dataName = envelopeDataName(); ///< of letters too

} // namespace

Result<> SetPrintJob::gather(const std::vector<LetterOrder> &rows, const SetPrintChoice &choice,
                             const QDate &today) {
    m_rows = rows;
    m_choice = choice;
    if (choice.needsAddressees()) {
        if (const Result<> read = m_letters.read(rows, choice.letter); !read)
            return read;
        for (const LetterRow &row : m_letters.source().rows)
            m_setsOfRows.emplace(row.order, setOf(row));
    }
    if (choice.requestLetters)
        addLetters();
    if (choice.envelopes)
        addEnvelopes();
    if (choice.consentForms)
        if (const Result<> forms = gatherForms(today); !forms)
            return forms;
    std::ranges::stable_sort(m_items, {}, [](const Item &item) { return std::tuple(item.set, item.kind); });
    return {};
}

Result<> SetPrintJob::gatherForms(const QDate &today) {
    std::vector<ConsentFormRow> &rows = m_choice.form.rows.emplace();
    for (const LetterOrder &row : m_rows) {
        const bool again = m_choice.requestLetters && row.continues;
        rows.push_back({row.row, again ? FormStyle::Again : m_choice.form.style});
    }
    m_choice.form.master = FormMaster::Practice;
    Result<GatheredForms> forms = gatherConsentForms(m_db, m_choice.form, today);
    if (!forms)
        return Failure{forms.reason()};
    m_forms = std::move(*forms);
    addForms();
    return {};
}

/// The number of the row's set; a new one for a new addressee. Rows that name nobody share none.
size_t SetPrintJob::setOf(const LetterRow &row) {
    const Envelope envelope = envelopeTo(letterAddressee(m_rows[row.order], row, m_letters.source()));
    const QString key = envelope.isAddressed() ? envelope.key() : QString::number(row.key.patient.nIDNo);
    const auto [place, isNew] = m_sets.try_emplace(key, m_envelopes.size());
    if (isNew)
        m_envelopes.push_back(envelope);
    return place->second;
}

void SetPrintJob::addLetters() {
    for (size_t i = 0; i < m_letters.letters().size(); ++i) {
        const LetterRow &first = m_letters.source().rows[m_letters.letters()[i].rows.front()];
        m_items.push_back({m_setsOfRows.at(first.order), Kind::Letter, i});
    }
}

void SetPrintJob::addEnvelopes() {
    for (size_t i = 0; i < m_envelopes.size(); ++i)
        if (m_envelopes[i].isAddressed())
            m_items.push_back({i, Kind::Envelope, i});
    for (const LetterRow &row : m_letters.source().rows)
        if (!m_envelopes[m_setsOfRows.at(row.order)].isAddressed())
            m_withoutAddressee += letterWho(row);
}

/// A form goes to whom the row is that it is made from.
void SetPrintJob::addForms() {
    for (size_t i = 0; i < m_forms.forms.size(); ++i) {
        const auto set = m_setsOfRows.find(m_forms.forms[i].rows.front());
        m_items.push_back({set == m_setsOfRows.end() ? m_envelopes.size() : set->second, Kind::Form, i});
    }
}

LetterCheck SetPrintJob::check() const {
    LetterCheck check;
    if (m_choice.requestLetters)
        check = m_letters.check();
    else if (const QStringList gone = m_letters.goneRows(); !gone.isEmpty())
        addMessagePart(check.notes.emplace_back(),
                       u"最新の同意でないか、削除されているため、封筒を印刷しない行："_s, gone);
    if (!m_forms.leftOut.empty())
        check.notes += patientsLeftOut(m_forms.leftOut).text;
    if (m_choice.envelopes) {
        std::vector<Envelope> printed;
        std::ranges::copy_if(m_envelopes, std::back_inserter(printed), &Envelope::isAddressed);
        check.notes += envelopeNotes(m_withoutAddressee, printed);
    }
    if (const QString note = replacedNote(); !note.isEmpty())
        check.notes += note;
    if (!check.refusal && m_items.empty()) {
        check.refusal = nothingToPrint();
        for (const QString &note : check.notes)
            check.refusal->text += u"\r\n\r\n"_s + note;
    }
    return check;
}

/// Of the envelopes and forms; the letters tell their own.
QString SetPrintJob::replacedNote() const {
    QStringList notes{::replacedNote(m_environment, m_forms.forms)};
    if (m_choice.envelopes)
        notes += ::replacedNote(m_environment, envelopeData(m_envelopes).replaced());
    notes.removeAll(QString());
    return notes.join(u"\r\n\r\n"_s);
}

RunExtent SetPrintJob::extent() const {
    PageCount pages;
    for (const Item &item : m_items)
        switch (item.kind) {
        case Kind::Form:
            pages.addSingle(layoutPath(m_environment.folders, m_forms.forms[item.index]));
            break;
        case Kind::Letter:
            pages.add(m_letters.layoutPath(m_letters.letters()[item.index]), dataName,
                      m_letters.data(m_letters.letters()[item.index]));
            break;
        case Kind::Envelope:
            pages.addSingle(envelopeReport(m_envelopes[item.index]).layout);
            break;
        }
    return {std::ssize(m_rows), u"書類 %L1 通"_s.arg(count()), pages.pages()};
}

BatchDocument SetPrintJob::document() {
    return {count(), [this](int position, PrintFiles &files) { return makeReport(position, files); }};
}

BatchReport SetPrintJob::letterReport(const Letter &letter) const {
    BatchReport report;
    report.subject = u"依頼書　"_s + m_letters.patients(letter).join(u'、');
    report.name = dataName;
    report.layout = m_letters.layoutPath(letter);
    return report;
}

BatchReport SetPrintJob::envelopeReport(const Envelope &envelope) const {
    BatchReport report;
    report.subject =
        u"封筒　"_s + (envelope.institution.isEmpty() ? envelope.addressee : envelope.institution);
    report.name = u"封筒"_s;
    report.layout = Folders::file(m_environment.folders.system(), envelopeLayout(m_choice.envelope));
    return report;
}

Result<BatchReport> SetPrintJob::makeReport(int position, PrintFiles &files) {
    const Item &item = m_items[size_t(position)];
    const QString file = QString::number(position + 1) + u".csv"_s;
    switch (item.kind) {
    case Kind::Form:
        return makeFormReport(m_environment.folders, m_forms.forms[item.index], files);
    case Kind::Letter: {
        const Letter &letter = m_letters.letters()[item.index];
        return write(m_letters.data(letter), u"依頼書"_s + file, letterReport(letter), files);
    }
    case Kind::Envelope:
        break;
    }
    const Envelope &envelope = m_envelopes[item.index];
    return write(envelopeData({&envelope, 1}), u"封筒"_s + file, envelopeReport(envelope), files);
}

Result<BatchReport> SetPrintJob::write(const DataFile &data, const QString &file, BatchReport report,
                                       PrintFiles &files) {
    report.dataName = dataName;
    report.layout = QDir::toNativeSeparators(report.layout);
    const Result<QString> path = files.write(file, data);
    if (!path)
        return Failure{path.reason()};
    report.dataFile = *path;
    return report;
}

std::vector<LetterMark> SetPrintJob::lettersThatLeft(const BatchResult &result) const {
    std::vector<LetterMark> marks;
    for (const int position : result.handed)
        if (const Item &item = m_items[size_t(position)]; item.kind == Kind::Letter)
            std::ranges::copy(m_letters.marks(m_letters.letters()[item.index]), std::back_inserter(marks));
    return marks;
}

QStringList SetPrintJob::lettersThatStayed(const BatchResult &result) const {
    QStringList stayed;
    for (int position = 0; position < count(); ++position)
        if (const Item &item = m_items[size_t(position)]; item.kind == Kind::Letter && !result.left(position))
            stayed += m_letters.patients(m_letters.letters()[item.index]);
    return stayed;
}
