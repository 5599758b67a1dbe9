#include "consent/settings/staff_filter_form.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "consent/settings/staff_filter_query.h"
#include "search/picked_list.h"

#include <QCheckBox>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

QPushButton *button(const QString &name, const QString &caption, const QString &key) {
    auto *made = new QPushButton(caption);
    made->setObjectName(name);
    made->setShortcut(QKeySequence(key));
    made->setAutoDefault(false);
    return made;
}

} // namespace

frmTantouExtra::frmTantouExtra(Environment &environment, cT_ADODB &db, QWidget *parent)
    : QDialog(parent),
      m_environment(environment),
      m_db(db),
      m_search(db, environment),
      m_list(new PickedList(environment.messages, this)),
      m_inOrder(new QCheckBox(u"一覧もこの順に並べる(&O)"_s, this)) {
    setObjectName(u"frmTantouExtra"_s);
    setWindowTitle(u"施術者の絞り込み"_s);
    m_list->findChild<QWidget *>(u"txtPickNo"_s)->setObjectName(u"numTantou"_s);
    m_list->findChild<QWidget *>(u"btnPick"_s)->setObjectName(u"btnStaffSelect"_s);
    m_inOrder->setObjectName(u"chkJun"_s);
    layOut();
    connect(m_list, &PickedList::changed, this, [this] { iRefreshView(); });
}

void frmTantouExtra::layOut() {
    QPushButton *up = button(u"cmdSort_0"_s, u"上へ (F7)"_s, u"F7"_s);
    QPushButton *down = button(u"cmdSort_1"_s, u"下へ (F8)"_s, u"F8"_s);
    QPushButton *select = button(u"cmdSelect"_s, u"決定 (F5)"_s, u"F5"_s);
    QPushButton *end = button(u"cmdEnd"_s, u"閉じる (F12)"_s, u"F12"_s);
    auto *sorts = new QVBoxLayout;
    sorts->addStretch();
    sorts->addWidget(up);
    sorts->addWidget(down);
    auto *lists = new QHBoxLayout;
    lists->addWidget(m_list, 1);
    lists->addLayout(sorts);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_inOrder);
    buttons->addStretch();
    buttons->addWidget(select);
    buttons->addWidget(end);
    auto *all = new QVBoxLayout(this);
    all->addLayout(lists);
    all->addLayout(buttons);
    connect(up, &QPushButton::clicked, this, [this] { iTantouSort(-1); });
    connect(down, &QPushButton::clicked, this, [this] { iTantouSort(1); });
    connect(select, &QPushButton::clicked, this, [this] { accept(); });
    connect(end, &QPushButton::clicked, this, [this] { reject(); });
}

short frmTantouExtra::iControlInit(const std::vector<CodeName> &staff, bool inOrder) {
    CodeSearch search = codeSearch(m_search, m_environment.messages);
    search.lookup = [this](const QString &number) { return vCheckStaff(number); };
    m_list->setSearch(u"施術者(&T)"_s, search, staff);
    m_inOrder->setChecked(inOrder);
    m_staffBefore = staff;
    m_inOrderBefore = inOrder;
    m_list->findChild<QWidget *>(u"numTantou"_s)->setFocus();
    return iRefreshView();
}

// Without a choice the list is not limited, and has no order of theirs.
short frmTantouExtra::iRefreshView() {
    const size_t chosen = staff().size();
    setWindowTitle(chosen == 0 ? u"施術者の絞り込み（すべての施術者）"_s
                               : u"施術者の絞り込み（%1 名）"_s.arg(chosen));
    m_inOrder->setEnabled(chosen > 0);
    for (const QString &name : {u"cmdSort_0"_s, u"cmdSort_1"_s})
        findChild<QPushButton *>(name)->setEnabled(chosen > 0);
    return 0;
}

short frmTantouExtra::iTantouSort(int by) {
    if (m_list->moveCurrent(by))
        return 0;
    m_environment.messages.warn(by < 0 ? u"これ以上の上への移動はできません。"_s
                                       : u"これ以上の下への移動はできません。"_s,
                                u"カーソル移動"_s);
    return -1;
}

CodeLookup frmTantouExtra::vCheckStaff(const QString &number) {
    const Result<std::optional<QString>> name =
        readStaffName(m_db, m_environment.branch, number.toLongLong());
    if (!name)
        return CodeLookup::failure(name.reason());
    if (!*name)
        return CodeLookup::refused(u"該当施術者なし"_s);
    return {{QString::number(number.toLongLong()), **name}, {}};
}

const std::vector<CodeName> &frmTantouExtra::staff() const {
    return m_list->rows();
}

bool frmTantouExtra::inOrder() const {
    return m_inOrder->isChecked();
}

void frmTantouExtra::accept() {
    if (m_list->settle())
        QDialog::accept();
}

void frmTantouExtra::reject() {
    const bool changed = staff() != m_staffBefore || inOrder() != m_inOrderBefore;
    const Answer answer = changed ? m_environment.messages.askToSave() : Answer::No;
    if (answer == Answer::Yes)
        accept();
    else if (answer == Answer::No)
        QDialog::reject();
}
