#pragma once

#include "app/base/clock.h"
#include "app/base/folders.h"
#include "print/consent_form/form_gather.h"
#include "tests/support/test_database.h"
#include "tests/support/test_environment.h"

#include <QTemporaryDir>

/// A practice with one branch, 1-1, a few patients and their forms, and its folders.
class Practice {
public:
    Practice();

    GatheredForms gather(const ConsentFormOptions &options);
    /// The form of one patient; an empty one when there is none.
    ConsentForm form(qint32 patient, ConsentFormOptions options = {});
    /// A form's value as it stands in the data file.
    static QString value(const ConsentForm &form, const QString &column);

    QString work(const QString &file) const { return m_folder.filePath(QStringLiteral("TMP/") + file); }
    QString system(const QString &file) const { return m_folder.filePath(QStringLiteral("SYS/") + file); }
    /// The text of a file in the work folder, or in that of a run whose files were kept.
    QString written(const QString &file) const;
    void keepPrintFiles() const;
    void addFile(const QString &path, const QByteArray &bytes = "x") const;

private:
    QTemporaryDir m_folder;

public:
    TestDatabase database;
    Folders folders;
    FixedClock clock{QDate(2026, 11, 21)};
    RecordedMessages messages;
    RecordedProcesses processes;
    Environment environment{folders, clock, messages, processes, {1, 1}};
};
