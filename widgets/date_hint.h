#pragma once

#include <QListWidget>

/// Lines under a box that tell what typed text means; of several the user takes one. It lies in the box's
/// window and never takes the focus.
class DateHint : public QListWidget {
public:
    /// The hint goes with the box's window.
    explicit DateHint(QWidget &box);

    /// Shows lines, none of them marked; without lines it goes.
    void say(const QStringList &lines);

private:
    void place();

    QWidget &m_box;
};
