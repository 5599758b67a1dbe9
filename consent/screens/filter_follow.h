#pragma once

#include <QString>
#include <QTimer>
#include <functional>

class ListFilterPanel;
class ListGrid;
class PaintedListModel;
class StateBar;
struct ListFilter;
struct ListWindow;

/// Lets the list's rows follow what the filter's controls say, without a question and without taking the
/// focus: soon after a choice, after a pause while something is typed. Where that is not possible the rows
/// stay, and the band over them says that they are of the question before.
class FilterFollow {
public:
    /// Reads the rows by a filter; false when that failed, which has been told.
    using Show = std::function<bool(const ListFilter &)>;

    /// @param shown what the rows are read by; like the controls it outlives this
    FilterFollow(const ListWindow &window, const ListFilter &shown, Show show);

    /// Whoever chooses may go on choosing: a burst of changes is one query.
    void chosen();
    void typed();
    /// Reads the rows now if they are not those asked for and nothing is lost by it.
    void follow();
    /// The rows are not those that the controls ask for.
    bool isBehind() const;
    /// The rows have been read by what the controls say.
    void caughtUp();

private:
    QString whyBehind();

    QWidget *m_window;
    ListFilterPanel *m_panel;
    PaintedListModel *m_model;
    ListGrid *m_grid;
    StateBar *m_states;
    const ListFilter &m_shown;
    Show m_show;
    QTimer m_pause;
};
