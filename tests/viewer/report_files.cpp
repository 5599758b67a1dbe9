#include "tests/viewer/report_files.h"

#include "app/base/codepage932.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

QByteArray ReportFiles::read(const QString &name) const {
    QFile file(at(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

void ReportFiles::write(const QString &name, const QByteArray &bytes) const {
    QFile file(at(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    file.write(bytes);
}

void ReportFiles::writeText(const QString &name, const QString &text) const {
    write(name, encode932(text).bytes);
}

void ReportFiles::writeForm() const {
    QImage logo(8, 8, QImage::Format_RGB32);
    logo.fill(Qt::blue);
    logo.save(at(u"logo.png"_s));
    write(u"form.wfd"_s, u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                         "<layout version=\"1\" title=\"様式\"><page>"
                         "<text x=\"20\" y=\"20\" w=\"160\" h=\"10\">見出し {氏名}</text>"
                         "<image x=\"20\" y=\"60\" w=\"20\" h=\"20\" item=\"QR\"/>"
                         "<image x=\"60\" y=\"60\" w=\"20\" h=\"20\" file=\"logo.png\"/>"
                         "</page></layout>\n"_s.toUtf8());
}

void ReportFiles::writeNames(const QString &name, const QStringList &names) const {
    QString text = u"\"氏名\",\"QR\"\r\n"_s;
    for (const QString &person : names) {
        QImage picture(4, 4, QImage::Format_RGB32);
        picture.fill(Qt::red);
        picture.save(at(person + u".png"_s));
        text += u"\"%1\",\"%2\"\r\n"_s.arg(person, at(person + u".png"_s));
    }
    writeText(name, text);
}

Ended runProgram(const QString &program, const QStringList &arguments) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &display : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s})
        environment.remove(display);
    process.setProcessEnvironment(environment);
    process.start(QDir(QCoreApplication::applicationDirPath()).filePath(program), arguments);
    const bool ended = process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit;
    return {ended ? process.exitCode() : -1, QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

QString textOfPdf(const QString &path) {
    QProcess process;
    process.start(u"pdftotext"_s, {path, u"-"_s});
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput());
}
