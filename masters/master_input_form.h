#pragma once

#include "masters/master_editor.h"
#include "masters/master_entry.h"

#include <QDialog>

class CodeNamePair;
class PostalBox;
class QGridLayout;
class QScrollArea;

/// Entry of one row of a master: of a doctor frmInputIshi02, of a facility frmInputSisetsu … Created,
/// initialised by iInit and shown modally; accepted when the row was saved. Its inputs bear the names of
/// their columns.
class MasterInputForm : public QDialog {
public:
    MasterInputForm(MasterEditor &editor, MasterKind kind, QWidget *parent = nullptr);
    ~MasterInputForm() override;

    /// Shows a row; without a code a new one. 0, or −1 with sErrMsg.
    short iInit(const QString &code = {});
    const QString &sErrMsg() const { return m_error; }
    /// Number of the row.
    QString code() const { return m_entry.code(); }

    /// Checks, asks and saves. 0, or −1: why has been said, or the user would rather not.
    short iDataSave();

    /// Asks where something would be lost.
    void reject() override;

private:
    struct Input {
        const MasterField *field;
        QWidget *widget;
        QString shown; ///< while the input shows this, its column is not touched
    };

    /// An input that takes the code of another master's row.
    struct Pick {
        const MasterField *field;
        std::unique_ptr<SearchClass> search;
        CodeNamePair *pair;
    };

    void layOut();
    void add(QGridLayout &grid, const MasterField &field, int row, int column, int span);
    QWidget *makeInput(const MasterField &field);
    QWidget *withButton(QWidget *input, const QString &name, const QString &caption,
                        void (MasterInputForm::*work)());
    QWidget *codeInput(const MasterField &field);
    std::unique_ptr<SearchClass> searchOf(MasterField::Kind kind);
    const Pick &pickOf(const MasterField &field) const;
    QString columnOf(MasterField::Kind kind) const;
    void showValues();
    void take();
    void goTo(const QString &column);
    QWidget *input(const QString &column) const;
    QString textOf(const QString &column) const;
    void setText(const QString &column, const QString &text);

    void findAddress();
    void findPostalCode();
    const PostalCodes *postalCodes(const QString &title);
    void takeAddress(const PostalPlace &place);
    MasterValues facility(const QString &code) const;
    void takeFacility(const QString &code);
    std::optional<QString> editOther(MasterKind kind, const QString &code, QWidget *parent);

    void setLayouts();
    bool mayCopy(bool &copy);
    bool refused(const MasterObjection &objection);

    MasterEditor &m_editor;
    QString m_oddity; ///< the practice's ways to ask could not be read; found while describing
    MasterDescription m_description;
    MasterEntry m_entry;
    std::vector<Pick> m_picks;
    MasterValues m_facilityValues; ///< of a doctor's facility in force
    std::vector<Input> m_inputs;
    QScrollArea *m_scroll = nullptr;
    QString m_error;
};
