#include "viewer/window/output_dialogs.h"

#include "app/desktop/message_form.h"
#include "viewer/document/document.h"
#include "viewer/output/pdf.h"
#include "viewer/output/pdf_name.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProgressDialog>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A progress window that appears when the work takes longer than a moment.
class Progress {
public:
    Progress(const QString &text, QWidget *parent) : m_dialog(text, u"中止(&C)"_s, 0, 0, parent) {
        m_dialog.setWindowTitle(u"帳票表示"_s);
        m_dialog.setWindowModality(Qt::WindowModal);
        m_text = text;
    }

    /// For the work to call; false when the user cancelled.
    bool advance(int done, int all) {
        m_dialog.setMaximum(all);
        m_dialog.setLabelText(u"%1（%L2 / %L3 ページ）"_s.arg(m_text).arg(done).arg(all));
        m_dialog.setValue(done);
        return !m_dialog.wasCanceled();
    }

private:
    QProgressDialog m_dialog;
    QString m_text;
};

OutputEnd endOf(const Result<PagesEnd> &end, QWidget *parent) {
    if (end)
        return *end == PagesEnd::All ? OutputEnd::Done : OutputEnd::Cancelled;
    MessageForm({end.reason(), MessageIcon::Critical, u"帳票表示"_s}, parent).exec();
    return OutputEnd::Failed;
}

OutputEnd print(const Document &document, QPrinter &printer, const PrintAdjustment &adjustment,
                int currentPage, QWidget *parent) {
    printer.setDocName(document.title().isEmpty() ? u"帳票"_s : document.title());
    Progress progress(u"印刷しています。"_s, parent);
    return endOf(printPages(document, printer, adjustment, currentPage,
                            [&](int done, int all) { return progress.advance(done, all); }),
                 parent);
}

} // namespace

bool hasPrinter() {
    return !QPrinterInfo::availablePrinterNames().isEmpty();
}

OutputEnd printFromDialog(const Document &document, const PrintAdjustment &adjustment, int currentPage,
                          QWidget *parent) {
    QPrinter printer(QPrinter::HighResolution);
    choosePaper(printer, document.pageSize(0));
    QPrintDialog dialog(&printer, parent);
    dialog.setWindowTitle(u"印刷"_s);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setOption(QAbstractPrintDialog::PrintCurrentPage, currentPage >= 0);
    dialog.setMinMax(1, document.pageCount());
    dialog.setFromTo(1, document.pageCount());
    if (dialog.exec() != QDialog::Accepted)
        return OutputEnd::Cancelled;
    return print(document, printer, adjustment, currentPage, parent);
}

OutputEnd printAtOnce(const Document &document, const PrintAdjustment &adjustment) {
    const QPrinterInfo standard = QPrinterInfo::defaultPrinter();
    if (standard.isNull())
        return printFromDialog(document, adjustment, -1, nullptr);
    QPrinter printer(standard, QPrinter::HighResolution);
    choosePaper(printer, document.pageSize(0));
    return print(document, printer, adjustment, -1, nullptr);
}

QString proposedPdfPath(const Document &document) {
    const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    return (documents.exists() ? documents : QDir::home())
        .filePath(pdfNameOf(document, QDate::currentDate()));
}

QString askPdfPath(const QString &title, const QString &proposed, QWidget *parent) {
    QFileDialog dialog(parent, title, QFileInfo(proposed).path(), u"PDF (*.pdf)"_s);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(u"pdf"_s);
    dialog.selectFile(QFileInfo(proposed).fileName());
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

OutputEnd savePdf(const Document &document, const QString &path, FileUse use, QWidget *parent) {
    Progress progress(u"PDFを作成しています。"_s, parent);
    return endOf(
        writePdf(document, path, use, [&](int done, int all) { return progress.advance(done, all); }),
        parent);
}
