#pragma once

#include "consent/rows/list_filter.h"
#include "widgets/code_name_pair.h"

#include <QWidget>
#include <functional>
#include <memory>

namespace Ui {
class ListFilterPanel;
}

/// The searches behind the panel's seven code boxes.
struct ListSearches {
    CodeSearch doctor;
    CodeSearch hospital;
    CodeSearch facility;
    CodeSearch staff;
    CodeSearch insurer;
    CodeSearch counsellor;
    CodeSearch patient;
};

/// The controls over the list that say what it shows. They keep what was entered until clear().
class ListFilterPanel : public QWidget {
    Q_OBJECT
public:
    explicit ListFilterPanel(QWidget *parent = nullptr);
    ~ListFilterPanel() override;

    void setSearches(const ListSearches &searches, Messages &messages);

    /// What the controls say. The sort orders are not here.
    /// @return false when an entry cannot be used; that has been said and the control has the focus
    bool read(ListFilter &filter);
    /// Nothing is being typed: read() would say nothing and change nothing.
    bool isSettled() const;
    /// What the controls say apart from what is being typed.
    void readSettled(ListFilter &filter) const;
    /// The range as it is typed; a box that holds no date leaves its end as it is.
    void readRange(QDate &from, QDate &to) const;
    void setRange(const QDate &from, const QDate &to);
    /// Ticks that patients whose treatment has ended are shown too.
    void showEnded();
    /// Empties every entry and sets the range.
    void clear(const QDate &from, const QDate &to);

    /// Puts the patient back whom patientChosen() has announced as another one.
    void takeBackPatient();
    void clearNarrowing();

    /// The practitioners who limit the list, in order; none: it is not limited by them. It is told under the
    /// other entries while there are any.
    void setStaff(const std::vector<CodeName> &staff, bool inOrder);
    const std::vector<CodeName> &staff() const { return m_staff; }
    bool staffInOrder() const { return m_staffInOrder; }

    QString narrowName() const;
    QString narrowKana() const;
    /// Rows shown, ticked 対象 and ticked 受領.
    void showCounts(const QString &text);
    void focusRange();
    /// Goes where the mnemonic of a caption leads, also while the panel is hidden. False when it is none.
    bool goBy(const QKeySequence &key);

Q_SIGNALS:
    void narrowed();
    /// The user is to enter something here: the panel must not be hidden.
    void sightWanted();
    /// Enter in a box that narrows: its rows are wanted.
    void listWanted();
    void searchAsked();
    void clearAsked();
    /// Something else was chosen, by the user or by whoever fills the controls.
    void chosen();
    /// Something is being typed.
    void typed();
    /// Another patient was chosen.
    void patientChosen(qint32 patient);

private:
    struct Pairs;
    bool settleAll();
    void watchEntries();
    QString staffNames() const;

    std::unique_ptr<Ui::ListFilterPanel> m_ui;
    std::unique_ptr<Pairs> m_pairs;
    CodeName m_patient; ///< in force
    CodeName m_patientBefore;
    bool m_takingBack = false;
    std::vector<CodeName> m_staff;
    bool m_staffInOrder = false;
};
