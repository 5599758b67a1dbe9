#include "fees/bands_model.h"

#include "app/base/dates.h"
#include "app/base/text.h"
#include "fees/band_check.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

using Band = cD_往療費区分;

constexpr double metres = 1000; // a kilometre

QString numberText(qint32 number) {
    return u"%L1"_s.arg(number);
}

} // namespace

std::optional<qint32> numberFromInput(const QString &typed) {
    bool isNumber = false;
    const qint32 number = toHalfWidth(typed).remove(u',').trimmed().toInt(&isNumber);
    return isNumber && number >= 0 ? std::optional(number) : std::nullopt;
}

BandsModel::BandsModel(QObject *parent)
    : TableModel({{u"適用中"_s, u"上の年月に適用される区分です"_s},
                  {u"適用開始"_s, u"月の途中の日でも、その月の全体に適用されます"_s},
                  {u"適用終了"_s, u"月の途中の日でも、その月の全体に適用されます"_s},
                  {u"距離から(m)"_s, u"メートルで入力します。料金は「距離まで」だけで決まります"_s},
                  {u"距離まで(m)"_s, u"メートルで入力します。この距離ちょうども、この区分です"_s},
                  {u"往療料(円)"_s, u"この区分の往療料です"_s},
                  {u"施術料(円)"_s, u"この区分の施術料です。往療料の計算には使いません"_s}},
                 parent) {}

void BandsModel::load(const Bands &bands) {
    beginResetModel();
    m_bands = bands;
    endResetModel();
}

void BandsModel::setMonth(const QString &month) {
    m_month = month;
    columnsChanged(InForce, InForce);
}

int BandsModel::inForce() const {
    return int(std::ranges::count_if(m_bands, [&](const Band &band) { return isInForce(band, m_month); }));
}

int BandsModel::firstInForce() const {
    const auto found =
        std::ranges::find_if(m_bands, [&](const Band &band) { return isInForce(band, m_month); });
    return found == m_bands.end() ? -1 : int(found - m_bands.begin());
}

int BandsModel::add(int after) {
    Band band;
    if (after >= 0) {
        const Band &before = m_bands[size_t(after)];
        band.cStartDate = before.cStartDate;
        band.cEndDate = before.cEndDate;
        band.nMinLen = before.nMaxLen;
        band.dMinLen = before.nMaxLen / metres;
    }
    beginInsertRows({}, after + 1, after + 1);
    m_bands.insert(m_bands.begin() + after + 1, band);
    endInsertRows();
    Q_EMIT edited();
    return after + 1;
}

void BandsModel::remove(int row) {
    beginRemoveRows({}, row, row);
    m_bands.erase(m_bands.begin() + row);
    endRemoveRows();
    Q_EMIT edited();
}

QVariant BandsModel::shown(const Band &band, int column) const {
    switch (column) {
    case InForce:
        return isInForce(band, m_month) ? u"●"_s : QString();
    case Start:
        return band.cStartDate;
    case End:
        return band.cEndDate;
    case From:
        return numberText(band.nMinLen);
    case To:
        return numberText(band.nMaxLen);
    case Fee:
        return numberText(band.nKingakuOuryou);
    case Treatment:
        return band.nKingakuSejyutsu.isNull() ? QString() : numberText(band.nKingakuSejyutsu);
    }
    return {};
}

QVariant BandsModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid())
        return {};
    const Band &band = m_bands[size_t(index.row())];
    const int column = index.column();
    if (role == Qt::TextAlignmentRole)
        return QVariant((column >= From      ? Qt::AlignRight
                         : column == InForce ? Qt::AlignHCenter
                                             : Qt::AlignLeft) |
                        Qt::AlignVCenter);
    if (role == Qt::EditRole && (column == Start || column == End))
        return dateFromDatabase(column == Start ? band.cStartDate : band.cEndDate);
    return role == Qt::DisplayRole || role == Qt::EditRole ? shown(band, column) : QVariant();
}

Qt::ItemFlags BandsModel::flags(const QModelIndex &index) const {
    const Qt::ItemFlags flags = TableModel::flags(index);
    return index.isValid() && index.column() != InForce ? flags | Qt::ItemIsEditable : flags;
}

bool BandsModel::setNumber(Band &band, int column, const QString &typed) {
    if (column == Treatment && typed.trimmed().isEmpty()) {
        band.nKingakuSejyutsu.setNull();
        return true;
    }
    const std::optional<qint32> number = numberFromInput(typed);
    if (!number) {
        Q_EMIT refused(u"「%1」は入力できません。0～2,147,483,647 の整数を入力してください。"_s.arg(typed));
        return false;
    }
    switch (column) {
    case From:
        band.nMinLen = *number;
        band.dMinLen = *number / metres;
        break;
    case To:
        band.nMaxLen = *number;
        band.dMaxLen = *number / metres;
        break;
    case Fee:
        band.nKingakuOuryou = *number;
        break;
    case Treatment:
        band.nKingakuSejyutsu = *number;
        break;
    }
    return true;
}

bool BandsModel::setData(const QModelIndex &index, const QVariant &value, int role) {
    if (!index.isValid() || role != Qt::EditRole || index.column() == InForce)
        return false;
    Band &band = m_bands[size_t(index.row())];
    // Leaving an editor without a change is no entry.
    if (value == data(index, Qt::EditRole))
        return true;
    if (index.column() == Start || index.column() == End)
        (index.column() == Start ? band.cStartDate : band.cEndDate) = dateText(value.toDate());
    else if (!setNumber(band, index.column(), value.toString()))
        return false;
    rowChanged(index.row());
    Q_EMIT edited();
    return true;
}
