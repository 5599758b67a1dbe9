#include "app/desktop/program_icon.h"

#include <QApplication>
#include <QIcon>

using namespace Qt::Literals::StringLiterals;

void showIcon(const QString &picture, const QString &desktopEntry) {
    QIcon icon;
    for (const int size : {16, 32, 48, 128})
        icon.addFile(u":/icons/%1-%2.png"_s.arg(picture).arg(size), QSize(size, size));
    QApplication::setWindowIcon(icon);
    QGuiApplication::setDesktopFileName(desktopEntry);
}
