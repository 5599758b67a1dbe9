#include "masters/master_inputs.h"

#include "app/base/dates.h"
#include "masters/postal_box.h"
#include "widgets/code_box.h"
#include "widgets/date_box.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPlainTextEdit>

using namespace Qt::Literals::StringLiterals;

QWidget *makeMasterInput(const MasterField &field, bool mayBeEmpty) {
    switch (field.kind) {
    case MasterField::Number:
    case MasterField::Code: {
        auto *box = new CodeBox;
        box->setDigits(field.bytes);
        return box;
    }
    case MasterField::Suggested: {
        auto *choice = new QComboBox;
        choice->setEditable(true);
        choice->setInsertPolicy(QComboBox::NoInsert);
        choice->setCompleter(nullptr); // a text stays as it is typed
        choice->addItems(field.proposals);
        return choice;
    }
    case MasterField::Memo: {
        auto *memo = new QPlainTextEdit;
        memo->setTabChangesFocus(true);
        memo->setFixedHeight(memo->fontMetrics().lineSpacing() * 3 + memo->fontMetrics().height());
        return memo;
    }
    case MasterField::PostalCode:
        return new PostalBox;
    case MasterField::Choice: {
        auto *choice = new QComboBox;
        if (mayBeEmpty)
            choice->addItem(QString(), QString());
        for (const QString &proposal : field.proposals)
            choice->addItem(proposal.section(u' ', 1), proposal.section(u' ', 0, 0));
        return choice;
    }
    case MasterField::Date:
        return new DateBox;
    case MasterField::Tick:
        return new QCheckBox(field.caption);
    default:
        return new QLineEdit;
    }
}

QString textIn(const QWidget *widget) {
    if (const auto *date = qobject_cast<const DateBox *>(widget))
        return date->date().isValid() ? dateText(date->date()) : date->text().trimmed();
    if (const auto *tick = qobject_cast<const QCheckBox *>(widget))
        return tick->isChecked() ? u"1"_s : u"0"_s;
    if (const auto *choice = qobject_cast<const QComboBox *>(widget))
        return choice->isEditable() ? choice->currentText().trimmed() : choice->currentData().toString();
    if (const auto *memo = qobject_cast<const QPlainTextEdit *>(widget))
        return memo->toPlainText().trimmed().replace(u'\n', u"\r\n"_s);
    return static_cast<const QLineEdit *>(widget)->text().trimmed();
}

void showIn(QWidget *widget, const QString &text) {
    if (auto *tick = qobject_cast<QCheckBox *>(widget))
        tick->setChecked(text.toInt() != 0);
    else if (auto *choice = qobject_cast<QComboBox *>(widget); choice && !choice->isEditable()) {
        if (choice->findData(text) < 0)
            choice->addItem(text, text); // what the program has no words for stays
        choice->setCurrentIndex(choice->findData(text));
    } else if (choice) {
        choice->setCurrentIndex(choice->findText(text)); // Enter would bring another one's text back
        choice->setEditText(text);
    } else if (auto *memo = qobject_cast<QPlainTextEdit *>(widget))
        memo->setPlainText(QString(text).remove(u'\r'));
    else if (auto *line = static_cast<QLineEdit *>(widget)) {
        line->setText(text);
        line->setCursorPosition(0);
    }
}
