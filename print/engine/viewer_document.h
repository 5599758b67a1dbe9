#pragma once

#include "print/engine/wfd_print.h"

#include <vector>

struct Environment;

/// The document object on machines without the engine's automation: each of its actions hands the viewer a
/// command file, WfdCom.dat in the work folder.
class ViewerDocument : public WfdDocument {
public:
    explicit ViewerDocument(const Environment &environment) : m_environment(environment) {}

    /// Makes one for the engine's class name.
    static WfdDocumentMaker maker(const Environment &environment);

    void Title(const QString &title) override { m_title = title; }
    /// The viewer opens its window as it was left.
    void WindowStyle(int) override {}
    short SetDataText(const QString &name, const QString &path, const QString &separator,
                      const QString &quote, int headerless) override;
    short Open(const QString &layout) override;
    short ShowWindow(int style) override;
    /// Pages and printer cannot be chosen through a command file: anything but all pages on the usual
    /// printer is refused.
    short PrintOutBk(int first, int last, const QString &printer) override;
    short PrintOutFromDialog() override;
    QString sErrMsg() const override { return m_error; }

private:
    struct Source {
        QString name, path;
        bool headerless;
    };

    short hand(const QString &action);

    const Environment &m_environment;
    QString m_title;
    QString m_layout;
    std::vector<Source> m_sources;
    QString m_error;
};
