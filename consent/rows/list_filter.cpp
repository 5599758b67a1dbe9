#include "consent/rows/list_filter.h"

using namespace Qt::Literals::StringLiterals;

QString whyRangeIsWrong(const ListFilter &filter) {
    if (!filter.from.isValid() || !filter.to.isValid())
        return u"対象期間の日付を入力してください。"_s;
    if (filter.to < filter.from)
        return u"対象期間の終了月は開始月以前に設定できません。\r\n対象期間を設定しなおしてください。"_s;
    return {};
}

ListOrder listOrderOf(int number) {
    return number >= 0 && number <= int(ListOrder::Patient) ? ListOrder(number)
                                                            : ListOrder::HospitalAndDoctor;
}

PatientOrder patientOrderOf(int number) {
    return number == int(PatientOrder::Kana) ? PatientOrder::Kana : PatientOrder::Number;
}
