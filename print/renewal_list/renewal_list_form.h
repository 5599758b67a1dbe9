#pragma once

#include "print/renewal_list/renewal_list.h"

#include <QDialog>
#include <memory>
#include <set>
#include <vector>

class cT_ADODB;
struct Environment;
namespace Ui {
class RenewalListForm;
}

/// Prints the list of patients whose consents run out. Created, initialised by Init and shown modally by
/// exec().
class frm同意書更新リスト印刷 : public QDialog {
public:
    explicit frm同意書更新リスト印刷(Environment &environment, QWidget *parent = nullptr);
    ~frm同意書更新リスト印刷() override;

    /// Reads the last choices; what cannot be read is said and keeps its default, so that this gives 0.
    /// @param patients numbers (nIDNo) of patients of the current branch; one that stands twice counts once
    /// @param note stands behind how many they are; may be empty
    /// @param staff practitioners who come first, where the list goes by them
    short Init(cT_ADODB &db, const std::vector<qint32> &patients, const QString &note = {},
               const std::vector<qint32> &staff = {});

private:
    void wire();
    void showOptions(const RenewalListOptions &options);
    void showMonth();
    bool settle();
    RenewalListOptions chosen() const;
    std::vector<DueConsent> gather(const RenewalListOptions &options);
    bool hasLayout(const RenewalListOptions &options);
    void print(PrintWay way);

    Environment &m_environment;
    cT_ADODB *m_db = nullptr;
    std::unique_ptr<Ui::RenewalListForm> m_ui;
    std::set<qint32> m_patients;
    std::vector<qint32> m_staff;
};
