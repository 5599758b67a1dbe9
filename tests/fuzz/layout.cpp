#include "viewer/data/data_table.h"
#include "viewer/document/document.h"
#include "viewer/drawing/sheet.h"
#include "viewer/layout/layout_reader.h"

#include <QGuiApplication>
#include <cmath>
#include <cstdlib>

namespace {

constexpr int pagesLookedAt = 3;

std::shared_ptr<const DataTable> records() {
    static const auto table =
        DataTable::fromBytes("a,b\r\n1,\"x y\"\r\n2,\"\"\r\n", QStringLiteral("a.csv"), {}, nullptr);
    return table;
}

void checkNumbers(const Sheet &sheet) {
    for (const auto &item : sheet.items)
        if (const auto *text = std::get_if<SheetText>(&item))
            if (!std::isfinite(text->area.x()) || !std::isfinite(text->area.y()))
                std::abort();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QGuiApplication application(*argc, *argv);
    return 0;
}

/// Reads a layout and works out its first pages.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    Problem problem;
    std::optional<Layout> layout = readLayout(bytes, QStringLiteral("a.wfd"), &problem);
    if (!layout) {
        if (problem.text.isEmpty())
            std::abort();
        return 0;
    }
    Report report;
    report.layout = std::make_shared<const Layout>(*std::move(layout));
    report.sources.push_back({QStringLiteral("d"), records()});
    const Document document({report}, {});
    for (int page = 0; page < std::min(document.pageCount(), pagesLookedAt); ++page)
        checkNumbers(document.sheet(page));
    return 0;
}
