#include "print/request_letter/letter_job.h"

#include "app/base/environment.h"
#include "app/base/folders.h"
#include "print/batch/print_messages.h"
#include "print/documents/lost_texts.h"
#include "print/engine/paper.h"
#include "print/engine/wfd_print_exe.h"
#include "print/request_letter/letter_query.h"

#include <QFileInfo>
#include <QMap>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString dataName = u"同意依頼書"_s;

Message warning(const QString &text) {
    return {text, MessageIcon::Exclamation, {}};
}

} // namespace

Result<> LetterJob::read(std::vector<LetterOrder> orders, const LetterOptions &options) {
    m_orders = std::move(orders);
    m_options = options;
    Result<LetterSource> source = readLetterSource(m_db, m_environment.branch, m_orders);
    if (!source)
        return Failure{source.reason()};
    m_source = std::move(*source);
    if (options.sender) {
        m_source.company = *options.sender;
        m_source.hasCompany = true;
    }
    m_letters = arrangeLetters(m_orders, m_source, options.grouped);
    return {};
}

QStringList LetterJob::goneRows() const {
    QStringList gone;
    for (size_t i = 0; i < m_orders.size(); ++i)
        if (!std::ranges::binary_search(m_source.rows, i, {}, &LetterRow::order))
            gone.append(m_orders[i].who);
    return gone;
}

QStringList LetterJob::oralRows() const {
    QStringList oral;
    for (const LetterRow &row : m_source.rows)
        if (row.oral)
            oral.append(letterWho(row));
    return oral;
}

LetterCheck LetterJob::check() const {
    const QStringList gone = goneRows();
    LetterCheck check;
    if (!gone.isEmpty())
        check.notes.append(u"次の行は最新の同意でないか、削除されているため、依頼書を出力できません。\r\n"_s +
                           gone.join(u"\r\n"_s));
    if (m_source.rows.empty())
        check.refusal = warning(
            (QStringList{u"該当する同意依頼書データがありません。"_s} + check.notes).join(u"\r\n\r\n"_s));
    else if (!m_source.hasCompany)
        check.refusal = warning(u"本社データがありません。"_s);
    else
        check.refusal = missingLayouts();
    if (m_options.printPractitioner)
        if (const QStringList without = withoutPractitioner(m_source, m_options); !without.isEmpty())
            check.notes.append(
                u"施術者データがありません。次の利用者は、施術者氏名を空欄のまま出力します。\r\n"_s +
                without.join(u"\r\n"_s));
    if (const QString note = replacedNote(m_environment, replaced()); !note.isEmpty())
        check.notes.append(note);
    return check;
}

std::optional<Message> LetterJob::missingLayouts() const {
    QMap<QString, QStringList> missing; // patients by layout
    for (const Letter &letter : m_letters)
        if (!QFileInfo(layoutPath(letter)).isFile())
            missing[orderOf(letter).layout] += patients(letter);
    if (missing.isEmpty())
        return {};
    Message message = layoutMissing(missing.firstKey());
    for (auto layout = missing.begin(); layout != missing.end(); ++layout)
        addMessagePart(message.text, u"「%1」を使う利用者："_s.arg(layout.key()), layout.value());
    return message;
}

std::vector<ReplacedText> LetterJob::replaced() const {
    std::vector<ReplacedText> replaced;
    for (const LetterSheet &sheet : sheets())
        std::ranges::copy(sheet.data.replaced(), std::back_inserter(replaced));
    return replaced;
}

const LetterOrder &LetterJob::orderOf(const Letter &letter) const {
    return m_orders[m_source.rows[letter.rows.front()].order];
}

DataFile LetterJob::data(const Letter &letter) const {
    DataFile data(letterColumns());
    data.add(letterRecord(letter, m_orders, m_source, m_options));
    return data;
}

QString LetterJob::layoutPath(const Letter &letter) const {
    return Folders::file(m_environment.folders.system(), orderOf(letter).layout);
}

QStringList LetterJob::patients(const Letter &letter) const {
    QStringList patients;
    for (const size_t row : letter.rows)
        patients.append(letterWho(m_source.rows[row]));
    return patients;
}

std::vector<LetterMark> LetterJob::marks(const Letter &letter) const {
    std::vector<LetterMark> marks;
    for (const size_t place : letter.rows) {
        const LetterRow &row = m_source.rows[place];
        marks.push_back({row.key, row.updateTime, m_orders[row.order].toHospital, letterWho(row)});
    }
    return marks;
}

std::vector<LetterMark> LetterJob::marks() const {
    std::vector<LetterMark> all;
    for (const Letter &letter : m_letters)
        std::ranges::copy(marks(letter), std::back_inserter(all));
    return all;
}

std::vector<LetterSheet> LetterJob::sheets() const {
    std::vector<LetterSheet> sheets;
    for (const Letter &letter : m_letters) {
        const QString layout = layoutPath(letter);
        auto sheet = std::ranges::find(sheets, layout, &LetterSheet::layout);
        if (sheet == sheets.end())
            sheet = sheets.insert(sheet, {layout, DataFile(letterColumns())});
        sheet->data.add(letterRecord(letter, m_orders, m_source, m_options));
    }
    return sheets;
}

RunExtent LetterJob::extent() const {
    PageCount pages;
    for (const LetterSheet &sheet : sheets())
        pages.add(sheet.layout, dataName, sheet.data);
    return {std::ssize(m_source.rows), u"依頼書 %L1 通"_s.arg(m_letters.size()), pages.pages()};
}

Result<bool> LetterJob::output(LetterOutput way, const StartLetterWait &startWait, HandedDocuments *sent) {
    const std::vector<LetterSheet> all = sheets();
    cls_WfdPrintExe engine(m_environment, sent);
    if (all.size() == 1) {
        engine.iInit(all[0].layout, u"同意書印刷"_s);
        if (engine.iWriteData(1, dataName, all[0].data) != 0)
            return Failure{engine.sErrMsg()};
    } else {
        // Several layouts become one document first: the viewer then shows and prints them as one.
        const std::unique_ptr<LetterWait> wait = startWait();
        const Result<QString> document =
            mergeLetters(m_environment, dataName, all, engine.files(), [&] { return wait->goOn(); });
        if (!document)
            return Failure{document.reason()};
        if (document->isEmpty())
            return false;
        engine.iInit(*document, u"同意書印刷"_s);
    }
    const short paper = paperCodeOf(all[0].layout);
    if ((way == LetterOutput::Print ? engine.iPrintDialog(paper) : engine.iPreview(paper)) != 0)
        return Failure{engine.sErrMsg()};
    return true;
}
