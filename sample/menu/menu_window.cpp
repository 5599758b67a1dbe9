#include "sample/menu/menu_window.h"

#include "app/base/messages.h"
#include "app/base/processes.h"

#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

MenuWindow::MenuWindow(const MenuFolders &folders, Processes &processes, Messages &messages,
                       bool printingFirst)
    : m_folders(folders), m_processes(processes), m_messages(messages) {
    setObjectName(u"frmMenu"_s);
    setWindowTitle(u"業務メニュー"_s);
    new QVBoxLayout(this);
    auto *heading = new QLabel(u"業務を選んでください。"_s, this);
    layout()->addWidget(heading);

    QPushButton *list = addCommand(u"cmdList"_s, u"同意書管理(&1)　[F1]"_s, u"F1"_s);
    QPushButton *print = addCommand(u"cmdPrint"_s, u"同意書印刷(&2)　[F2]"_s, u"F2"_s);
    QPushButton *end = addCommand(u"cmdEnd"_s, u"終了(&X)　[F12]"_s, u"F12"_s);
    connect(list, &QPushButton::clicked, this, [this] { start(u"1"_s); });
    connect(print, &QPushButton::clicked, this, [this] { start(u"0"_s); });
    connect(end, &QPushButton::clicked, this, &QWidget::close);
    (printingFirst ? print : list)->setFocus();
}

QPushButton *MenuWindow::addCommand(const QString &name, const QString &text, const QString &key) {
    auto *button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setAutoDefault(true); // Enter presses the command that has the focus
    button->setMinimumWidth(button->fontMetrics().horizontalAdvance(u'国') * 20);
    button->setMinimumHeight(button->fontMetrics().height() * 2);
    // The window takes no text: the letter in brackets counts without Alt too.
    for (const QKeySequence &keys : {QKeySequence(key), QKeySequence(button->shortcut()[0].key())})
        connect(new QShortcut(keys, this), &QShortcut::activated, button, [button] { button->click(); });
    layout()->addWidget(button);
    return button;
}

void MenuWindow::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

void MenuWindow::start(const QString &mode) {
    for (const QString &folder : std::as_const(m_folders.programs))
        for (const QString &name : {u"douisho"_s, u"douisho.exe"_s}) {
            const QString program = QDir(folder).filePath(name);
            if (QFileInfo(program).isFile() && m_processes.start(program, {mode}, m_folders.installation)) {
                close();
                return;
            }
        }
    m_messages.warn(u"実行ファイルが見つかりません。"_s, u"実行ファイルエラー！"_s);
}
