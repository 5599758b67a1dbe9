#include "search/search_conditions.h"

using namespace Qt::Literals::StringLiterals;

QString conditionSummary(const PatientConditions &conditions) {
    QString words = u"抽出条件："_s;
    const auto add = [&words](QStringView label, const QString &value) {
        if (!value.isEmpty())
            words.append(label).append(value);
    };
    const auto number = [](qint64 value) { return value > 0 ? QString::number(value) : QString(); };
    add(u" 名称（全文一致）=", conditions.name);
    add(u" かな（全文一致）=", conditions.kana);
    add(u" TEL（全文一致）=", conditions.tel);
    if (conditions.ended)
        words += u" 施術終了患者表示 ";
    add(u" 担当施術者=", number(conditions.staff));
    if (conditions.kind == 0 || conditions.kind == 1)
        add(u" 施術区分=", conditions.kind == 0 ? u"マッサージ"_s : u"鍼灸"_s);
    add(u" 利用者ID=", number(conditions.number));
    return words;
}

// The two searches word their conditions alike.
QString conditionSummary(const StaffConditions &conditions) {
    PatientConditions alike;
    alike.name = conditions.name;
    alike.kana = conditions.kana;
    alike.staff = conditions.number;
    return conditionSummary(alike);
}
