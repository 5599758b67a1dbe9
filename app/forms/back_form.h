#pragma once

#include <QBasicTimer>
#include <QPixmap>
#include <QWidget>

class QLabel;

/// The background of a run: a wall paper that stays below every other window and never takes the focus.
class frmBack : public QWidget {
public:
    /// @param picture file of the wall paper; empty or unreadable: the desktop's palette
    explicit frmBack(const QString &picture);

    /// The picture ImgWall of the first folder that has one, whatever its format; empty without.
    static QString findPicture(const QStringList &folders);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void fit();

    QString m_file; ///< of the picture, until it is loaded
    QBasicTimer m_afterPainting;
    QPixmap m_picture;
    QLabel *m_wall;
};
