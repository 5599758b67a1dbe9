#include "consent/requests/request_rows_model.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

RequestRowsModel::RequestRowsModel(QObject *parent)
    : TableModel({{u"用紙で依頼"_s, u"チェックした行の依頼書を出力します"_s},
                  {u"IDNo."_s},
                  {u"利用者名"_s},
                  {u"区分"_s},
                  {u"手順"_s},
                  {u"同意依頼書の種類"_s, u"行の状態から選ばれています。F2 または文字キーで変更できます"_s},
                  {u"病院依頼"_s, u"チェックした行の依頼書は病院あて、ほかは医師あてです"_s},
                  {u"担当医師"_s},
                  {u"医師変更"_s},
                  {u"病院名"_s},
                  {u"同意終了日"_s},
                  {u"依頼"_s, u"依頼書をすでに出力した行です"_s}},
                 parent) {}

void RequestRowsModel::load(std::vector<RequestRow> rows) {
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
    Q_EMIT chosen();
}

void RequestRowsModel::askDoctor(int row, const QString &code, const QString &name, const QString &hospital) {
    ::askDoctor(m_rows[size_t(row)], code, name, hospital);
    rowChanged(row);
    Q_EMIT chosen();
}

bool *RequestRowsModel::tick(RequestRow &row, int column) {
    return column == Paper ? &row.onPaper : column == ToHospital ? &row.toHospital : nullptr;
}

void RequestRowsModel::tickAll(Column column) {
    const bool all = std::ranges::all_of(m_rows, [&](RequestRow &row) { return *tick(row, column); });
    for (RequestRow &row : m_rows)
        *tick(row, column) = !all;
    columnsChanged(column, column);
    Q_EMIT chosen();
}

QString RequestRowsModel::text(const RequestRow &row, Column column) const {
    switch (column) {
    case Number:
        return row.number;
    case Name:
        return row.name;
    case Treatment:
        return row.treatment;
    case Procedure:
        return row.procedure;
    case End:
        return row.end;
    case Kind:
        return letterKindName(row.kind);
    case Hospital:
        return row.hospital;
    case Doctor:
        return row.doctorName.isEmpty() ? u"（医師なし）"_s : row.doctorName;
    case DoctorChanged:
        return row.kind == LetterKind::DoctorChanged ? u"変更"_s : QString();
    case Requested:
        return row.requested ? u"済"_s : QString();
    default:
        return {};
    }
}

QVariant RequestRowsModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid())
        return {};
    RequestRow row = m_rows[size_t(index.row())];
    if (const bool *ticked = tick(row, index.column()))
        return role == Qt::CheckStateRole ? QVariant(*ticked ? Qt::Checked : Qt::Unchecked) : QVariant();
    if (role == Qt::EditRole && index.column() == Kind)
        return int(row.kind);
    if (role == Qt::DisplayRole)
        return text(row, Column(index.column()));
    if (role == Qt::TextAlignmentRole && index.column() == Number)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

Qt::ItemFlags RequestRowsModel::flags(const QModelIndex &index) const {
    const Qt::ItemFlags flags = TableModel::flags(index);
    if (index.column() == Paper || index.column() == ToHospital)
        return flags | Qt::ItemIsUserCheckable;
    return index.column() == Kind ? flags | Qt::ItemIsEditable : flags;
}

bool RequestRowsModel::setData(const QModelIndex &index, const QVariant &value, int role) {
    if (!index.isValid())
        return false;
    RequestRow &row = m_rows[size_t(index.row())];
    bool *ticked = tick(row, index.column());
    if (ticked && role == Qt::CheckStateRole)
        *ticked = value.toInt() == Qt::Checked;
    else if (index.column() == Kind && role == Qt::EditRole)
        row.kind = LetterKind(std::clamp(value.toInt(), 0, letterKinds - 1));
    else
        return false;
    rowChanged(index.row());
    Q_EMIT chosen();
    return true;
}
