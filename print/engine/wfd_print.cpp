#include "print/engine/wfd_print.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Minimised with focus, as the command file's windows are asked for.
constexpr int windowStyle = 2;

const QString documentClass = u"wfrfv.Document.1"_s;

} // namespace

cls_WfdPrint::cls_WfdPrint(WfdDocumentMaker maker) : m_maker(std::move(maker)) {}

short cls_WfdPrint::iInit(const QString &title) {
    m_document = m_maker(documentClass);
    return on([&](WfdDocument &document) -> short {
        if (!title.isEmpty())
            document.Title(title);
        return 0;
    });
}

short cls_WfdPrint::iSetDataText(const QString &name, const QString &path) {
    return on([&](WfdDocument &document) { return document.SetDataText(name, path, {}, {}, 0); });
}

short cls_WfdPrint::iSetDataTextNoTitle(const QString &name, const QString &path) {
    return on([&](WfdDocument &document) { return document.SetDataText(name, path, {}, {}, 1); });
}

short cls_WfdPrint::iOpen(const QString &layout) {
    return on([&](WfdDocument &document) {
        document.WindowStyle(windowStyle);
        return document.Open(layout);
    });
}

short cls_WfdPrint::iPreview() {
    return on([](WfdDocument &document) { return document.ShowWindow(windowStyle); });
}

short cls_WfdPrint::iPrintBk() {
    return on([](WfdDocument &document) { return document.PrintOutBk(0, 0, {}); });
}

short cls_WfdPrint::iPrintDialog() {
    return on([](WfdDocument &document) { return document.PrintOutFromDialog(); });
}

short cls_WfdPrint::on(const std::function<short(WfdDocument &)> &operation) {
    if (!m_document) {
        m_error = u"帳票エンジンの「%1」がありません。"_s.arg(documentClass);
        return -1;
    }
    const short status = operation(*m_document);
    if (status != 0)
        m_error = m_document->sErrMsg();
    return status;
}
