#pragma once

#include <QStringList>
#include <QWidget>

class Messages;
class Processes;
class QPushButton;

/// Where the menu finds things.
struct MenuFolders {
    QString installation;
    QStringList programs; ///< folders in which the consent program is looked for, in order
};

/// Stand-in for the suite's menu program: starts the consent program in one of its two modes and goes, as
/// the program starts the menu again when it is done.
class MenuWindow : public QWidget {
public:
    /// @param printingFirst the printing command has the focus, as after a start with the argument 2
    MenuWindow(const MenuFolders &folders, Processes &processes, Messages &messages, bool printingFirst);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QPushButton *addCommand(const QString &name, const QString &text, const QString &key);
    void start(const QString &mode);

    MenuFolders m_folders;
    Processes &m_processes;
    Messages &m_messages;
};
