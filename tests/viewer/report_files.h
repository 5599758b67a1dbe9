#pragma once

#include <QStringList>
#include <QTemporaryDir>

/// A work folder with layouts, data and command files, as the suite writes them.
class ReportFiles {
public:
    QString at(const QString &name) const { return m_folder.filePath(name); }
    QByteArray read(const QString &name) const;
    void write(const QString &name, const QByteArray &bytes) const;
    /// In code page 932.
    void writeText(const QString &name, const QString &text) const;

    /// form.wfd: one sheet a record with 氏名, the item QR as a picture and the mark "見出し"; a logo beside
    /// it.
    void writeForm() const;
    /// A data file of the items 氏名 and QR with a picture for each name.
    void writeNames(const QString &name, const QStringList &names) const;

private:
    QTemporaryDir m_folder;
};

struct Ended {
    int exitCode; ///< −1 after a crash or a minute
    QString out, errors;
};

/// Runs one of the programs beside the test's executable, without a display.
Ended runProgram(const QString &program, const QStringList &arguments);

/// What a PDF says, page by page with a form feed between.
QString textOfPdf(const QString &path);
