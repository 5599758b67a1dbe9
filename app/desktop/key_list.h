#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

class QObject;
class QWidget;

/// A key and what it does in a window.
struct KeyLine {
    QString keys;
    QString what;
};

struct KeyGroup {
    QString title;
    QList<KeyLine> lines;
};

/// The keys that a window answers now, gathered from its menus, actions, buttons, shortcuts and the labels
/// that lead to an input: whatever is hidden or greyed is left out. A QShortcut is named by its whatsThis.
QList<KeyGroup> keysOf(const QWidget &window);

/// The letters that lead to the buttons and inputs of a window.
KeyGroup lettersOf(const QWidget &window);

/// What a key of the window presses or triggers; null where it has nothing enabled for it.
QObject *commandOf(const QWidget &window, const QKeySequence &key);
/// Does what the key of such a command does.
void activate(QObject &command);

/// A caption without its mnemonic and without a key in brackets: 登録(&R) and 登録(F5) are 登録.
QString plainCaption(QString caption);
