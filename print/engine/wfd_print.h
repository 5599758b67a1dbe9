#pragma once

#include <QString>
#include <functional>
#include <memory>

/// The report engine's document object. Every operation gives 0, or −1 with sErrMsg.
class WfdDocument {
public:
    virtual ~WfdDocument() = default;

    virtual void Title(const QString &title) = 0;
    virtual void WindowStyle(int style) = 0;
    /// @param headerless 1 when the file has no header row
    virtual short SetDataText(const QString &name, const QString &path, const QString &separator,
                              const QString &quote, int headerless) = 0;
    virtual short Open(const QString &layout) = 0;
    virtual short ShowWindow(int style) = 0;
    /// Prints pages without a dialog; 0 and 0 mean all, an empty printer the usual one.
    virtual short PrintOutBk(int first, int last, const QString &printer) = 0;
    virtual short PrintOutFromDialog() = 0;
    virtual QString sErrMsg() const = 0;
};

/// Makes the document object of a class name; null when the engine has no such class.
using WfdDocumentMaker = std::function<std::unique_ptr<WfdDocument>(const QString &className)>;

/// Drives the report engine through its document object. Every operation gives 0, or −1 with sErrMsg.
class cls_WfdPrint {
public:
    explicit cls_WfdPrint(WfdDocumentMaker maker);

    short iInit(const QString &title);
    /// @param path of a file with a header row
    short iSetDataText(const QString &name, const QString &path);
    short iSetDataTextNoTitle(const QString &name, const QString &path);
    short iOpen(const QString &layout);
    short iPreview();
    short iPrintBk();
    short iPrintDialog();

    QString sErrMsg() const { return m_error; }

private:
    short on(const std::function<short(WfdDocument &)> &operation);

    WfdDocumentMaker m_maker;
    std::unique_ptr<WfdDocument> m_document;
    QString m_error;
};
