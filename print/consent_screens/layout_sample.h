#pragma once

#include "db/tables/consent_layout_settings.h"
#include "print/consent_screens/sample_document.h"
#include "print/engine/wfd_print_exe.h"

#include <memory>

class LayoutPreview;

/// Fills layouts with an invented patient: inside a screen, in the viewer or on paper.
class LayoutSample {
public:
    /// @param letterFile name of the data file of request letters
    LayoutSample(const Environment &environment, QString letterFile);

    /// What is wrong stands in the pages' place.
    void show(ConsentDocument document, const RegisteredForm &layout, const SampleContents &contents,
              LayoutPreview &preview);
    Result<> putOut(ConsentDocument document, const RegisteredForm &layout, const SampleContents &contents,
                    PrintWay way) const;

private:
    DocumentNames namesOf(ConsentDocument document) const;
    Result<> write(ConsentDocument document, const RegisteredForm &layout, const SampleContents &contents,
                   cls_WfdPrintExe &engine) const;

    const Environment &m_environment;
    QString m_letterFile;
    std::unique_ptr<cls_WfdPrintExe> m_shown; ///< its pictures are read when pages are drawn
};
