#include "viewer/window/note_bar.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QToolButton>

using namespace Qt::Literals::StringLiterals;

namespace {

void showAll(const QStringList &notes, QWidget *parent) {
    auto *dialog = new QDialog(parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(u"帳票の注意"_s);
    auto *text = new QPlainTextEdit(notes.join(u'\n'));
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    auto *buttons = new QDialogButtonBox;
    buttons->addButton(u"閉じる(&C)"_s, QDialogButtonBox::RejectRole);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    auto *column = new QVBoxLayout(dialog);
    column->addWidget(text);
    column->addWidget(buttons);
    dialog->resize(parent->fontMetrics().height() * QSize(40, 20));
    dialog->show();
}

} // namespace

NoteBar::NoteBar(const QStringList &notes, QWidget *parent) : QFrame(parent) {
    setObjectName(u"notes"_s);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    auto *row = new QHBoxLayout(this);
    auto *text = new QLabel(u"注意 %L1 件： "_s.arg(notes.size()) + notes.value(0).section(u'\n', 0, 0));
    text->setObjectName(u"notesText"_s);
    text->setTextFormat(Qt::PlainText);
    // A long text gives way to the window, not the other way round.
    text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    text->setToolTip(notes.value(0));
    auto *all = new QToolButton;
    all->setText(u"詳細(&D)"_s);
    auto *close = new QToolButton;
    close->setText(u"閉じる"_s);
    row->addWidget(text, 1);
    row->addWidget(all);
    row->addWidget(close);
    connect(all, &QToolButton::clicked, this, [this, notes] { showAll(notes, this); });
    connect(close, &QToolButton::clicked, this, &QWidget::hide);
}
