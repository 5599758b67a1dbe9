#pragma once

#include "masters/master_store.h"

#include <QStringList>
#include <vector>

/// An input of a master's form.
struct MasterField {
    enum Kind {
        Code, ///< the row's number
        Text,
        Suggested,  ///< a text with proposals
        Memo,       ///< several lines
        PostalCode, ///< with the look-up of the address
        Address,    ///< with the look-up of the postal code
        Facility,   ///< number of a facility, with its name
        Tick
    };

    QString caption;
    QString column; ///< of the table; the input's object name
    int bytes;      ///< of code page 932
    Kind kind = Text;
    bool wide = false; ///< a line of its own
    QStringList proposals = {};
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
};

/// @param methods the practice's ways to ask for a consent, as proposals
MasterDescription describeMaster(MasterKind kind, const QStringList &methods = {});

/// "同意記録 3 件、利用者 2 名", empty when nobody names the row.
QString usesText(const MasterUses &uses);
