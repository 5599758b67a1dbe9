#include "app/forms/back_form.h"

#include <QCloseEvent>
#include <QDir>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

frmBack::frmBack(const QString &picture) : m_picture(picture), m_wall(new QLabel(this)) {
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

void frmBack::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    if (!m_picture.isNull())
        m_wall->setPixmap(m_picture.scaled(size(), Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation));
}

void frmBack::closeEvent(QCloseEvent *event) {
    // The background goes with the run, not before.
    event->ignore();
}
