#include "print/request_letter/letter_job.h"

#include "app/base/environment.h"
#include "app/base/folders.h"
#include "db/adodb.h"
#include "print/engine/paper.h"
#include "print/engine/wfd_print_exe.h"
#include "print/request_letter/letter_merge.h"
#include "print/request_letter/letter_query.h"

#include <QFileInfo>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString dataName = u"同意依頼書"_s;

/// The first layout's file is the one that everybody knows; those of further layouts are numbered.
QString dataFileName(size_t sheet) {
    return dataName + (sheet == 0 ? QString() : QString::number(sheet + 1)) + u".csv"_s;
}

} // namespace

short LetterJob::iRead(std::vector<LetterOrder> orders) {
    const ErrorsSince errors(m_db);
    m_orders = std::move(orders);
    if (readLetterSource(m_db, m_environment.branch, m_orders, m_source) == 0)
        return 0;
    return failDb(errors);
}

std::vector<size_t> LetterJob::goneOrders() const {
    std::vector<size_t> gone;
    for (size_t i = 0; i < m_orders.size(); ++i)
        if (!std::ranges::binary_search(m_source.rows, i, {}, &LetterRow::order))
            gone.push_back(i);
    return gone;
}

QString LetterJob::layoutPath(const QString &layout) const {
    return Folders::file(m_environment.folders.system(), layout);
}

QString LetterJob::missingLayout() const {
    for (const LetterRow &row : m_source.rows)
        if (const QString &layout = m_orders[row.order].layout; !QFileInfo(layoutPath(layout)).isFile())
            return layout;
    return {};
}

std::vector<LetterSheet> LetterJob::sheets(const LetterOptions &options) const {
    std::vector<LetterSheet> sheets;
    for (const Letter &letter : arrangeLetters(m_orders, m_source, options.grouped)) {
        const QString layout = layoutPath(m_orders[m_source.rows[letter.rows.front()].order].layout);
        auto sheet = std::ranges::find(sheets, layout, &LetterSheet::layout);
        if (sheet == sheets.end())
            sheet = sheets.insert(
                sheet, {layout, Folders::file(m_environment.folders.temporary(), dataFileName(sheets.size())),
                        DataFile(letterColumns())});
        sheet->data.add(letterRecord(letter, m_orders, m_source, options));
    }
    return sheets;
}

QString LetterJob::merge(const std::vector<LetterSheet> &sheets, const StartLetterWait &startWait,
                         QString *reason) const {
    const std::unique_ptr<LetterWait> wait = startWait();
    return mergeLetters(
        m_environment, dataName, sheets, [&] { return wait->goOn(); }, reason);
}

short LetterJob::iOutput(const LetterOptions &options, LetterOutput way, const StartLetterWait &startWait) {
    const std::vector<LetterSheet> all = sheets(options);
    m_letters = 0;
    m_touched.clear();
    QString reason;
    for (const LetterSheet &sheet : all) {
        if (!sheet.data.write(sheet.file, &reason))
            return fail(reason);
        m_letters += sheet.data.count();
        m_touched += sheet.data.touched();
    }
    m_touched.removeDuplicates();
    // Several layouts become one document first: the viewer then shows and prints them as one.
    const bool merged = all.size() > 1;
    const QString document = merged ? merge(all, startWait, &reason) : all[0].layout;
    if (document.isEmpty())
        return fail(reason);
    cls_WfdPrintExe engine(m_environment);
    engine.iInit(document, u"同意書印刷"_s);
    if (!merged)
        engine.iSetDataText(1, dataName, QFileInfo(all[0].file).fileName());
    const short paper = paperCodeOf(all[0].layout);
    if ((way == LetterOutput::Print ? engine.iPrintDialog(paper) : engine.iPreview(paper)) != 0)
        return fail(engine.sErrMsg());
    return 0;
}

short LetterJob::markRow(const LetterRow &row, const QString &computer, bool *overtaken) {
    const QString mark = markOutputSql(row, m_orders[row.order].toHospital, computer);
    qint64 affected = 0;
    if (m_db.iExecSQL(mark + u" AND "_s + sqlUnchanged(row), &affected) != 0)
        return -1;
    *overtaken = affected == 0;
    return *overtaken ? m_db.iExecSQL(mark) : short(0);
}

short LetterJob::iMark(QStringList *overtaken) {
    const ErrorsSince errors(m_db);
    if (m_db.iConnect() != 0)
        return failDb(errors);
    const QString computer = m_db.csGetComputerName();
    Transaction transaction(m_db);
    if (!transaction.begun())
        return failDb(errors);
    for (const LetterRow &row : m_source.rows) {
        bool isOvertaken = false;
        if (markRow(row, computer, &isOvertaken) != 0)
            return failDb(errors);
        if (isOvertaken)
            overtaken->append(letterWho(row));
    }
    return transaction.commit() == 0 ? short(0) : failDb(errors);
}

short LetterJob::fail(const QString &reason) {
    m_error = reason;
    return -1;
}

short LetterJob::failDb(const ErrorsSince &errors) {
    return fail(errors.text());
}
