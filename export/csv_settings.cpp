#include "export/csv_settings.h"

#include "app/base/codepage932.h"
#include "app/base/file_write.h"
#include "app/base/folders.h"

#include <QDir>
#include <QFile>
#include <QHash>

using namespace Qt::Literals::StringLiterals;

namespace {

enum Etc { Unquoted = 1, NoHeadings = 2, Utf8 = 4, AllEtc = Unquoted | NoHeadings | Utf8 };

QString settingsFile(const Folders &folders) {
    return Folders::file(folders.data(), u"DataFile.ini"_s);
}

using Lines = QHash<QString, QString>;

Lines linesOf(const QString &text) {
    Lines lines;
    for (const QString &line : text.split(u'\n'))
        if (const qsizetype equals = line.indexOf(u'='); equals >= 0)
            lines.insert(line.left(equals).trimmed(), line.mid(equals + 1).trimmed());
    return lines;
}

/// A number from 0 to `last`.
int choice(const Lines &lines, const QString &key, int last, int fallback) {
    bool isNumber = false;
    const int number = lines.value(key).toInt(&isNumber);
    return isNumber && number >= 0 && number <= last ? number : fallback;
}

QString onOneLine(QString text) {
    return text.remove(u'\r').remove(u'\n');
}

} // namespace

int CsvSettings::section() const {
    return format.delimiter == u'\t' ? 1 : 0;
}

int CsvSettings::etc() const {
    return (format.quoted ? 0 : Unquoted) | (format.headings ? 0 : NoHeadings) |
           (format.encoding == CsvEncoding::Utf8 ? Utf8 : 0);
}

void CsvSettings::setSection(int section) {
    format.delimiter = section == 1 ? u'\t' : u',';
}

void CsvSettings::setEtc(int etc) {
    format.quoted = !(etc & Unquoted);
    format.headings = !(etc & NoHeadings);
    format.encoding = etc & Utf8 ? CsvEncoding::Utf8 : CsvEncoding::CodePage932;
}

Result<CsvSettings> readCsvSettings(const Folders &folders) {
    CsvSettings settings;
    QFile file(settingsFile(folders));
    if (!file.exists())
        return settings;
    if (!file.open(QIODevice::ReadOnly))
        return Failure{u"「%1」を読み込めません。\r\n"_s.arg(QDir::toNativeSeparators(file.fileName())) +
                       file.errorString()};
    const Lines lines = linesOf(decode932(file.readAll()));
    settings.folder = lines.value(u"[LAST_DIR_NAME]"_s);
    settings.fileName = lines.value(u"[LAST_FILE_NAME]"_s);
    settings.type = CsvFileType(choice(lines, u"[FILE_TYPE]"_s, 1, int(settings.type)));
    settings.setSection(choice(lines, u"[FILE_DELIMIT]"_s, 1, settings.section()));
    settings.setEtc(choice(lines, u"[FILE_ETC]"_s, AllEtc, settings.etc()));
    settings.openFolder = choice(lines, u"[FILE_OPN]"_s, 1, 0) == 1;
    return settings;
}

Result<> writeCsvSettings(const Folders &folders, const CsvSettings &settings) {
    const QString text =
        u"[LAST_DIR_NAME]=%1\r\n[LAST_FILE_NAME]=%2\r\n[FILE_TYPE]=%3\r\n[FILE_DELIMIT]=%4\r\n"
        "[FILE_ETC]=%5\r\n[FILE_OPN]=%6\r\n"_s.arg(
            onOneLine(settings.folder), onOneLine(settings.fileName), QString::number(int(settings.type)),
            QString::number(settings.section()), QString::number(settings.etc()),
            QString::number(settings.openFolder ? 1 : 0));
    return writeFileWhole(settingsFile(folders), encode932(text).bytes);
}
