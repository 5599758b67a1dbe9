#pragma once

#include "viewer/document/pages.h"
#include "viewer/drawing/pictures.h"
#include "viewer/drawing/sheet.h"

/// Works out one page of a report.
class SheetBuilder {
public:
    struct Tools {
        Fonts &fonts;
        Pictures &pictures;
    };

    SheetBuilder(const Report &report, const Items &items, const Tools &tools, const PageFacts &facts);

    Sheet build(const PagePlace &place);

private:
    void addWatermark(const RecordValues &values);
    void addList(const PagePlace &place);
    void addSections(Section::Kind kind, bool first, const RecordValues &values, QPointF *corner);
    void addSection(const Section &section, QPointF corner, const RecordValues &values);
    void add(const TextBox &box, QPointF corner, const RecordValues &values);
    void add(const LineShape &line, QPointF corner, const RecordValues &values);
    void add(const BoxShape &box, QPointF corner, const RecordValues &values);
    void add(const MarkShape &mark, QPointF corner, const RecordValues &values);
    void add(const ImageBox &image, QPointF corner, const RecordValues &values);

    const Report &m_report;
    const Layout &m_layout;
    const Items &m_items;
    Tools m_tools;
    const PageFacts &m_facts;
    Sheet m_sheet;
};
