#include "consent/requests/method_list_model.h"

#include "app/base/request_methods.h"

using namespace Qt::Literals::StringLiterals;

MethodListModel::MethodListModel(QObject *parent)
    : TableModel({{u"番号"_s, u"同意の行に保存される番号です"_s},
                  {u"依頼方法"_s, u"F2 または文字キーで変更します"_s},
                  {u"使用中"_s, u"この番号を使っている同意の件数です"_s},
                  {u"個別"_s, u"Space で、選択した行の個別依頼方法に付けます"_s}},
                 parent) {}

void MethodListModel::load(const MethodList &list, const QStringList &ownMethods, bool mayOwn) {
    beginResetModel();
    m_list = list;
    m_own = ownMethods;
    m_mayOwn = mayOwn;
    endResetModel();
}

void MethodListModel::clearOwnMethods() {
    m_own.clear();
    refresh();
}

QString MethodListModel::add(const QString &typed) {
    MethodList list = m_list;
    const QString why = list.add(typed);
    if (!why.isEmpty())
        return why;
    const int end = rowCount();
    beginInsertRows({}, end, end);
    m_list = list;
    endInsertRows();
    Q_EMIT edited();
    return {};
}

void MethodListModel::remove(int entry) {
    beginResetModel();
    m_list.remove(entry);
    endResetModel();
    Q_EMIT edited();
}

QString MethodListModel::move(int entry, int by) {
    const QString why = m_list.move(entry, by);
    if (why.isEmpty())
        refresh();
    return why;
}

void MethodListModel::refresh() {
    allChanged();
    Q_EMIT edited();
}

QVariant MethodListModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid())
        return {};
    const QString text = m_list.texts()[index.row()];
    const bool shown = role == Qt::DisplayRole;
    if (role == Qt::TextAlignmentRole && (index.column() == Number || index.column() == Uses))
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    switch (index.column()) {
    case Number:
        return shown ? QVariant(index.row() + 1) : QVariant();
    case Text:
        if (role == Qt::EditRole)
            return text;
        return shown ? QVariant(text.isEmpty() ? u"（欠番）"_s : text) : QVariant();
    case Uses:
        return shown && m_list.uses(index.row()) > 0 ? QVariant(u"%L1 件"_s.arg(m_list.uses(index.row())))
                                                     : QVariant();
    case Own:
        if (role == Qt::CheckStateRole && m_mayOwn && !text.isEmpty())
            return m_own.contains(text) ? Qt::Checked : Qt::Unchecked;
        return {};
    }
    return {};
}

Qt::ItemFlags MethodListModel::flags(const QModelIndex &index) const {
    const Qt::ItemFlags flags = TableModel::flags(index);
    if (!index.isValid())
        return flags;
    if (index.column() == Text)
        return flags | Qt::ItemIsEditable;
    if (index.column() == Own && m_mayOwn && !m_list.texts()[index.row()].isEmpty())
        return flags | Qt::ItemIsUserCheckable;
    return flags;
}

bool MethodListModel::setData(const QModelIndex &index, const QVariant &value, int role) {
    if (!index.isValid())
        return false;
    if (index.column() == Own && role == Qt::CheckStateRole)
        return tickOwn(m_list.texts()[index.row()], value.toInt() == Qt::Checked);
    if (index.column() != Text || role != Qt::EditRole)
        return false;
    // Leaving an editor without a change is no entry.
    if (value.toString() == m_list.texts()[index.row()])
        return true;
    if (const QString why = m_list.change(index.row(), value.toString()); !why.isEmpty()) {
        Q_EMIT refused(why);
        return false;
    }
    refresh();
    return true;
}

bool MethodListModel::tickOwn(const QString &text, bool on) {
    if (!m_mayOwn || text.isEmpty())
        return false;
    if (const QString why = whyMethodIsWrong(text); on && !why.isEmpty()) {
        Q_EMIT refused(why);
        return false;
    }
    if (on && !m_own.contains(text))
        m_own.append(text);
    else if (!on)
        m_own.removeAll(text);
    refresh();
    return true;
}
