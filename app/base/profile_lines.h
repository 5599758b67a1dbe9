#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

/// An initialisation file taken apart into lines, each known by its place in the bytes.
class ProfileLines {
public:
    enum class Kind { Other, Section, Key };

    struct Range {
        qsizetype start = 0;
        qsizetype end = 0;
    };
    struct Line {
        Kind kind = Kind::Other;
        Range whole; ///< with its line end
        Range name;  ///< of the section or key, stripped of blanks
        Range value; ///< of the key, stripped of blanks
    };

    /// The bytes must outlive the object.
    explicit ProfileLines(const QByteArray &bytes);

    const std::vector<Line> &lines() const { return m_lines; }

    /// Position of the first header of that name.
    std::optional<size_t> section(const QString &name) const;
    /// Position of the first key of that name in the section whose header stands at `header`.
    std::optional<size_t> key(size_t header, const QString &name) const;
    /// Position behind the section's last line.
    size_t sectionEnd(size_t header) const;

    /// Where the text begins, behind the mark.
    qsizetype textStart() const { return m_textStart; }
    QString text(const Range &range) const;
    /// A text as this file writes it; `touched` is set when a character had to be replaced.
    QByteArray encoded(const QString &text, bool *touched = nullptr) const;
    /// What the last line lacks before another may follow: nothing, or a line end.
    QByteArray missingLineEnd() const;

private:
    enum class Encoding { CodePage932, Utf8, Utf16Le };

    char16_t unit(qsizetype at) const;
    qsizetype width(qsizetype at) const;
    qsizetype unitSize() const { return m_encoding == Encoding::Utf16Le ? 2 : 1; }
    Line readLine(qsizetype start) const;
    void classify(Line &line, qsizetype end) const;
    qsizetype find(char16_t wanted, const Range &range) const;
    Range stripped(Range range) const;

    const QByteArray &m_bytes;
    Encoding m_encoding = Encoding::CodePage932;
    qsizetype m_textStart = 0;
    std::vector<Line> m_lines;
};
