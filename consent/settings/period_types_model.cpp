#include "consent/settings/period_types_model.h"

#include "app/base/text.h"
#include "app/desktop/signal_colours.h"

#include <algorithm>
#include <numeric>

using namespace Qt::Literals::StringLiterals;

namespace {

QString folded(const QString &text) {
    return foldForSearch(text).removeIf([](QChar sign) { return sign.isSpace(); });
}

size_t typeOf(int column) {
    return size_t(column - PeriodTypesModel::FirstType);
}

} // namespace

PeriodTypesModel::PeriodTypesModel(QObject *parent)
    : TableModel({{u"選択"_s, u"「既定を設定」で既定の計算方法を入れる利用者"_s},
                  {u"IDNo."_s},
                  {u"利用者名"_s},
                  {u"同意１"_s, u"同意１（マッサージ）の月数　1：同意期間１　2：同意期間２"_s},
                  {u"同意２"_s, u"同意２の月数　1：同意期間１　2：同意期間２"_s},
                  {u"期間"_s, u"要加療期間の決め方　1：同意日の15日で区切り、月末まで　2：翌月1日から"_s}},
                 parent) {}

void PeriodTypesModel::load(std::vector<PatientTypes> patients) {
    beginResetModel();
    m_patients = std::move(patients);
    showAll();
    endResetModel();
    Q_EMIT edited();
}

void PeriodTypesModel::showAll() {
    m_shown.resize(m_patients.size());
    std::iota(m_shown.begin(), m_shown.end(), size_t(0));
}

int PeriodTypesModel::changedCount() const {
    return int(std::ranges::count_if(m_patients, &PatientTypes::isChanged));
}

void PeriodTypesModel::narrow(const QString &text, const PeriodTypes *defaults) {
    const QString wanted = folded(text);
    beginResetModel();
    showAll();
    std::erase_if(m_shown, [&](size_t at) {
        const PatientTypes &patient = m_patients[at];
        const bool fits = wanted.isEmpty() || folded(QString::number(patient.nIDNo)).startsWith(wanted) ||
                          folded(patient.cName).contains(wanted);
        return !fits || (defaults && patient.now == *defaults);
    });
    endResetModel();
    Q_EMIT edited();
}

void PeriodTypesModel::tickAll(bool on) {
    for (const size_t shown : m_shown)
        m_patients[shown].ticked = on;
    changedAll();
}

bool PeriodTypesModel::allTicked() const {
    return tickedCount() == rowCount();
}

int PeriodTypesModel::tickedCount() const {
    return int(std::ranges::count_if(m_shown, [&](size_t shown) { return m_patients[shown].ticked; }));
}

int PeriodTypesModel::setTicked(const PeriodTypes &types) {
    for (const size_t shown : m_shown)
        if (m_patients[shown].ticked)
            m_patients[shown].now = types;
    changedAll();
    return tickedCount();
}

void PeriodTypesModel::changedAll() {
    allChanged();
    Q_EMIT edited();
}

QModelIndex PeriodTypesModel::firstWrong() {
    for (size_t patient = 0; patient < m_patients.size(); ++patient)
        for (const int column : {FirstType, SecondType, PeriodType}) {
            if (!m_patients[patient].isWrong(typeOf(column)))
                continue;
            auto shown = std::ranges::find(m_shown, patient);
            if (shown == m_shown.end()) {
                narrow({}, nullptr);
                shown = std::ranges::find(m_shown, patient);
            }
            return index(int(shown - m_shown.begin()), column);
        }
    return {};
}

bool PeriodTypesModel::isWrong(const QModelIndex &index) const {
    return index.column() >= FirstType && at(index.row()).isWrong(typeOf(index.column()));
}

QVariant PeriodTypesModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid())
        return {};
    const PatientTypes &patient = at(index.row());
    const int column = index.column();
    switch (role) {
    case Qt::CheckStateRole:
        return column == Tick ? QVariant(patient.ticked ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Qt::DisplayRole:
    case Qt::EditRole:
        if (column == Number)
            return patient.nIDNo;
        if (column >= FirstType)
            return patient.now[typeOf(column)];
        return column == Name ? QVariant(patient.cName) : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignVCenter | (column == Number ? Qt::AlignRight
                                            : column == Name ? Qt::AlignLeft
                                                             : Qt::AlignHCenter));
    case Qt::BackgroundRole:
        if (isWrong(index))
            return signalTint(Signal::Wrong);
        if (column >= FirstType && patient.now[typeOf(column)] != patient.read[typeOf(column)])
            return signalTint(Signal::Changed);
        return {};
    case Qt::ToolTipRole:
        return isWrong(index) ? QVariant(u"1 または 2 を入力してください。"_s) : QVariant();
    default:
        return {};
    }
}

Qt::ItemFlags PeriodTypesModel::flags(const QModelIndex &index) const {
    const Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    if (index.column() == Tick)
        return flags | Qt::ItemIsUserCheckable;
    return index.column() >= FirstType ? flags | Qt::ItemIsEditable : flags;
}

// What is typed stays in its cell, however wrong: it is to be mended there.
bool PeriodTypesModel::setData(const QModelIndex &index, const QVariant &value, int role) {
    if (!index.isValid())
        return false;
    if (role == Qt::CheckStateRole && index.column() == Tick)
        at(index.row()).ticked = value.toInt() == Qt::Checked;
    else if (role == Qt::EditRole && index.column() >= FirstType)
        at(index.row()).now[typeOf(index.column())] = toHalfWidth(value.toString().trimmed());
    else
        return false;
    Q_EMIT dataChanged(index, index);
    Q_EMIT edited();
    return true;
}
