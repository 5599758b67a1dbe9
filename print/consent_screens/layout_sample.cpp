#include "print/consent_screens/layout_sample.h"

#include "app/base/environment.h"
#include "app/base/folders.h"
#include "widgets/layout_preview.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

QString fileOf(const Environment &environment, const RegisteredForm &layout) {
    return Folders::file(environment.folders.system(), layout.file);
}

} // namespace

LayoutSample::LayoutSample(const Environment &environment, QString letterFile)
    : m_environment(environment), m_letterFile(std::move(letterFile)) {}

void LayoutSample::show(ConsentDocument document, const RegisteredForm &layout,
                        const SampleContents &contents, LayoutPreview &preview) {
    preview.clear();
    const QString file = fileOf(m_environment, layout);
    if (!QFileInfo(file).isFile()) {
        preview.showProblem(u"書式ファイル「%1」がありません。"_s.arg(QDir::toNativeSeparators(file)));
        return;
    }
    auto engine = std::make_unique<cls_WfdPrintExe>(m_environment);
    const Result<> written = write(document, layout, contents, *engine);
    if (!written)
        preview.showProblem(written.reason());
    else if (engine->iPreviewData([&](const QString &commands) { preview.showCommandFile(commands); }) != 0)
        preview.showProblem(engine->sErrMsg());
    m_shown = std::move(engine);
}

Result<> LayoutSample::putOut(ConsentDocument document, const RegisteredForm &layout,
                              const SampleContents &contents, PrintWay way) const {
    cls_WfdPrintExe engine(m_environment);
    if (const Result<> written = write(document, layout, contents, engine); !written)
        return written;
    return engine.iPutOut(way) == 0 ? Result<>() : Failure{engine.sErrMsg()};
}

DocumentNames LayoutSample::namesOf(ConsentDocument document) const {
    const QString title = u"同意書印刷"_s;
    return document == ConsentDocument::Request
               ? DocumentNames{title, u"同意依頼書"_s, m_letterFile}
               : DocumentNames{title, u"同意書データ"_s, u"同意書データ.csv"_s};
}

Result<> LayoutSample::write(ConsentDocument document, const RegisteredForm &layout,
                             const SampleContents &contents, cls_WfdPrintExe &engine) const {
    const DocumentNames names = namesOf(document);
    engine.iInit(QDir::toNativeSeparators(fileOf(m_environment, layout)), names.title);
    return document == ConsentDocument::Request
               ? writeSampleLetter(m_environment, layout, names, engine)
               : writeSampleForm(m_environment, layout, contents, names, engine);
}
