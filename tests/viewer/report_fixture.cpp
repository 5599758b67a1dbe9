#include "tests/viewer/report_fixture.h"

#include "app/base/codepage932.h"
#include "viewer/layout/layout_reader.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

std::shared_ptr<const Layout> layoutOf(const QByteArray &body, const QByteArray &attributes) {
    Problem problem;
    const auto layout =
        readLayout("<layout version='1' " + attributes + ">" + body + "</layout>", u"試験.wfd"_s, &problem);
    if (!layout)
        throw std::runtime_error(problem.sentence().toStdString());
    return std::make_shared<Layout>(*layout);
}

std::shared_ptr<const DataTable> tableOf(const QString &csv) {
    Problem problem;
    const auto table = DataTable::fromBytes(encode932(csv).bytes, u"試験.csv"_s, {}, &problem);
    if (!table)
        throw std::runtime_error(problem.sentence().toStdString());
    return table;
}

Report reportOf(const QByteArray &body, const QString &csv, const QByteArray &attributes) {
    Report report;
    report.layout = layoutOf(body, attributes);
    if (!csv.isEmpty())
        report.sources.push_back({u"データ"_s, tableOf(csv)});
    return report;
}

QString textOf(const Document &document, int page) {
    QStringList lines;
    for (const TextRun &run : document.texts(page))
        lines.append(run.text);
    return lines.join(u'\n');
}
