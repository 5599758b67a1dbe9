#include "consent/list/list_edits.h"

#include "app/base/dates.h"
#include "consent/rows/list_cells.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

bool isSameRow(const ReadRow &now, const ReadRow &before) {
    return now.values.same(before.values) &&
           (before.updateTime.isEmpty() || now.updateTime == before.updateTime);
}

QString typedText(const ChangedRow &row) {
    QStringList typed;
    for (const ListColumnInfo &info : listColumns()) {
        if (!cellDiffers(row.now, row.read.values, info.column))
            continue;
        const QVariant value = cellEditValue(row.now, info.column);
        const QString text = value.typeId() == QMetaType::QDate ? dateText(value.toDate()) : value.toString();
        if (info.kind == CellKind::Date || info.kind == CellKind::Text)
            typed.append(info.caption + u" "_s + text);
    }
    return typed.isEmpty() ? QString() : u"　（入力内容："_s + typed.join(u"、"_s) + u"）"_s;
}

QString rowIdentity(const ConsentRowKey &key) {
    return u"%1/%2/%3/%4/%5/%6"_s.arg(key.patient.iKyotenCd)
        .arg(key.patient.iKyotenEb)
        .arg(key.patient.nIDNo)
        .arg(key.nDate)
        .arg(key.iHenkeiFlg)
        .arg(key.nHenkeiDouiDate);
}
