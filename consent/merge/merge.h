#pragma once

#include <QString>
#include <QStringList>
#include <vector>

/// A column of a row that somebody else wrote while it was being typed over here, as texts.
struct MergeColumn {
    int id; ///< for whoever made it
    QString caption;
    QString read;   ///< when it was read here
    QString theirs; ///< as it stands now
    QString typed;
    bool isWritten; ///< they changed it
    bool isTyped;   ///< it was typed over here, and not to what stands there now anyway

    /// What the row is to hold. A column that was not typed over is theirs: nobody here asked to take it
    /// back.
    enum Taken { Undecided, Theirs, Typed };
    Taken taken = Theirs;

    bool collides() const { return isWritten && isTyped; }
    /// The text that is taken; null while nobody has decided.
    QString result() const;
};

/// A row that was overtaken: what was read, what stands there now and what was typed, of the columns that
/// differ.
struct MergeRow {
    enum Way {
        Both,  ///< what either has changed; where both have, the user decides
        Typed, ///< what they changed and nobody here did, else what was typed
        Theirs ///< what stands there now
    };

    QString who;
    QString written; ///< who wrote it and when
    QString gone;    ///< why what was typed cannot be kept; empty when it can
    std::vector<MergeColumn> columns;

    void take(Way way);
    /// What was typed cannot be kept.
    void leave(const QString &why);
    /// Gives a column to the other side; one that was not typed over stays theirs.
    void turnOver(size_t column);
    bool isDecided() const;
    bool collides() const;
    /// Whether there is anything to look at: a row that has gone, or columns of either side. What they wrote
    /// and nobody typed, or what both wrote alike, needs none.
    bool needsLook() const;
    /// "12 山田太郎　再同意日 2026/11/20、受領 あり": what was typed, to be read or copied.
    QString typedText() const;
};
