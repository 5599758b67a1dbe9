#pragma once

#include "app/base/result.h"

#include <QDateTime>
#include <QString>
#include <optional>
#include <vector>

class Folders;

/// A place that has a postal code.
struct PostalPlace {
    QString code; ///< seven digits
    QString prefecture, city;
    QString town; ///< empty: the rest of the city
    QString note; ///< which part of the town, as the data say it in brackets
    QString kana; ///< reading of all three, as the data write it

    QString address() const { return prefecture + city + town; }
};

/// The places of a file as Japan Post gives them out.
struct PostalCodes {
    std::vector<PostalPlace> places; ///< by code
    int skipped = 0;                 ///< lines that could not be read

    /// Those whose code begins with the digits.
    std::vector<PostalPlace> withCode(const QString &digits) const;
    /// Those in which an address lies, the closest ones alone: with or without its prefecture. An address
    /// that names no whole place gives all that contain it.
    std::vector<PostalPlace> ofAddress(const QString &address) const;
};

/// Reads the data's lines; the texts of a town that goes over several lines are joined.
PostalCodes parsePostalCodes(const QString &text);

/// The practice's postal codes, read when they are first asked for and again when their file has changed.
class PostalBook {
public:
    explicit PostalBook(const Folders &folders) : m_folders(folders) {}

    /// Reads KEN_ALL.CSV (code page 932) or utf_ken_all.csv from 郵便番号 in the data folder, the newer one.
    /// The failure says where to put them.
    Result<const PostalCodes *> codes();
    /// Says once after reading that lines were skipped; empty otherwise.
    QString takeOddity();

private:
    const Folders &m_folders;
    std::optional<PostalCodes> m_codes;
    QString m_path;
    QDateTime m_changed;
    QString m_oddity;
};

/// Digits of a postal code as it is typed, with full-width ones, blanks and hyphens; empty when there is
/// anything else.
QString postalDigits(const QString &typed);
/// As it is shown and stored, 000-0000; fewer digits as they are.
QString postalText(const QString &digits);
