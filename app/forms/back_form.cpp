#include "app/forms/back_form.h"

#include <QCloseEvent>
#include <QDir>
#include <QLabel>
#include <QTimerEvent>
#include <QVBoxLayout>
#include <utility>

using namespace Qt::Literals::StringLiterals;

frmBack::frmBack(const QString &picture) : m_file(picture), m_wall(new QLabel(this)) {
    setObjectName(u"frmBack"_s);
    setWindowTitle(u"背景"_s);
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnBottomHint |
                   Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);

    m_wall->setObjectName(u"ImgWall"_s);
    m_wall->setAlignment(Qt::AlignCenter);
    m_wall->setMinimumSize(1, 1); // a label asks for the size of its picture
    m_wall->setAutoFillBackground(true);
    m_wall->setBackgroundRole(QPalette::Mid);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_wall);
    m_wall->installEventFilter(this);
}

QString frmBack::findPicture(const QStringList &folders) {
    for (const QString &name : folders) {
        const QDir folder(name);
        const QStringList found = folder.entryList({u"ImgWall.*"_s}, QDir::Files | QDir::Readable);
        if (!found.isEmpty())
            return folder.filePath(found.front());
    }
    return {};
}

// A large picture takes as long to show as a screen. It waits until the bare wall has been painted, and what
// stands in front with it.
bool frmBack::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Paint && !m_file.isEmpty())
        m_afterPainting.start(0, this);
    return QWidget::eventFilter(watched, event);
}

void frmBack::timerEvent(QTimerEvent *event) {
    if (event->timerId() != m_afterPainting.timerId())
        return QWidget::timerEvent(event);
    m_afterPainting.stop();
    if (m_picture.load(std::exchange(m_file, {})))
        fit();
}

void frmBack::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    fit();
}

void frmBack::fit() {
    if (!m_picture.isNull())
        m_wall->setPixmap(m_picture.scaled(size(), Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation));
}

void frmBack::closeEvent(QCloseEvent *event) {
    // The background goes with the run, not before.
    event->ignore();
}
