#include "print/batch/run_extent.h"

#include "print/engine/data_file.h"
#include "print/engine/wfd_print_exe.h"
#include "viewer/document/document.h"
#include "viewer/layout/layout_reader.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;

void PageCount::add(const QString &layout, const QString &dataName, const DataFile &data) {
    add(pagesOf(layout, dataName, data.bytes()));
}

void PageCount::addSingle(const QString &layout) {
    auto known = m_singles.constFind(layout);
    if (known == m_singles.cend())
        known = m_singles.insert(layout, pagesOf(layout, {}, "x\r\n1\r\n"));
    add(*known);
}

void PageCount::add(std::optional<int> pages) {
    m_known = m_known && pages;
    m_pages += pages.value_or(0);
}

std::shared_ptr<const Layout> PageCount::layoutOf(const QString &path) {
    if (const auto known = m_layouts.constFind(path); known != m_layouts.cend())
        return *known;
    QFile file(path);
    Problem problem;
    std::shared_ptr<const Layout> layout;
    if (file.open(QIODevice::ReadOnly))
        if (std::optional<Layout> read = readLayout(file.readAll(), path, &problem))
            layout = std::make_shared<const Layout>(std::move(*read));
    return m_layouts[path] = layout;
}

std::optional<int> PageCount::pagesOf(const QString &layout, const QString &dataName,
                                      const QByteArray &bytes) {
    Problem problem;
    Report report;
    report.layout = layoutOf(layout);
    report.sources = {{dataName, DataTable::fromBytes(bytes, dataName, {}, &problem)}};
    if (!report.layout || !report.sources[0].table)
        return {};
    return Document({report}, {}).pageCount();
}

QString RunExtent::text(PrintWay way) const {
    return u"対象 %L1 件：%2"_s.arg(rows).arg(documents) +
           (pages > 0 ? u"（%L1 ページ）"_s.arg(pages) : QString()) +
           (way == PrintWay::Print ? u"を印刷します。"_s : u"を表示します。"_s);
}

QString RunExtent::question(PrintWay way) const {
    return text(way) + u"よろしいですか？"_s;
}
