#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QLabel>

/// One line in the foot of a window that says what has come of a command. It goes after some seconds, or with
/// the first key or click once there was time to read it; screen readers are told. Of a
/// window that closes meanwhile it is said in the one below.
class FootLine : public QLabel {
    Q_OBJECT
public:
    explicit FootLine(QWidget *window);

    /// The line of a window. A window without one gets it below its contents; null where nothing can be laid
    /// there.
    static FootLine *of(QWidget *window);

    void say(const QString &text);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void show(const QString &text);

    QBasicTimer m_end;
    QElapsedTimer m_said;
};
