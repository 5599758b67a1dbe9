#include "search/staff_choice.h"

#include "app/base/messages.h"
#include "db/recordset.h"
#include "widgets/code_box.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>

using namespace Qt::Literals::StringLiterals;

StaffChoice::StaffChoice(CodeBox *number, QComboBox *names, Messages &messages, std::function<void()> changed)
    : QObject(number), m_number(number), m_names(names), m_messages(messages) {
    number->setDigits(6);
    number->installEventFilter(this);
    connect(number, &QLineEdit::textEdited, this, [this] { m_refused = -1; });
    connect(names, &QComboBox::currentIndexChanged, this, [this, changed = std::move(changed)](int index) {
        if (index < 0)
            return;
        m_number->setNumber(this->number());
        changed();
    });
}

void StaffChoice::offer(const Recordset &staff) {
    const int code = staff.column(u"nIDNo");
    const int name = staff.column(u"cName");
    const QSignalBlocker quiet(m_names);
    m_names->clear();
    m_names->addItem(u"（すべて）"_s, 0);
    for (int row = 0; row < staff.rowCount(); ++row)
        m_names->addItem(staff.text(row, code) + u"  "_s + staff.text(row, name), staff.number(row, code));
}

qint64 StaffChoice::number() const {
    return m_names->currentData().toLongLong();
}

bool StaffChoice::settle() {
    if (m_busy || m_number->number() == number())
        return !m_busy;
    if (const int index = m_names->findData(m_number->number()); index >= 0) {
        m_names->setCurrentIndex(index);
        return true;
    }
    const QScopedValueRollback busy(m_busy, true);
    m_refused = m_number->number();
    m_messages.warn(u"施術者の検索に失敗しました"_s);
    m_number->setFocus();
    m_number->selectAll();
    return false;
}

bool StaffChoice::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) && !settle()) {
            event->accept();
            return true;
        }
    } else if (event->type() == QEvent::FocusOut) {
        const auto reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
            reason == Qt::MouseFocusReason)
            QMetaObject::invokeMethod(
                this,
                [this] {
                    // A number that has been refused holds nobody in the box a second time.
                    if (m_number->number() == m_refused)
                        m_number->setNumber(number());
                    else if (m_number->isVisible())
                        settle();
                },
                Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}
