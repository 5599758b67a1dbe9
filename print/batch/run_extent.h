#pragma once

#include <QHash>
#include <QString>
#include <memory>
#include <optional>

class DataFile;
struct Layout;
enum class PrintWay;

/// Counts the pages of documents before they are made; each layout is read once.
class PageCount {
public:
    /// Adds a document's pages.
    /// @param layout full path
    /// @param dataName under which the layout knows the data
    void add(const QString &layout, const QString &dataName, const DataFile &data);
    /// The same for a document of one record.
    void addSingle(const QString &layout);

    /// 0 where a layout is none that can be counted: it is missing, or another engine's.
    int pages() const { return m_known ? m_pages : 0; }

private:
    std::shared_ptr<const Layout> layoutOf(const QString &path);
    /// Nothing where they cannot be counted.
    std::optional<int> pagesOf(const QString &layout, const QString &dataName, const QByteArray &bytes);
    void add(std::optional<int> pages);

    QHash<QString, std::shared_ptr<const Layout>> m_layouts;
    QHash<QString, std::optional<int>> m_singles;
    int m_pages = 0;
    bool m_known = true;
};

/// What a run is about to put out, as each asks before it begins.
struct RunExtent {
    qint64 rows = 0;   ///< that it is made from
    QString documents; ///< what comes out, and how much of it: 依頼書 8 通
    int pages = 0;     ///< 0: not known

    /// 対象 12 件：依頼書 8 通（8 ページ）を印刷します。よろしいですか？
    QString question(PrintWay way) const;
    /// The same as a statement.
    QString text(PrintWay way) const;
};
