#pragma once

#include "print/consent_form/form_gather.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"

/// A practice with one branch, 1-1, a few patients and their forms, and its folders.
class Practice : public TestInstallation {
public:
    Practice();

    GatheredForms gather(const ConsentFormOptions &options);
    /// The form of one patient; an empty one when there is none.
    ConsentForm form(qint32 patient, ConsentFormOptions options = {});
    /// A form's value as it stands in the data file.
    static QString value(const ConsentForm &form, const QString &column);

    QString work(const QString &file) const { return programFolder.filePath(QStringLiteral("TMP/") + file); }
    QString system(const QString &file) const {
        return programFolder.filePath(QStringLiteral("SYS/") + file);
    }
    QString data(const QString &file) const { return Folders::file(folders.data(), file); }
    /// The text of a file in the work folder, or in that of a run whose files were kept.
    QString written(const QString &file) const;
    /// A command file without the folders.
    QString commands(const QString &file = QStringLiteral("WfdCom.dat")) const {
        return written(file).remove(system({})).remove(work({}));
    }
    /// Cells of the columns in every record of a data file, joined by '|'.
    QStringList cells(const QString &file, const QStringList &columns) const;
    void keepPrintFiles() const;
    void addFile(const QString &path, const QByteArray &bytes = "x") const;

    QStringList said() { return messages.said(); }

    TestDatabase database;
};
