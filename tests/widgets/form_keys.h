#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QTest>
#include <algorithm>
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

/// Presses a button of an open window by its key; a shortcut's click comes a moment after the key.
inline void pressButton(QWidget &window, Qt::Key key) {
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, key);
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const auto buttons = window.findChildren<QAbstractButton *>();
        return std::ranges::none_of(buttons, &QAbstractButton::isDown);
    }));
}
