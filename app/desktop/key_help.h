#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QFrame>
#include <QObject>

/// The keys of a window laid over it, with the window's whatsThis below them. Any key and any click closes
/// it.
class KeySheet : public QFrame {
    Q_OBJECT
public:
    explicit KeySheet(QWidget *window);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    /// Lays the keys out in columns of a text scaled by `scale`.
    QWidget *makeColumns(int columns, double scale);
    void layOut(QWidget &window);
    /// Whether the key is still the one that has shown the sheet.
    bool isStillHeld(const QKeyEvent &event);

    QElapsedTimer m_held; ///< since F1 was last heard of
};

/// Shows the keys of the window in use, in every window of the program: by Shift+F1, by F1 held for a second,
/// and by F1 alone where the window has no command of its own on it. A window's own F1 counts when the key is
/// let go.
class KeyHelp : public QObject {
public:
    KeyHelp();

    static void show(QWidget &window);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    bool pressed(bool repeated, bool shift);
    bool released(bool repeated);

    QBasicTimer m_held;
    QBasicTimer m_letGo; ///< a key that repeats may look let go for a moment
};
