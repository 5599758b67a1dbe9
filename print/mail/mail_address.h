#pragma once

#include <QByteArray>
#include <QString>

/// Why a text is no mail address that a server takes, as a sentence for the user; empty when it is one.
/// Blanks around it do not count. Dots side by side and at the end of the local part, which Japanese
/// carriers gave out, are taken; characters outside ASCII are not.
QString whyNoAddress(const QString &address);

/// The address as it goes to servers and into headers; empty when it is none.
QByteArray wireAddress(const QString &address);
