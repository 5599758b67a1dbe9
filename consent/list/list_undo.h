#pragma once

#include "consent/record/list_row.h"

#include <QString>
#include <vector>

/// One thing that the user did to rows that are not saved yet, with whatever it brought along.
struct ListStep {
    struct Edit {
        int record;
        ConsentRowValues before, after;
    };
    struct Target {
        int record;
        bool on;
    };

    QString what; ///< for the user
    std::vector<Edit> edits;
    std::vector<Target> targets; ///< rows whose 対象 was turned over

    bool isEmpty() const { return edits.empty() && targets.empty(); }
    /// Each record once, the first changed first.
    std::vector<int> records() const;
};

/// What the user did since the rows were read or saved, one step after the other.
class ListUndo {
public:
    void begin(const QString &what);
    void edited(int record, const ConsentRowValues &before, const ConsentRowValues &after);
    void ticked(int record, bool on) { m_open.targets.push_back({record, on}); }
    /// A step that changed nothing is none (nullptr); another one ends what could be done again.
    const ListStep *end();

    /// The step to take back, or to do again; nullptr: there is none. The pointer holds until the next call.
    const ListStep *back();
    const ListStep *again();

    void forget();
    const std::vector<ListStep> &steps() const { return m_steps; }
    std::vector<ListStep> &steps() { return m_steps; }

private:
    std::vector<ListStep> m_steps;
    size_t m_done = 0; ///< steps that are in force; those after it were taken back
    ListStep m_open;
};
