#pragma once

#include "masters/master_store.h"

#include <QStringList>
#include <vector>

class Folders;

/// An input of a master's form.
struct MasterField {
    enum Kind {
        Code, ///< the row's number
        Text,
        Suggested,  ///< a text with proposals
        Memo,       ///< several lines
        PostalCode, ///< with the look-up of the address
        Address,    ///< with the look-up of the postal code
        Tick,
        Date,
        Number,
        Choice, ///< one of some numbers
        /// @name The code of another master's row, with its name
        ///@{
        Facility,
        Home, ///< a facility where patients live
        Doctor,
        Insurer,
        Counsellor,
        Staff,
        ///@}
    };

    QString caption;
    QString column; ///< of the table; the input's object name
    int bytes;      ///< of code page 932
    Kind kind = Text;
    bool wide = false;          ///< a line of its own
    QStringList proposals = {}; ///< of a choice: number and caption with a blank between them
    QString table = {};         ///< of a column that not every database has

    bool isCodeOfMaster() const { return kind >= Facility; }
};

/// A column of a master's list.
struct MasterListColumn {
    QString caption;
    QString field; ///< of masterListSql
    bool number = false;
};

/// What the two screens of a master differ in.
struct MasterDescription {
    MasterKind kind;
    Branch branch; ///< whose rows they are, where they are a branch's
    QString noun;
    QString listForm, inputForm; ///< object names
    QString codeMissing, nameMissing, unreadable;
    QString codeColumn, nameColumn;
    QString printArgument; ///< of the suite's program that prints the list; empty: it prints none
    std::vector<MasterListColumn> listColumns;
    std::vector<MasterField> fields;
    /// Columns that patients and others repeat, and whose they are.
    QStringList repeated;
    QString repeaters;
    MasterValues preset = {}; ///< what a new row begins with
};

/// @param methods the practice's ways to ask for a consent, as proposals
MasterDescription describeMaster(MasterKind kind, const Branch &branch = {}, const QStringList &methods = {});

/// Whether rows of a kind are entered here. Patients, counsellors and staff are kept by the suite's own
/// program where there is one: unless the practice says otherwise, on SQL Server.
bool isKeptHere(MasterKind kind, const Folders &folders, const cT_ADODB &db);

/// "同意記録 3 件、利用者 2 名", empty when nobody names the row.
QString usesText(const MasterUses &uses);

/// Why a row may not be deleted whoever says so; empty: it may.
QString whyKept(const MasterDescription &description, const QString &name, const MasterUses &uses);
