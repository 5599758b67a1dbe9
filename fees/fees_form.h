#pragma once

#include "fees/bands_model.h"
#include "fees/visit_fees.h"

#include <QDialog>
#include <memory>

class QStandardItemModel;
class cT_ADODB;
struct Environment;
namespace Ui {
class FeesForm;
}

/// Shows the prices of a month, finds the visit fee for a distance, and edits the office's visit-fee bands.
/// Created, initialised by iInit and shown modally by exec().
class FeesForm : public QDialog {
    Q_OBJECT
public:
    FeesForm(Environment &environment, cT_ADODB &db, QWidget *parent = nullptr);
    ~FeesForm() override;

    /// @return 0, or −1 with sErrMsg
    short iInit();
    const QString &sErrMsg() const { return m_error; }

    /// Esc and cmdEnd: leaves, unless unsaved edits keep the user here.
    void reject() override;

private:
    void wire();
    bool readEdited();
    void readMonth();
    void showPrices(const QString &month);
    void showFee();
    void showState();
    bool settleCell();
    void add();
    void remove();
    bool save();
    bool changed() const;

    Environment &m_environment;
    cT_ADODB &m_db;
    std::unique_ptr<Ui::FeesForm> m_ui;
    BandsModel *m_bands;
    QStandardItemModel *m_prices;
    cls往療費 m_fees;
    Bands m_seen; ///< as they were read
    QString m_error;
    bool m_refused = false; ///< the text of the last cell that was left
};
