#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QTest>
#include <gtest/gtest.h>

/// Types text as an input method hands it over, Japanese included, which QTest::keyClicks cannot.
inline void typeText(QWidget *into, const QString &text) {
    for (const QChar c : text) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
        QApplication::sendEvent(into, &press);
    }
}

/// Shows a window and waits until it takes keys.
inline void showActive(QWidget &window) {
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}
