#pragma once

#include <QDate>
#include <QString>

class Document;

/// The layouts' common title; empty for several kinds of document.
QString documentKind(const Document &document);
/// Whose the document is: a name, for several persons their number, for records of nobody that of the
/// records.
QString documentPersons(const Document &document);
/// The same, of several persons with the first and the last: 松田　翔太 ～ 濵田　弘、96名.
QString documentSpan(const Document &document);

/// What a document's PDF is called: 書類名_利用者_日付.pdf, such as
/// 同意書（マッサージ・初回）_髙橋　花子_20261122.pdf.
QString pdfNameOf(const Document &document, const QDate &day);
