#include "viewer/window/note_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QToolButton>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype mostListed = 30;

void showAll(const QStringList &notes, QWidget *parent) {
    QString text = notes.mid(0, mostListed).join(u"\n"_s);
    if (notes.size() > mostListed)
        text += u"\n（ほか %L1 件）"_s.arg(notes.size() - mostListed);
    auto *box = new QMessageBox(QMessageBox::Information, u"帳票の注意"_s, text, QMessageBox::Ok, parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setModal(false);
    box->show();
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
