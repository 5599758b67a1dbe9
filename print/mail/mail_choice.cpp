#include "print/mail/mail_choice.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QString noteOf(const MailResult &result) {
    switch (result.kind) {
    case MailResult::Sent:
        return u"送信済"_s;
    case MailResult::NotGivenBack:
        return u"未送信（送信済の印が残っています）"_s;
    case MailResult::Uncertain:
        return u"届いた可能性があります。"_s;
    case MailResult::Overtaken:
        return u"未送信（他の端末で変更されています）"_s;
    case MailResult::Failed:
    case MailResult::NotTried:
        break;
    }
    return u"未送信"_s;
}

} // namespace

MailChoice::MailChoice(QObject *parent)
    : TableModel({{u"送信"_s}, {u"番号"_s}, {u"相談員"_s}, {u"メールアドレス"_s}, {u"利用者"_s}, {u"備考"_s}},
                 parent) {}

void MailChoice::load(std::vector<MailRecipient> recipients) {
    m_entries.clear();
    for (MailRecipient &recipient : recipients) {
        const bool news = recipient.hindrance.isEmpty() && recipient.toldBefore() < recipient.patients();
        m_entries.push_back({std::move(recipient), news, false, {}});
    }
    showAll(m_all);
    Q_EMIT ticksChanged();
}

void MailChoice::showAll(bool all) {
    beginResetModel();
    m_all = all;
    m_shown.clear();
    for (size_t i = 0; i < m_entries.size(); ++i)
        if (all || !m_entries[i].recipient.rows.empty())
            m_shown.push_back(int(i));
    endResetModel();
}

std::vector<MailRecipient> MailChoice::ticked() const {
    std::vector<MailRecipient> ticked;
    for (const Entry &entry : m_entries)
        if (entry.ticked)
            ticked.push_back(entry.recipient);
    return ticked;
}

int MailChoice::tickedPatients() const {
    int patients = 0;
    for (const Entry &entry : m_entries)
        patients += entry.ticked ? entry.recipient.patients() : 0;
    return patients;
}

int MailChoice::tickedToldBefore() const {
    int patients = 0;
    for (const Entry &entry : m_entries)
        patients += entry.ticked ? entry.recipient.toldBefore() : 0;
    return patients;
}

int MailChoice::firstRow() const {
    for (int row = 0; row < rowCount(); ++row)
        if (mayTick(row))
            return row;
    return 0;
}

void MailChoice::toggle(int row) {
    if (!mayTick(row))
        return;
    entry(row).ticked = !entry(row).ticked;
    Q_EMIT dataChanged(index(row, Tick), index(row, Tick));
    Q_EMIT ticksChanged();
}

void MailChoice::tickAll() {
    const bool all =
        std::ranges::all_of(m_entries, [](const Entry &entry) { return entry.ticked || !entry.mayTick(); });
    for (Entry &entry : m_entries)
        entry.ticked = !all && entry.mayTick();
    columnsChanged(Tick, Tick);
    Q_EMIT ticksChanged();
}

// What failed stays ticked, to be sent again; what may have arrived counts as told, and whether it is sent
// again is for the user to decide.
void MailChoice::takeResults(const std::vector<MailResult> &results) {
    auto result = results.begin();
    for (Entry &entry : m_entries) {
        if (!entry.ticked || result == results.end())
            continue;
        entry.sent = result->wasSent();
        if (result->kind == MailResult::Uncertain)
            for (MailRow &row : entry.recipient.rows)
                row.sent = true;
        entry.ticked = result->kind == MailResult::Failed || result->kind == MailResult::NotTried;
        entry.note = noteOf(*result);
        ++result;
    }
    allChanged();
    Q_EMIT ticksChanged();
}

QString MailChoice::text(const Entry &entry, int column) const {
    const MailRecipient &recipient = entry.recipient;
    switch (column) {
    case Number:
        return QString::number(recipient.counsellor.nIDNo);
    case Name:
        return recipient.counsellor.cName;
    case Address:
        return recipient.counsellor.cMail1;
    case Patients:
        return u"%1 名"_s.arg(recipient.patients());
    case Note:
        if (!entry.note.isEmpty() || !recipient.hindrance.isEmpty())
            return entry.note.isEmpty() ? recipient.hindrance : entry.note;
        return recipient.toldBefore() == 0 ? QString() : u"以前に送信済 %1 名"_s.arg(recipient.toldBefore());
    default:
        return {};
    }
}

QVariant MailChoice::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Entry &shown = entry(index.row());
    if (role == Qt::DisplayRole)
        return text(shown, index.column());
    if (role == Qt::CheckStateRole && index.column() == Tick && shown.mayTick())
        return shown.ticked ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::TextAlignmentRole && (index.column() == Number || index.column() == Patients))
        return int(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

// A row that cannot be ticked has no box, and its remark says why: it is to be read like any other.
Qt::ItemFlags MailChoice::flags(const QModelIndex &index) const {
    const Qt::ItemFlags plain = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    return index.isValid() && index.column() == Tick && mayTick(index.row()) ? plain | Qt::ItemIsUserCheckable
                                                                             : plain;
}

bool MailChoice::setData(const QModelIndex &index, const QVariant &value, int role) {
    if (role != Qt::CheckStateRole || !flags(index).testFlag(Qt::ItemIsUserCheckable))
        return false;
    if (entry(index.row()).ticked != (value.toInt() == Qt::Checked))
        toggle(index.row());
    return true;
}
