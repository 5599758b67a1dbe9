#include "fees/visit_fees.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "fees/in_force.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

short cls往療費::iGetOuryohiAll(const QString &month) {
    const QStringView label = u"iGetOuryohiAll() でエラー";
    const auto rows = rowsInForce(*m_environment, u"往療費区分", month, u"nMaxLen", label);
    if (!rows)
        return -1;
    std::vector<qint32> limits, fees;
    for (int row = 0; row < rows->rowCount(); ++row) {
        const auto limit = numberIn(*rows, row, u"nMaxLen");
        const auto fee = numberIn(*rows, row, u"nKingakuOuryou");
        if (!limit || !fee) {
            m_environment->messages.failIn(
                u"往療費区分の %1 行目の距離または金額が数値ではありません。"_s.arg(row + 1), label);
            return -1;
        }
        limits.push_back(*limit);
        fees.push_back(*fee);
    }
    m_limits = std::move(limits);
    m_fees = std::move(fees);
    m_count = static_cast<short>(m_limits.size());
    return 0;
}

short cls往療費::iGetOuryohi(qint32 &distance, short lastBand) const {
    if (distance == 0 || m_limits.empty())
        return 0;
    distance = std::min(distance, m_limits.back());
    size_t band = size_t(std::ranges::lower_bound(m_limits, distance) - m_limits.begin());
    if (lastBand == 1 && band + 1 == m_limits.size() && band > 0)
        --band;
    return static_cast<short>(m_fees[band]);
}
