#pragma once

#include "app/base/environment.h"

#include <QDialog>
#include <memory>
#include <span>

class ListCommandBar;
class ListFilterPanel;
class ListGrid;
class ListWork;
class PaintedListModel;
class QLabel;
class QProgressBar;
class QTimer;
class StateBar;
class cT_ADODB;
struct Environment;
struct ListCommand;
struct ListOpening;

/// The consent management list. Created, initialised by iInit and shown modally by exec().
class frm同意書管理 : public QDialog {
public:
    explicit frm同意書管理(Environment &environment, QWidget *parent = nullptr);
    ~frm同意書管理() override;

    /// Reads settings and the first list. 0, or −1 with sErrMsg.
    /// @param number not used; the launcher gives 0
    short iInit(cT_ADODB &db, short number);
    QString sErrMsg() const { return m_error; }

    /// F12 and the window's close button: leaves, unless unsaved edits keep the user here.
    void reject() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    friend std::span<const ListCommand> listCommands();
    struct Parts;

    void layOut();
    void placeActions();
    void wire();
    void run(const ListCommand &command);
    void pressButton();
    void showState();
    void enterList();
    void sortByColumn();
    void toggleFolded();
    void fold(bool folded);

    ListWork &work();
    void readColumns();
    void chooseColumns();
    void saveCsv();
    void printList();
    void startSeal();
    void showHelp();
    void printKeys();
    void showVersion();
    void openScreen(bool (*opener)(const ListOpening &));
    void readLettersLater();
    bool readAllLetters();
    void sayNoDate();
    bool settleCell();

    Environment &m_environment;
    cT_ADODB *m_db = nullptr;
    QString m_error;
    std::unique_ptr<Parts> m_parts; ///< made by iInit
    PaintedListModel *m_model;
    ListFilterPanel *m_panel;
    ListGrid *m_grid;
    StateBar *m_states;
    ListCommandBar *m_commands;
    QProgressBar *m_progress;
    QLabel *m_scope; ///< what the filter says, in its place while it is folded
    QLabel *m_status;
    QLabel *m_lapsed;
    QTimer *m_idle; ///< reads the letters' kinds while the user looks at the list
};
