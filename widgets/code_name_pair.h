#pragma once

#include "widgets/code_lookup.h"

#include <QObject>
#include <functional>
#include <optional>

class CodeBox;
class Messages;
class QAbstractButton;
class QLineEdit;
class QWidget;

/// The two ways to a row of a master table: by its typed code, and by picking it from a list.
struct CodeSearch {
    std::function<CodeLookup(const QString &code)> lookup;
    /// Shows the pick list over `parent`; nothing when it was left without a choice.
    std::function<std::optional<CodeName>(QWidget *parent)> choose;
};

/// Joins a code box, the read-only name box beside it and the button that opens the pick list. A typed code
/// is looked up on Enter and on leaving the box; a wrong one is said and keeps the focus, once, and no row is
/// in force. An empty code empties the name. Down in the code box opens the pick list as the button does.
class CodeNamePair : public QObject {
    Q_OBJECT

public:
    /// The pair lives as long as the code box. A search may be put in place later by setSearch.
    CodeNamePair(CodeBox *code, QLineEdit *name, QAbstractButton *button, CodeSearch search,
                 Messages &messages);

    void setSearch(CodeSearch search) { m_search = std::move(search); }

    /// The row that is in force: the last one looked up or picked; empty code: none.
    const CodeName &row() const { return m_row; }
    /// Puts a row in place without looking it up; an empty one clears both boxes.
    void setRow(const CodeName &row);
    void clear() { setRow({}); }

    /// Nothing is being typed: the box shows the code of the row in force.
    bool isSettled() const;
    /// Looks a typed code up if that has not happened yet; call it before the code is used.
    /// @return false when the code is wrong: that has been said and the box has the focus
    bool settle();

    /// Opens the pick list and takes what is chosen.
    void choose();

Q_SIGNALS:
    /// Another row, or none, came into force.
    void changed(const CodeName &row);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void take(const CodeName &row);
    void settleLater();
    void moveOn();

    CodeBox *m_code;
    QLineEdit *m_name;
    QAbstractButton *m_button;
    CodeSearch m_search;
    Messages &m_messages;
    CodeName m_row;
    QString m_refused;   ///< the wrong code that was said last
    bool m_busy = false; ///< a message or the pick list is open
};
