#include "consent/entry/diagnosis_list.h"

#include "app/base/codepage932.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;

bool readDiagnoses(const QString &path, Recordset &rows, QString &reason) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        reason = u"傷病名の一覧「%1」を読み込めません。"_s.arg(path) + file.errorString();
        return false;
    }
    rows.open({u"number"_s, u"name"_s}, Recordset::Encoding::Utf16);
    qint64 number = 0;
    for (const QString &line : decode932(file.readAll()).split(u'\n')) {
        const QString name = line.trimmed();
        if (name.isEmpty())
            continue;
        rows.appendInteger(++number);
        rows.appendText(name.utf16(), size_t(name.size()) * sizeof(char16_t));
    }
    return true;
}
