#pragma once

#include <QString>

class QPushButton;
class QWidget;

/// A button that says its key: 登録(F5). Enter presses it only where a form makes it the default one.
/// @param name its objectName
/// @param key as QKeySequence reads it
/// @param hint what it does, for the tip
QPushButton *keyButton(const QString &name, const QString &caption, const QString &key, const QString &hint,
                       QWidget *parent);
