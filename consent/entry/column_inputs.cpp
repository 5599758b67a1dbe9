#include "consent/entry/column_inputs.h"

#include "widgets/code_box.h"
#include "widgets/date_box.h"

#include <QCheckBox>
#include <QComboBox>
#include <QScopedValueRollback>
#include <QTabWidget>

using namespace Qt::Literals::StringLiterals;

ColumnInputs::ColumnInputs(QWidget *form) : QObject(form) {
    for (QWidget *input : form->findChildren<QWidget *>()) {
        const QString named = input->property("column").toString();
        const QString column = named.isEmpty() ? input->objectName() : named;
        if (isColumn(column))
            join(input, column);
    }
}

void ColumnInputs::join(QWidget *input, const QString &column) {
    const auto tell = [this, column](const QVariant &value) {
        if (!m_showing)
            Q_EMIT entered(column, value);
    };
    if (auto *tick = qobject_cast<QCheckBox *>(input))
        connect(tick, &QCheckBox::toggled, this, [tell](bool on) { tell(on ? 1 : 0); });
    else if (auto *choice = qobject_cast<QComboBox *>(input))
        connect(choice, &QComboBox::currentIndexChanged, this, tell);
    else if (auto *date = qobject_cast<DateBox *>(input))
        connect(date, &DateBox::dateChanged, this,
                [tell](const QDate &day) { tell(day.isValid() ? QVariant(day) : QVariant()); });
    else if (auto *number = qobject_cast<CodeBox *>(input))
        connect(number, &QLineEdit::editingFinished, this, [tell, number] {
            if (number->isModified())
                tell(number->number() > 0 ? QVariant(int(number->number())) : QVariant());
        });
    else if (auto *text = qobject_cast<QLineEdit *>(input))
        connect(text, &QLineEdit::textEdited, this, tell);
    else
        return;
    m_inputs.append({input, column});
}

void ColumnInputs::show(const ConsentDraft &draft) {
    const QScopedValueRollback showing(m_showing, true);
    for (const Input &input : m_inputs) {
        const QVariant value = columnValue(draft, input.column);
        if (auto *tick = qobject_cast<QCheckBox *>(input.widget)) {
            tick->setChecked(value.toInt() != 0);
        } else if (auto *choice = qobject_cast<QComboBox *>(input.widget)) {
            choice->setCurrentIndex(value.toInt());
        } else if (auto *date = qobject_cast<DateBox *>(input.widget)) {
            if (!date->hasWrongInput() && date->date() != value.toDate())
                date->setDate(value.toDate());
        } else if (auto *number = qobject_cast<CodeBox *>(input.widget)) {
            number->setNumber(value.toInt());
        } else if (auto *text = qobject_cast<QLineEdit *>(input.widget)) {
            if (text->text() != value.toString()) {
                text->setText(value.toString());
                text->setCursorPosition(0);
            }
        }
    }
}

bool ColumnInputs::settle() {
    for (const Input &input : m_inputs) {
        auto *date = qobject_cast<DateBox *>(input.widget);
        if (date && !date->settle()) {
            goTo(date);
            return false;
        }
        if (auto *number = qobject_cast<CodeBox *>(input.widget); number && number->hasFocus())
            Q_EMIT number->editingFinished();
    }
    return true;
}

QWidget *ColumnInputs::input(QStringView column) const {
    QWidget *hidden = nullptr;
    for (const Input &input : m_inputs) {
        if (input.column != column || !input.widget->isEnabled())
            continue;
        if (input.widget->isVisible())
            return input.widget;
        hidden = input.widget;
    }
    return hidden;
}

void ColumnInputs::goTo(QWidget *input) {
    for (QWidget *page = input; page->parentWidget(); page = page->parentWidget()) {
        // A page lies in the stack inside its tab widget.
        auto *tabs = qobject_cast<QTabWidget *>(page->parentWidget()->parentWidget());
        if (tabs && tabs->indexOf(page) >= 0)
            tabs->setCurrentWidget(page);
    }
    input->setFocus(Qt::OtherFocusReason);
    if (auto *line = qobject_cast<QLineEdit *>(input))
        line->selectAll();
}
