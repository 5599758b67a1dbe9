#include "viewer/layout/layout_reader.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray bytesOf(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

void expectReadable(const QByteArray &xml, const QString &name) {
    Problem problem;
    EXPECT_TRUE(readLayout(xml, name, &problem)) << problem.sentence().toStdString();
}

TEST(LayoutExamples, OfThePageAboutTheFormatAreLayouts) {
    const QList<QByteArray> parts = bytesOf(QStringLiteral(DOUISHO_TOP "/docs/layout-format.md")).split('`');
    int examples = 0;
    for (const QByteArray &part : parts)
        if (part.startsWith("xml\n")) {
            expectReadable(part.mid(4), u"docs"_s);
            ++examples;
        }
    EXPECT_EQ(examples, 2);
}

TEST(LayoutExamples, OfTheSampleInstallationAreLayouts) {
    const QDir folder(QStringLiteral(DOUISHO_TOP "/setup/layouts"));
    const QStringList names = folder.entryList({u"*.wfd"_s});
    EXPECT_FALSE(names.isEmpty());
    for (const QString &name : names)
        expectReadable(bytesOf(folder.filePath(name)), name);
}

} // namespace
