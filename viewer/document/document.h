#pragma once

#include "viewer/data/data_table.h"
#include "viewer/document/picture_store.h"
#include "viewer/layout/layout.h"

#include <QRectF>
#include <QSizeF>
#include <memory>
#include <vector>

class QPainter;
struct Sheet;

struct ReportSource {
    QString name; ///< data name
    std::shared_ptr<const DataTable> table;
};

/// A value that is the same on every sheet; the name is section.item or section.subsection.item.
struct ItemValue {
    QString name;
    QString value;
};

/// One layout with its data.
struct Report {
    std::shared_ptr<const Layout> layout;
    QString title;
    QString folder;                               ///< where relative pictures lie
    std::shared_ptr<const PictureStore> pictures; ///< of a finished document; null: they are read from files
    std::vector<ReportSource> sources;
    std::vector<ItemValue> values;
    int repeatStart = 0;  ///< the page section, from 1, from which pages repeat for every record; 0: all
    QSizeF fallbackPaper; ///< mm; of layouts without a paper of their own
};

/// A run of characters on a page, for search and copying. Millimetres from the paper's corner.
struct TextRun {
    QRectF area;
    QString text;
};

/// Reports one after the other, page by page. Counting pages looks at the records only; a page is worked out
/// when it is looked at, and nothing of it is kept.
class Document {
public:
    Document() = default;
    Document(std::vector<Report> reports, const QString &title);

    const QString &title() const { return m_title; }
    const std::vector<Report> &reports() const { return m_reports; }
    int pageCount() const;
    /// The page worked out, for whoever draws it; it must not outlive the document.
    Sheet sheet(int page) const;
    /// Millimetres.
    QSizeF pageSize(int page) const;
    /// Draws a page from 0 at the painter's origin; the painter's unit must be one millimetre.
    void paint(QPainter &painter, int page) const;
    std::vector<TextRun> texts(int page) const;
    /// What is missing though the pages can be shown: items that no data have, pictures that are not there.
    QStringList warnings() const;

private:
    struct Workings;

    QString m_title;
    std::vector<Report> m_reports;
    std::shared_ptr<Workings> m_workings; ///< shared by copies; null without reports
};
