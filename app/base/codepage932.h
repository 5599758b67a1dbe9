#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Text as code page 932 bytes, and what had to be replaced on the way.
struct Encoded932 {
    QByteArray bytes;
    bool touched = false; ///< some character was replaced by a near one or by 〓
};

/// Encodes for files. A character that the page lacks becomes a near one where there is one
/// (〜 → ～, − → －, — → ―, ‖ → ∥), else 〓.
Encoded932 encode932(const QString &text);

/// Decodes bytes of a file; a byte that is no character becomes U+FFFD.
QString decode932(const QByteArray &bytes);

/// Whether every character of the text can be written in code page 932 without replacement.
bool fits932(QStringView text);
