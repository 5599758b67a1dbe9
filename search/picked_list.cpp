#include "search/picked_list.h"

#include "app/base/messages.h"
#include "app/desktop/key_list.h"
#include "widgets/code_box.h"

#include <QKeyEvent>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

PickedList::PickedList(Messages &messages, QWidget *parent)
    : QWidget(parent),
      m_code(new CodeBox(this)),
      m_pick(new QPushButton(this)),
      m_list(new QListWidget(this)),
      m_remove(new QPushButton(u"外す(Delete)"_s, this)),
      m_clear(new QPushButton(u"すべて外す"_s, this)) {
    m_pick->setObjectName(u"btnPick"_s);
    m_code->setObjectName(u"txtPickNo"_s);
    m_list->setObjectName(u"lstPicked"_s);
    m_remove->setObjectName(u"cmdPickRemove"_s);
    m_clear->setObjectName(u"cmdPickClear"_s);
    m_code->setToolTip(u"番号を入力して Enter。続けて何件でも入力できます。一覧から選ぶには ↓"_s);
    m_list->setAccessibleName(u"選んだ行"_s);
    m_list->setToolTip(u"Delete で外します"_s);
    auto *row = new QHBoxLayout;
    for (QWidget *control : std::initializer_list<QWidget *>{m_pick, m_code})
        row->addWidget(control);
    row->addStretch();
    for (QPushButton *button : {m_remove, m_clear})
        row->addWidget(button);
    for (QPushButton *button : {m_pick, m_remove, m_clear})
        button->setAutoDefault(false);
    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addLayout(row);
    all->addWidget(m_list);
    // The row itself tells the name.
    auto *name = new QLineEdit(this);
    name->hide();
    m_pair = new CodeNamePair(m_code, name, m_pick, {}, messages);
    connect(m_pair, &CodeNamePair::changed, this, &PickedList::add);
    connect(m_remove, &QPushButton::clicked, this, &PickedList::remove);
    connect(m_clear, &QPushButton::clicked, this, &PickedList::clear);
    m_list->installEventFilter(this);
    setFocusProxy(m_code);
    setFocusPolicy(m_code->focusPolicy());
    show(-1);
}

void PickedList::setSearch(const QString &caption, CodeSearch search, const std::vector<CodeName> &rows) {
    m_pick->setText(caption);
    m_code->setAccessibleName(plainCaption(caption));
    m_pair->setSearch(std::move(search));
    m_pair->clear();
    m_rows = rows;
    show(int(m_rows.size()) - 1);
}

QStringList PickedList::codes() const {
    QStringList codes;
    for (const CodeName &row : m_rows)
        codes += row.code;
    return codes;
}

bool PickedList::settle() {
    return m_pair->settle();
}

// The box is emptied once the pair is through with the row.
void PickedList::add(const CodeName &row) {
    if (row.code.isEmpty())
        return;
    auto place = std::ranges::find(m_rows, row.code, &CodeName::code);
    if (place == m_rows.end())
        place = m_rows.insert(place, row);
    show(int(place - m_rows.begin()));
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_pair->clear();
            m_code->setFocus();
        },
        Qt::QueuedConnection);
}

void PickedList::remove() {
    const int current = m_list->currentRow();
    if (current < 0)
        return;
    m_rows.erase(m_rows.begin() + current);
    show(std::min(current, int(m_rows.size()) - 1));
}

bool PickedList::moveCurrent(int by) {
    const int current = m_list->currentRow(), to = current + by;
    if (current < 0 || to < 0 || to >= int(m_rows.size()))
        return false;
    std::swap(m_rows[size_t(current)], m_rows[size_t(to)]);
    show(to);
    return true;
}

void PickedList::clear() {
    m_rows.clear();
    show(-1);
    m_code->setFocus();
}

void PickedList::show(int current) {
    m_list->clear();
    for (const CodeName &row : m_rows)
        m_list->addItem(row.code + u'　' + row.name);
    m_list->setCurrentRow(current);
    for (QPushButton *button : {m_remove, m_clear})
        button->setEnabled(!m_rows.empty());
    Q_EMIT changed();
}

bool PickedList::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent *>(event)->key() != Qt::Key_Delete)
        return QWidget::eventFilter(watched, event);
    remove();
    return true;
}
