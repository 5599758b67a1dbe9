#pragma once

#include <QString>

/// Files of a print job as the consent form screen leaves them: a command file, and for every patient a data
/// file of 100 columns and a QR code.
class ReportSample {
public:
    /// @param folder where the files go
    ReportSample(const QString &folder, int patients);

    /// One report a patient, each with a data file of its own.
    QString batchCommand() const { return m_batch; }
    /// One report whose data file holds the first patients, again from the first when there are not as many.
    QString listCommand(int records) const;

private:
    QString dataFile(const QString &name, int first, int records) const;
    QString command(const QString &name, const QByteArray &lines) const;

    QString m_folder;
    int m_patients;
    QString m_batch;
};
