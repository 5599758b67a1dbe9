#include "consent/entry/diagnosis_list.h"

#include "app/base/codepage932.h"

#include <QDir>
#include <QFile>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

// Newer editors save a list as UTF-8 unless told otherwise.
QString decoded(const QByteArray &bytes) {
    return looksLikeUtf8(bytes) ? QString::fromUtf8(bytes) : decode932(bytes);
}

bool isReadable(const QString &name) {
    return std::ranges::all_of(name, [](QChar c) { return c != QChar::ReplacementCharacter && c >= u' '; });
}

} // namespace

Result<Recordset> readDiagnoses(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Failure{u"傷病名の一覧「%1」を読み込めません。"_s.arg(QDir::toNativeSeparators(path)) +
                       file.errorString()};
    Recordset rows;
    rows.open({u"number"_s, u"name"_s}, Recordset::Encoding::Utf16);
    qint64 number = 0;
    qsizetype lineNumber = 0;
    for (const QString &line : decoded(file.readAll()).split(u'\n')) {
        ++lineNumber;
        const QString name = line.trimmed().replace(u'\t', u' ');
        if (name.isEmpty())
            continue;
        if (!isReadable(name))
            return Failure{u"傷病名の一覧「%1」の %2行目に読めない文字があります。"
                           "文字コードをシフトJIS（ANSI）またはUTF-8にして保存しなおしてください。"_s.arg(
                               QDir::toNativeSeparators(path), QString::number(lineNumber))};
        rows.appendInteger(++number);
        rows.appendText(name.utf16(), size_t(name.size()) * sizeof(char16_t));
    }
    return rows;
}
