#pragma once

#include <QString>

class ConsentListModel;
class QWidget;
class cT_ADODB;
struct Environment;

/// What a screen that the list opens is given.
struct ListOpening {
    Environment &environment;
    cT_ADODB &db;
    ConsentListModel &model;
    int currentRecord; ///< −1 when the list is empty
    QWidget *parent;
};

/// Opens a screen and waits until it is closed; true when rows were written and the list has to be read
/// again.
using OpenScreen = bool (*)(const ListOpening &opening);

/// The screen of a command of the list; null when the command opens none.
OpenScreen screenOf(const QString &command);
