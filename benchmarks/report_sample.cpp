#include "benchmarks/report_sample.h"

#include "app/base/codepage932.h"
#include "app/base/file_write.h"
#include "app/base/folders.h"
#include "benchmarks/figures.h"
#include "print/consent_form/form_columns.h"
#include "print/consent_form/qr_code.h"
#include "print/engine/data_file.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString layout = QStringLiteral(DOUISHO_LAYOUTS "/同意書_マッサージ初回.wfd");

void write(const QString &path, const QByteArray &bytes) {
    if (const Result<> written = writeFileWhole(path, bytes); !written)
        stop(written.reason());
}

QByteArray lines(const QString &text) {
    return encode932(text).bytes;
}

/// Values of a length that is usual for their columns.
DataValue valueOf(const QString &column, int patient) {
    const QString number = QString::number(patient);
    if (column.endsWith(u"元号"_s))
        return u"S"_s;
    if (column.contains(u"年月日"_s))
        return u"25年3月%1日"_s.arg(patient % 28 + 1);
    if (column.contains(u"氏名"_s) || column.contains(u"患者名"_s) || column.contains(u"師名"_s))
        return u"髙橋　花子"_s + number;
    if (column.contains(u"住所"_s) || column.contains(u"所在地"_s))
        return u"緑川県若葉市中央%1丁目2－3　コーポみどり10%2号室"_s.arg(patient % 9 + 1).arg(patient % 7);
    if (column.contains(u"名"_s) || column.contains(u"備考"_s) || column.contains(u"その他"_s))
        return u"脳梗塞後遺症による右片麻痺 "_s + number;
    return (patient + column.size()) % 2;
}

} // namespace

ReportSample::ReportSample(const QString &folder, int patients) : m_folder(folder), m_patients(patients) {
    QByteArray reports;
    for (int patient = 0; patient < patients; ++patient) {
        write(m_folder + u"/QR%1.png"_s.arg(patient),
              qrPicture(u"DOUISHO:1:1-1-%1:20261121:2"_s.arg(patient)));
        const QString data = dataFile(u"%1_同意書データ.csv"_s.arg(patient), patient, 1);
        reports += lines(
            u"SetTitle,\"同意書%1\"\r\nSetImageField,\"QRコード\"\r\nSetDataText,同意書データ,\"%2\"\r\n"
            "SetReport,\"%3\"\r\n"_s.arg(QString::number(patient + 1), data, layout));
        if (patient + 1 < patients)
            reports += "AddReport\r\n";
    }
    m_batch = command(u"Com.dat"_s, reports);
}

QString ReportSample::listCommand(int records) const {
    const QString data = dataFile(u"%1件.csv"_s.arg(records), 0, records);
    return command(u"%1件.dat"_s.arg(records),
                   lines(u"FileName,\"%1\"\r\nSetDataText,\"同意書データ\",\"%2\"\r\nShowWindow,2\r\n"_s.arg(
                       layout, data)));
}

QString ReportSample::dataFile(const QString &name, int first, int records) const {
    DataFile file(consentFormColumns());
    for (int i = 0; i < records; ++i) {
        const int patient = (first + i) % m_patients;
        std::vector<DataValue> record;
        for (const QString &column : consentFormColumns())
            record.push_back(valueOf(column, patient));
        record[size_t(qrColumn())] = m_folder + u"/QR%1.png"_s.arg(patient);
        file.add(record);
    }
    if (const Result<> written = file.write(m_folder + u'/' + name, Folders(m_folder)); !written)
        stop(written.reason());
    return m_folder + u'/' + name;
}

QString ReportSample::command(const QString &name, const QByteArray &text) const {
    write(m_folder + u'/' + name, text);
    return m_folder + u'/' + name;
}
