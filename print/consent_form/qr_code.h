#pragma once

#include <QByteArray>
#include <QString>

struct ConsentForm;

/// What the QR code of a form says: the consent row and the version of the form, so that a form that comes
/// back can be told apart; nothing of the person. "DOUISHO:1:1-1-123:20261121:2" is version 1 of the code,
/// the patient key, nDate of the consent row (0 without one; a correction's is followed by "-" and its
/// nHenkeiDouiDate) and the form's number (0: oral consent).
QString qrContent(const ConsentForm &form);

/// A text as the picture of a QR code, a BMP file in black and white with its margin; empty when the text is
/// too long for one. Not compressed: a thousand of them are made at a time.
QByteArray qrPicture(const QString &text);
