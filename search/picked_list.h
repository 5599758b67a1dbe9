#pragma once

#include "widgets/code_name_pair.h"

#include <QWidget>
#include <vector>

class CodeBox;
class QListWidget;
class QPushButton;

/// Rows picked one after another from a master, by typed code or from its pick list; each of them once. Enter
/// takes a typed code and waits for the next one, Delete takes the current row out.
class PickedList : public QWidget {
    Q_OBJECT

public:
    explicit PickedList(Messages &messages, QWidget *parent = nullptr);

    /// Picks from another master, from an empty list or the rows given.
    /// @param caption of the button that opens the pick list
    void setSearch(const QString &caption, CodeSearch search, const std::vector<CodeName> &rows = {});

    const std::vector<CodeName> &rows() const { return m_rows; }
    /// The rows' codes.
    QStringList codes() const;
    /// Takes what is still being typed.
    /// @return false when that is no code: it has been said and the box has the focus
    bool settle();
    /// Puts the current row one place up (−1) or down (1); false when there is none to move past.
    bool moveCurrent(int by);

Q_SIGNALS:
    /// Rows were added or taken out.
    void changed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void add(const CodeName &row);
    void remove();
    void clear();
    void show(int current);

    CodeBox *m_code;
    QPushButton *m_pick;
    QListWidget *m_list;
    QPushButton *m_remove;
    QPushButton *m_clear;
    CodeNamePair *m_pair;
    std::vector<CodeName> m_rows;
};
