#pragma once

#include <QDialog>

class cT_ADODB;

/// Stands where the consent form printing screen will be and says so.
class frm同意書印刷 : public QDialog {
public:
    frm同意書印刷();

    short iInit(cT_ADODB &db, const QString &text1, const QString &text2, const QString &text3, short number);

    QString sErrMsg() const { return {}; }
};
