#include "fees/unit_prices.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "fees/in_force.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

std::span<const cls単価::Price> cls単価::prices() {
    static constexpr Price prices[] = {
        {1, 1, &cls単価::nマッサージ, u"マッサージ"},
        {1, 2, &cls単価::n変形徒手, u"変形徒手矯正術"},
        {1, 3, &cls単価::n温按法, u"温罨法"},
        {1, 4, &cls単価::n電気光線, u"電気光線器具"},
        {1, 11, &cls単価::n鍼灸1術, u"鍼灸 １術"},
        {1, 12, &cls単価::n鍼灸2術, u"鍼灸 ２術"},
        {1, 13, &cls単価::n鍼灸1術初回, u"鍼灸 １術 初回"},
        {1, 14, &cls単価::n鍼灸2術初回, u"鍼灸 ２術 初回"},
        {1, 15, &cls単価::n電気鍼温灸器, u"電気鍼・温灸器"},
        {1, 16, &cls単価::n鍼灸1術初検料, u"初検料 １術"},
        {1, 17, &cls単価::n鍼灸2術初検料, u"初検料 ２術"},
        {1, 18, &cls単価::n施術報告書交付料, u"施術報告書交付料"},
        {2, 1, &cls単価::n基本往療費, u"往療費 基本"},
        {2, 2, &cls単価::n加算往療費, u"往療費 加算"},
        {9, 1, &cls単価::n定額料金1割, u"定額料金 １割"},
        {9, 2, &cls単価::n定額料金2割, u"定額料金 ２割"},
        {9, 3, &cls単価::n定額料金3割, u"定額料金 ３割"},
        {9, 11, &cls単価::n実費施術費, u"実費 施術費"},
        {9, 12, &cls単価::n実費交通費, u"実費 交通費"},
    };
    return prices;
}

short cls単価::iGetTanka(const QString &month) {
    const auto rows = rowsInForce(m_environment, u"療養費単価", month, u"cStartDate, iTankaKbn, nTankaCode",
                                  u"iGetTanka() でエラー");
    if (!rows)
        return -1;
    if (rows->rowCount() == 0) {
        m_environment.messages.inform(u"単価データがありません。"_s);
        return -1;
    }
    for (int row = 0; row < rows->rowCount(); ++row) {
        const auto group = numberIn(*rows, row, u"iTankaKbn");
        const auto code = numberIn(*rows, row, u"nTankaCode");
        const auto price = numberIn(*rows, row, u"nTanka");
        if (!group || !code || !price) {
            const auto text = [&](QStringView column) { return rows->text(row, rows->column(column)); };
            m_environment.messages.fail(u"区分:"_s + text(u"iTankaKbn") + u"  コード："_s +
                                            text(u"nTankaCode") + u"\r単価の取得に失敗しました。"_s,
                                        u"DB Read Error!!"_s);
            return -1;
        }
        const auto found = std::ranges::find_if(
            prices(), [&](const Price &p) { return p.iTankaKbn == *group && p.nTankaCode == *code; });
        if (found != prices().end())
            this->*found->price = *price;
    }
    return 0;
}
