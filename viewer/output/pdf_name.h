#pragma once

#include <QDate>
#include <QString>

class Document;

/// What a document's PDF is called: 書類名_利用者_日付.pdf, such as
/// 同意書（マッサージ・初回）_髙橋　花子_20261122.pdf. For several persons their number stands in the middle,
/// for records of nobody that of the records.
QString pdfNameOf(const Document &document, const QDate &day);
