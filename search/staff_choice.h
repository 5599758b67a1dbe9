#pragma once

#include <QObject>
#include <functional>

class CodeBox;
class Messages;
class QComboBox;
class Recordset;

/// A staff number that is typed or picked by name: keeps a code box and a list of names in step.
class StaffChoice : public QObject {
public:
    /// @param changed called when another number is in force
    StaffChoice(CodeBox *number, QComboBox *names, Messages &messages, std::function<void()> changed);

    /// Offers these staff (nIDNo, cName) behind an entry for any.
    void offer(const Recordset &staff);

    /// 0: any.
    qint64 number() const;

    /// Takes the typed number; one that is not offered is said and keeps the focus.
    bool settle();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    CodeBox *m_number;
    QComboBox *m_names;
    Messages &m_messages;
    qint64 m_refused = -1; ///< the wrong number that was said last
    bool m_busy = false;
};
